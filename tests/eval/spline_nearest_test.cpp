// The nearest point of a B-spline against an examination of every span: the bounds that spare most
// spans must not change a bit of the result.
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

// Some spline of any order, scale and knot vector, one in eight with coordinates and weights that
// no caller should pass.
Owned RandomSpline(Random& random, double size) {
  const bool rational = Chance(random, .5), hostile = Chance(random, 1. / 8);
  const int order =
      Chance(random, 1. / 3) ? RandomInt(random, 1, rational ? 14 : 21) : RandomInt(random, 2, 5);
  const int spans = Chance(random, .25) ? RandomInt(random, 5, 60) : 0;
  Owned cv = RandomSplineOver(random, rational, order, -5,
                              5 * std::pow(10., RandomInt(random, 0, 3)), order, false, spans);
  const FreeForm form(*cv);
  for (int i = 0; i < form.count; ++i) {
    double* const p = form.point(i);
    for (int c = 0; c < 2; ++c) {
      p[c] *= size / kSize;
      if (Chance(random, .1)) p[c] = i > 0 ? p[c - form.stride] : size;
      if (hostile && Chance(random, 1. / 40)) p[c] = Chance(random, .5) ? kNaN : 1e308;
    }
    if (Chance(random, 1. / 3)) p[0] = i * size / 5;
    if (rational && hostile && Chance(random, .25)) p[3] = random.Uniform(-1, 1);
  }
  return cv;
}

void Compare(const Owned& cv, Vec2 p) {
  if (cv->type == CV_RBSPLINE) {
    const auto& b = cv.block<KurvoRBSpline>();
    Compare(SplineView<4>{b.order, b.count, b.points, b.knots}, p, 1e-6);
  } else {
    const auto& b = cv.block<KurvoBSpline>();
    Compare(SplineView<3>{b.order, b.count, b.points, b.knots}, p, 1e-6);
  }
}

TEST(FootOnSpline, IsThatOfAnExaminationOfEverySpan) {
  Rounds(1500, [&](Random& random, int) {
    const double size = std::pow(10.0, RandomInt(random, -8, 9));
    const Owned cv = RandomSpline(random, size);
    const auto near = [&](double by) {
      return Vec2{random.Uniform(-by, by), random.Uniform(-by, by)};
    };
    const Vec2 on = Planar(PointAt(*cv, random.Uniform(0, 1)).data());
    for (const Vec2 p : {near(size), near(9 * size), on, on + near(.05 * size)}) Compare(cv, p);
  });
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
  for (const Vec2 p : {Vec2{0, 0}, Vec2{0, 3}, Vec2{-2, -2}, Vec2{.25, .25}}) Compare(polyline, p);
  const auto& b = polyline.block<KurvoBSpline>();
  const SplineView<3> view{b.order, b.count, b.points, b.knots};
  EXPECT_EQ(kurvo::NearestOnSpline(view, {0, 0}, 1e-6).t, 1.5);
}

}  // namespace
}  // namespace kurvo_test
