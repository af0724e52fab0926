// The transform attribute: where lists take points.
#include "svg/transform_list.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace kurvo::tools {
namespace {

constexpr double kRounding = 1e-12;  // of a few operations on numbers up to 100

TEST(ParseTransformList, TakesPointsWhereTheyBelong) {
  const double root2 = std::sqrt(2.0);
  const double root3 = std::sqrt(3.0);
  const struct {
    const char* list;
    Point origin, unit_x, unit_y;  // where (0, 0), (1, 0) and (0, 1) go
  } rows[] = {
      {"", {0, 0}, {1, 0}, {0, 1}},
      {"matrix(1 2 3 4 5 6)", {5, 6}, {6, 8}, {8, 10}},
      {"matrix(1,2,3,4,5,6)", {5, 6}, {6, 8}, {8, 10}},
      {" translate ( 10 , -5 ) ", {10, -5}, {11, -5}, {10, -4}},
      {"translate(10-5)", {10, -5}, {11, -5}, {10, -4}},
      {"translate(7)", {7, 0}, {8, 0}, {7, 1}},
      {"scale(2)", {0, 0}, {2, 0}, {0, 2}},
      {"scale(2,-3)", {0, 0}, {2, 0}, {0, -3}},
      {"rotate(90)", {0, 0}, {0, 1}, {-1, 0}},
      {"rotate(-450)", {0, 0}, {0, -1}, {1, 0}},
      {"rotate(30)", {0, 0}, {root3 / 2, 0.5}, {-0.5, root3 / 2}},
      {"rotate(90 2 3)", {5, 1}, {5, 2}, {4, 1}},
      {"rotate(45,1,0)", {1 - root2 / 2, -root2 / 2}, {1, 0}, {1 - root2, 0}},
      {"skewX(45)", {0, 0}, {1, 0}, {1, 1}},
      {"skewY(-45)", {0, 0}, {1, -1}, {0, 1}},
      // The last one is applied first.
      {"translate(10 20) scale(2)", {10, 20}, {12, 20}, {10, 22}},
      {"scale(2) translate(10 20)", {20, 40}, {22, 40}, {20, 42}},
      {"translate(1,0),rotate(90)scale(2 3)", {1, 0}, {1, 2}, {-2, 0}},
      {"rotate(20) rotate(25)\n,rotate(-45)", {0, 0}, {1, 0}, {0, 1}},
  };
  for (const auto& row : rows) {
    const Affine map = ParseTransformList("transform", row.list);
    const auto expect = [&](Point from, Point to) {
      const Point got = map.Apply(from);
      EXPECT_NEAR(got.x, to.x, kRounding) << row.list << " of " << from.x << ", " << from.y;
      EXPECT_NEAR(got.y, to.y, kRounding) << row.list << " of " << from.x << ", " << from.y;
    };
    expect({0, 0}, row.origin);
    expect({1, 0}, row.unit_x);
    expect({0, 1}, row.unit_y);
  }
}

TEST(ParseTransformList, QuarterTurnsKeepRoundNumbers) {
  const Affine map = ParseTransformList("transform", "rotate(90) rotate(180) rotate(-90)");
  EXPECT_EQ(map.Apply({3.25, 7}).x, -3.25);
  EXPECT_EQ(map.Apply({3.25, 7}).y, -7);
}

}  // namespace
}  // namespace kurvo::tools
