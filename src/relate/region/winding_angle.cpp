// How a curve turns around a point.
#include "relate/region/winding_angle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>

#include "calc/arc_span.h"
#include "calc/boxes.h"
#include "control/bernstein.h"
#include "control/bezier_pieces.h"
#include "control/load_points.h"
#include "control/spline_point.h"
#include "foundation/work_area.h"
#include "relate/region/bezier_halves.h"

namespace kurvo {
namespace {

constexpr int64_t kIntegrandCost = 32;  // of one value, besides its interpolations

bool Coincide(Vec2 a, Vec2 b, double tol) { return Within(OnPlane(a - b), tol); }

// The difference of two polar angles in [-pi, pi].
double ShortTurn(double from, double to) {
  const double turn = to - from;
  if (turn > kPi) return turn - kTwoPi;
  return turn < -kPi ? turn + kTwoPi : turn;
}

double AngleOfLine(Vec2 start, Vec2 end, Vec2 q, double tol) {
  if (Coincide(start, q, tol) || Coincide(end, q, tol)) return 0.0;
  return ShortTurn(AngleOf(start - q), AngleOf(end - q));
}

Vec2 QuarterTurn(Vec2 v) { return {-v.y, v.x}; }

// Seen from inside its circle an arc turns in its own sense all the way, from outside by less than
// half a turn in either. At one of its ends the direction there is that of the tangent.
double AngleOfArc(const KurvoArc& arc, Vec2 q, double tol) {
  const Vec2 start = Planar(arc.start);
  const Vec2 end = Planar(arc.end);
  const Vec2 centre = Planar(arc.centre);
  if (Coincide(start, end, tol)) return AngleOfLine(start, end, q, tol);
  const double sense = arc.normal[2] < 0.0 ? -1.0 : 1.0;
  if (Coincide(q, start, tol))
    return ShortTurn(AngleOf(sense * QuarterTurn(start - centre)), AngleOf(end - q));
  if (Coincide(q, end, tol))
    return ShortTurn(AngleOf(start - q), AngleOf(-sense * QuarterTurn(end - centre)));
  const double turn = AngleOf(end - q) - AngleOf(start - q);
  if (Length(q - centre) > arc.radius + tol) return ShortTurn(AngleOf(start - q), AngleOf(end - q));
  if (sense > 0.0) return turn < 0.0 ? turn + kTwoPi : turn;
  return turn > 0.0 ? turn - kTwoPi : turn;
}

// The angle of a Bezier curve. A piece whose control points have a box without q turns as its chord
// does; others are halved.
template <std::size_t kDim>
class AngleOfBezier {
 public:
  AngleOfBezier(Vec2 q, double tol, WorkBudget& work) : q_(q), tol_(tol), work_(work) {}

  // `points` are used up.
  double operator()(double (*points)[kDim], int32_t n) {
    return SumOverHalves<double>(
        points, n, kMaxDepth, work_, [this](const auto& part, int32_t m, int depth) {
          const bool done = depth == 0 || m < 2 || IsNoCurve(part, m) || work_.exhausted();
          return done || TurnsAsChord(part, m) ? AngleOfChord(part, m) : std::optional<double>();
        });
  }

 private:
  static constexpr int kMaxDepth = 30;  // then the chord is as good as the curve

  double AngleOfChord(const double (*points)[kDim], int32_t n) const {
    return AngleOfLine(Planar(points[0]), Planar(points[n]), q_, tol_);
  }

  // A curve stays in the box of its control points unless weights are of both signs. One that is q
  // itself, within the tolerance, does not turn.
  bool TurnsAsChord(const double (*points)[kDim], int32_t n) const {
    PlanarBox box;
    bool bounded = true;
    for (int32_t i = 0; i <= n; ++i) {
      box.Widen(Planar(points[i]));
      if constexpr (kDim == 4) bounded = bounded && points[i][3] > 0.0;
    }
    if (!bounded) return false;
    return !Contains(box, q_, 0.0) || (Coincide(box.min, q_, tol_) && Coincide(box.max, q_, tol_));
  }

  const Vec2 q_;
  const double tol_;
  WorkBudget& work_;
};

// Twice the area of a Bezier curve: the integral over [0, 1] of (C - q) x C' = A x A' / W^2, with A
// = (C - q) W, by Gauss-Legendre quadrature with 8 nodes, on ever smaller intervals until halving
// one makes no difference. Up to degree 8 of plain curves the first interval is exact.
template <std::size_t kDim>
class AreaOfBezier {
 public:
  AreaOfBezier(const double (*points)[kDim], int32_t n, Vec2 q, WorkBudget& work)
      : points_(points), n_(n), q_(q), work_(work) {
    double size = 0.0;
    for (int32_t i = 0; i <= n; ++i) size = std::max(size, Length(Planar(points[i]) - q));
    noise_ = kAreaNoise * size * size;
  }

  double Twice() const { return n_ < 1 ? 0.0 : Over(0.0, 1.0, Quadrature(0.0, 1.0), kMaxDepth); }

 private:
  static constexpr double kAreaNoise =
      1e-14;  // relative to the square of the largest distance from q
  static constexpr int kMaxDepth = 8;

  double Integrand(double t) const {
    const auto load = LoadHomogeneous(points_, q_);
    const auto a = CasteljauValue<3>(n_, t, load);
    const auto d = CasteljauValue<3>(n_ - 1, t, [&](int32_t i, std::array<double, 3>& v) {
      std::array<double, 3> from;
      load(i, from);
      load(i + 1, v);
      for (std::size_t c = 0; c < 3; ++c) v[c] -= from[c];
    });
    return n_ * (a[0] * d[1] - a[1] * d[0]) / (a[2] * a[2]);
  }

  double Quadrature(double from, double to) const {
    constexpr struct {
      double node;
      double weight;
    } kRule[] = {{0.1834346424956498, 0.3626837833783620},
                 {0.5255324099163290, 0.3137066458778873},
                 {0.7966664774136267, 0.2223810344533745},
                 {0.9602898564975363, 0.1012285362903763}};
    const double middle = 0.5 * (from + to);
    const double half = 0.5 * (to - from);
    work_.Spend(2 * std::ssize(kRule) * (kIntegrandCost + int64_t{n_} * n_));
    double sum = 0.0;
    for (const auto& [node, weight] : kRule)
      sum += weight * (Integrand(middle - half * node) + Integrand(middle + half * node));
    return half * sum;
  }

  double Over(double from, double to, double whole, int depth) const {
    if (work_.exhausted()) return whole;
    const double middle = 0.5 * (from + to);
    const double left = Quadrature(from, middle);
    const double right = Quadrature(middle, to);
    const double change = std::fabs(left + right - whole);
    if (depth == 0 || noise_ >= change || std::isnan(change)) return left + right;
    return Over(from, middle, left, depth - 1) + Over(middle, to, right, depth - 1);
  }

  const double (*points_)[kDim];
  const int32_t n_;
  const Vec2 q_;
  WorkBudget& work_;
  double noise_;
};

// Adds up use(points, n), whose points are a copy, for the Bezier curve or for each span of the
// B-spline.
template <std::size_t kDim, class Use>
double SumOfBeziers(const BezierView<kDim>& bezier, WorkBudget&, GlobalVar& g, Use&& use) {
  if (bezier.degree > kMaxSplitDegree) return Refuse(g, KURVO_ERR_CURVE, 0.0);
  const auto count = static_cast<std::size_t>(bezier.degree) + 1;
  WorkArea<double[kDim], kStackOrder> points(count);
  std::memcpy(points.data(), bezier.points, count * sizeof(*bezier.points));
  return use(points.data(), bezier.degree);
}

template <std::size_t kDim, class Use>
double SumOfBeziers(const SplineView<kDim>& spline, WorkBudget& work, GlobalVar& g, Use&& use) {
  if (spline.order > kMaxSplineOrder) return Refuse(g, KURVO_ERR_CURVE, 0.0);
  const int32_t n = spline.order - 1;
  WorkArea<double[kDim], kStackOrder> points(static_cast<std::size_t>(n) + 1);
  double sum = 0.0;
  const double* end = nullptr;  // of the spans so far
  const bool given_up = AnySpan(KnotsOf(spline), [&](int32_t i) {
    if (work.exhausted()) return true;
    ChargeSpan(n, work);
    ExtractBezier(spline, i, points.data());
    sum += use(points.data(), n);
    end = points[static_cast<std::size_t>(n)];
    return false;
  });
  if (!given_up) return sum;
  const Vec2 from = end ? Planar(end) : Planar(StartOfSpline(spline));
  const Vec2 to = Planar(EndOfSpline(spline));
  double chord[2][kDim] = {{from.x, from.y}, {to.x, to.y}};
  if constexpr (kDim == 4) chord[0][3] = chord[1][3] = 1.0;
  return sum + use(chord, 1);
}

}  // namespace

double WindingAngle(const Curve& curve, Vec2 q, WorkBudget& work, GlobalVar& g) {
  const double tol = g.epsilon;
  return VisitCurve(curve,
                    Overloaded{[&](const KurvoLine& line) {
                                 return AngleOfLine(Planar(line.start), Planar(line.end), q, tol);
                               },
                               [&](const KurvoArc& arc) { return AngleOfArc(arc, q, tol); },
                               [&](const auto& view) {
                                 return SumOfBeziers(
                                     view, work, g,
                                     [&]<std::size_t kDim>(double(*points)[kDim], int32_t n) {
                                       return AngleOfBezier<kDim>(q, tol, work)(points, n);
                                     });
                               },
                               [](const CompositeView&) { return 0.0; },
                               [&](Refused) { return Refuse<double>(g, KURVO_ERR_CURVE); }});
}

double SweptArea(const Curve& curve, Vec2 q, WorkBudget& work, GlobalVar& g) {
  return VisitCurve(
      curve, Overloaded{[&](const KurvoLine& line) {
                          return 0.5 * Cross(Planar(line.start) - q, Planar(line.end) - q);
                        },
                        [&](const KurvoArc& arc) {
                          const ArcSpan span = SpanOf(arc, g.epsilon);
                          const double sweep = span.reversed ? -span.sweep : span.sweep;
                          const Vec2 chord = Planar(arc.end) - Planar(arc.start);
                          const double r = arc.radius;
                          return 0.5 * (Cross(Planar(arc.centre) - q, chord) + r * r * sweep);
                        },
                        [&](const auto& view) {
                          return SumOfBeziers(
                              view, work, g,
                              [&]<std::size_t kDim>(double(*points)[kDim], int32_t n) {
                                return 0.5 * AreaOfBezier<kDim>(points, n, q, work).Twice();
                              });
                        },
                        [](const CompositeView&) { return 0.0; },
                        [&](Refused) { return Refuse<double>(g, KURVO_ERR_CURVE); }});
}

}  // namespace kurvo
