#include <array>
#include <cmath>
#include <numbers>

#include "strand/bernstein.h"
#include "strand/roots.h"
#include "sweep/strand.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastPart = 0x1p-30;  // of a source, in parameters: closer cuts are one
constexpr double kLow = 4;              // of tol: strands that are lower are cut at sides too
constexpr double kRoundingOfRadius = 0x1p-50;

// Where a source is cut: at extreme heights, and perhaps at extreme sides.
struct Cut {
  double u;
  bool is_level;  // the source is horizontal there
};

class CutList {
 public:
  void Add(double u, bool is_level) {
    if (!(u > kLeastPart && u < 1 - kLeastPart) || count_ == cuts_.size()) return;
    std::size_t at = count_;
    while (at > 0 && cuts_[at - 1].u > u) --at;
    if (at > 0 && u - cuts_[at - 1].u <= kLeastPart) return;
    if (at < count_ && cuts_[at].u - u <= kLeastPart) return;
    std::move_backward(cuts_.begin() + at, cuts_.begin() + count_, cuts_.begin() + count_ + 1);
    cuts_[at] = {u, is_level};
    ++count_;
  }
  std::size_t size() const { return count_; }
  const Cut& operator[](std::size_t i) const { return cuts_[i]; }

 private:
  std::array<Cut, 4 * kMostRootDegree> cuts_;
  std::size_t count_ = 0;
};

// Control points by coordinate, in the sense of the source.
struct Controls {
  int degree;
  double x[kMostDegree + 1], y[kMostDegree + 1], w[kMostDegree + 1];
};

// The parameters where a coordinate of a Bezier source has an extreme.
void AddExtremes(const double* p, const double* w, int n, bool is_level, CutList& cuts) {
  if (n == 2 && !w) {
    const double first = p[0] - p[1], bend = p[0] - 2 * p[1] + p[2];
    if ((first > 0) != (p[1] - p[2] > 0) && bend != 0) cuts.Add(first / bend, is_level);
    return;
  }
  double c[kMostRootDegree + 1];
  RootList roots;
  if (w) {
    const int degree = QuotientNumerator(p, w, n, c);
    AddSignChanges(c, degree, roots);
  } else {
    for (int i = 0; i < n; ++i) c[i] = p[i + 1] - p[i];
    if (n == 3) {
      // c0 (1 - u)^2 + 2 c1 u (1 - u) + c2 u^2 = 0, by the roots that do not cancel.
      const double a = c[0] - 2 * c[1] + c[2], b = c[1] - c[0];
      const double square = b * b - a * c[0];
      if (!(square > 0)) return;
      const double q = -(b + std::copysign(std::sqrt(square), b));
      if (q != 0) cuts.Add(c[0] / q, is_level);
      if (a != 0) cuts.Add(q / a, is_level);
      return;
    }
    AddSignChanges(c, n - 1, roots);
  }
  for (const double u : roots) cuts.Add(u, is_level);
}

class Cutter {
 public:
  Cutter(Scene& scene, Array<Strand>& strands) : scene_(scene), strands_(strands) {}

  void Run(int32_t number) {
    number_ = number;
    source_ = scene_.source(number);
    const Span& span = source_.span;
    CutList cuts;
    if (span.kind == Span::Kind::kArc) {
      AddQuarterTurns(span, cuts);
    } else if (span.kind != Span::Kind::kLine) {
      Load(span);
      AddExtremes(all_.y, Weights(), all_.degree, true, cuts);
      if (HasLowPart(span, cuts)) AddExtremes(all_.x, Weights(), all_.degree, false, cuts);
    }
    int32_t from = source_.start;
    Cut start = {0, false};
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
      const Cut end = i < cuts.size() ? cuts[i] : Cut{1, false};
      AddPart(start, end, from, i < cuts.size());
      start = end;
    }
  }

 private:
  const double* Weights() const {
    return source_.span.kind == Span::Kind::kRational ? all_.w : nullptr;
  }

  void Load(const Span& span) {
    all_.degree = span.degree;
    for (int i = 0; i <= span.degree; ++i) {
      all_.x[i] = span.points[i].x;
      all_.y[i] = span.points[i].y;
      if (span.weights) all_.w[i] = span.weights[i];
    }
    // The ends are those of the vertices.
    const int n = span.degree;
    const Vec2 start = scene_.vertex(source_.start).point, end = scene_.vertex(source_.end).point;
    const double first = span.weights ? all_.w[0] : 1, last = span.weights ? all_.w[n] : 1;
    all_.x[0] = first * start.x;
    all_.y[0] = first * start.y;
    all_.x[n] = last * end.x;
    all_.y[n] = last * end.y;
  }

  // The top and the bottom of the circle.
  static void AddQuarterTurns(const Span& arc, CutList& cuts) {
    constexpr double kHalf = std::numbers::pi;
    const double low = std::min(arc.angle, arc.angle + arc.sweep);
    const double high = std::max(arc.angle, arc.angle + arc.sweep);
    for (double k = std::ceil(low / kHalf - 0.5); (k + 0.5) * kHalf < high; ++k)
      cuts.Add(((k + 0.5) * kHalf - arc.angle) / arc.sweep, true);
  }

  bool HasLowPart(const Span& span, const CutList& cuts) const {
    double before = span.Start().y;
    for (std::size_t i = 0; i <= cuts.size(); ++i) {
      const double y = outline::PointAt(span, i < cuts.size() ? cuts[i].u : 1).y;
      if (kLow * scene_.tol >= std::fabs(y - before)) return true;
      before = y;
    }
    return false;
  }

  // Adds the part between two cuts; `from` is the vertex at its start, and then that at its end.
  void AddPart(const Cut& start, const Cut& end, int32_t& from, bool ends_inside) {
    const Span& span = source_.span;
    Strand strand = {};
    strand.kind = span.kind;
    strand.degree = std::max(span.degree, 1);
    strand.source = number_;
    strand.operand = source_.operand;
    const bool goes_on = !strands_.empty() && strands_.back().operand == strand.operand;
    strand.place = goes_on ? strands_.back().place + 1 : 0;
    int32_t to = source_.end;
    if (span.kind == Span::Kind::kBezier || span.kind == Span::Kind::kRational) {
      to = CutControls(start, end, from, ends_inside);
    } else if (ends_inside) {
      const double top = std::sin(span.angle + end.u * span.sweep) > 0 ? 1 : -1;
      to = AddVertex(span.centre + Vec2{0, top * span.radius});
    }
    if (from == to) return;
    SetEnds(strand, start.u, end.u, from, to);
    if (span.kind == Span::Kind::kArc)
      SetArc(strand, span, 0.5 * (start.u + end.u));
    else
      SetControls(strand);
    strands_.push_back(strand);
    from = to;
  }

  int32_t AddVertex(Vec2 p) { return scene_.AddVertex({p, scene_.frame.Outwards(p), false}); }

  // Control points of the part; beside a level cut they are level with it, so that the strand is
  // horizontal there to the last bit.
  int32_t CutControls(const Cut& start, const Cut& end, int32_t from, bool ends_inside) {
    const int n = part_.degree = all_.degree;
    const bool is_rational = Weights();
    CutBernstein(all_.x, all_.y, n, start.u, end.u, part_.x, part_.y);
    if (is_rational) CutBernstein(all_.w, n, start.u, end.u, part_.w);
    const auto weight = [&](int i) { return is_rational ? part_.w[i] : 1.0; };
    int32_t to = source_.end;
    if (ends_inside) to = AddVertex({part_.x[n] / weight(n), part_.y[n] / weight(n)});
    const auto put = [&](int i, Vec2 p) {
      part_.x[i] = weight(i) * p.x;
      part_.y[i] = weight(i) * p.y;
    };
    const Vec2 first = scene_.vertex(from).point, last = scene_.vertex(to).point;
    put(0, first);
    put(n, last);
    if (start.is_level) part_.y[1] = weight(1) * first.y;
    if (end.is_level) part_.y[n - 1] = weight(n - 1) * last.y;
    return to;
  }

  void SetEnds(Strand& strand, double u0, double u1, int32_t from, int32_t to) const {
    const Vec2 a = scene_.vertex(from).point, b = scene_.vertex(to).point;
    const bool rises = b.y > a.y || (b.y == a.y && to > from);
    strand.is_flat = a.y == b.y;
    strand.direction = rises ? 1 : -1;
    strand.low = rises ? from : to;
    strand.high = rises ? to : from;
    strand.u_low = rises ? u0 : u1;
    strand.u_high = rises ? u1 : u0;
    const Vec2 low = rises ? a : b, high = rises ? b : a;
    strand.x_low = low.x;
    strand.y_low = low.y;
    strand.x_high = high.x;
    strand.y_high = high.y;
    strand.least_x = std::min(low.x, high.x);
    strand.most_x = std::max(low.x, high.x);
    strand.chord_slope = (high.x - low.x) / (high.y - low.y);
  }

  // To which side of the centre: of the ends together, or of the middle of half a turn.
  static double OutOf(const Strand& strand, const Span& arc, double middle) {
    constexpr double kSure = 0x1p-20;
    const double both = strand.x_low + strand.x_high - 2 * arc.centre.x;
    if (std::fabs(both) > kSure * arc.radius) return both;
    return std::cos(arc.angle + middle * arc.sweep);
  }

  static void SetArc(Strand& strand, const Span& arc, double middle) {
    strand.radius = arc.radius;
    strand.bulge = OutOf(strand, arc, middle) > 0 ? 1 : -1;
    // Moved so that it passes the lower end, as a vertex may lie beside it.
    const Vec2 low = {strand.x_low, strand.y_low}, spoke = low - arc.centre;
    const double off = Length(spoke) - arc.radius;
    const bool is_on = kRoundingOfRadius * arc.radius >= std::fabs(off);
    strand.centre = is_on ? arc.centre : arc.centre + (off / Length(spoke)) * spoke;
    strand.half_low = strand.bulge * (low.x - strand.centre.x);
    if (strand.y_low < strand.centre.y && strand.y_high > strand.centre.y) {
      const double side = strand.centre.x + strand.bulge * strand.radius;
      strand.least_x = std::min(strand.least_x, side);
      strand.most_x = std::max(strand.most_x, side);
    }
    const Stretch all = strand.Between(strand.y_low, strand.y_high, 0, 0);
    strand.least_bend = all.least;
    strand.most_bend = all.most;
  }

  void SetControls(Strand& strand) {
    const int n = strand.degree;
    if (strand.kind == Span::Kind::kLine) return;
    const bool is_rational = strand.kind == Span::Kind::kRational;
    const std::size_t room = static_cast<std::size_t>(n) + 1;
    double* block = scene_.arena.New<double>((is_rational ? 3 : 2) * room);
    const auto take = [&](const double* from) {
      double* to = block;
      block += room;
      if (strand.direction > 0) {
        std::copy(from, from + n + 1, to);
      } else {
        std::reverse_copy(from, from + n + 1, to);
      }
      return to;
    };
    strand.x = take(part_.x);
    strand.y = take(part_.y);
    if (is_rational) strand.w = take(part_.w);
    for (int i = 0; i <= n; ++i) {
      const double x = is_rational ? strand.x[i] / strand.w[i] : strand.x[i];
      strand.least_x = std::min(strand.least_x, x);
      strand.most_x = std::max(strand.most_x, x);
      const double y = is_rational ? strand.y[i] / strand.w[i] : strand.y[i];
      strand.least_bend = std::min(strand.least_bend, x - strand.ChordAt(y));
      strand.most_bend = std::max(strand.most_bend, x - strand.ChordAt(y));
    }
    if (n <= 3 && !is_rational) SetPowers(strand);
  }

  static void SetPowers(Strand& s) {
    const double *x = s.x, *y = s.y;
    if (s.degree == 2) {
      s.x1 = 2 * (x[1] - x[0]);
      s.y1 = 2 * (y[1] - y[0]);
      s.x2 = x[0] - 2 * x[1] + x[2];
      s.y2 = y[0] - 2 * y[1] + y[2];
    } else if (s.degree == 3) {
      s.x1 = 3 * (x[1] - x[0]);
      s.y1 = 3 * (y[1] - y[0]);
      s.x2 = 3 * (x[0] - 2 * x[1] + x[2]);
      s.y2 = 3 * (y[0] - 2 * y[1] + y[2]);
      s.x3 = x[3] - 3 * x[2] + 3 * x[1] - x[0];
      s.y3 = y[3] - 3 * y[2] + 3 * y[1] - y[0];
    }
  }

  Scene& scene_;
  Array<Strand>& strands_;
  int32_t number_ = 0;
  Source source_ = {};
  Controls all_, part_;
};

}  // namespace

void CutIntoStrands(Scene& scene, Array<Strand>& strands) {
  strands.reserve(scene.sources.size() + scene.sources.size() / 2);
  Cutter cutter(scene, strands);
  for (std::size_t i = 0; i < scene.sources.size(); ++i) cutter.Run(static_cast<int32_t>(i));
}

}  // namespace kurvo::outline
