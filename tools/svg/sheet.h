// The sheet of a drawing: what the root element says of its size.
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string_view>

#include "geometry/drawing.h"

namespace kurvo::tools {

// Millimetres of "mm", "cm", "in", "pt", "pc" or "px"; nothing for any other name.
std::optional<double> MillimetresOf(std::string_view unit);

// "mm", "in" or the like where a unit of a drawing is one of these, or else nothing.
std::string_view UnitName(double mm_per_unit);

// Attributes of the root element that are this program's own: the size of an em, and which way y
// points.
inline constexpr const char* kEm = "data-em";
inline constexpr const char* kYAxis = "data-y";
inline constexpr const char* kYUp = "up";

// The sheet of the root element. A size that cannot be read, such as a percentage, is none; a
// viewBox that cannot be is an ElementError.
Sheet ReadSheet(const pugi::xml_node& root);

}  // namespace kurvo::tools
