#include "fit/cell_strips.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "fit/cell_run.h"
#include "fit/centres.h"
#include "fit/cubic.h"
#include "fit/side_row.h"

namespace kurvo::outline {
namespace {

constexpr double kNothing = 0x1p-10;                // of the tolerance: distances that move nothing
constexpr double kMostTurn = std::numbers::pi / 2;  // radians of a cubic that fits,
constexpr double kUsualTurn = std::numbers::pi / 3;  // and of one whose error tells of others
constexpr int kMostCuts = 24;                        // of a stretch into parts, one in the other,
constexpr std::size_t kMostPieces = 256;  // and pieces of a cubic: then they are taken as they are

class CellStrips {
 public:
  CellStrips(const Span& span, const CubicCell& cell, double distance, double tol, StripList& list)
      : span_(span),
        cell_(cell),
        hodograph_(cell.points),
        side_(cell.points, distance),
        distance_(distance),
        tol_(tol),
        list_(list) {}

  void Append() {
    most_pieces_ = list_.pieces.size() + (list_.extra > kMostExtra ? kUsualPieces : kMostPieces);
    Halts halts;
    FindHalts(hodograph_, distance_, halts);
    double from = 0;
    for (std::size_t i = 0; i < halts.count; ++i) {
      AppendStrip(from, halts.at[i].at - halts.at[i].width);
      from = std::max(from, halts.at[i].at + halts.at[i].width);
    }
    AppendStrip(from, 1);
  }

 private:
  using At = CubicSide::At;

  At LookAt(double u) const {
    At at = side_.LookAt(u);
    if (SquaredLength(hodograph_.VelocityAt(u)) > 0) return at;
    // The end of a cubic whose handle has no length: in the direction of the next control point,
    // where it is straight or bends without end.
    const At beside = side_.LookAt(u < 0.5 ? u + kBesideHalt : u - kBesideHalt);
    at.tangent = u < 0.5 ? DirectionAtStart(cell_) : DirectionAtEnd(cell_);
    const double endless = std::numeric_limits<double>::infinity();
    at.stretch = beside.stretch < 0 ? -endless : beside.stretch > 1 ? endless : beside.stretch;
    at.run = std::max(beside.run, 0.0);
    at.halts = true;
    return at;
  }

  double ReachOf(const At& at) const {
    return at.stretch < 0 ? distance_ / (1 - at.stretch) : distance_;
  }
  Vec2 OffsetOf(const At& at) const { return at.point + ReachOf(at) * Right(at.tangent); }
  double ParameterAt(double u) const {
    const double v = cell_.from + u * (cell_.to - cell_.from);
    return span_.ParameterAt(u >= 1 ? cell_.to : v);
  }

  void AppendStrip(double low, double high) {
    if (!(high > low)) return;
    const At start = LookAt(low), end = LookAt(high);
    if (SquaredLength(start.tangent) == 0 || SquaredLength(end.tangent) == 0) return;  // a point
    BeginStrip(low, start);
    if (kNothing * tol_ >= std::fabs(distance_)) {
      OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kCubic, low, high);
      CubicPart(cell_.points, low, high, piece.points);
    } else {
      Breaks breaks;
      AddTightest(hodograph_, distance_, low, high, breaks);
      breaks.Sort();
      breaks.Add(high);
      double from = low;
      At before = start;
      for (std::size_t i = 0; i < breaks.count; ++i) {
        const double to = breaks.at[i];
        const At after = i + 1 == breaks.count ? end : LookAt(to);
        if (side_.LookAt(0.5 * (from + to)).stretch < 0)
          AppendCentres(from, before, to, after);
        else
          AppendTurns(from, before, to, after);
        from = to;
        before = after;
      }
    }
    EndStrip(high, end);
  }

  void BeginStrip(double u, const At& at) {
    strip_ = {};
    strip_.start = at.point;
    strip_.leaves = at.tangent;
    strip_.reach = ReachOf(at);
    strip_.from = ParameterAt(u);
    strip_.curve = span_.curve;
    strip_.first_piece = list_.pieces.size();
  }

  void EndStrip(double u, const At& at) {
    strip_.end = at.point;
    strip_.arrives = at.tangent;
    strip_.last_reach = ReachOf(at);
    strip_.to = ParameterAt(u);
    strip_.piece_count = list_.pieces.size() - strip_.first_piece;
    list_.strips.push_back(strip_);
  }

  OffsetPiece& AddPiece(OffsetPiece::Kind kind, double from, double to) {
    list_.pieces.push_back({kind, false, {}, {}, 0, ParameterAt(from), ParameterAt(to)});
    return list_.pieces.back();
  }

  // Normals end at the centres of curvature, whose curve is as long between two vertices as the
  // radii differ: so no point of its chord is farther from the cubic than the longer radius. The
  // strip is cut where the radius is shortest and within the tolerance.
  void AppendCentres(double from, const At& start, double to, const At& end) {
    Breaks breaks;
    AddVertices(hodograph_, from, to, breaks);
    AddTurns(hodograph_, from, start.tangent, to, end.tangent, kUsualTurn, breaks);
    breaks.Sort();
    breaks.Add(to);
    Vec2 first = OffsetOf(start);
    double at = from;
    for (std::size_t i = 0; i < breaks.count; ++i) {
      const double next = breaks.at[i];
      const bool is_last = i + 1 == breaks.count;
      const At there = is_last ? end : LookAt(next);
      const Vec2 last = OffsetOf(there);
      if (list_.follows_centres)
        FollowCentres(at, first, next, last);
      else
        AddLine(at, first, next, last);
      if (!is_last && IsTight(ReachOf(there), distance_, tol_)) {
        EndStrip(next, there);
        BeginStrip(next, there);
      }
      first = last;
      at = next;
    }
  }

  void AddLine(double from, Vec2 first, double to, Vec2 last) {
    OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kLine, from, to);
    piece.points[0] = first;
    piece.points[3] = last;
  }

  void FollowCentres(double from, Vec2 first, double to, Vec2 last) {
    Array<CubicCell> cells;
    const bool is_known = outline::AppendCentres(cell_.points, hodograph_, from, to, tol_, cells);
    const bool is_capped = !is_known || list_.pieces.size() + cells.size() > most_pieces_;
    list_.capped += is_capped;
    if (is_capped || cells.empty()) return AddLine(from, first, to, last);
    cells.front().points[0] = first;
    cells.back().points[3] = last;
    for (const CubicCell& cell : cells) {
      OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kCubic, cell.from, cell.to);
      std::copy(cell.points, cell.points + 4, piece.points);
    }
  }

  // As many cubics as there are quarter turns, or else as there are turns of 60 degrees. Where one
  // of these does not fit, as many as all their errors foretell, each with its share of them, and
  // again by the errors of those; then fewer, where these foretell it.
  void AppendTurns(double from, const At& start, double to, const At& end) {
    constexpr int kMostRounds = 3;
    const auto look = [&](double u) { return u == from ? start : u == to ? end : LookAt(u); };
    SideRow row;
    row.stops.Add(from);
    for (const double most : {kMostTurn, kUsualTurn}) {
      Breaks stops;
      stops.Add(from);
      AddTurns(hodograph_, from, start.tangent, to, end.tangent, most, stops);
      stops.Sort();
      stops.Add(to);
      if (stops.count == row.stops.count) break;
      FitBetween(side_, stops, look, tol_, row);
      if (row.fit_all) return Take(row);
    }
    for (int round = 0; !row.fit_all && round < kMostRounds; ++round)
      FitBetween(side_, Spread(row, tol_), look, tol_, row);
    if (!row.fit_all) return TakeOrCut(row, look);
    SideRow fewer;
    const Breaks stops = Spread(row, tol_);
    if (stops.count < row.stops.count) FitBetween(side_, stops, look, tol_, fewer);
    Take(fewer.fit_all ? fewer : row);
  }

  void Take(const SideRow& row) {
    for (std::size_t i = 0; i < row.count(); ++i)
      Take(row.fits[i], row.stops.at[i], row.stops.at[i + 1]);
  }

  template <class Look>
  void TakeOrCut(const SideRow& row, const Look& look) {
    for (std::size_t i = 0; i < row.count(); ++i) {
      const double from = row.stops.at[i], to = row.stops.at[i + 1];
      TakeOrCut(row.fits[i], from, look(from), to, look(to), kMostCuts);
    }
  }

  void Take(const SideFit& fit, double from, double to) {
    list_.off = std::max(list_.off, fit.off);
    OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kCubic, from, to);
    std::copy(fit.points, fit.points + 4, piece.points);
  }

  // The cubic, or as many as its error, which falls with the sixth power, foretells.
  void TakeOrCut(const SideFit& fit, double from, const At& start, double to, const At& end,
                 int cuts_left) {
    if (tol_ >= fit.off) return Take(fit, from, to);
    if (cuts_left == 0 || list_.pieces.size() >= most_pieces_) {
      ++list_.capped;
      return Take(PlainSide(side_, start, from, end, to), from, to);
    }
    const int parts = std::max(2, static_cast<int>(std::ceil(CubicsFor(fit.off, tol_))));
    double at = from;
    At before = start;
    for (int i = 1; i <= parts; ++i) {
      const double next = i == parts ? to : from + (to - from) * i / parts;
      const At after = i == parts ? end : LookAt(next);
      const SideFit part = FitSide(side_, before, at, after, next, tol_);
      TakeOrCut(part, at, before, next, after, cuts_left - 1);
      at = next;
      before = after;
    }
  }

  const Span& span_;
  const CubicCell& cell_;
  const Hodograph3 hodograph_;
  const CubicSide side_;
  const double distance_, tol_;
  StripList& list_;
  Strip strip_ = {};  // the one that is being made
  std::size_t most_pieces_ = 0;
};

}  // namespace

void AppendStrips(const Span& span, const CubicCell& cell, double distance, double tol,
                  StripList& list) {
  CellStrips(span, cell, distance, tol, list).Append();
}

}  // namespace kurvo::outline
