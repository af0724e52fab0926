// The attributes of one element: lengths with units, style properties, lists of numbers.
#pragma once

#include <optional>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// The size that percentages refer to, in user units; 0 when unknown.
struct Viewport {
  double width = 0;
  double height = 0;
};

// What a percentage of a length is a part of.
enum class Axis { kX, kY, kDiagonal };

// User units of 1/96 inch in "mm", "px" and the like, and in "" for one; nothing for other names.
std::optional<double> UnitSize(std::string_view unit);

// A length in user units of 1/96 inch: a number with px, mm, cm, in, pt, pc, % or no unit. Nothing
// when the attribute is missing or says "auto". A property of the style holds in its place where
// there is one. Throws ElementError.
std::optional<double> Length(const pugi::xml_node& element, const char* attribute, Axis axis,
                             const Viewport& viewport);

// The length that a text says, which stands in `attribute`.
double ParseLength(std::string_view attribute, std::string_view text, Axis axis,
                   const Viewport& viewport);

// The same as the first with `fallback` for nothing.
double LengthOr(double fallback, const pugi::xml_node& element, const char* attribute, Axis axis,
                const Viewport& viewport);

// The same for a size, which must not be negative.
std::optional<double> Size(const pugi::xml_node& element, const char* attribute, Axis axis,
                           const Viewport& viewport);

// Numbers with spaces or commas between them; empty when the attribute is missing.
std::vector<double> NumberList(const pugi::xml_node& element, const char* attribute);

// The value of a property in the style attribute; empty when it is not there.
std::string StyleProperty(const pugi::xml_node& element, std::string_view name);

// The value of a property in the style attribute, or else of the attribute of that name; empty when
// there is neither.
std::string Property(const pugi::xml_node& element, std::string_view name);

struct ViewBox {
  double x, y, width, height;  // width and height above 0
};

// The viewBox attribute; nothing when it is missing.
std::optional<ViewBox> ReadViewBox(const pugi::xml_node& element);

// The map that fits a viewBox into a viewport at the origin, after the preserveAspectRatio of its
// element. The identity when the viewport has no size.
Affine ViewBoxMap(const pugi::xml_node& element, const ViewBox& box, const Viewport& viewport);

}  // namespace kurvo::tools
