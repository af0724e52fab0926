// A temporary curve that frees itself.
#pragma once

#include <new>
#include <utility>

#include "records/curve_block.h"

namespace kurvo {

// Owns the data block of one curve, pieces included. What ends in the caller's hands leaves through
// Release, as the last act of a function, so that every path before it frees.
class OwnedCurve {
 public:
  OwnedCurve() = default;
  OwnedCurve(OwnedCurve&& other) noexcept : curve_(other.Release()) {}
  OwnedCurve& operator=(OwnedCurve&& other) noexcept {
    std::swap(curve_, other.curve_);
    return *this;
  }
  ~OwnedCurve() {
    if (curve_.data) KurvocvFreeCurve(&curve_);
  }

  // A curve of the given type with an uninitialised block. Throws std::bad_alloc.
  OwnedCurve(int32_t type, const BlockSizes& sizes) {
    const auto bytes = BlockBytes(type, sizes);
    if (!bytes || !AllocateBlock(curve_, type, sizes, *bytes)) throw std::bad_alloc();
  }

  Curve& curve() { return curve_; }
  const Curve& curve() const { return curve_; }
  template <class Block>  // KurvoLine ... KurvoSegcv, as fits the type
  Block& block() {
    return *static_cast<Block*>(curve_.data);
  }

  // Hands the curve over; the handle is empty afterwards.
  Curve Release() noexcept { return std::exchange(curve_, Curve{}); }

 private:
  Curve curve_{};
};

}  // namespace kurvo
