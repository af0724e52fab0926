// The picture of drawings and of where they cross, as SVG.
#pragma once

#include <string>

#include "geometry/library.h"
#include "report/crossing_report.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// The curves as they are, each drawing in a colour of its own, with a ring around each crossing
// and a band along each overlap. `second` is null when there is one drawing only; the longer side
// is `size` pixels.
std::string CrossingPicture(Library& library, const Drawing& first, const Drawing* second,
                            const CrossingReport& report, double size);

}  // namespace kurvo::tools
