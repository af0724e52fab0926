// The values of the properties transform and transform-origin (CSS transforms, level 1).
//
// What CSS does not know is an ElementError with its offset in the value: such a declaration says
// nothing. What CSS knows and this program does not is one without an offset.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "geometry/plane.h"
#include "svg/attributes.h"

namespace kurvo::tools {

// Of one function of a transform.
struct TransformArguments {
  std::array<double, 6> values{};
  std::size_t count = 0;
  double operator[](std::size_t i) const { return values[i]; }
};

// Whether a value leaves a property as it is without it.
bool SaysNothing(std::string_view value);

// `viewport` (in): the size that percentages refer to.
Affine ParseTransformProperty(std::string_view text, const Viewport& viewport);

// `is_attribute`: lengths may have no unit.
Point ParseTransformOrigin(std::string_view text, const Viewport& viewport, bool is_attribute);

}  // namespace kurvo::tools
