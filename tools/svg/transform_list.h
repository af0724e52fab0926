// The transform attribute.
#pragma once

#include <string_view>

#include "geometry/affine.h"

namespace kurvo::tools {

// The map of a list such as "translate(10 5) rotate(30)": the last one is applied first. An empty
// list is the identity. Throws ElementError.
Affine ParseTransformList(std::string_view attribute, std::string_view text);

}  // namespace kurvo::tools
