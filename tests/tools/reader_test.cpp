// Drawings read from files: how curves meet, and arcs.
#include "svg/reader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

#include "geometry/curve_ask.h"
#include "geometry/elliptical_arc.h"
#include "support.h"

namespace kurvo::tools {
namespace {

// Consecutive curves share their end points to the last bit.
TEST(ReadDrawing, CurvesMeetEndToStart) {
  Context context;
  std::vector<std::string> files = DrawingsIn(KURVO_SAMPLES);
  files.push_back(KURVO_TEST_DATA "/features.svg");
  for (const std::string& path : files) {
    const Drawing drawing = ReadDrawing(context, path);
    EXPECT_GE(drawing.shapes.size(), 5u) << path;
    ForEachOutline(drawing, [&](const Outline& outline, const std::string& label) {
      const std::size_t count = outline.curves.size();
      for (std::size_t i = 0; i < count; ++i) {
        const std::string what = path + " " + label + " " + std::to_string(i);
        if (i + 1 == count && !outline.closed) continue;
        const Point end = EndOf(context, outline.curves[i]);
        const Point next = StartOf(context, outline.curves[(i + 1) % count]);
        EXPECT_TRUE(next.x == end.x && next.y == end.y) << what << " leaves a gap";
      }
    });
  }
}

// ---- arcs from end points to centres, and their exact rational form

constexpr double kPi = std::numbers::pi;

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

// A point of the quadratic rational Bezier curve between two angles, in Bernstein form.
Point RationalPoint(const EllipticalArc& arc, double from, double to, double t) {
  const MiddleControl middle = RationalMiddle(arc, from, to);
  const double b0 = (1 - t) * (1 - t), b1 = 2 * t * (1 - t) * middle.weight, b2 = t * t;
  return 1 / (b0 + b1 + b2) * (b0 * arc.At(from) + b1 * middle.point + b2 * arc.At(to));
}

// Sweeps of either sense below and above half a turn: the four arcs that the flags tell apart.
TEST(CentreForm, FindsThePlantedArc) {
  constexpr unsigned kSeed = 20240517;
  std::mt19937 random(kSeed);
  const auto draw = [&](double low, double high) {
    return std::uniform_real_distribution<double>(low, high)(random);
  };
  for (int i = 0; i < 2000; ++i) {
    // Sweeps near 0, a half and a full turn lose digits; the others keep all but a few.
    const double turn = i % 4 < 2 ? draw(0.05, kPi - 0.05) : draw(kPi + 0.05, 2 * kPi - 0.05);
    const Planted planted = {{draw(-100, 100), draw(-100, 100)},
                             std::pow(10, draw(-2, 3)),
                             std::pow(10, draw(-2, 3)),
                             draw(-400, 400),
                             draw(-kPi, kPi),
                             i % 2 == 0 ? turn : -turn};
    const EllipticalArc arc = CentreForm(planted.At(planted.start), planted.Endpoints());
    const double aspect = std::max(planted.rx / planted.ry, planted.ry / planted.rx);
    const double bound = 1e-13 * (100 + std::max(planted.rx, planted.ry)) * std::max(1.0, aspect);
    EXPECT_LE(Size(arc.centre - planted.centre), bound) << i << ", seed " << kSeed;
    for (const double s : {0.0, 0.3, 0.5, 1.0}) {
      const Point off =
          arc.At(arc.start_angle + s * arc.sweep) - planted.At(planted.start + s * planted.sweep);
      EXPECT_LE(Size(off), bound) << "at " << s << ", arc " << i << ", seed " << kSeed;
    }
    EXPECT_EQ(arc.sweep > 0, planted.sweep > 0) << i;
    // The rational form runs along the ellipse on this side of the chord, the angle growing.
    const double from = arc.start_angle, to = from + (arc.sweep > 0 ? 1 : -1) * draw(0.01, kPi / 2);
    double angle = from;
    for (const double t : {0.25, 0.5, 0.75, 1.0}) {
      const Point p = RationalPoint(arc, from, to, t) - arc.centre;
      const Point unit = {Dot(p, arc.u) / Dot(arc.u, arc.u), Dot(p, arc.v) / Dot(arc.v, arc.v)};
      EXPECT_NEAR(Size(unit), 1, bound / std::min(planted.rx, planted.ry))
          << "at " << t << ", arc " << i << ", seed " << kSeed;
      const double next = from + std::remainder(std::atan2(unit.y, unit.x) - from, 2 * kPi);
      EXPECT_GT((next - angle) * arc.sweep, 0) << "at " << t << ", arc " << i << ", seed " << kSeed;
      angle = next;
    }
  }
}

TEST(CentreForm, RadiiTooSmallAreScaledUpToHalfATurn) {
  // The ellipse with rx = 2 ry through (0, 0) and (20, 0) about their middle has rx = 10.
  for (const double rx : {0.5, 2.0, 9.999, 10.0, -2.0}) {
    const EllipticalArc arc = CentreForm({0, 0}, {rx, rx / 2, 0, true, true, {20, 0}});
    EXPECT_LE(Size(arc.centre - Point{10, 0}), 1e-14) << rx;
    EXPECT_NEAR(arc.sweep, kPi, 1e-14) << rx;
    EXPECT_LE(Size(arc.At(arc.start_angle + arc.sweep / 2) - Point{10, -5}), 1e-13) << rx;
  }
}

// Half circles in decimals, whose half chord rounds to just below the radius: the centre must not
// be off by the square root of that rounding, 1e-8.
TEST(CentreForm, HalfTurnsKeepTheirCentre) {
  for (const auto& [x, r] : {Point{0.1, 0.1}, {0.4, 0.1}, {0.5, 0.1}, {0.8, 0.1}, {0.9, 0.5}}) {
    const EllipticalArc arc = CentreForm({x, 0}, {r, r, 0, false, true, {x + 2 * r, 0}});
    EXPECT_LE(Size(arc.centre - Point{x + r, 0}), 1e-15) << x;
  }
}

}  // namespace
}  // namespace kurvo::tools
