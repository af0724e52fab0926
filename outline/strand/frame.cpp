#include "strand/frame.h"

#include <algorithm>
#include <cmath>

namespace kurvo::outline {
namespace {

// Beyond these powers of two a scale or its inverse is no normal double.
constexpr int kLeastExponent = -1000;
constexpr int kGreatestExponent = 1000;

}  // namespace

// A box wider than the largest double keeps its origin: half of each side is added instead.
Frame::Frame(const Bounds& box) {
  if (box.IsEmpty()) return;
  size_ = box.LongerSide();
  const double half =
      std::max(0.5 * box.high.x - 0.5 * box.low.x, 0.5 * box.high.y - 0.5 * box.low.y);
  int exponent = 0;
  if (half > 0) std::frexp(half, &exponent);
  exponent = std::clamp(exponent, kLeastExponent, kGreatestExponent);
  scale_ = std::ldexp(1.0, exponent);
  inverse_ = std::ldexp(1.0, -exponent);
  scaled_origin_ = {0.5 * (inverse_ * box.low.x) + 0.5 * (inverse_ * box.high.x),
                    0.5 * (inverse_ * box.low.y) + 0.5 * (inverse_ * box.high.y)};
}

}  // namespace kurvo::outline
