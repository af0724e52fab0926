// Bezier functions halved at the middle, again and again, all their pieces side by side.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>

#include "foundation/clamped_size.h"
#include "foundation/new_array.h"

namespace kurvo {

// All pieces of a function after some halvings, in flat arrays that are halved in place. A control
// value is a vector of kSize components. Up to kStackDoubles numbers lie on the stack, more on the
// heap, as many as the pieces need.
//
// Pieces stand side by side, eight to a block, so that one operation serves several: piece p is
// lane p % 8 of block p / 8, and a block holds eight numbers, one for each lane, for each component
// of each control value.
template <std::size_t kSize, std::size_t kStackDoubles>
class HalvedPieces {
 public:
  static constexpr std::size_t kLanes = 8;
  static constexpr std::size_t kRow = kSize * kLanes;  // the numbers of one control value
  using Value = std::array<double, kSize>;

  // For pieces of so many control values.
  explicit HalvedPieces(std::size_t values)
      : values_(values), block_size_((ClampedSize(values) * kRow).value()) {
    Reserve(1);
  }
  HalvedPieces(const HalvedPieces&) = delete;
  HalvedPieces& operator=(const HalvedPieces&) = delete;

  // `count` pieces, 1 or 2, with the control values of(piece, 0) ... of(piece, values - 1).
  template <class Of>
  void Start(std::size_t count, const Of& of) {
    count_ = count;
    for (std::size_t p = 0; p < count; ++p) {
      for (std::size_t i = 0; i < values_; ++i) {
        const Value value = of(p, i);
        for (std::size_t c = 0; c < kSize; ++c) At(p, i)[c * kLanes] = value[c];
      }
    }
  }

  std::size_t values() const { return values_; }
  std::size_t count() const { return count_; }

  // The first component of control value i of piece p; the others are kLanes numbers apart, the
  // same one of the next pieces of a block side by side, the next control value kRow numbers on.
  double* At(std::size_t p, std::size_t i) {
    return blocks_ + p / kLanes * block_size_ + i * kRow + p % kLanes;
  }
  const double* At(std::size_t p, std::size_t i) const {
    return blocks_ + p / kLanes * block_size_ + i * kRow + p % kLanes;
  }

  // Calls split(lanes, p) for all pieces, as many at a time as `lanes`, a constant, says. It writes
  // the left half of piece p to where that stands, and the right half to piece p + count(). Throws
  // std::bad_alloc.
  template <std::size_t kMostLanes, class Split>
  void HalveBy(const Split& split) {
    if (count_ >= kLanes) Reserve(2 * (count_ / kLanes));
    WithLanes<kMostLanes>([&](auto lanes) {
      for (std::size_t p = 0; p < count_; p += lanes) split(lanes, p);
    });
    count_ *= 2;
  }

  // Halves every piece at its middle: the left half replaces it, the right half goes behind all
  // pieces. Throws std::bad_alloc.
  void Halve() {
    HalveBy<kLanes>(
        [this](auto lanes, std::size_t p) { Split(lanes, At(p, 0), At(p + count_, 0)); });
  }

  // Calls use(lanes) with the number of pieces that are taken at a time, a constant.
  template <std::size_t kMostLanes, class Use>
  void WithLanes(Use&& use) const {
    if constexpr (kMostLanes > 1)
      if (count_ < kMostLanes) return WithLanes<kMostLanes / 2>(use);
    use(std::integral_constant<std::size_t, kMostLanes>());
  }

 private:
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
    const std::size_t degree = values_ - 1;
    const auto at = [](double* numbers) __attribute__((always_inline))->Numbers& {
      return *reinterpret_cast<Numbers*>(numbers);
    };
    const auto copy = [&](double* from, double* to) __attribute__((always_inline)) {
      for (std::size_t c = 0; c < kRow; c += kLanes)
        for (std::size_t lane = 0; lane < kCount; lane += kStep)
          at(to + c + lane) = at(from + c + lane);
    };
    for (std::size_t i = 0; i <= degree; ++i) copy(left + i * kRow, right + i * kRow);
    for (std::size_t level = 1; level <= degree; ++level) {
      for (std::size_t i = 0; i <= degree - level; ++i) {
        double* row = right + i * kRow;
        for (std::size_t c = 0; c < kRow; c += kLanes)
          for (std::size_t lane = 0; lane < kCount; lane += kStep)
            at(row + c + lane) = 0.5 * (at(row + c + lane) + at(row + c + lane + kRow));
      }
      copy(right, left + level * kRow);
    }
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

  const std::size_t values_;
  const std::size_t block_size_;                             // numbers in one
  std::size_t count_ = 0;                                    // pieces: a power of two
  alignas(2 * sizeof(double)) double stack_[kStackDoubles];  // as the heap is, for pairs of lanes
  std::unique_ptr<double[]> heap_;
  double* blocks_ = stack_;
  std::size_t capacity_ = kStackDoubles;
};

}  // namespace kurvo
