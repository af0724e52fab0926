// What one curve is asked, answered in the plane of drawings. All of it throws BadResult.
#pragma once

#include <optional>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

inline Point PositionOf(Context& context, const Curve& curve, double t) {
  return curve.Position(t, context).value();
}
inline Point StartOf(Context& context, const Curve& curve) { return curve.Start(context).value(); }
inline Point EndOf(Context& context, const Curve& curve) { return curve.End(context).value(); }

// The derivative of order n.
inline Point DerivativeOf(Context& context, const Curve& curve, double t, int n) {
  return curve.Derivative(t, n, context).value();
}

// 1 / radius towards the centre of curvature; nothing where the tangent is too short to have one.
inline std::optional<Point> CurvatureOf(Context& context, const Curve& curve, double t) {
  const auto vector = curve.Curvature(t, context);
  if (!vector && vector.error().code == KURVO_ERR_SHORT_TANGENT) return std::nullopt;
  return vector.value();
}

inline bool IsPoint(Context& context, const Curve& curve) {
  return curve.AsPoint(context).value().has_value();
}

// Whether `next` begins where `before` ends.
inline bool Follows(Context& context, const Curve& before, const Curve& next) {
  return Same(EndOf(context, before), StartOf(context, next), context);
}

// The parameter of a point that lies on the curve within the length tolerance.
inline std::optional<double> ParameterOf(Context& context, const Curve& curve, Point p) {
  const Incidence at = curve.Parameter(p, context).value();
  return at.on ? std::optional(at.t) : std::nullopt;
}

// The control points of a free-form curve, without their weights.
inline std::vector<Point> ControlPointsOf(const Curve& curve) {
  const auto plain = curve.ControlPoints();
  std::vector<Point> points(plain.begin(), plain.end());
  for (const WeightedPoint& p : curve.WeightedPoints()) points.push_back({p.x, p.y});
  return points;
}

}  // namespace kurvo::tools
