// The sweep beside a comparison of every box with every other.
#include "geometry/box_sweep.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace kurvo::tools {
namespace {

using Pairs = std::set<std::pair<std::size_t, std::size_t>>;

bool Meet(const Bounds& a, const Bounds& b) {
  return a.min_x <= b.max_x && b.min_x <= a.max_x && a.min_y <= b.max_y && b.min_y <= a.max_y;
}

TEST(SweepBoxes, FindsEachPairOnce) {
  constexpr unsigned kSeed = 7;
  std::mt19937 random(kSeed);
  // On a grid, so that many sides agree; `wide` and `tall` are the largest sizes.
  const auto boxes = [&](int count, int wide, int tall) {
    const auto upto = [&](int most) { return std::uniform_int_distribution<>(0, most)(random); };
    std::vector<Bounds> all;
    for (int i = 0; i < count; ++i) {
      const int x = upto(60), y = upto(60);
      all.push_back({1. * x, 1. * y, 1. * x + upto(wide), 1. * y + upto(tall)});
    }
    return all;
  };
  const struct {
    int count, wide, tall;
  } rows[] = {{0, 1, 1}, {1, 1, 1}, {100, 5, 5}, {100, 60, 2}, {100, 2, 60}, {60, 0, 0}};
  for (const auto& row : rows) {
    const std::vector<Bounds> first = boxes(row.count, row.wide, row.tall);
    const std::vector<Bounds> second = boxes(row.count / 2, row.tall, row.wide);
    Pairs expected_one, expected_two, one, two;
    for (std::size_t i = 0; i < first.size(); ++i) {
      for (std::size_t k = i + 1; k < first.size(); ++k) {
        if (Meet(first[i], first[k])) expected_one.emplace(i, k);
      }
      for (std::size_t k = 0; k < second.size(); ++k) {
        if (Meet(first[i], second[k])) expected_two.emplace(i, k);
      }
    }
    const auto collect = [](Pairs& pairs) {
      return [&pairs](std::size_t i, std::size_t k) {
        EXPECT_TRUE(pairs.emplace(i, k).second) << i << ", " << k << " comes twice";
      };
    };
    std::size_t done = 0;
    SweepBoxes(first, collect(one), [&] { ++done; });
    EXPECT_EQ(done, first.size());
    SweepBoxes(first, second, collect(two), [&] { ++done; });
    EXPECT_EQ(done, 2 * first.size() + second.size());
    EXPECT_EQ(one, expected_one) << row.wide << " by " << row.tall << ", seed " << kSeed;
    EXPECT_EQ(two, expected_two) << row.wide << " by " << row.tall << ", seed " << kSeed;
  }
}

}  // namespace
}  // namespace kurvo::tools
