// The picture of a drawing and of where points lie in it, as SVG.
#pragma once

#include <string>

#include "geometry/library.h"
#include "report/locate_report.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// The curves as they are with all points, coloured by where they lie; the longer side is `size`
// pixels.
std::string LocatePicture(Library& library, const Drawing& drawing, const LocateReport& report,
                          double size);

}  // namespace kurvo::tools
