#include "picture/picture_layout.h"

#include <algorithm>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr double kMargin = 0.03;  // of the longer side of the drawing

constexpr Bounds kNothing = {0, 0, 1, 1};  // the view of an empty drawing

double LongerSide(const Bounds& box) { return std::max(box.Width(), box.Height()); }

// `view` with its sides moved out until it is `width` wide.
Bounds Widened(Bounds view, double width) {
  const double lack = std::max(0.0, width - view.Width());
  view.min_x -= lack / 2;
  view.max_x += lack / 2;
  return view;
}

}  // namespace

double PixelSize(const Bounds& shown, double size) {
  return LongerSide(shown.IsEmpty() ? kNothing : shown) / size;
}

PictureLayout::PictureLayout(const Bounds& shown, double pixel, double stroke_width,
                             std::vector<LegendEntry> entries)
    : view_(shown.IsEmpty() ? kNothing : shown), pixel_(pixel) {
  view_.Grow(std::max(kMargin * LongerSide(view_), 2 * stroke_width));
  if (entries.empty()) return;
  view_ = Widened(view_, LeastLegendWidth(entries) * pixel);
  legend_.emplace(std::move(entries), view_.Width() / pixel);
  legend_corner_ = {view_.min_x, view_.max_y};
  view_.max_y += legend_->Height() * pixel;
}

void PictureLayout::WriteLegend(SvgText& out) const {
  if (legend_) legend_->Write(legend_corner_, pixel_, out);
}

}  // namespace kurvo::tools
