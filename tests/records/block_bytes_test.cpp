// Sizes of blocks, also beyond what a narrow size type holds.
#include "records/block_bytes.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using kurvo::BlockBytes;
using kurvo::BlockBytesIn;

constexpr int32_t kMost = INT32_MAX;

TEST(BlockBytes, AreExactOrTheLargestSize) {
  // `most` is the last degree or count whose block 32 bits can address.
  // clang-format off
  const struct {
    int32_t type, order, most;
    uint64_t fixed, each;  // bytes: fixed + each * (degree or count)
  } rows[] = {
      {CV_LINE,     0,     kMost,     104,                     0},
      {CV_ARC,      0,     kMost,     104,                     0},
      {CV_BEZIER,   0,     178956965, 104 + 24,                24},
      {CV_RBEZIER,  0,     134217723, 104 + 32,                32},
      {CV_BSPLINE,  1,     134217724, 104 + 8,                 32},
      {CV_BSPLINE,  kMost, -1,        104 + 8ull * kMost,      32},  // the knots alone are too many
      {CV_RBSPLINE, 4,     107374178, 104 + 8 * 4,             40},
      {CV_SEGCV,    0,     89478483,  104,                     48},
  };
  // clang-format on
  for (const auto& row : rows) {
    for (const int32_t n : {0, 3, row.most - 1, row.most, row.most + (row.most < kMost), 0x0fffffff,
                            0x3fffffff, 0x40000000, 0x55555555, kMost - 1, kMost}) {
      if (n < 0) continue;
      const uint64_t exact = row.fixed + row.each * static_cast<uint64_t>(n);
      EXPECT_EQ(exact <= UINT32_MAX, n <= row.most) << row.type << ' ' << n;
      const kurvo::BlockSizes sizes = {.degree = n, .order = row.order, .count = n};
      EXPECT_EQ(BlockBytesIn<uint64_t>(row.type, sizes), exact) << row.type << ' ' << n;
      EXPECT_EQ(BlockBytesIn<uint32_t>(row.type, sizes), std::min<uint64_t>(exact, UINT32_MAX))
          << row.type << ' ' << n;
    }
  }
}

TEST(BlockBytes, BeyondTheAddressSpaceAreNeverGranted) {
  Curve cv;
  EXPECT_FALSE(kurvo::AllocateBlock(cv, CV_BEZIER, {.degree = kMost}, SIZE_MAX));
  EXPECT_FALSE(kurvo::AllocateBlock(cv, CV_SEGCV, {.count = kMost}, SIZE_MAX));
  EXPECT_EQ(cv.data, nullptr);
}

}  // namespace
