#include "fit/offset_fit.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

#include "fit/cell_run.h"
#include "fit/cubic.h"
#include "fit/cubic_cells.h"
#include "fit/offset_breaks.h"
#include "fit/offset_cubic.h"
#include "fit/spline_fit.h"
#include "strand/arc_sweep.h"

namespace kurvo::outline {
namespace {

constexpr double kCellShare = 0.5;        // of the tolerance, for cubics in place of other curves
constexpr double kFineShare = 0.25;       // of that, for many cubics before they are fitted by few
constexpr double kPointShare = 0.125;     // of the tolerance: an arc with such a radius is a point
constexpr double kNothing = 0x1p-10;      // of the tolerance: distances that move nothing
constexpr int kMostCuts = 24;             // of a stretch into parts, one in the other,
constexpr std::size_t kMostPieces = 256;  // and pieces of a cubic: then they are taken as they are
constexpr std::size_t kUsualPieces = 16;  // of a cubic
constexpr std::size_t kMostExtra = 1 << 11;  // pieces beyond that, of all cubics
constexpr double kCoarse = 0x1p-20;          // the tolerance from there on, in the frame
constexpr double kFinest = 0x1p-36;  // and at best: below it fits are told from rounding no more

OffsetPiece LinePiece(Vec2 start, Vec2 end, double from, double to) {
  return {OffsetPiece::Kind::kLine, false, {start, {}, {}, end}, {}, 0, from, to};
}

void AppendLine(const Span& span, double distance, StripList& list) {
  const Vec2 start = span.Start(), end = span.End();
  const double length = Length(end - start);
  if (!(length > 0)) return;
  const Vec2 along = (1 / length) * (end - start), off = distance * Right(along);
  list.strips.push_back({start, end, along, along, distance, distance, span.from, span.to,
                         span.curve, true, list.pieces.size(), 1});
  list.pieces.push_back(LinePiece(start + off, end + off, span.from, span.to));
}

void AppendArc(const Span& span, double distance, double tol, StripList& list) {
  const double sense = span.sweep < 0 ? -1 : 1;
  if (!(span.radius * std::fabs(span.sweep) > 0)) return;
  double radius = span.radius + sense * distance;
  const bool is_point = kPointShare * tol >= radius && distance != 0;
  const double reach = is_point ? -sense * span.radius : distance;
  Strip strip = {span.Start(), span.End(), TangentAt(span, 0), TangentAt(span, 1),
                 reach,        reach,      span.from,          span.to,
                 span.curve,   false,      list.pieces.size(), 0};
  // Pieces below half a turn have ends apart.
  const int count = is_point ? 0 : static_cast<int>(std::ceil(std::fabs(span.sweep) / 3));
  Vec2 start = strip.First();
  for (int i = 1; i <= count; ++i) {
    const double angle = span.angle + span.sweep * i / count;
    const Vec2 end =
        i == count ? strip.Last() : span.centre + radius * Vec2{std::cos(angle), std::sin(angle)};
    list.pieces.push_back({OffsetPiece::Kind::kArc,
                           sense < 0,
                           {start, {}, {}, end},
                           span.centre,
                           radius,
                           span.ParameterAt(static_cast<double>(i - 1) / count),
                           span.ParameterAt(static_cast<double>(i) / count)});
    start = end;
  }
  strip.piece_count = static_cast<std::size_t>(count);
  list.strips.push_back(strip);
}

// The strips of one cubic.
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
          AppendChords(from, before, to, after);
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
  void AppendChords(double from, const At& start, double to, const At& end) {
    Breaks breaks;
    AddVertices(hodograph_, from, to, breaks);
    AddTurns(hodograph_, from, start.tangent, to, end.tangent, breaks);
    breaks.Sort();
    breaks.Add(to);
    Vec2 first = OffsetOf(start);
    double at = from;
    for (std::size_t i = 0; i < breaks.count; ++i) {
      const double next = breaks.at[i];
      const bool is_last = i + 1 == breaks.count;
      const At there = is_last ? end : LookAt(next);
      const Vec2 last = OffsetOf(there);
      OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kLine, at, next);
      piece.points[0] = first;
      piece.points[3] = last;
      if (!is_last && IsTight(ReachOf(there), distance_, tol_)) {
        EndStrip(next, there);
        BeginStrip(next, there);
      }
      first = last;
      at = next;
    }
  }

  // As many cubics as there are turns of 60 degrees. Where one of them does not fit, as many as all
  // their errors foretell, each with its share of them.
  void AppendTurns(double from, const At& start, double to, const At& end) {
    Breaks stops;
    stops.Add(from);
    AddTurns(hodograph_, from, start.tangent, to, end.tangent, stops);
    stops.Sort();
    stops.Add(to);
    const auto look = [&](double u) { return u == from ? start : u == to ? end : LookAt(u); };
    const std::size_t first = list_.pieces.size();
    const double off_before = list_.off;
    Breaks off;  // of each of them
    bool fits = true;
    for (std::size_t i = 1; i < stops.count; ++i) {
      const double u0 = stops.at[i - 1], u1 = stops.at[i];
      const SideFit fit = FitSide(side_, look(u0), u0, look(u1), u1, tol_);
      fits = fits && tol_ >= fit.off;
      Take(fit, u0, u1);
      off.Add(fit.off);
    }
    if (fits) return;
    list_.pieces.resize(first);
    list_.off = off_before;
    Breaks needed;  // cubics up to each stop
    needed.Add(0);
    for (std::size_t i = 0; i < off.count; ++i) needed.Add(needed.at[i] + CubicsFor(off.at[i]));
    const double all = needed.at[stops.count - 1];
    const int count = static_cast<int>(std::ceil(all));
    double at = from;
    std::size_t i = 1;
    for (int k = 1; k <= count; ++k) {
      const double want = all * k / count;
      while (i + 1 < stops.count && needed.at[i] < want) ++i;
      const double share = (want - needed.at[i - 1]) / (needed.at[i] - needed.at[i - 1]);
      const double inside = stops.at[i - 1] + share * (stops.at[i] - stops.at[i - 1]);
      const double next = k == count ? to : std::min(inside, to);
      if (!(next > at)) continue;
      AppendCubics(at, look(at), next, look(next), kMostCuts);
      at = next;
    }
  }

  // By an error that falls with the sixth power.
  double CubicsFor(double off) const {
    constexpr double kAim = 0.8;  // of the tolerance
    constexpr double kLeast = 0.1, kMost = 8, kUnknown = 2;
    if (!std::isfinite(off)) return kUnknown;
    return std::clamp(std::pow(off / (kAim * tol_), 1.0 / 6), kLeast, kMost);
  }

  void Take(const SideFit& fit, double from, double to) {
    list_.off = std::max(list_.off, fit.off);
    OffsetPiece& piece = AddPiece(OffsetPiece::Kind::kCubic, from, to);
    std::copy(fit.points, fit.points + 4, piece.points);
  }

  // One cubic, or as many as its error, which falls with the sixth power, foretells.
  void AppendCubics(double from, const At& start, double to, const At& end, int cuts_left) {
    const SideFit fit = FitSide(side_, start, from, end, to, tol_);
    if (tol_ >= fit.off) return Take(fit, from, to);
    if (cuts_left == 0 || list_.pieces.size() >= most_pieces_) {
      ++list_.capped;
      return Take(PlainSide(side_, start, from, end, to), from, to);
    }
    const int parts = std::max(2, static_cast<int>(std::ceil(CubicsFor(fit.off))));
    double at = from;
    At before = start;
    for (int i = 1; i <= parts; ++i) {
      const double next = i == parts ? to : from + (to - from) * i / parts;
      const At after = i == parts ? end : LookAt(next);
      AppendCubics(at, before, next, after, cuts_left - 1);
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

// Cubics within `error` of a span: cells beside it at equal parameters, whose error falls with the
// fourth power of their number, and where these go on smoothly cubics fitted to them, whose error
// falls with the sixth. Result: whether they are the span itself.
bool AppendFewCells(const Span& span, double error, Array<CubicCell>& cells) {
  Array<CubicCell> fine;
  const bool is_exact = AppendCells(span, 0, kFineShare * error, fine);
  if (fine.size() == 1) {
    cells.swap(fine);
    return is_exact;
  }
  CutAtCusps(fine);
  for (std::size_t i = 0; i < fine.size();) {
    std::size_t next = i + 1;
    while (next < fine.size() && GoesOn(fine[next - 1], fine[next])) ++next;
    CellRun run;
    run.cells.assign(fine.begin() + static_cast<std::ptrdiff_t>(i),
                     fine.begin() + static_cast<std::ptrdiff_t>(next));
    run.first_tangent = DirectionAtStart(fine[i]);
    run.last_tangent = DirectionAtEnd(fine[next - 1]);
    double from = fine[i].from;
    FitCubics(run, (1 - kFineShare) * error, [&](const Vec2* points, double s) {
      const CubicCell& last = run.cells[run.CellOf(s)];
      const double share = s - static_cast<double>(run.CellOf(s));
      const double to = last.from + share * (last.to - last.from);
      cells.push_back({{points[0], points[1], points[2], points[3]}, last.span, from, to});
      from = to;
    });
    i = next;
  }
  return false;
}

}  // namespace

void AppendStrips(const Span& span, double distance, double tol, StripList& list) {
  if (span.kind == Span::Kind::kLine) return AppendLine(span, distance, list);
  if (span.kind == Span::Kind::kArc) return AppendArc(span, distance, tol, list);
  const bool is_coarse = list.extra > kMostExtra && kCoarse > tol;
  if (is_coarse) ++list.capped;
  const double off = is_coarse ? kCoarse : std::max(tol, kFinest);
  Array<CubicCell> cells;
  const bool is_exact = AppendFewCells(span, kCellShare * off, cells);
  const double left = is_exact ? off : (1 - kCellShare) * off;
  for (const CubicCell& cell : cells) {
    const std::size_t had = list.pieces.size();
    CellStrips(span, cell, distance, left, list).Append();
    const std::size_t made = list.pieces.size() - had;
    if (made > kUsualPieces) list.extra += made - kUsualPieces;
  }
}

}  // namespace kurvo::outline
