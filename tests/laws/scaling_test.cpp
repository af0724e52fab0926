// Laws of two curves, and of curves at another scale: a power of two changes exponents only, so
// that every length comes out scaled to the bit and every parameter the same, when the tolerance is
// scaled too. KURVO_TEST_CASES sets the number of cases of each.
#include <string>

#include "laws/cases.h"
#include "relate/intersection.h"

using namespace kurvo_test;

namespace {

constexpr int kCases = 300;
constexpr int kMaxDegree = 5;
constexpr Coord kUp = {0, 0, 1};
// Downwards: epsilon is an angle too, below which lines are parallel, and a larger one would count.
constexpr int kSmallestExponent = -30;  // of the scale

struct Scale {
  explicit Scale(Random& random)
      : factor(std::ldexp(1.0, static_cast<int>(random.Uniform(kSmallestExponent, 1)))),
        g(1e-6 * factor) {}
  double factor;
  Globals g;
};

template <class Law>
void ForRandomScales(Law&& law) {
  Rounds(Cases(kCases), [&](Random& random, int i) {
    Scale scale(random);
    SCOPED_TRACE("scale " + std::to_string(scale.factor));
    law(i, random, scale.factor, scale.g);
  });
}

void ExpectScaled(const Chain& scaled, const Chain& original, double factor) {
  ASSERT_EQ(scaled.count(), original.count());
  for (int i = 0; i < scaled.count(); ++i)
    EXPECT_TRUE(IsCurve(scaled[i], *Scaled(original[i], factor))) << "piece " << i;
}

void ExpectScaled(const Point& scaled, const Point& original, double factor, const char* what) {
  for (std::size_t i = 0; i < 2; ++i) EXPECT_EQ(scaled[i], original[i] * factor) << what;
}

TEST(Laws, ScalingScalesPointsAndDerivativesExactly) {
  ForRandomScales([](int i, Random& random, double factor, GlobalVar& h) {
    const Owned cv = RandomCurve(random, kAllTypes[i % 7], kMaxDegree),
                scaled = Scaled(*cv, factor);
    const auto [start, length] = Domain(*cv);
    const double t = start + length * random.Uniform(-.1, 1.1);
    Globals g;
    Point p{}, q{};
    KurvocvPosition(cv.get(), t, p, &g);
    KurvocvPosition(scaled.get(), t, q, &h);
    ExpectScaled(q, p, factor, "point");
    for (int n = 1; n <= 2; ++n) {
      Point d{}, e{};
      KurvocvNDeriv(cv.get(), t, d, n, &g);
      KurvocvNDeriv(scaled.get(), t, e, n, &h);
      ExpectScaled(e, d, factor, "derivative");
    }
    Point k{}, l{};
    KurvocvCurvature(cv.get(), t, k, &g);
    KurvocvCurvature(scaled.get(), t, l, &h);
    ExpectScaled(l, k, 1 / factor, "curvature");
    KurvocvStartPoint(cv.get(), p, &g);
    KurvocvStartPoint(scaled.get(), q, &h);
    ExpectScaled(q, p, factor, "start");
    EXPECT_EQ(KurvoErrGet(&g), KurvoErrGet(&h));
  });
}

TEST(Laws, ScalingScalesDivisionAndExtensionExactly) {
  ForRandomScales([](int i, Random& random, double factor, GlobalVar& h) {
    const Owned cv = RandomCurve(random, kAllTypes[i % 7], kMaxDegree),
                scaled = Scaled(*cv, factor);
    Globals g;
    // Epsilon is a tolerance of parameters too: cuts keep away from all ends and joints.
    double cuts[] = {RandomCut(random, .05, .4), RandomCut(random, .5, .95)};
    const CvParam params = {2, cuts};
    Chain pieces, scaled_pieces;
    KurvocvNDivide(cv.get(), &params, pieces.get(), &g);
    KurvocvNDivide(scaled.get(), &params, scaled_pieces.get(), &h);
    ExpectScaled(scaled_pieces, pieces, factor);
    const double a = RandomCut(random, -.3, .3), b = RandomCut(random, -.3, .3);
    Owned longer, scaled_longer;
    KurvocvExtendCurve(cv.get(), a, b, longer.get(), &g);
    KurvocvExtendCurve(scaled.get(), a, b, scaled_longer.get(), &h);
    ASSERT_EQ(longer->data == nullptr, scaled_longer->data == nullptr);
    SCOPED_TRACE("extension by " + std::to_string(a) + " and " + std::to_string(b));
    EXPECT_TRUE(!longer->data || IsCurve(*scaled_longer, *Scaled(*longer, factor)));
    EXPECT_EQ(KurvoErrGet(&g), KurvoErrGet(&h));
  });
}

// Legs are parallel within epsilon as an angle, so that it stays here. Curves grow, and have no
// cusps, where epsilon would end the halving.
TEST(Laws, ScalingScalesOffsetsExactly) {
  ForRandomScales([](int i, Random& random, double factor, GlobalVar&) {
    const Owned cv = GentleCurve(random, kAllTypes[i % 6]), scaled = Scaled(*cv, 1 / factor);
    const double distance = random.Uniform(-kGentle, kGentle),
                 tolerance = std::exp2(random.Uniform(-16, -4));
    Globals g, h;
    Chain pieces, large;
    KurvocvOffsetCurve(cv.get(), kUp, distance, tolerance, pieces.get(), &g);
    KurvocvOffsetCurve(scaled.get(), kUp, distance / factor, tolerance / factor, large.get(), &h);
    EXPECT_GT(pieces.count(), 0);
    ExpectScaled(large, pieces, 1 / factor);
    EXPECT_EQ(KurvoErrGet(&g), KurvoErrGet(&h));
  });
}

TEST(Laws, ScalingLeavesIntersectionsTheSame) {
  ForRandomScales([](int i, Random& random, double factor, GlobalVar& h) {
    const Owned a = RandomCurve(random, kAllTypes[i % 7], kMaxDegree),
                b = RandomCurve(random, kAllTypes[i / 7 % 7], kMaxDegree), c = Scaled(*a, factor),
                d = Scaled(*b, factor);
    const int mode = static_cast<int>(random.Uniform(0, 4));
    Globals g;
    const Answer large = Intersect(*a, *b, mode, g), small = Intersect(*c, *d, mode, h);
    EXPECT_EQ(small.result, large.result);
    ASSERT_EQ(small.hits.size(), large.hits.size());
    for (std::size_t j = 0; j < small.hits.size(); ++j) {
      EXPECT_EQ(small.hits[j].a, large.hits[j].a);
      EXPECT_EQ(small.hits[j].b, large.hits[j].b);
    }
  });
}

TEST(Laws, ScalingScalesDistancesExactly) {
  ForRandomScales([](int i, Random& random, double factor, GlobalVar& h) {
    const Owned a = RandomCurve(random, kAllTypes[i % 7], kMaxDegree);
    Owned b = RandomCurve(random, kAllTypes[i / 7 % 7], kMaxDegree);
    const double by[] = {random.Uniform(-15, 15), random.Uniform(-15, 15), 0};
    Globals g;
    KurvocvMove(b.get(), by, &g);
    const Owned c = Scaled(*a, factor), d = Scaled(*b, factor);
    double s[2] = {}, t[2] = {};
    const double large = KurvocvDistCurve(a.get(), b.get(), &s[0], &t[0], &g),
                 small = KurvocvDistCurve(c.get(), d.get(), &s[1], &t[1], &h);
    EXPECT_EQ(large * factor, small);
    EXPECT_EQ(s[0], s[1]);
    EXPECT_EQ(t[0], t[1]);
  });
}

// Of each common point, where it is; the two lists may have another order.
TEST(Laws, IntersectionIsSymmetric) {
  constexpr int kSwapped[] = {0, 2, 1, 3};
  Rounds(Cases(kCases), [&](Random& random, int i) {
    const Owned a = RandomCurve(random, kAllTypes[i % 7], kMaxDegree),
                b = RandomCurve(random, kAllTypes[i / 7 % 7], kMaxDegree);
    const auto mode = static_cast<std::size_t>(random.Uniform(0, 4));
    SCOPED_TRACE(testing::Message() << a->type << " and " << b->type << ", mode " << mode);
    Globals g;
    const Answer one = Intersect(*a, *b, static_cast<int>(mode), g);
    Answer other = Intersect(*b, *a, kSwapped[mode], g);
    EXPECT_EQ(one.result, other.result);
    ASSERT_EQ(one.hits.size(), other.hits.size());
    for (const Hit& hit : one.hits) {
      const auto same = std::find_if(other.hits.begin(), other.hits.end(), [&](const Hit& h) {
        return std::fabs(h.b - hit.a) < 1e-7 && std::fabs(h.a - hit.b) < 1e-7;
      });
      EXPECT_NE(same, other.hits.end()) << hit.a << " and " << hit.b;
      if (same != other.hits.end()) other.hits.erase(same);
    }
  });
}

}  // namespace
