// Which of many boxes meet.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// Called for each pair of boxes that meet, by their indices.
using BoxPair = std::function<void(std::size_t, std::size_t)>;
// Called once for each box, when all pairs with the boxes before it are known.
using BoxDone = std::function<void()>;

// Pairs of a box of `first` and one of `second`. Boxes that touch meet. The order of the pairs is
// that of the sweep. Cost: n log n, and n times the boxes that a sweep line meets at once.
void SweepBoxes(const std::vector<Bounds>& first, const std::vector<Bounds>& second,
                const BoxPair& pair, const BoxDone& done);

// Pairs of two boxes of one list, the lower index first.
void SweepBoxes(const std::vector<Bounds>& boxes, const BoxPair& pair, const BoxDone& done);

}  // namespace kurvo::tools
