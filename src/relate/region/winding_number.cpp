// How often a chain of curves winds around a point.
//
// Each piece adds its step across the half-line from p to the right: StepUp is 1 for one that ends
// above p and starts at its height or below, -1 for the other way round, and the crossing counts if
// it lies beyond p. Where the box of a piece meets the half-line but does not hold p, all of it is
// on the right and its ends tell. Only around p itself is a piece halved, until its parts are
// beside p or straight within a millionth of the tolerance.
#include "relate/region/winding_number.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "control/bezier_pieces.h"
#include "control/spline_point.h"
#include "eval/with_evaluator.h"
#include "foundation/work_area.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

constexpr int kMaxDepth = 40;           // halvings of one curve; then its chord is as good
constexpr double kStraightness = 1e-6;  // of the tolerance

Vec2 NearestOnLine(Vec2 a, Vec2 b, Vec2 p) {
  const Vec2 along = b - a;
  const double share = Dot(p - a, along) / Dot(along, along);
  if (share >= 1.0) return b;
  return share > 0.0 ? a + share * along : a;  // a line without length is its start
}

// 1 for a Bezier curve of a common degree that lies all above a height, -1 for one all below; 0 for
// every other curve.
int SideAlone(const Curve& curve, double high, double low) {
  if (curve.type != CV_BEZIER || !curve.data) return 0;
  const auto& bezier = *static_cast<const KurvoBezier*>(curve.data);
  constexpr int32_t kCommonDegree = 9;
  if (!(bezier.degree >= 0 && kCommonDegree >= bezier.degree) || !bezier.points) return 0;
  const bool above = bezier.points[0][1] > high;
  if (!above && !(low > bezier.points[0][1])) return 0;
  for (int32_t i = 1; i <= bezier.degree; ++i)
    if (!(above ? bezier.points[i][1] > high : low > bezier.points[i][1])) return 0;
  return above ? 1 : -1;
}

}  // namespace

template <std::size_t kDim>
WindingNumber::Side WindingNumber::SideOf(const double (*points)[kDim], int32_t count) {
  // A curve stays in the box of its control points unless weights are of both signs.
  if constexpr (kDim == 4) {
    for (int32_t i = 0; i < count; ++i) {
      if (points[i][3] > 0.0) continue;
      leaves_boxes_ = true;
      return Side::kAround;
    }
  }
  const auto range = [&](std::size_t axis) {
    struct {
      double min = HUGE_VAL;
      double max = -HUGE_VAL;
    } r;
    for (int32_t i = 0; i < count; ++i) {
      const double value = points[i][axis];
      r.min = value < r.min ? value : r.min;
      r.max = value > r.max ? value : r.max;
    }
    return r;
  };
  const auto y = range(1);
  if (y.min > p_.y + tol_ || p_.y - tol_ > y.max) return Side::kAway;
  const auto x = range(0);
  if (p_.x - tol_ > x.max) return Side::kAway;
  return x.min > p_.x + tol_ ? Side::kRight : Side::kAround;
}

// The crossing with the line from a to b.
int WindingNumber::CrossLine(Vec2 a, Vec2 b) const {
  const int step = StepUp(a, b);
  if (step == 0) return 0;
  return step * Cross(b - a, p_ - a) > 0.0 ? step : 0;  // p is to the left of the upward line
}

int WindingNumber::MeetLine(Vec2 a, Vec2 b) {
  on_curve_ = on_curve_ || tol_ >= Length(p_ - NearestOnLine(a, b, p_));
  return CrossLine(a, b);
}

int WindingNumber::TurnsOfLine(Vec2 a, Vec2 b, bool& near) {
  const double ends[][3] = {{a.x, a.y, 0.0}, {b.x, b.y, 0.0}};
  const Side side = SideOf(ends, 2);
  if (side != Side::kAround) return TurnsBeside(side, a, b);
  near = true;
  return MeetLine(a, b);
}

void WindingNumber::Bridge(Vec2 from, Vec2 to) {
  bool near = false;
  turns_ += TurnsOfLine(from, to, near);
}

void WindingNumber::Append(Vec2 start, Vec2 end, int turns) {
  RecallPassed();
  if (!started_)
    first_ = start;
  else if (!joined_ && !(last_.x == start.x && last_.y == start.y))
    Bridge(last_, start);
  started_ = true;
  joined_ = false;
  last_ = end;
  turns_ += turns;
}

void WindingNumber::RecallPassed() {
  if (passed_side_ != 0) last_ = Planar(passed_->points[passed_->degree]);
  passed_side_ = 0;
}

void WindingNumber::Close() {
  RecallPassed();
  if (started_) Bridge(last_, first_);
}

void WindingNumber::AddLine(const KurvoLine& line) {
  const Vec2 start = Planar(line.start), end = Planar(line.end);
  Append(start, end, TurnsOfLine(start, end, near_));
}

// An arc is cut at its highest and lowest points. Each part stays on the right or on the left half
// of the circle; whether it crosses beyond p shows by p being inside the circle or outside.
int WindingNumber::CrossArc(const KurvoArc& arc, Vec2 start, Vec2 end) const {
  const ArcSpan span = SpanOf(arc, tol_);
  if (!(span.sweep > 0.0)) return CrossLine(start, end);
  const Vec2 centre = Planar(arc.centre);
  const bool inside = arc.radius > Length(p_ - centre);
  const auto cross = [&](Vec2 from, Vec2 to, double middle) {
    const bool beyond =
        std::cos(middle) > 0.0 ? p_.x <= centre.x || inside : p_.x < centre.x && !inside;
    return beyond ? StepUp(from, to) : 0;
  };
  if (span.reversed) std::swap(start, end);
  Vec2 from = start;
  double angle = span.start_angle;
  const double last = span.start_angle + span.sweep;
  int turns = 0;
  bool top = false;  // -pi/2 is the lowest point, then they take turns
  for (double extreme = -0.5 * kPi; extreme < last; extreme += kPi, top = !top) {
    if (angle >= extreme) continue;
    const Vec2 to = {centre.x, centre.y + (top ? arc.radius : -arc.radius)};
    turns += cross(from, to, 0.5 * (angle + extreme));
    from = to;
    angle = extreme;
  }
  turns += cross(from, end, 0.5 * (angle + last));
  return span.reversed ? -turns : turns;
}

void WindingNumber::AddArc(const KurvoArc& arc) {
  const Vec2 centre = Planar(arc.centre);
  const double r = arc.radius;
  const double corners[][3] = {{centre.x - r, centre.y - r, 0.0},
                               {centre.x + r, centre.y + r, 0.0}};
  const Side side = SideOf(corners, 2);
  const auto is_on_circle = [&](const double* stored) {
    const Vec2 radial = Planar(stored) - centre;
    const double inner = std::max(r - tol_, 0.0);
    const double square = Dot(radial, radial);
    return square >= inner * inner && (r + tol_) * (r + tol_) >= square;
  };
  const bool stored_ends = is_on_circle(arc.start) && is_on_circle(arc.end);
  leaves_boxes_ = leaves_boxes_ || !stored_ends;
  // Beside the half-line stored ends are as good as those on the circle itself.
  if (side == Side::kAway && stored_ends) return Append(Planar(arc.start), Planar(arc.end), 0);
  const auto on_circle = [&](const double* stored) {
    const Vec2 radial = Planar(stored) - centre;
    return centre + r / Length(radial) * radial;
  };
  const Vec2 start = on_circle(arc.start), end = on_circle(arc.end);
  if (side != Side::kAround) return Append(start, end, TurnsBeside(side, start, end));
  near_ = true;
  const auto dist = [&](const auto& evaluator) { return evaluator.NearestPoint(OnPlane(p_)).dist; };
  on_curve_ = on_curve_ || tol_ >= WithEvaluator(arc, g_, dist);
  Append(start, end, CrossArc(arc, start, end));
}

template <std::size_t kDim>
bool WindingNumber::IsStraight(const double (*points)[kDim], int32_t n) const {
  const Vec2 start = Planar(points[0]), end = Planar(points[n]);
  for (int32_t i = 1; i < n; ++i) {
    const Vec2 p = Planar(points[i]);
    if (!(kStraightness * tol_ >= Length(p - NearestOnLine(start, end, p)))) return false;
  }
  return true;
}

// `points` are used up.
template <std::size_t kDim>
int WindingNumber::CrossBezier(double (*points)[kDim], int32_t n) {
  const auto crossing_of = [this](const auto& part, int32_t m, int depth) -> std::optional<int> {
    if (on_curve_ || work_.exhausted()) return 0;
    const Side side = SideOf(part, m + 1);
    if (side == Side::kAway) return 0;
    const Vec2 start = Planar(part[0]), end = Planar(part[m]);
    if (side == Side::kRight) return StepUp(start, end);
    if (depth == 0 || IsNoCurve(part, m) || IsStraight(part, m)) return MeetLine(start, end);
    return std::nullopt;
  };
  return SumOverHalves<int>(points, n, kMaxDepth, work_, crossing_of);
}

template <std::size_t kDim>
void WindingNumber::AddBezier(const BezierView<kDim>& bezier) {
  const int32_t n = bezier.degree;
  const Side side = SideOf(bezier.points, n + 1);
  const Vec2 start = Planar(bezier.points[0]), end = Planar(bezier.points[n]);
  if (side != Side::kAround) return Append(start, end, TurnsBeside(side, start, end));
  near_ = true;
  if (n > kMaxSplitDegree) return Fail(g_, KURVO_ERR_CURVE);
  const auto count = static_cast<std::size_t>(n) + 1;
  WorkArea<double[kDim], kStackOrder> points(count);
  std::memcpy(points.data(), bezier.points, count * sizeof(*bezier.points));
  Append(start, end, CrossBezier(points.data(), n));
}

template <std::size_t kDim>
void WindingNumber::AddSpline(const SplineView<kDim>& spline) {
  const Side side = SideOf(spline.points, spline.count);
  if (spline.order > kMaxSplineOrder) {
    if (side != Side::kAway) return Fail(g_, KURVO_ERR_CURVE);
    // Its ends are beside the half-line, as all its control points are.
    return Append(Planar(spline.points[0]), Planar(spline.points[spline.count - 1]), 0);
  }
  if (side != Side::kAround) {
    const Vec2 start = Planar(StartOfSpline(spline)), end = Planar(EndOfSpline(spline));
    return Append(start, end, TurnsBeside(side, start, end));
  }
  near_ = true;
  const int32_t n = spline.order - 1;
  const KnotVector knots = KnotsOf(spline);
  const int32_t last = LastSpan(knots);
  bool first = true;
  WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(spline.order));
  AnySpan(knots, [&](int32_t i) {
    const bool away = SideOf(spline.points + (i - n), spline.order) == Side::kAway;
    // The curve jumps at a knot of full multiplicity. Only there, and at its ends, is the line
    // between a span and its neighbour more than rounding.
    const double* u = spline.knots + i;
    const bool joins_others = first || i == last || u[-n] == u[0] || u[1] == u[n + 1];
    first = false;
    if (away && !joins_others) {
      Skip();
      return false;
    }
    ChargeSpan(n, work_);
    ExtractBezier(spline, i, points.data());
    const Vec2 start = Planar(points[0]), end = Planar(points[static_cast<std::size_t>(n)]);
    Append(start, end, away ? 0 : CrossBezier(points.data(), n));
    return on_curve_ || work_.exhausted();
  });
}

int32_t WindingNumber::PassBy(const Cvseq& seq, int32_t i) {
  const double high = p_.y + tol_, low = p_.y - tol_;
  const KurvoBezier* passed = passed_;
  int passed_side = passed_side_;  // 0 when none has
  for (; i < seq.count; ++i) {
    const int side = SideAlone(seq.curves[i], high, low);
    if (side == 0) break;
    const auto* bezier = static_cast<const KurvoBezier*>(seq.curves[i].data);
    // The line between two curves above, or two below, passes by with them.
    if (passed_side != side) {
      passed_ = passed;
      passed_side_ = passed_side;
      Append(Planar(bezier->points[0]), Planar(bezier->points[bezier->degree]), 0);
      passed_side = side;
    }
    passed = bezier;
  }
  passed_ = passed;
  passed_side_ = passed_side;
  return i;
}

bool WindingNumber::Add(const Curve& curve) {
  near_ = false;
  const Overloaded add = {
      [&](const KurvoLine& line) { AddLine(line); }, [&](const KurvoArc& arc) { AddArc(arc); },
      [&]<std::size_t kDim>(const BezierView<kDim>& bezier) { AddBezier(bezier); },
      [&]<std::size_t kDim>(const SplineView<kDim>& spline) { AddSpline(spline); }};
  ForEachLeafView(curve, g_, [&](const Curve&, const auto& view) {
    if (!on_curve_ && !work_.exhausted()) add(view);
  });
  return near_;
}

}  // namespace kurvo
