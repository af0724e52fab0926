// The walk over all points that define a curve, for transforms in place.
#pragma once

#include "foundation/point.h"
#include "records/views.h"
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
TransformResult TransformPoints(const Curve& curve, const Transform& transform, int level = 0) {
  using Result = TransformResult;
  if (!curve.data) return Result::kDone;
  return VisitCurve(
      curve, Overloaded{[&](const KurvoLine& line) {
                          MapPoint(transform, Writable(&line)->start);
                          MapPoint(transform, Writable(&line)->end);
                          return Result::kDone;
                        },
                        [&](const KurvoArc& arc) {
                          transform.TransformArc(*Writable(&arc));
                          return Result::kDone;
                        },
                        [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
                          MapPoints(transform, bezier.points, bezier.degree + 1);
                          return Result::kDone;
                        },
                        [&]<std::size_t kDim>(const SplineView<kDim>& spline) {
                          MapPoints(transform, spline.points, spline.count);
                          return Result::kDone;
                        },
                        [&](const CompositeView& composite) {
                          if (level >= kMaxNesting) return Result::kBadRecord;
                          for (int32_t i = 0; i < composite.count; ++i) {
                            const Result r =
                                TransformPoints(composite.curves[i], transform, level + 1);
                            if (r != Result::kDone) return r;
                          }
                          return Result::kDone;
                        },
                        [&](Refused) {
                          return IsTypeCode(curve.type) ? Result::kBadRecord : Result::kUnknownType;
                        }});
}

}  // namespace kurvo
