// Curves as SVG path data that gives the same curves when it is read.
#pragma once

#include <string>
#include <vector>

#include "library.h"
#include "svg_text.h"

namespace kurvo::tools {

// Curves that run end to start, at least one, with the digits of `out`. Rational Beziers must be
// parts of ellipses of less than half a turn, as those of a drawing are.
std::string PathData(const std::vector<OwnedCurve>& curves, Library& library, const SvgText& out);

}  // namespace kurvo::tools
