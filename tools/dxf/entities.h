// The entities that have outlines: LINE, ARC, CIRCLE, ELLIPSE, LWPOLYLINE, POLYLINE, SPLINE.
#pragma once

#include <span>

#include "dxf/pairs.h"
#include "geometry/plane.h"
#include "svg/shapes.h"

namespace kurvo::tools {

// An entity, and the VERTEX entities after it.
struct DxfItem {
  const DxfEntity& entity;
  std::span<const DxfEntity> vertices;
};

// Whether it is an entity with outlines. Meshes, which are polylines by name, have none.
bool HasOutlines(const DxfEntity& entity);

// From the coordinates of a plane entity to those around it: the identity, or a mirror where it is
// seen from below. Throws ElementError when its plane is not that of the drawing.
Affine ExtrusionMap(const DxfEntity& entity);

// Draws an entity that has outlines, with `map` as the way from the coordinates around it to those
// of the drawing. Throws ElementError.
std::vector<Outline> DrawDxfEntity(Context& context, const DxfItem& item, const Affine& map);

// The exact point of a circle at a number of degrees, quarter turns to the last bit.
Point OnCircle(Point centre, double radius, double degrees);

}  // namespace kurvo::tools
