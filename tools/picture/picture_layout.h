// Where things stand in a picture: what it shows, the margin around it, the legend below.
#pragma once

#include <optional>
#include <vector>

#include "geometry/library.h"
#include "picture/legend.h"
#include "svg/svg_text.h"

namespace kurvo::tools {

// The size of a pixel in units of the drawing, when the longer side of `shown` takes `size` pixels.
double PixelSize(const Bounds& shown, double size);

class PictureLayout {
 public:
  // `shown` is what the picture shows, drawn in strokes of `stroke_width`; there is no legend
  // without entries.
  PictureLayout(const Bounds& shown, double pixel, double stroke_width,
                std::vector<LegendEntry> entries);

  // All of the picture.
  const Bounds& View() const { return view_; }
  void WriteLegend(SvgText& out) const;

 private:
  Bounds view_;
  double pixel_;
  std::optional<Legend> legend_;
  Point legend_corner_;
};

}  // namespace kurvo::tools
