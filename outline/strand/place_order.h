// Boxes in an order that keeps together what lies together.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>

#include "base/bounds.h"
#include "base/memory.h"

namespace kurvo::outline {

// The bits of both coordinates in turn: what is near each other in the plane is so along the curve
// that they number (Morton 1966). Of a box in a frame; 0 of an empty one.
inline uint32_t MortonPlace(const Bounds& box) {
  constexpr double kCells = 65536;  // across the frame, from -1 to 1
  if (box.IsEmpty()) return 0;
  const Vec2 middle = 0.5 * (box.low + box.high);
  const auto spread = [](double x) {  // a zero before each bit
    auto bits = static_cast<uint32_t>(std::clamp((0.5 + 0.5 * x) * kCells, 0.0, kCells - 1));
    bits = (bits | bits << 8) & 0x00ff00ff;
    bits = (bits | bits << 4) & 0x0f0f0f0f;
    bits = (bits | bits << 2) & 0x33333333;
    return (bits | bits << 1) & 0x55555555;
  };
  return spread(middle.y) << 1 | spread(middle.x);
}

// The numbers of the boxes by place, then by number.
inline Array<int32_t> InPlaceOrder(const Array<Bounds>& boxes) {
  Array<std::pair<uint32_t, int32_t>> places;
  places.reserve(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i)
    places.emplace_back(MortonPlace(boxes[i]), static_cast<int32_t>(i));
  std::sort(places.begin(), places.end());
  Array<int32_t> order;
  order.reserve(boxes.size());
  for (const auto& [place, number] : places) order.push_back(number);
  return order;
}

}  // namespace kurvo::outline
