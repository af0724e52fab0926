// The walk over all points that define a curve, for transforms in place.
#pragma once

#include "foundation/point.h"
#include "records/pieces.h"
#include "records/writable.h"

namespace kurvo {

enum class TransformResult { kDone, kUnknownType, kBadRecord };

template <class Map>
void MapPoint(const Map& map, double* p) {
  Store(map(Spatial(p)), p);
}

template <class Map>
void MapArcPoints(KurvoArc& arc, const Map& map) {
  MapPoint(map, arc.centre);
  MapPoint(map, arc.start);
  MapPoint(map, arc.end);
}

// Weights and what else follows x, y and z stays.
template <std::size_t kDim, class Map>
void MapPoints(const Map& map, const double (*points)[kDim], int32_t count) {
  for (int32_t i = 0; i < count; ++i) MapPoint(map, Writable(points)[i]);
}

// Replaces every point p of the curve by transform(p), or calls transform.TransformArc(arc). The
// pieces of a composite come in order, those without data are passed over; the first that cannot be
// transformed ends the walk, so that the ones before it are transformed and no others.
template <class Transform>
TransformResult TransformPoints(const Curve& curve, const Transform& transform) {
  TransformResult result = TransformResult::kDone;
  AllLeaves(curve, [&](const Curve& leaf, const auto& view) {
    const Overloaded map = {[&](const KurvoLine& line) {
                              MapPoint(transform, Writable(&line)->start);
                              MapPoint(transform, Writable(&line)->end);
                            },
                            [&](const KurvoArc& arc) { transform.TransformArc(*Writable(&arc)); },
                            [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                              MapPoints(transform, bezier.points, bezier.degree + 1);
                            },
                            [&]<std::size_t kDim>(const SplineView<kDim>& spline) {
                              MapPoints(transform, spline.points, spline.count);
                            },
                            [&](Refused) {
                              if (!leaf.data) return;
                              result = IsTypeCode(leaf.type) ? TransformResult::kBadRecord
                                                             : TransformResult::kUnknownType;
                            }};
    map(view);
    return result == TransformResult::kDone;
  });
  return result;
}

}  // namespace kurvo
