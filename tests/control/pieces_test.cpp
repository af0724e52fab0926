// B-splines split into their Bezier pieces.
#include <gtest/gtest.h>

#include "control/bezier_pieces.h"
#include "support/generator.h"

namespace kurvo_test {
namespace {

struct RandomSpline {
  Owned curve;
  int order = 1;
  int spans = 1;                  // with a width
  std::vector<int> multiplicity;  // of each inner knot
};

// Knots anywhere, some repeated up to `order` times, the ends clamped or not.
RandomSpline MakeRandomSpline(Random& random, bool rational) {
  RandomSpline s;
  Numbers knots;
  s.order = static_cast<int>(random.Uniform(1, 8));
  double u = random.Uniform(-3, 3);
  const auto add_end = [&](bool clamped) {
    for (int i = 0; i < s.order; ++i, u += clamped ? 0 : random.Uniform(.01, 1)) knots.push_back(u);
  };
  add_end(random.Uniform(0, 1) < .5);
  u = knots.back();
  s.spans = static_cast<int>(random.Uniform(1, 6));
  for (int i = 1; i < s.spans; ++i) {
    u += random.Uniform(.01, 2);
    const bool once = random.Uniform(0, 1) < .5;
    s.multiplicity.push_back(once ? 1 : static_cast<int>(random.Uniform(1, s.order + 1)));
    knots.insert(knots.end(), static_cast<std::size_t>(s.multiplicity.back()), u);
  }
  u += random.Uniform(.01, 2);
  add_end(random.Uniform(0, 1) < .5);
  s.curve =
      MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE,
                   RandomPoints(random, static_cast<int>(knots.size()) - s.order, rational), knots);
  return s;
}

void ExpectJointsShared(const KurvoSegcv& c, const RandomSpline& s) {
  for (int i = 0; i + 1 < s.spans; ++i) {
    if (s.multiplicity[static_cast<std::size_t>(i)] == s.order) continue;
    const FreeForm left(c.curves[i]), right(c.curves[i + 1]);
    const double* end = left.points + (s.order - 1) * left.stride;
    EXPECT_TRUE(std::equal(end, end + left.stride, right.points));
  }
}

TEST(Pieces, FollowTheSplineInEveryParameter) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 400; ++round) {
    const bool rational = round % 2 == 1;
    const RandomSpline s = MakeRandomSpline(random, rational);
    Owned target(CV_SEGCV);
    Globals g;
    ASSERT_EQ(KurvocvConvert(s.curve.get(), target.get(), &g), KURVO_CONVERTED);
    const auto& c = target.block<KurvoSegcv>();
    ASSERT_EQ(c.count, s.spans);
    double sum = 0;
    for (int i = 0; i < c.count; ++i) {
      EXPECT_EQ(c.curves[i].type, rational ? CV_RBEZIER : CV_BEZIER);
      sum += c.widths[i];
    }
    EXPECT_EQ(sum, 1.0);
    ExpectJointsShared(c, s);
    for (int i = 0; i < 40; ++i) {
      const double f = random.Uniform(0, 1);
      EXPECT_LE(KurvoclDistPoint(PointAt(*target, f), PointAt(*s.curve, f)), 1e-12 * kSize)
          << "round " << round << " at " << f;
    }
  }
}

TEST(Pieces, KeepControlPointsThatAreTheirOwnToTheBit) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 20; ++round) {
    const Owned source = MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 10, true),
                                      {2, 2, 2, 3, 3, 3, 5, 5, 5, 6, 7, 7, 7});
    Owned target(CV_SEGCV);
    Globals g;
    ASSERT_EQ(KurvocvConvert(source.get(), target.get(), &g), KURVO_CONVERTED);
    const double* want = FreeForm(*source).points;
    const auto piece = [&](int i) { return FreeForm(target.block<KurvoSegcv>().curves[i]).points; };
    EXPECT_TRUE(std::equal(want, want + 12, piece(0)));
    EXPECT_TRUE(std::equal(want + 12, want + 24, piece(1)));
    EXPECT_TRUE(std::equal(want + 24, want + 28, piece(2)));
    EXPECT_TRUE(std::equal(want + 36, want + 40, piece(3) + 8));
  }
}

// Flat storage holds what the composite's records hold, over the source's own parameters.
TEST(Pieces, InFlatStorageEqualThoseOfTheComposite) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 50; ++round) {
    RandomSpline s = MakeRandomSpline(random, round % 2 == 1);
    Owned pieces(CV_SEGCV);
    Globals g;
    ASSERT_EQ(KurvocvConvert(s.curve.get(), pieces.get(), &g), KURVO_CONVERTED);
    const auto& c = pieces.block<KurvoSegcv>();
    const auto [start, length] = Domain(*s.curve);
    Owned whole = Make("c 3 2 (l 0 0 1 1)(c 4 .5 (b 0 0 1 1)(e))");
    auto& inner = *static_cast<KurvoSegcv*>(whole.block<KurvoSegcv>().curves[1].data);
    inner.curves[1] = s.curve.Release();
    const auto spans = kurvo::BezierSpans::Of(*whole, 4096);
    ASSERT_TRUE(spans.has_value());
    ASSERT_EQ(spans->size(), static_cast<std::size_t>(s.spans) + 1);
    EXPECT_EQ((*spans)[0].start, 3);
    EXPECT_EQ((*spans)[0].width, 8);
    double before = start;
    for (int i = 0; i < s.spans; ++i) {
      const kurvo::BezierSpan& span = (*spans)[static_cast<std::size_t>(i) + 1];
      EXPECT_NEAR(span.start, 3 + 2 * (4 + .5 * before), 1e-12);
      EXPECT_NEAR(span.width, c.widths[i] * length, 1e-12);
      before += c.widths[i] * length;
      const FreeForm want(c.curves[i]);
      EXPECT_TRUE(std::equal(span.points, span.points + s.order * span.stride(), want.points));
    }
  }
  EXPECT_FALSE(kurvo::BezierSpans::Of(*Nested(65), 9).has_value());
  EXPECT_TRUE(kurvo::BezierSpans::Of(*Nested(64), 9).has_value());
  const Owned cubic = Make("b 0 0 1 1 2 1 3 0"), spline = Make("B 0 0 1 1 2 1 | 0 0 0 1 1 1");
  EXPECT_TRUE(kurvo::BezierSpans::Of(*cubic, 3).has_value());
  EXPECT_FALSE(kurvo::BezierSpans::Of(*cubic, 2).has_value());
  EXPECT_TRUE(kurvo::BezierSpans::Of(*spline, 2).has_value());
  EXPECT_FALSE(kurvo::BezierSpans::Of(*spline, 1).has_value());
}

TEST(Pieces, OfKnotsWithoutOrderAreSomeResult) {
  for (const Numbers& knots : {Numbers{0, 1, 0, 1, 0, 1, 0}, Numbers{5, 4, 3, 2, 1, 0, -1},
                               Numbers{kNaN, kNaN, 0, 1, kNaN, 2, 3},
                               Numbers{-kInfinity, -kInfinity, 0, 1, 2, kInfinity, kInfinity}}) {
    const Owned source = MakeFreeForm(CV_BSPLINE, {0, 0, 1, 0, 1, 1, 2, 1}, knots);
    for (const int32_t type : {CV_LINE, CV_BEZIER, CV_RBSPLINE, CV_SEGCV}) {
      Owned target(type);
      Globals g;
      KurvocvConvert(source.get(), target.get(), &g);
      EXPECT_EQ(KurvoErrGet(&g), 0);
    }
  }
}

}  // namespace
}  // namespace kurvo_test
