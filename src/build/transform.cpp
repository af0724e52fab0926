// Translation, rotation, mirroring and scaling of curves, in place.
#include "calc/arc_span.h"
#include "calc/directions.h"
#include "calc/transforms.h"
#include "foundation/point.h"
#include "records/pieces.h"
#include "records/writable.h"

namespace kurvo {
namespace {

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

struct Translation {
  Vec3 delta;
  Vec3 operator()(Vec3 p) const { return p + delta; }
};

// An arc turns with its points; its radius and its normal stay, also under an axis that is not z.
template <class Map>
struct RigidMotion {
  Map map;

  Vec3 operator()(Vec3 p) const { return map(p); }
  void TransformArc(KurvoArc& arc) const { MapArcPoints(arc, map); }
};

struct Mirroring {
  Reflection map;

  Vec3 operator()(Vec3 p) const { return map(p); }
  void TransformArc(KurvoArc& arc) const {
    MapArcPoints(arc, map);
    arc.normal[2] = OppositeSense(arc);  // a mirror reverses the sense of rotation
  }
};

struct UniformScaling {
  Scaling map;

  Vec3 operator()(Vec3 p) const { return map(p); }
  // Fixed behaviour: the radius is measured and not multiplied, so that the start point lies on the
  // circle afterwards, also where it did not before.
  void TransformArc(KurvoArc& arc) const {
    MapArcPoints(arc, map);
    arc.radius = Length(Planar(arc.start) - Planar(arc.centre));
  }
};

struct AxialScaling {
  DirectionalScaling map;

  Vec3 operator()(Vec3 p) const { return map(p); }
  // Fixed behaviour: an arc cannot stay one and is left as it is, silently; in a composite too.
  void TransformArc(KurvoArc&) const {}
};

// With a zero normal there is no line to mirror in: nothing but the warning, and the errors.
struct Nothing {
  Vec3 operator()(Vec3 p) const { return p; }
  void TransformArc(KurvoArc&) const {}
};

int32_t CodeOf(TransformResult result, int32_t unknown_type) {
  if (result == TransformResult::kDone) return KURVO_ERR_NONE;
  return result == TransformResult::kUnknownType ? unknown_type : KURVO_ERR_CURVE;
}

// Applies the transform to the curve; an unknown type is reported with `unknown_type`.
template <class Transform>
void Apply(Curve& curve, const Transform& transform, GlobalVar& g,
           int32_t unknown_type = KURVO_ERR_CURVE) {
  const int32_t code = CodeOf(TransformPoints(curve, transform), unknown_type);
  if (code != KURVO_ERR_NONE) Fail(g, code);
}

void Mirror(Curve& curve, Vec3 base, Vec3 normal, GlobalVar& g) {
  const Vec3 unit_normal = UnitVector(normal, g);
  if (Within(unit_normal, 0.0)) return Apply(curve, Nothing{}, g);
  Apply(curve, Mirroring{{base, unit_normal}}, g);
}

void Scale(Curve& curve, Vec3 centre, Vec3 dir, double s, GlobalVar& g) {
  if (!IsTypeCode(curve.type)) return Fail(g, KURVO_ERR_CURVE);
  if (!(s > 0.0)) return Fail(g, KURVO_ERR_SCALE);
  if (Within(dir, g.epsilon)) return Apply(curve, UniformScaling{{Planar(centre), s}}, g);
  Apply(curve, AxialScaling{{centre, UnitVector(dir, g), s}}, g);
}

}  // namespace
}  // namespace kurvo

using kurvo::Spatial;

extern "C" {

void KurvocvMove(Curve* curve, const Coord delta, GlobalVar* g) noexcept {
  if (!curve || !curve->data) return;
  kurvo::Apply(*curve, kurvo::RigidMotion<kurvo::Translation>{{Spatial(delta)}}, *g);
}

void KurvocvRotate(Curve* curve, const Coord centre, const Coord axis, double angle,
                   GlobalVar* g) noexcept {
  if (!curve || !curve->data) return;
  const kurvo::Rotation rotation(Spatial(centre), Spatial(axis), angle);
  kurvo::Apply(*curve, kurvo::RigidMotion<kurvo::Rotation>{rotation}, *g, KURVO_ERR_ROTATED_TYPE);
}

void KurvocvMirror(Curve* curve, const Coord base, const Coord normal, GlobalVar* g) noexcept {
  if (!curve || !curve->data) return;
  kurvo::Mirror(*curve, Spatial(base), Spatial(normal), *g);
}

void KurvocvScale(Curve* curve, const Coord centre, const Coord dir, double s,
                  GlobalVar* g) noexcept {
  if (!curve || !curve->data) return;
  kurvo::Scale(*curve, Spatial(centre), Spatial(dir), s, *g);
}

}  // extern "C"
