// B-splines through points: whether they pass, where, and what is refused.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "query/reference.h"

namespace kurvo_test {
namespace {

using Points = std::vector<Point>;

std::size_t At(int i) { return static_cast<std::size_t>(i); }

struct Fit {
  Globals g;
  Owned curve;

  Fit(const Points& points, int32_t order, double eps = 1e-6) : g(eps) {
    KurvocvGenBspl(points.front(), static_cast<int32_t>(points.size()), order, curve.get(), &g);
  }
  const KurvoBSpline& spline() const { return curve.block<KurvoBSpline>(); }
};

// The length of the polygon up to each point, as a share of the whole.
std::vector<long double> Shares(const Points& points) {
  std::vector<long double> t{0};
  for (std::size_t i = 1; i < points.size(); ++i)
    t.push_back(t.back() + std::hypot(L(points[i][0]) - L(points[i - 1][0]),
                                      L(points[i][1]) - L(points[i - 1][1])));
  const long double whole = t.back();
  for (long double& share : t) share /= whole;
  return t;
}

std::vector<long double> Even(const Points& points) {
  std::vector<long double> t;
  for (std::size_t i = 0; i < points.size(); ++i)
    t.push_back(static_cast<long double>(i) / static_cast<long double>(points.size() - 1));
  return t;
}

double Size(const Points& points) {
  double size = 0;
  for (const Point& p : points) size = std::max({size, std::fabs(p[0]), std::fabs(p[1])});
  return size;
}

// Everything that is promised of the record, and that it is at each point at its parameter t.
void ExpectPasses(const Fit& fit, const Points& points, int order,
                  const std::vector<long double>& t, double tolerance, const std::string& name) {
  SCOPED_TRACE(name + " order " + std::to_string(order));
  ASSERT_EQ(KurvoErrGet(&fit.g), 0);
  ASSERT_EQ(fit.curve->type, CV_BSPLINE);
  const KurvoBSpline& spline = fit.spline();
  const int count = static_cast<int>(points.size()), degree = order - 1;
  ASSERT_EQ(spline.order, order);
  ASSERT_EQ(spline.count, count);
  for (int i = 0; i < order; ++i) {
    EXPECT_EQ(spline.knots[i], 0);
    EXPECT_EQ(spline.knots[count + i], 1);
  }
  for (int i = order; i < count; ++i) {
    long double mean = 0;
    for (int j = i - degree; j < i; ++j) mean += t[At(j)] / degree;
    EXPECT_NEAR(spline.knots[i], static_cast<double>(mean), 1e-13) << "knot " << i;
    EXPECT_LE(spline.knots[i - 1], spline.knots[i]);
  }
  for (int i = 0; i < count; ++i) EXPECT_EQ(spline.points[i][2], 0);
  const auto first = At(0), last = At(count - 1);
  for (const std::size_t c : {first, first + 1}) {
    EXPECT_EQ(spline.points[0][c], points[first][c]);
    EXPECT_EQ(spline.points[count - 1][c], points[last][c]);
  }
  const Reference reference(*fit.curve);
  for (std::size_t i = 0; i < points.size(); ++i)
    ASSERT_GE(tolerance, reference.DistanceAt(t[i], points[i])) << "point " << i;
}

// The first inner knot.
long double Mean(const std::vector<long double>& t, int order) {
  long double sum = 0;
  for (int i = 1; i < order; ++i) sum += t[At(i)];
  return sum / (order - 1);
}

double LargestControlCoordinate(const Fit& fit) {
  double largest = 0;
  for (int i = 0; i < fit.spline().count; ++i)
    for (const std::size_t c : {0U, 1U})
      largest = std::max(largest, std::fabs(fit.spline().points[i][c]));
  return largest;
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
    for (const int count : {order, order + 1, order + 2, 2 * order, 3 * order + 5, 200}) {
      const Points points = Walk(random, count, 0.5, 2);
      const Fit fit(points, order);
      ExpectPasses(fit, points, order, Shares(points), 1e-12 * Size(points) * order * order,
                   "walk of " + std::to_string(count));
    }
}

TEST(GenBspl, IsWhereThePositionIsAsked) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 60, 0.5, 2);
  for (const int order : {2, 3, 4, 7}) {
    Fit fit(points, order);
    const auto t = Shares(points);
    for (std::size_t i = 0; i < points.size(); ++i) {
      Point p;
      KurvocvPosition(fit.curve.get(), static_cast<double>(t[i]), p, &fit.g);
      EXPECT_NEAR(p[0], points[i][0], 1e-10);
      EXPECT_NEAR(p[1], points[i][1], 1e-10);
    }
  }
}

TEST(GenBspl, HoldsForBadlySpacedPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const double ratio : {1e3, 1e6, 1e9}) {
    for (const int order : {3, 4, 6}) {
      const Points points = Walk(random, 120, 1 / ratio, 1);
      const Fit fit(points, order, 1e-12);
      // Sharp turns within a tiny leg may make polynomials of degree 5 swing too far.
      const bool even =
          order > 4 && std::fabs(fit.spline().knots[order] -
                                 static_cast<double>(Mean(Even(points), order))) < 1e-13;
      ExpectPasses(fit, points, order, even ? Even(points) : Shares(points),
                   1e-14 * order * LargestControlCoordinate(fit), "ratio " + std::to_string(ratio));
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
}

TEST(GenBspl, TakesChordLengthsDownTo2ToTheMinus44OfThePolygon) {
  for (const double share : {4e-14, 8e-14}) {
    const Points points = {{0, 0, 0}, {1e-5, 0, 0}, {1e-5 / share, 0, 0}};
    const double wanted = share > 0x1p-44 ? share : .5;
    EXPECT_NEAR(Fit(points, 2).spline().knots[2], wanted, 1e-10 * wanted) << share;
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
      return LargestControlCoordinate(Fit(points, order, 1e-12)) / Size(points);
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

TEST(GenBspl, OfOrderTwoIsThePolygon) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 50, 1e-3, 10);
  const Fit fit(points, 2);
  for (int i = 0; i < 50; ++i)
    for (const std::size_t c : {0U, 1U}) EXPECT_EQ(fit.spline().points[i][c], points[At(i)][c]);
}

TEST(GenBspl, ThroughPointsOfALineIsStraight) {
  Random random;
  SCOPED_TRACE(random.Trace());
  Points points;
  double way = 0;
  for (int i = 0; i < 80; ++i, way += random.Uniform(0.01, 3)) points.push_back({way, 2 * way, 0});
  for (const int order : {2, 3, 4, 9}) {
    Fit fit(points, order);
    EXPECT_EQ(KurvocvIsLine(fit.curve.get(), &fit.g), KURVO_SHAPE_STRAIGHT) << order;
    for (int i = 0; i < 80; ++i) {
      const double* p = fit.spline().points[i];
      EXPECT_NEAR(p[1], 2 * p[0], 1e-12 * way) << order;
    }
  }
}

TEST(GenBspl, ScalesWithItsPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 40, 0.1, 2);
  const Fit unit(points, 4);
  struct {
    int exponent;
    double epsilon;
  } const rows[] = {{20, 1e-6}, {990, 1e-6}, {1015, 1e-6}, {-700, 1e-250}};
  for (const auto& row : rows) {
    Points scaled = points;
    for (Point& p : scaled)
      for (const std::size_t c : {0U, 1U}) p[c] = std::ldexp(p[c], row.exponent);
    const Fit fit(scaled, 4, row.epsilon);
    ASSERT_EQ(KurvoErrGet(&fit.g), 0) << row.exponent;
    for (int i = 0; i < 40; ++i) {
      const auto j = At(i);
      EXPECT_EQ(fit.spline().knots[j], unit.spline().knots[j]);
      for (const std::size_t c : {0U, 1U})
        EXPECT_EQ(fit.spline().points[j][c], std::ldexp(unit.spline().points[j][c], row.exponent));
    }
  }
}

TEST(GenBspl, RunsBackwardThroughReversedPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 40, 0.1, 2);
  const Points back(points.rbegin(), points.rend());
  for (const int order : {3, 4, 5}) {
    const Fit there(points, order), again(back, order);
    for (int i = 0; i < 40; ++i)
      for (const std::size_t c : {0U, 1U})
        EXPECT_NEAR(there.spline().points[i][c], again.spline().points[39 - i][c], 1e-11) << order;
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
      const Reference reference(*fit.curve);
      for (int i = 0; i < count; ++i)
        for (const std::size_t c : {0U, 1U})
          EXPECT_GE(1e8 * Size(points), std::fabs(fit.spline().points[i][c])) << order;
      const auto shares = Shares(points), even = Even(points);
      long double off_shares = 0, off_even = 0;
      for (std::size_t i = 0; i < points.size(); ++i) {
        off_shares = std::max(off_shares, reference.DistanceAt(shares[i], points[i]));
        off_even = std::max(off_even, reference.DistanceAt(even[i], points[i]));
      }
      EXPECT_GE(1e-6 * Size(points), std::min(off_shares, off_even)) << order << ' ' << count;
    }
  }
  const double huge = 1.7e308;
  const Points zigzag = {{-huge, 0, 0}, {huge, 1, 0}, {-huge, 2, 0}, {huge, 3, 0}, {0, huge, 0}};
  const Fit fit(zigzag, 4);  // the control points would be larger than any double
  EXPECT_EQ(KurvoErrGet(&fit.g), KURVO_ERR_FIT_POINTS);
  EXPECT_EQ(fit.curve->data, nullptr);
}

TEST(GenBspl, TakesManyPoints) {
  Random random;
  SCOPED_TRACE(random.Trace());
  const Points points = Walk(random, 20000, 0.5, 2);
  const Fit fit(points, 4);
  const auto t = Shares(points);
  ASSERT_EQ(KurvoErrGet(&fit.g), 0);
  const Reference reference(*fit.curve);
  for (std::size_t i = 0; i < points.size(); i += 199)
    ASSERT_GE(1e-10 * Size(points), reference.DistanceAt(t[i], points[i])) << i;
}

}  // namespace
}  // namespace kurvo_test
