// Colours as DXF numbers them, 1 to 255.
#pragma once

#include <string>
#include <string_view>

namespace kurvo::tools {

// "#rrggbb"; 7, which is black or white as the paper wants it, is black.
std::string ColourText(int index);

// The number that is nearest to a colour as SVG writes it; 7 for one that is not known.
int ColourIndex(std::string_view text);

}  // namespace kurvo::tools
