// The picture of outlines and their offsets, as SVG.
#pragma once

#include <string>
#include <vector>

#include "geometry/library.h"
#include "geometry/offset.h"
#include "svg/svg_reader.h"

namespace kurvo::tools {

// The curves as they are, sources and offsets each in a colour of their own. `name` is that of the
// drawing; the longer side is `size` pixels.
std::string OffsetPicture(Library& library, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size);

}  // namespace kurvo::tools
