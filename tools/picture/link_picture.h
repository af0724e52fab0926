// The picture of two drawings and of the shortest links between them, as SVG.
#pragma once

#include <string>

#include "geometry/library.h"
#include "report/link_report.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// The curves as they are, each drawing in a colour of its own, the links as thin lines and the
// shortest one, with rings around its ends, as a strong one. The longer side is `size` pixels.
std::string LinkPicture(Library& library, const Drawing& first, const Drawing& second,
                        const LinkReport& report, double size);

}  // namespace kurvo::tools
