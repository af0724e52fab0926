// The control points of a rational Bezier curve while the curve is halved.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>

#include "foundation/clamped_size.h"
#include "foundation/new_array.h"

namespace kurvo {

// All pieces of a rational Bezier curve after some halvings, in flat arrays that are halved in
// place. A control point is w x, w y, w. Up to kStackDoubles numbers lie on the stack, more on the
// heap, as many as the pieces need.
//
// Pieces stand side by side, eight to a block, so that one operation serves eight: piece p is lane
// p % 8 of block p / 8, and a block holds eight numbers, one for each lane, for each component of
// each control point.
template <std::size_t kStackDoubles>
class HalvedBezier {
 public:
  explicit HalvedBezier(int32_t degree)
      : degree_(static_cast<std::size_t>(degree)),
        block_size_((ClampedSize(degree_ + 1) * kRow).value()) {
    Reserve(1);
  }
  HalvedBezier(const HalvedBezier&) = delete;
  HalvedBezier& operator=(const HalvedBezier&) = delete;

  using Point = std::array<double, 3>;

  // One piece with the control points at(0) ... at(degree).
  template <class At>
  void Start(const At& at) {
    count_ = 1;
    for (std::size_t i = 0; i <= degree_; ++i) {
      const Point p = at(i);
      for (std::size_t c = 0; c < kSize; ++c) blocks_[i * kRow + c * kLanes] = p[c];
    }
  }

  std::size_t count() const { return count_; }
  // Interpolations between two control points that the next halving takes.
  std::size_t InterpolationsToHalve() const { return count_ * degree_ * (degree_ + 1) / 2; }

  // Control point i of piece p.
  Point PointOf(std::size_t p, std::size_t i) const {
    const double* row = blocks_ + p / kLanes * block_size_ + i * kRow + p % kLanes;
    Point point;
    for (std::size_t c = 0; c < kSize; ++c) point[c] = row[c * kLanes];
    return point;
  }

  // Halves every piece at its middle: the left half replaces it, the right half goes behind all
  // pieces. Throws std::bad_alloc.
  void Halve() {
    if (count_ < kLanes) {  // both halves fit into the first block
      WithLanes([this](auto lanes) { Split(lanes, blocks_, blocks_ + count_); });
    } else {
      const std::size_t blocks = count_ / kLanes;
      Reserve(2 * blocks);
      for (std::size_t b = 0; b < blocks; ++b)
        Split(Lanes<kLanes>(), blocks_ + b * block_size_, blocks_ + (b + blocks) * block_size_);
    }
    count_ *= 2;
  }

  // The length of all control polygons together.
  double Length() const {
    double sum = 0.0;
    WithLanes([&](auto lanes) {
      for (std::size_t p = 0; p < count_; p += lanes)
        sum += LengthOfBlock(lanes, blocks_ + p / kLanes * block_size_);
    });
    return sum;
  }

 private:
  static constexpr std::size_t kLanes = 8;
  static constexpr std::size_t kSize = 3;
  static constexpr std::size_t kRow = kSize * kLanes;  // the numbers of one control point
  template <std::size_t kCount>
  using Lanes = std::integral_constant<std::size_t, kCount>;

  // Calls use(lanes) with the number of lanes of a block that are in use, a constant.
  template <class Use>
  void WithLanes(Use&& use) const {
    switch (count_) {
      case 1:
        return use(Lanes<1>());
      case 2:
        return use(Lanes<2>());
      case 4:
        return use(Lanes<4>());
      default:
        return use(Lanes<kLanes>());
    }
  }

  // Numbers of neighbouring lanes that one instruction of any processor in use takes.
  template <class LaneCount>
  using Pack [[gnu::vector_size(std::min(LaneCount::value, std::size_t{2}) * sizeof(double)),
               gnu::aligned(sizeof(double)), gnu::may_alias]] = double;

  // De Casteljau's algorithm at 1/2 on the first lanes of `left`, which become the left halves; the
  // right halves go to `right`.
  template <class LaneCount>
  void Split(LaneCount, double* left, double* right) const {
    using Numbers = Pack<LaneCount>;
    constexpr std::size_t kStep = sizeof(Numbers) / sizeof(double);
    constexpr std::size_t kCount = LaneCount::value;
    const auto at = [](double* numbers) __attribute__((always_inline))->Numbers& {
      return *reinterpret_cast<Numbers*>(numbers);
    };
    const auto copy = [&](double* from, double* to) __attribute__((always_inline)) {
      for (std::size_t c = 0; c < kRow; c += kLanes)
        for (std::size_t lane = 0; lane < kCount; lane += kStep)
          at(to + c + lane) = at(from + c + lane);
    };
    for (std::size_t i = 0; i <= degree_; ++i) copy(left + i * kRow, right + i * kRow);
    for (std::size_t level = 1; level <= degree_; ++level) {
      for (std::size_t i = 0; i <= degree_ - level; ++i) {
        double* row = right + i * kRow;
        for (std::size_t c = 0; c < kRow; c += kLanes)
          for (std::size_t lane = 0; lane < kCount; lane += kStep)
            at(row + c + lane) = 0.5 * (at(row + c + lane) + at(row + c + lane + kRow));
      }
      copy(right, left + level * kRow);
    }
  }

  template <class LaneCount>
  double LengthOfBlock(LaneCount, const double* block) const {
    constexpr std::size_t kCount = LaneCount::value;
    double x[kLanes], y[kLanes], length[kLanes];
    const auto load = [&](const double* row, std::size_t lane, double& px, double& py)
        __attribute__((always_inline)) {
      px = row[lane] / row[2 * kLanes + lane];
      py = row[kLanes + lane] / row[2 * kLanes + lane];
    };
    for (std::size_t lane = 0; lane < kCount; ++lane) {
      load(block, lane, x[lane], y[lane]);
      length[lane] = 0.0;
    }
    for (std::size_t i = 1; i <= degree_; ++i) {
      for (std::size_t lane = 0; lane < kCount; ++lane) {
        double px, py;
        load(block + i * kRow, lane, px, py);
        const double dx = px - x[lane];
        const double dy = py - y[lane];
        length[lane] += std::sqrt(dx * dx + dy * dy);
        x[lane] = px;
        y[lane] = py;
      }
    }
    double sum = 0.0;
    for (std::size_t lane = 0; lane < kCount; ++lane) sum += length[lane];
    return sum;
  }

  // Makes room for a number of blocks.
  void Reserve(std::size_t blocks) {
    const std::size_t size = (ClampedSize(blocks) * block_size_).value();
    if (size <= capacity_) return;
    auto grown = NewArray<double>(size);
    if (count_ > 0) std::copy_n(blocks_, blocks / 2 * block_size_, grown.get());
    heap_ = std::move(grown);
    blocks_ = heap_.get();
    capacity_ = size;
  }

  const std::size_t degree_;
  const std::size_t block_size_;  // numbers in one
  std::size_t count_ = 0;         // pieces: a power of two
  double stack_[kStackDoubles];
  std::unique_ptr<double[]> heap_;
  double* blocks_ = stack_;
  std::size_t capacity_ = kStackDoubles;
};

}  // namespace kurvo
