// Points, lines and boxes.
#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "support/basics.h"

namespace kurvo_test {
namespace {

TEST(ProjLine, FindsTheFootInSpace) {
  Globals g;
  Rounds(1000, [&](Random& random, int) {
    const Point start = random.Spatial(10), end = random.Spatial(10), p = random.Spatial(100);
    const double line[6] = {start[0], start[1], start[2], end[0], end[1], end[2]};
    Point foot, along, aside, from_start, cross;
    KurvoclProjLine(p, line, foot, &g);
    KurvoclSubVector(end, start, along);
    KurvoclSubVector(p, foot, aside);
    KurvoclSubVector(foot, start, from_start);
    KurvoclOuterProduct(from_start, along, cross);
    const double size = KurvoclVectorSize(along);
    EXPECT_NEAR(KurvoclInnerProduct(aside, along) / size, 0, 1e-12);
    EXPECT_NEAR(KurvoclVectorSize(cross) / size, 0, 1e-12);
  });
  const double short_line[6] = {1, 2, 3, 1 + 1e-7, 2, 3};
  Point foot;
  KurvoclProjLine(Point{7, 8, 9}, short_line, foot, &g);
  EXPECT_EQ(foot, (Point{1, 2, 3}));
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

TEST(OnLineSeg, Table) {
  // clang-format off
  const struct {
    const char* name;
    Point p;
    double segment[6];
    int on;
    std::optional<double> on_line;  // of the unbounded line, where it differs
    double t;
    int error;
  } rows[] = {
      {"middle", {1, 1, 0}, {0, 0, 0, 2, 2, 0}, 1, {}, .5, 0},
      {"start", {3, 4, 0}, {3, 4, 0, 9, 4, 0}, 1, {}, 0, 0},
      {"end", {9, 4, 0}, {3, 4, 0, 9, 4, 0}, 1, {}, 1, 0},
      {"beyond the end", {2, 0, 0}, {0, 0, 0, 1, 0, 0}, 0, 1, 2, 0},
      {"before the start", {-3, 0, 0}, {0, 0, 0, 1, 0, 0}, 0, 1, -3, 0},
      {"just beyond the end", {1.0000005, 0, 0}, {0, 0, 0, 1, 0, 0}, 1, {}, 1.0000005, 0},
      {"aside", {.25, 1e-3, 0}, {0, 0, 0, 1, 0, 0}, 0, {}, .25, 0},
      {"in space, seen from above", {1, 1, 1}, {0, 0, 0, 2, 2, 2}, 1, {}, .5, 0},
      {"its height counts for the foot", {1, 0, 3}, {0, 0, 0, 4, 0, 4}, 0, {}, .5, 0},
      {"its height counts for nothing else", {1, 0, 3}, {0, 0, 0, 2, 0, 0}, 1, {}, .5, 0},
      {"no length, at the point", {5, 6, 9}, {5, 6, 0, 5, 6, 0}, 1, {}, 0, KURVO_WARN_SHORT_VECTOR},
      {"no length, elsewhere", {5, 7, 0}, {5, 6, 0, 5, 6, 0}, 0, {}, 0, KURVO_WARN_SHORT_VECTOR},
      {"short", {5, 6, 0}, {5, 6, 0, 5 + 1e-7, 6, 0}, 1, {}, 0, KURVO_WARN_SHORT_VECTOR},
      {"upright", {5, 6, 3}, {5, 6, 0, 5, 6, 4}, 1, {}, .75, 0},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    double t = kNaN;
    EXPECT_EQ(KurvoclOnLineSeg(row.p, row.segment, &t, &g), row.on) << row.name;
    EXPECT_NEAR(t, row.t, 4 * kUlp) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
    KurvoErrReset(&g);
    EXPECT_EQ(KurvoclOnLine(row.p, row.segment, &g), row.on_line.value_or(row.on)) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
  }
}

TEST(IsLine, Table) {
  const struct {
    const char* name;
    Point p0, p1, p2;
    int line;
  } rows[] = {
      {"between", {0, 0, 0}, {1, 1, 0}, {2, 2, 0}, 1},
      {"beyond", {0, 0, 0}, {2, 0, 0}, {1, 0, 0}, 1},
      {"behind", {0, 0, 0}, {-1, 0, 0}, {1, 0, 0}, 0},
      {"aside", {0, 0, 0}, {1, 1e-3, 0}, {2, 0, 0}, 0},
      {"along the cut", {0, 0, 0}, {-1, 0, 0}, {-2, -0.0, 0}, 1},
      {"across the cut", {0, 0, 0}, {-1, 1e-7, 0}, {-2, -1e-7, 0}, 1},
      {"across the cut, other way", {0, 0, 0}, {-1, -1e-7, 0}, {-2, 1e-7, 0}, 1},
      {"near in length, wide in angle", {0, 0, 0}, {2e-6, .9e-6, 0}, {1, 0, 0}, 0},
      {"p0 and p1 the same", {0, 0, 0}, {0, 1e-7, 0}, {1, 0, 0}, 1},
      {"p1 and p2 the same", {0, 0, 0}, {3, 4, 0}, {3, 4, 0}, 1},
      {"p0 and p2 the same", {0, 0, 0}, {3, 4, 0}, {0, 0, 0}, 1},
      {"heights do not matter", {0, 0, 5}, {1, 1, -7}, {2, 2, 9}, 1},
  };
  for (const auto& row : rows) {
    Globals g;
    EXPECT_EQ(KurvoclIsLine(row.p0, row.p1, row.p2, &g), row.line) << row.name;
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.name;
    for (const double turn : {.7, 2.0, 3.1, 4.5}) {  // the answer turns with the points
      Point q[3];
      KurvofcRotateVector(row.p0, turn, q[0]);
      KurvofcRotateVector(row.p1, turn, q[1]);
      KurvofcRotateVector(row.p2, turn, q[2]);
      EXPECT_EQ(KurvoclIsLine(q[0], q[1], q[2], &g), row.line) << row.name << " turned " << turn;
    }
  }
}

struct BoxValue : std::array<double, 6> {
  operator const double*() const { return data(); }
};

BoxValue RandomBox(Random& random) {
  const Point a = random.Spatial(10);
  const Point b = random.Spatial(3);
  return {a[0], a[1], a[2], a[0] + std::fabs(b[0]), a[1] + std::fabs(b[1]), a[2]};
}

// The gap between two intervals, negative by their overlap.
double Gap(double min1, double max1, double min2, double max2) {
  return std::max(min2 - max1, min1 - max2);
}

TEST(DistBoxBox, IsTheLengthOfTheGapsInXAndY) {
  Globals g;
  Rounds(5000, [&](Random& random, int) {
    const BoxValue a = RandomBox(random);
    const BoxValue b = RandomBox(random);
    const double x = Gap(a[0], a[3], b[0], b[3]);
    const double y = Gap(a[1], a[4], b[1], b[4]);
    EXPECT_NEAR(KurvoclDistBoxBox(a, b), std::hypot(std::max(x, 0.0), std::max(y, 0.0)), 1e-14);
    EXPECT_NEAR(KurvoclDistBoxBox(b, a), KurvoclDistBoxBox(a, b), 1e-14);
    EXPECT_EQ(KurvoclBoxBox(a, b, &g), int{x <= 0 && y <= 0});
    const Point p = {b[0], b[1], 7};
    const double px = Gap(a[0], a[3], p[0], p[0]);
    const double py = Gap(a[1], a[4], p[1], p[1]);
    EXPECT_NEAR(KurvoclDistBoxPoint(a, p), std::hypot(std::max(px, 0.0), std::max(py, 0.0)), 1e-14);
    EXPECT_EQ(KurvoclBoxPoint(a, p, &g), int{px <= 0 && py <= 0});
  });
}

TEST(DistBoxPoint, HasNoToleranceAndIsZeroForNaN) {
  const BoxValue unit = {0, 0, 0, 1, 1, 0};
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{1, 1, 5}), 0);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{1 + 0x1p-30, .5, 0}), 0x1p-30);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{-3, -4, 0}), 5);
  EXPECT_EQ(KurvoclDistBoxPoint(unit, Point{kNaN, .5, 0}), 0);
  const BoxValue everything = {-kInfinity, -kInfinity, 0, kInfinity, kInfinity, 0};
  EXPECT_EQ(KurvoclDistBoxPoint(everything, Point{1, 1, 0}), 0);
}

}  // namespace
}  // namespace kurvo_test
