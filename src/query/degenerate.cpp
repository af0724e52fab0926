// Whether a curve has collapsed to a point.
#include <optional>

#include "control/one_point.h"
#include "foundation/error_codes.h"
#include "foundation/point.h"
#include "records/views.h"

namespace kurvo {
namespace {

std::optional<Vec3> CommonPoint(const double* first, const double* last, double length_tol) {
  if (!SamePoint(Spatial(first), Spatial(last), length_tol)) return std::nullopt;
  return Spatial(first);
}

template <std::size_t kDim>
std::optional<Vec3> CommonPoint(const double (*points)[kDim], int32_t count, double length_tol) {
  if (!AreOnePoint(points, count, length_tol)) return std::nullopt;
  return Spatial(points[0]);
}

std::optional<Vec3> Collapsed(const Curve& cv, int level, GlobalVar& g);

// Each piece must be a point by itself, not all the same one; the last one stands for the
// composite.
std::optional<Vec3> CollapsedComposite(const CompositeView& composite, int level, GlobalVar& g) {
  if (level >= kMaxNesting) return Refuse(g, KURVO_ERR_CURVE, std::nullopt);
  std::optional<Vec3> point;
  for (int32_t i = 0; i < composite.count; ++i) {
    point = Collapsed(composite.curves[i], level + 1, g);
    if (!point) break;
  }
  return point;
}

// The point that the curve is; nothing when it is a proper curve or has no data.
std::optional<Vec3> Collapsed(const Curve& cv, int level, GlobalVar& g) {
  using Result = std::optional<Vec3>;
  if (!cv.data) return std::nullopt;
  return VisitCurve(
      cv,
      Overloaded{
          [&](const KurvoLine& line) { return CommonPoint(line.start, line.end, g.epsilon); },
          // A full circle counts too: callers pass circles as two arcs.
          [&](const KurvoArc& arc) { return CommonPoint(arc.start, arc.end, g.epsilon); },
          [&]<std::size_t kDim>(const BezierView<kDim>& bezier) {
            return CommonPoint(bezier.points, bezier.degree + 1, g.epsilon);
          },
          [&]<std::size_t kDim>(const SplineView<kDim>& spline) {
            return CommonPoint(spline.points, spline.count, g.epsilon);
          },
          [&](const CompositeView& composite) { return CollapsedComposite(composite, level, g); },
          [&](Refused) -> Result { return Refuse(g, KURVO_ERR_CURVE, std::nullopt); }});
}

}  // namespace
}  // namespace kurvo

extern "C" int KurvocvDegenerate(const Curve* cv, Coord out, GlobalVar* g) noexcept {
  kurvo::Store({}, out);
  if (!cv) return 0;
  const auto point = kurvo::Collapsed(*cv, 0, *g);
  if (point) kurvo::Store(*point, out);
  return point ? 1 : 0;
}
