// Points on the command line.
#pragma once

#include <string>

#include "geometry/affine.h"

namespace kurvo::tools {

// "x,y" or "x y". Throws CLI::ValidationError, which names the option or argument.
Point ParsePoint(const std::string& name, const std::string& text);

}  // namespace kurvo::tools
