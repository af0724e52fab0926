#include "geometry/outline.h"

namespace kurvo::tools {

std::string OutlineLabel(const Shape& shape, std::size_t outline) {
  if (shape.outlines.size() < 2) return shape.label;
  return shape.label + "." + std::to_string(outline + 1);
}

}  // namespace kurvo::tools
