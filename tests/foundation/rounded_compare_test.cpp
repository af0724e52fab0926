// The comparison to six decimals: what it takes for equal, and that it is an order for anything.
#include "foundation/rounded_compare.h"

#include <gtest/gtest.h>

#include "support/basics.h"

namespace {

using kurvo::CompareRounded;
using kurvo_test::kInfinity;
using kurvo_test::kNaN;

TEST(CompareRounded, RoundsToMillionthsHalvesAwayFromZero) {
  // clang-format off
  const struct {
    double a, b;
    int order;
  } rows[] = {
      {1, 1, 0}, {1, 1 + .4e-6, 0}, {1, 1 + .6e-6, -1}, {.1 + .2, .3, 0}, {0, -0.0, 0}, {0, .4e-6, 0}, {0, -.4e-6, 0},
      {-.4e-6, .4e-6, 0}, {0x1p-7 * 1e-6, 0, 0},
      {.5e-6, 1e-6, 0}, {-.5e-6, -1e-6, 0}, {.5e-6, 0, 1}, {-.5e-6, 0, -1},  // 0.5e-6 * 1e6 is exactly a half
      {std::nextafter(.5e-6, 0), 0, 0}, {-std::nextafter(.5e-6, 0), 0, 0}, {1.5e-6, 2e-6, 0}, {2.5e-6, 3e-6, 0},
      {-1, 1, -1}, {-1.000001, -1, -1},
      {4503599627.370497, 4503599627.370498, -1}, {4503599627.370496, 4503599627.370497, -1},  // odd, even; beyond 2^52
      {1e300, 1e301, -1}, {1e303, 1e305, -1}, {-1e303, -1e305, 1},  // times 1e6 they overflow
      {1e305, kInfinity, -1}, {-kInfinity, -1e305, -1}, {kInfinity, kInfinity, 0}, {kInfinity, kNaN, -1}, {kNaN, kNaN, 0},
  };
  // clang-format on
  for (const auto& row : rows) {
    EXPECT_EQ(CompareRounded(row.a, row.b), row.order) << row.a << " and " << row.b;
    EXPECT_EQ(CompareRounded(row.b, row.a), -row.order) << row.b << " and " << row.a;
  }
}

TEST(CompareRounded, IsATotalOrder) {
  const double half = .5e-6;
  // clang-format off
  const double values[] = {
      0.0, -0.0, half, -half, std::nextafter(half, 0), std::nextafter(half, 1), 1.5e-6, 2.5e-6, 1e-6, -1e-6, .3e-6, .4e-6, .7e-6,
      1.0, 1 + .3e-6, 1 + .6e-6, -1.0, 1e9, -1e9, 9223372036854.775, 9223372036854.777, 9007199254.740993, 9007199254.740992,
      1e15, 1e300, -1e300, 1e303, -1e303, 1.01e303, 1e305, -1e305, std::numeric_limits<double>::max(),
      std::numeric_limits<double>::denorm_min(), kInfinity, -kInfinity, kNaN, -kNaN};
  // clang-format on
  for (const double a : values) {
    EXPECT_EQ(CompareRounded(a, a), 0) << a;
    for (const double b : values) {
      EXPECT_EQ(CompareRounded(a, b), -CompareRounded(b, a)) << a << ' ' << b;
      for (const double c : values) {
        if (CompareRounded(a, b) <= 0 && CompareRounded(b, c) <= 0) {
          const int strict = CompareRounded(a, b) + CompareRounded(b, c) < 0 ? -1 : 0;
          EXPECT_EQ(CompareRounded(a, c), strict) << a << ' ' << b << ' ' << c;
        }
      }
    }
  }
}

}  // namespace
