// Drawings as pixels, and how far two of them differ.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kurvo::tools {

struct Raster {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> ink;  // row by row: 0 for paper, 255 for full cover
};

// Whether there is a renderer on this machine.
bool CanRasterise();

// The SVG file as rendered; `stylesheet` (a file) is applied when not empty. Throws
// std::runtime_error.
Raster Rasterise(const std::string& svg_path, const std::string& stylesheet);

struct RasterDifference {
  int largest;      // of a pixel, 0 to 255; 256 when the sizes differ
  double ink_left;  // ink of the first, in pixels
};
RasterDifference Compare(const Raster& a, const Raster& b);

}  // namespace kurvo::tools
