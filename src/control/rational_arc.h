// Circular arcs as rational quadratic Bezier curves.
#pragma once

#include <optional>

#include "foundation/point.h"

namespace kurvo {

struct RationalQuadratic {
  HCoord points[3];
};

// The arc as one rational quadratic. Nothing for a full circle and for a half circle, whose
// tangents meet nowhere.
std::optional<RationalQuadratic> QuadraticOfArc(const KurvoArc& arc);

}  // namespace kurvo
