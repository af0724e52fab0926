// Arcs from end points to centres, and their exact rational form.
#include "geometry/elliptical_arc.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace kurvo::tools {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr unsigned kSeed = 20240517;

// An arc whose centre, radii and angles are known first.
struct Planted {
  Point centre;
  double rx, ry, rotation, start, sweep;

  Point At(double angle) const {
    const double phi = rotation * kPi / 180;
    const double x = rx * std::cos(angle);
    const double y = ry * std::sin(angle);
    return {centre.x + std::cos(phi) * x - std::sin(phi) * y,
            centre.y + std::sin(phi) * x + std::cos(phi) * y};
  }
  EndpointArc Endpoints() const {
    return {rx, ry, rotation, std::fabs(sweep) > kPi, sweep > 0, At(start + sweep)};
  }
};

void ExpectNear(Point got, Point want, double bound, const char* what, int i) {
  EXPECT_NEAR(got.x, want.x, bound) << what << ", arc " << i << ", seed " << kSeed;
  EXPECT_NEAR(got.y, want.y, bound) << what << ", arc " << i << ", seed " << kSeed;
}

TEST(CentreForm, FindsThePlantedArc) {
  std::mt19937 random(kSeed);
  const auto draw = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  for (int i = 0; i < 2000; ++i) {
    // Sweeps near 0, a half and a full turn lose digits; the others keep all but a few.
    const double sign = i % 2 == 0 ? 1 : -1;
    const double turn = i % 4 < 2 ? draw(0.05, kPi - 0.05) : draw(kPi + 0.05, 2 * kPi - 0.05);
    const Planted planted = {{draw(-100, 100), draw(-100, 100)},
                             std::pow(10, draw(-2, 3)),
                             std::pow(10, draw(-2, 3)),
                             draw(-400, 400),
                             draw(-kPi, kPi),
                             sign * turn};
    const EllipticalArc arc = CentreForm(planted.At(planted.start), planted.Endpoints());
    const double scale = 100 + std::max(planted.rx, planted.ry);
    const double aspect = std::max(planted.rx / planted.ry, planted.ry / planted.rx);
    const double bound = 1e-13 * scale * std::max(1.0, aspect);
    ExpectNear(arc.centre, planted.centre, bound, "centre", i);
    for (const double s : {0.0, 0.3, 0.5, 1.0}) {
      ExpectNear(arc.At(arc.start_angle + s * arc.sweep),
                 planted.At(planted.start + s * planted.sweep), bound, "point", i);
    }
    EXPECT_EQ(arc.sweep > 0, planted.sweep > 0) << i;
  }
}

// The four arcs between the same points, by their flags (the figure of SVG 1.1, section 8.3.8).
TEST(CentreForm, FlagsChooseAmongFourArcs) {
  const struct {
    bool large, positive;
    Point centre;
    double sweep;
  } rows[] = {
      {false, false, {0, 0}, -kPi / 2},
      {false, true, {10, 10}, kPi / 2},
      {true, false, {10, 10}, -3 * kPi / 2},
      {true, true, {0, 0}, 3 * kPi / 2},
  };
  for (const auto& row : rows) {
    const EllipticalArc arc = CentreForm({0, 10}, {10, 10, 0, row.large, row.positive, {10, 0}});
    ExpectNear(arc.centre, row.centre, 1e-14, "centre", 0);
    EXPECT_NEAR(arc.sweep, row.sweep, 1e-14) << row.large << row.positive;
  }
}

TEST(CentreForm, RadiiTooSmallAreScaledUpToHalfATurn) {
  // The ellipse with rx = 2 ry through (0, 0) and (20, 0) about their middle has rx = 10.
  for (const double rx : {0.5, 2.0, 9.999, 10.0, -2.0}) {
    const EllipticalArc arc = CentreForm({0, 0}, {rx, rx / 2, 0, true, true, {20, 0}});
    ExpectNear(arc.centre, {10, 0}, 1e-14, "centre", 0);
    EXPECT_NEAR(arc.sweep, kPi, 1e-14) << rx;
    ExpectNear(arc.At(arc.start_angle + arc.sweep / 2), {10, -5}, 1e-13, "top", 0);
  }
}

// Half circles in decimals, whose half chord rounds to just below the radius: the centre must not
// be off by the square root of that rounding, 1e-8.
TEST(CentreForm, HalfTurnsKeepTheirCentre) {
  for (const double x : {0.1, 0.4, 0.5, 0.8}) {
    const Point to = {x + 0.2, 0};
    const EllipticalArc arc = CentreForm({x, 0}, {0.1, 0.1, 0, false, true, to});
    ExpectNear(arc.centre, {x + 0.1, 0}, 1e-15, "centre", 0);
  }
  const EllipticalArc arc = CentreForm({0.9, 0}, {0.5, 0.5, 0, false, true, {1.9, 0}});
  ExpectNear(arc.centre, {1.4, 0}, 1e-15, "centre", 0);
}

// A quadratic rational Bezier curve in Bernstein form, in more digits than the code has.
Point RationalPoint(Point p0, const MiddleControl& middle, Point p2, long double t) {
  const long double b0 = (1 - t) * (1 - t);
  const long double b1 = 2 * t * (1 - t) * middle.weight;
  const long double b2 = t * t;
  const long double w = b0 + b1 + b2;
  return {static_cast<double>((b0 * p0.x + b1 * middle.point.x + b2 * p2.x) / w),
          static_cast<double>((b0 * p0.y + b1 * middle.point.y + b2 * p2.y) / w)};
}

TEST(RationalMiddle, PutsEveryPointOnTheEllipse) {
  std::mt19937 random(kSeed);
  const auto draw = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  for (int i = 0; i < 500; ++i) {
    const EllipticalArc arc = {
        {draw(-5, 5), draw(-5, 5)}, {draw(1, 9), draw(-1, 1)}, {draw(-1, 1), draw(1, 9)}, 0, 0};
    const double from = draw(-kPi, kPi);
    const double to = from + (i % 2 == 0 ? 1 : -1) * draw(0.01, kPi / 2);
    const MiddleControl middle = RationalMiddle(arc, from, to);
    for (long double t = 0; t <= 1; t += 0.125L) {
      const Point p = RationalPoint(arc.At(from), middle, arc.At(to), t) - arc.centre;
      // p = a u + b v with a^2 + b^2 = 1.
      const double a = Cross(p, arc.v) / Cross(arc.u, arc.v);
      const double b = Cross(arc.u, p) / Cross(arc.u, arc.v);
      EXPECT_NEAR(a * a + b * b, 1, 1e-13) << "arc " << i << " at " << t << ", seed " << kSeed;
      // On this side of the chord: the curve and not its complement.
      EXPECT_GE(a * std::cos((from + to) / 2) + b * std::sin((from + to) / 2),
                std::cos((to - from) / 2) - 1e-13)
          << "arc " << i << " at " << t << ", seed " << kSeed;
    }
  }
}

}  // namespace
}  // namespace kurvo::tools
