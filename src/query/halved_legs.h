// The legs of a Bezier curve's control polygons while the curve is halved.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <type_traits>

#include "foundation/clamped_size.h"
#include "foundation/new_array.h"
#include "foundation/point.h"
#include "foundation/with_constant.h"

namespace kurvo {

// The legs P[i+1] - P[i] are the control points of C' / n, so that de Casteljau's algorithm on the
// legs alone, one point fewer, halves the curve: the legs of a half are half as long as what it
// gives, which one factor for all of them takes care of. The last leg of a left half is the first
// leg of the right one, and the outer legs are those of the piece that was halved: each is measured
// once.
//
// Leg r of all pieces stands side by side, x then y, so that one operation serves several. Up to
// kStackDoubles numbers lie on the stack, more on the heap, as many as the pieces need.
template <std::size_t kStackDoubles>
class HalvedLegs {
 public:
  // For a Bezier curve of this degree, 2 or more.
  explicit HalvedLegs(int32_t degree) : legs_(static_cast<std::size_t>(degree)) {
    capacity_ = kStackDoubles / (2 * legs_) / kLanes * kLanes;
    if (capacity_ == 0) Reserve(kLanes);
  }
  HalvedLegs(const HalvedLegs&) = delete;
  HalvedLegs& operator=(const HalvedLegs&) = delete;

  // One piece or two, of which the legs are leg(piece, 0) ... leg(piece, degree - 1) times `scale`.
  template <class LegOf>
  void Start(double scale, std::size_t count, const LegOf& leg) {
    count_ = count;
    scale_ = scale;
    outer_ = inner_ = 0.0;
    for (std::size_t r = 0; r < legs_; ++r) {
      for (std::size_t p = 0; p < count; ++p) {
        const Vec2 v = leg(p, r);
        Row(r, 0)[p] = v.x;
        Row(r, 1)[p] = v.y;
        (r == 0 || r + 1 == legs_ ? outer_ : inner_) += kurvo::Length(v);
      }
    }
  }

  std::size_t count() const { return count_; }
  double scale() const { return scale_; }
  // Interpolations between two control points of the curve that the next halving stands for.
  std::size_t InterpolationsToHalve() const { return count_ * legs_ * (legs_ + 1) / 2; }

  // Of all control polygons together.
  double Length() const { return scale_ * (outer_ + inner_); }

  // Leg r of piece p, to be multiplied by the scale.
  Vec2 Leg(std::size_t p, std::size_t r) const { return {Row(r, 0)[p], Row(r, 1)[p]}; }

  // Halves every piece at its middle: the left half replaces it, the right half goes behind all
  // pieces. Throws std::bad_alloc.
  void Halve() {
    inner_ = 0.0;
    HalveAll<true>([this](std::size_t, double inner, double joint) {
      inner_ += inner;
      outer_ += 2.0 * joint;
    });
  }
  // The same; nothing is measured.
  void HalveOnly() {
    HalveAll<false>([](std::size_t, double, double) {});
  }
  // The same; before[p] and after[p] become the length of the polygon of piece p, and that of its
  // halves.
  void HalveEach(double* before, double* after) {
    for (std::size_t p = 0; p < count_; p += kLanes) {
      double outer[kLanes] = {}, inner[kLanes] = {};
      for (std::size_t r = 0; r < legs_; ++r)
        MeasureRow(r, p, r == 0 || r + 1 == legs_ ? outer : inner);
      for (std::size_t i = 0; i < kLanes; ++i) {
        before[p + i] = scale_ * (outer[i] + inner[i]);
        after[p + i] = 0.5 * scale_ * outer[i];
      }
    }
    const double scale = 0.5 * scale_;
    HalveAll<true>([&](std::size_t p, double inner, double joint) {
      after[p] += scale * (inner + 2.0 * joint);
    });
  }

 private:
  static constexpr std::size_t kLanes = 2;
  template <std::size_t kCount>
  using Lanes = std::integral_constant<std::size_t, kCount>;

  const double* Row(std::size_t r, std::size_t c) const {
    return numbers_ + (2 * r + c) * capacity_;
  }
  double* Row(std::size_t r, std::size_t c) { return numbers_ + (2 * r + c) * capacity_; }

  void MeasureRow(std::size_t r, std::size_t p, double (&sum)[kLanes]) const {
    const double *x = Row(r, 0) + p, *y = Row(r, 1) + p;
    for (std::size_t i = 0; i < kLanes; ++i) sum[i] += std::sqrt(x[i] * x[i] + y[i] * y[i]);
  }

  // Calls use(p, inner, joint) for every piece with the lengths of the legs that are new: that at
  // the joint of both halves, and of the other ones.
  template <bool kMeasure, class Use>
  void HalveAll(const Use& use) {
    if (2 * count_ > capacity_) Reserve(2 * count_);
    WithConstant<2, 3>(legs_, [&](auto legs) {
      WithLanes([&](auto lanes) {
        for (std::size_t p = 0; p < count_; p += lanes) HalveLanes<kMeasure>(legs, lanes, p, use);
      });
    });
    count_ *= 2;
    scale_ *= 0.5;
  }

  // Calls use(lanes) with the number of pieces that are taken at a time, a constant.
  template <class Use>
  void WithLanes(Use&& use) {
    if (count_ >= kLanes) return use(Lanes<kLanes>());
    WithConstant<1>(count_, [&]<class Count>(Count count) {
      if constexpr (!std::is_same_v<Count, std::size_t>) use(count);
    });
  }

  // De Casteljau's algorithm at 1/2 on the lanes from piece p on.
  template <bool kMeasure, class Legs, class LaneCount, class Use>
  void HalveLanes(Legs legs, LaneCount, std::size_t p, const Use& use) {
    constexpr std::size_t kCount = LaneCount::value;
    constexpr bool kFew = !std::is_same_v<Legs, std::size_t>;
    struct Lane {
      double x[kCount];
      double y[kCount];
    };
    Lane few[kFew ? 3 : 1];
    double inner[kCount] = {}, joint[kCount] = {};
    const auto load = [&](std::size_t r, std::size_t from, Lane& v) {
      std::copy_n(Row(r, 0) + from, kCount, v.x);
      std::copy_n(Row(r, 1) + from, kCount, v.y);
    };
    const auto store = [&](const Lane& v, std::size_t r, std::size_t to) {
      std::copy_n(v.x, kCount, Row(r, 0) + to);
      std::copy_n(v.y, kCount, Row(r, 1) + to);
    };
    const auto measure = [&](const Lane& v, double(&sum)[kCount]) {
      for (std::size_t i = 0; kMeasure && i < kCount; ++i)
        sum[i] += std::sqrt(v.x[i] * v.x[i] + v.y[i] * v.y[i]);
    };
    const auto mix = [&](Lane& a, const Lane& b) {
      for (std::size_t i = 0; i < kCount; ++i) a.x[i] = 0.5 * (a.x[i] + b.x[i]);
      for (std::size_t i = 0; i < kCount; ++i) a.y[i] = 0.5 * (a.y[i] + b.y[i]);
    };
    const std::size_t last = legs - 1;
    if constexpr (kFew) {
      for (std::size_t r = 0; r <= last; ++r) load(r, p, few[r]);
      for (std::size_t level = 1; level <= last; ++level) {
        for (std::size_t r = 0; r <= last - level; ++r) mix(few[r], few[r + 1]);
        store(few[0], level, p);
        measure(few[0], level < last ? inner : joint);
      }
      for (std::size_t r = 0; r <= last; ++r) {
        store(few[r], r, p + count_);
        if (r > 0 && r < last) measure(few[r], inner);
      }
    } else {
      Lane a, b;
      for (std::size_t r = 0; r <= last; ++r) {
        load(r, p, a);
        store(a, r, p + count_);
      }
      for (std::size_t level = 1; level <= last; ++level) {
        load(0, p + count_, a);
        for (std::size_t r = 0; r <= last - level; ++r) {
          load(r + 1, p + count_, b);
          mix(a, b);
          store(a, r, p + count_);
          if (r == 0) {
            store(a, level, p);
            measure(a, level < last ? inner : joint);
          } else if (level + r == last && r < last) {
            measure(a, inner);
          }
          a = b;
        }
      }
    }
    for (std::size_t i = 0; i < kCount; ++i) use(p + i, inner[i], joint[i]);
  }

  // Makes room for a number of pieces.
  void Reserve(std::size_t pieces) {
    const std::size_t size = (ClampedSize(pieces) * legs_ * 2).value();
    auto grown = NewArray<double>(size);
    for (std::size_t row = 0; row < 2 * legs_ && count_ > 0; ++row)
      std::copy_n(numbers_ + row * capacity_, count_, grown.get() + row * pieces);
    heap_ = std::move(grown);
    numbers_ = heap_.get();
    capacity_ = pieces;
  }

  const std::size_t legs_;
  std::size_t count_ = 0;     // pieces: a power of two
  std::size_t capacity_ = 0;  // the same that there is room for, a multiple of kLanes
  double scale_ = 1.0;
  double outer_ = 0.0;  // lengths, without the scale, of first and last legs
  double inner_ = 0.0;  // and of the others
  double stack_[kStackDoubles];
  std::unique_ptr<double[]> heap_;
  double* numbers_ = stack_;
};

}  // namespace kurvo
