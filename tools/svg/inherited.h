// What an element of a drawing passes on to those in it.
#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>

#include "geometry/plane.h"
#include "svg/attributes.h"
#include "svg/document.h"
#include "svg/input.h"
#include "svg/paint.h"

namespace kurvo::tools {

struct Inherited {
  Affine map;  // from the coordinates of the element to those of the drawing
  Viewport viewport;
  bool visible = true;
  bool even_odd = false;
  InheritedPaint paint;
  std::size_t group = 0;  // into Drawing::groups
  int use_depth = 0;
  std::string users;  // labels of the use elements around, each with a '/' after it
};

// Takes over what the attributes of `element` change for it and for what it contains. Result:
// whether anything is displayed. Transforms that say nothing go to `ignored`. Throws ElementError.
bool Inherit(const SvgDocument& document, const pugi::xml_node& element, Inherited& inherited,
             Tally& ignored);

}  // namespace kurvo::tools
