// B-splines through points: whether they pass, and where.
#include "laws/cases.h"

namespace kurvo_test {
namespace {

using Points = std::vector<Point>;
using Places = std::vector<Wide>;  // parameters

struct Fit {
  Globals g;
  Owned curve;

  Fit(const Points& points, int32_t order, double eps = 1e-6) : g(eps) {
    KurvocvGenBspl(points.front(), static_cast<int32_t>(points.size()), order, curve.get(), &g);
  }
  const KurvoBSpline& spline() const { return curve.block<KurvoBSpline>(); }
};

// The length of the polygon up to each point, as a share of the whole.
Places Shares(const Points& points) {
  Places t{0};
  for (std::size_t i = 1; i < points.size(); ++i)
    t.push_back(t.back() + std::hypot(L(points[i][0]) - L(points[i - 1][0]),
                                      L(points[i][1]) - L(points[i - 1][1])));
  const Wide whole = t.back();
  for (Wide& share : t) share /= whole;
  return t;
}

Places Even(const Points& points) {
  Places t;
  for (std::size_t i = 0; i < points.size(); ++i)
    t.push_back(static_cast<Wide>(i) / static_cast<Wide>(points.size() - 1));
  return t;
}

double Size(const Points& points) {
  double size = 0;
  for (const Point& p : points) size = std::max({size, std::fabs(p[0]), std::fabs(p[1])});
  return size;
}

// The mean of order - 1 parameters: inner knot number i.
Wide Mean(const Places& t, int order, int i) {
  Wide sum = 0;
  for (int j = i - order + 1; j < i; ++j) sum += t[static_cast<std::size_t>(j)];
  return sum / (order - 1);
}

double Miss(const Fit& fit, const Points& points, const Places& t) {
  const Oracle exact(*fit.curve);
  Wide miss = 0;
  for (std::size_t i = 0; i < points.size(); ++i)
    miss = std::max(miss, exact.DistanceAt(t[i], points[i]));
  return static_cast<double>(miss);
}

// Everything that is promised of the record, and that it is at each point at its parameter t.
void ExpectPasses(const Fit& fit, const Points& points, int order, const Places& t,
                  double tolerance, const std::string& name) {
  SCOPED_TRACE(name + " order " + std::to_string(order));
  ASSERT_EQ(KurvoErrGet(&fit.g), 0);
  ASSERT_EQ(fit.curve->type, CV_BSPLINE);
  const KurvoBSpline& spline = fit.spline();
  const int count = static_cast<int>(points.size());
  ASSERT_EQ(spline.order, order);
  ASSERT_EQ(spline.count, count);
  for (int i = 0; i < order; ++i) {
    EXPECT_EQ(spline.knots[i], 0);
    EXPECT_EQ(spline.knots[count + i], 1);
  }
  for (int i = order; i < count; ++i) {
    EXPECT_NEAR(spline.knots[i], static_cast<double>(Mean(t, order, i)), 1e-13) << "knot " << i;
    EXPECT_LE(spline.knots[i - 1], spline.knots[i]);
  }
  for (int i = 0; i < count; ++i) {
    EXPECT_EQ(spline.points[i][2], 0);
    for (std::size_t c = 0; c < 2 && (order == 2 || i % (count - 1) == 0); ++c)
      EXPECT_EQ(spline.points[i][c], points[static_cast<std::size_t>(i)][c]) << "point " << i;
  }
  EXPECT_GE(tolerance, Miss(fit, points, t));
}

Points Walk(Random& random, int count, double shortest, double longest) {
  Points points{random.Planar(5)};
  double angle = 0;
  for (int i = 1; i < count; ++i) {
    angle += random.Uniform(-1, 1);
    const double leg = shortest * std::pow(longest / shortest, random.Uniform(0, 1));
    const Point& p = points.back();
    points.push_back({p[0] + leg * std::cos(angle), p[1] + leg * std::sin(angle),
                      random.Uniform(-1, 1)});  // z is not used
  }
  return points;
}

TEST(GenBspl, PassesThroughAllPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int order : {2, 3, 4, 5, 6, 8, 12})
    for (const int count : {order, order + 1, order + 2, 2 * order, 200, order == 4 ? 20000 : 17}) {
      const Points points = Walk(random, count, 0.5, 2);
      ExpectPasses(Fit(points, order), points, order, Shares(points),
                   1e-12 * Size(points) * order * order, "walk of " + std::to_string(count));
    }
  for (const double ratio : {1e3, 1e6, 1e9}) {
    for (const int order : {3, 4, 6}) {
      const Points points = Walk(random, 120, 1 / ratio, 1);
      const Fit fit(points, order, 1e-12);
      // Sharp turns within a tiny leg may make polynomials of degree 5 swing too far.
      const auto mean = static_cast<double>(Mean(Even(points), order, order));
      const bool even = order > 4 && std::fabs(fit.spline().knots[order] - mean) < 1e-13;
      ExpectPasses(fit, points, order, even ? Even(points) : Shares(points),
                   1e-14 * order * kurvo_test::Size(*fit.curve), "ratio " + std::to_string(ratio));
    }
  }
  Points doubling{{0, 0, 0}};  // each leg twice as long as all before it
  for (int i = 0; i < 35; ++i) doubling.push_back({std::ldexp(1e-5, i), i % 2 == 0 ? 1e-5 : 0, 0});
  ExpectPasses(Fit(doubling, 4), doubling, 4, Shares(doubling), 1e-12 * Size(doubling), "doubling");
}

TEST(GenBspl, TakesEvenParametersWhereLegsAreTooUneven) {
  const Points points = {{0, 0, 0}, {1e-5, 1e-5, 0}, {1e12, 0, 0}, {2e12, 1e12, 0}, {0, 3e12, 0}};
  for (const int order : {3, 4, 5})
    ExpectPasses(Fit(points, order), points, order, Even(points), 1e-12 * Size(points), "uneven");
  for (const double share : {4e-14, 8e-14}) {  // the limit is 2^-44 of the polygon
    const Points three = {{0, 0, 0}, {1e-5, 0, 0}, {1e-5 / share, 0, 0}};
    const double wanted = share > 0x1p-44 ? share : .5;
    EXPECT_NEAR(Fit(three, 2).spline().knots[2], wanted, 1e-10 * wanted) << share;
  }
}

// A zigzag of `order` points that widens by a factor from point to point.
Points Widening(double factor, int order) {
  Points points;
  double x = 0;
  for (int i = 0; i < order; ++i) {
    x += std::pow(factor, i);
    points.push_back({x, i % 2 ? x / 2 : -x / 2, 0});
  }
  return points;
}

// The more uneven the legs, the larger the control points, up to 1e8 times the points; from there
// on the parameters are even, and the control points small again.
TEST(GenBspl, LetsControlPointsGrowTo1e8TimesThePoints) {
  for (const int order : {6, 8, 10}) {
    const auto growth = [&](double factor) {
      const Points points = Widening(factor, order);
      return kurvo_test::Size(*Fit(points, order, 1e-12).curve) / Size(points);
    };
    double low = 1.5, high = 40;  // chord lengths, even
    for (int i = 0; i < 40; ++i) {
      const double middle = (low + high) / 2;
      (growth(middle) > 1e3 || middle < 1.9 ? low : high) = middle;
    }
    EXPECT_GT(growth(low), .999e8) << "order " << order << ", factor " << low;
    EXPECT_LE(growth(low), 1e8) << "order " << order << ", factor " << low;
    EXPECT_LT(growth(high), 1e3) << "order " << order << ", factor " << high;
  }
}

TEST(GenBspl, ScalesWithItsPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 40, 0.1, 2);
  const Fit unit(points, 4);
  for (const auto& [exponent, epsilon] :
       {std::pair(20, 1e-6), {990, 1e-6}, {1015, 1e-6}, {-700, 1e-250}}) {
    Points scaled = points;
    for (Point& p : scaled)
      for (const std::size_t c : {0U, 1U}) p[c] = std::ldexp(p[c], exponent);
    const Fit fit(scaled, 4, epsilon);
    ASSERT_EQ(KurvoErrGet(&fit.g), 0) << exponent;
    EXPECT_EQ(Knots(*fit.curve), Knots(*unit.curve));
    Numbers want = ControlPoints(*unit.curve);
    for (double& x : want) x = std::ldexp(x, exponent);
    EXPECT_EQ(ControlPoints(*fit.curve), want) << exponent;
  }
}

// Where rounding leaves nothing of a curve through the points they are refused.
TEST(GenBspl, OfAnyOrderPassesOrRefuses) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int order : {20, 40, 64, 65, 150, 400}) {
    for (const int count : {order, 2 * order}) {
      const Points points = Walk(random, count, 0.5, 2);
      const Fit fit(points, order);
      if (KurvoErrGet(&fit.g) != 0) {
        EXPECT_EQ(KurvoErrGet(&fit.g), KURVO_ERR_FIT_POINTS);
        EXPECT_EQ(fit.curve->data, nullptr);
        EXPECT_GT(order, 20);
        continue;
      }
      EXPECT_GE(1e8 * Size(points), kurvo_test::Size(*fit.curve)) << order;
      EXPECT_GE(1e-6 * Size(points),
                std::min(Miss(fit, points, Shares(points)), Miss(fit, points, Even(points))))
          << order << ' ' << count;
    }
  }
  const double huge = 1.7e308;
  const Points zigzag = {{-huge, 0, 0}, {huge, 1, 0}, {-huge, 2, 0}, {huge, 3, 0}, {0, huge, 0}};
  const Fit fit(zigzag, 4);  // the control points would be larger than any double
  EXPECT_EQ(KurvoErrGet(&fit.g), KURVO_ERR_FIT_POINTS);
  EXPECT_EQ(fit.curve->data, nullptr);
}

}  // namespace
}  // namespace kurvo_test
