// The nearest point of a B-spline against an examination of every span: the bounds that spare most
// spans must not change a bit of the result.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "eval/spline_queries.h"
#include "eval/spline_span.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

using kurvo::Length;
using kurvo::Planar;
using kurvo::SplineFoot;
using kurvo::SplineView;
using kurvo::Vec2;

// The candidates of every span in the order in which ties are decided, then the ends.
template <std::size_t kDim>
SplineFoot ExamineAllSpans(const SplineView<kDim>& spline, Vec2 p, double tol) {
  const Vec2 end = Planar(kurvo::EndOfSpline(spline));
  const double last = spline.knots[spline.count];
  SplineFoot best{{last, kInfinity}, end};
  const auto offer = [&](double t, Vec2 q) {
    if (Length(p - q) < best.nearest.dist) best = {{t, Length(p - q)}, q};
  };
  for (int32_t i = spline.order - 1; i < spline.count; ++i) {
    if (!(spline.knots[i] < spline.knots[i + 1])) continue;
    const kurvo::SplineSpan<kDim> span(spline, i, kurvo::EvaluatesPlain(spline, tol));
    for (const double s : kurvo::FootPoints(kurvo::FootRoots(span.ToSegment(p)), tol))
      offer(span.ToDomain(s), span.Position(s));
    if (span.CornerAtLeft()) offer(span.ToDomain(0.0), span.Position(0.0));
    if (span.CornerAtRight()) offer(span.ToDomain(1.0), span.Position(1.0));
  }
  offer(spline.knots[spline.order - 1], Planar(kurvo::StartOfSpline(spline)));
  offer(last, end);
  if (best.nearest.dist == kInfinity) best.nearest.dist = Length(p - end);
  return best;
}

bool SameBits(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

template <std::size_t kDim>
void Compare(const SplineView<kDim>& spline, Vec2 p, double tol) {
  const SplineFoot want = ExamineAllSpans(spline, p, tol);
  const SplineFoot got = kurvo::FootOnSpline(spline, p, tol);
  EXPECT_TRUE(SameBits(got.nearest.t, want.nearest.t) &&
              SameBits(got.nearest.dist, want.nearest.dist) &&
              SameBits(got.point.x, want.point.x) && SameBits(got.point.y, want.point.y))
      << "point " << p.x << ", " << p.y << ": t " << got.nearest.t << " at " << got.nearest.dist
      << ", must be " << want.nearest.t << " at " << want.nearest.dist;
}

// Splines of all orders, scales and knot vectors; one in eight with coordinates and weights that no
// caller should pass.
class Splines {
 public:
  // Makes the next spline and calls check(view, p) for a few points.
  template <class Check>
  void Next(Check&& check) {
    hostile_ = Chance(8);
    size_ = std::pow(10.0, Integer(-8, 9));
    const bool rational = Chance(2);
    const int order = Chance(3) ? Integer(1, rational ? 14 : 21) : Integer(2, 5);
    const int count = order + Integer(0, Chance(4) ? 150 : 15);
    Numbers points, knots;
    for (int i = 0; i < count; ++i) {
      points.insert(points.end(), {Chance(3) ? i * size_ / 5 : Coordinate(), Coordinate()});
      if (Chance(12) && i > 0) std::copy_n(points.end() - (rational ? 5 : 4), 2, points.end() - 2);
      if (rational) points.push_back(hostile_ && Chance(4) ? Number(-1, 1) : Number(.2, 3));
    }
    MakeKnots(order, count, knots);
    const Owned cv = MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, points, knots);
    for (int n = 0; n < 4; ++n) {
      const Vec2 p = PointNear(*cv, n);
      if (rational) {
        auto& b = cv.block<KurvoRBSpline>();
        check(SplineView<4>{b.order, b.count, b.points, b.knots}, p);
      } else {
        auto& b = cv.block<KurvoBSpline>();
        check(SplineView<3>{b.order, b.count, b.points, b.knots}, p);
      }
    }
  }
  std::string Trace() const { return random_.Trace(); }

 private:
  int Integer(int low, int high) { return static_cast<int>(random_.Uniform(low, high + 1 - 1e-9)); }
  bool Chance(int n) { return Integer(1, n) == 1; }
  double Number(double low, double high) {
    if (hostile_ && Chance(40)) return Chance(2) ? kNaN : Chance(2) ? kInfinity : 1e308;
    return random_.Uniform(low, high);
  }
  double Coordinate() {
    if (Chance(10)) return size_ * Integer(-1, 1);
    return Number(-size_, size_);
  }
  // Clamped or not, with repeated knots up to full multiplicity.
  void MakeKnots(int order, int count, Numbers& knots) {
    const bool clamped = !Chance(3), repeated = Chance(3);
    const double step = std::pow(10.0, Integer(-3, 1));
    double u = Chance(2) ? 0 : Number(-5, 5);
    for (int i = 0; i < order + count; ++i) {
      const bool inner = i >= order && i <= count;
      if ((inner || !clamped) && !(repeated && Chance(2))) u += step * Number(.1, 1);
      knots.push_back(u);
    }
  }
  Vec2 PointNear(const Curve& cv, int n) {
    if (n == 0) return {Coordinate(), Coordinate()};
    if (n == 1) return {9 * Coordinate(), 9 * Coordinate()};
    Globals g;
    Coord q;
    const auto [start, length] = Domain(cv);
    KurvocvPosition(&cv, start + random_.Uniform(0, 1) * length, q, &g);
    return n == 2 ? Planar(q) : Planar(q) + Vec2{.05 * Coordinate(), .05 * Coordinate()};
  }

  Random random_;
  bool hostile_ = false;
  double size_ = 1;
};

TEST(FootOnSpline, IsThatOfAnExaminationOfEverySpan) {
  Splines splines;
  SCOPED_TRACE(splines.Trace());
  for (int n = 0; n < 4000 && !testing::Test::HasFailure(); ++n) {
    SCOPED_TRACE(n);
    splines.Next([](const auto& view, Vec2 p) { Compare(view, p, 1e-6); });
  }
}

// Many spans at the same distance, up to the last bit: the first one wins.
TEST(FootOnSpline, OfEqualSpansIsOnTheFirst) {
  Numbers points, knots = {0};
  for (int i = 0; i < 200; ++i) {
    points.insert(points.end(), {i % 2 ? -1.0 : 1.0, i % 4 < 2 ? -1.0 : 1.0});
    knots.push_back(i);
  }
  knots.push_back(199);
  const Owned polyline = MakeFreeForm(CV_BSPLINE, points, knots);
  const auto& b = polyline.block<KurvoBSpline>();
  const SplineView<3> view{b.order, b.count, b.points, b.knots};
  for (const Vec2 p : {Vec2{0, 0}, Vec2{0, 3}, Vec2{-2, -2}, Vec2{.25, .25}})
    Compare(view, p, 1e-6);
  EXPECT_EQ(kurvo::NearestOnSpline(view, {0, 0}, 1e-6).t, 1.5);
}

}  // namespace
}  // namespace kurvo_test
