// The grammar of path data (SVG 1.1, section 8.3).
#pragma once

#include <string_view>
#include <vector>

#include "geometry/elliptical_arc.h"
#include "geometry/plane.h"

namespace kurvo::tools {

// One step of a path in absolute coordinates, with the short forms H, V, S and T written out.
struct PathStep {
  enum class Kind { kMove, kLine, kQuadratic, kCubic, kArc, kClose };

  Kind kind = Kind::kMove;
  Point control1;   // kQuadratic, kCubic
  Point control2;   // kCubic
  EndpointArc arc;  // kArc: all but `to`, which is `end`
  Point end;        // kClose: the start of the subpath
};

// Throws ElementError with the byte offset of the fault. Empty data are an empty path.
std::vector<PathStep> ParsePathData(std::string_view attribute, std::string_view text);

}  // namespace kurvo::tools
