// Whether two curves are the same, control point by control point.
#include <algorithm>
#include <memory>
#include <type_traits>

#include "build/convert.h"
#include "control/degree_elevation.h"
#include "control/homogeneous.h"
#include "foundation/error_codes.h"
#include "foundation/guard.h"
#include "foundation/new_array.h"
#include "records/views.h"

namespace kurvo {
namespace {

// Raising costs O(degree^2): curves of different degrees above this never match.
constexpr int32_t kMaxRaisedDegree = 4096;

bool SamePoint(const double (&a)[3], const double (&b)[3], const GlobalVar& g) {
  return KurvoclSameCoord(a, b, &g) != 0;
}
bool SamePoint(const double (&a)[4], const double (&b)[4], const GlobalVar& g) {
  return KurvoclSameHCoord(a, b, &g) != 0;
}

template <std::size_t kDim>
bool SamePoints(const double (*a)[kDim], const double (*b)[kDim], int32_t count,
                const GlobalVar& g) {
  for (int32_t i = 0; i < count; ++i)
    if (!SamePoint(a[i], b[i], g)) return false;
  return true;
}

// The control points of the curve raised to `degree`.
template <std::size_t kDim>
std::unique_ptr<double[][kDim]> Raised(const BezierView<kDim>& bezier, int32_t degree) {
  auto points = NewArray<double[kDim]>(static_cast<std::size_t>(degree) + 1);
  std::copy_n(bezier.points[0], kDim * (static_cast<std::size_t>(bezier.degree) + 1), points[0]);
  ToHomogeneous(points.get(), bezier.degree + 1);
  for (int32_t n = bezier.degree; n < degree; ++n) ElevateDegree(points.get(), n);
  ToCartesian(points.get(), degree + 1);
  return points;
}

template <std::size_t kDim>
bool Same(const BezierView<kDim>& a, const BezierView<kDim>& b, const GlobalVar& g) {
  const auto& [low, high] = std::minmax(
      a, b, [](const auto& left, const auto& right) { return left.degree < right.degree; });
  if (low.degree == high.degree) return SamePoints(low.points, high.points, low.degree + 1, g);
  if (high.degree > kMaxRaisedDegree) return false;
  return SamePoints<kDim>(Raised(low, high.degree).get(), high.points, high.degree + 1, g);
}

bool Same(const KurvoLine& a, const KurvoLine& b, const GlobalVar& g) {
  return SamePoint(a.start, b.start, g) && SamePoint(a.end, b.end, g);
}

bool Same(const KurvoArc& a, const KurvoArc& b, const GlobalVar& g) {
  return SamePoint(a.centre, b.centre, g) && SamePoint(a.normal, b.normal, g) &&
         SamePoint(a.start, b.start, g) && SamePoint(a.end, b.end, g) &&
         KurvoclSame(a.radius, b.radius, &g) != 0;
}

// For B-splines of one order. The very last knot acts on no span and is not looked at.
template <std::size_t kDim>
bool Same(const SplineView<kDim>& a, const SplineView<kDim>& b, const GlobalVar& g) {
  if (a.count != b.count || !SamePoints(a.points, b.points, a.count, g)) return false;
  const auto same_knot = [&g](double u, double v) { return KurvoclSame(u, v, &g) != 0; };
  return std::equal(a.knots, a.knots + (a.order - 1 + a.count), b.knots, same_knot);
}

bool SameType(const Curve& a, const Curve& b, int level, GlobalVar& g);

bool SameAsComposites(const Curve& a, const Curve& b, GlobalVar& g) {
  const OwnedCurve left = Converted(a, CV_SEGCV, g);
  const OwnedCurve right = Converted(b, CV_SEGCV, g);
  return left.curve().data && right.curve().data && SameType(left.curve(), right.curve(), 0, g);
}

// `level` counts the composites around these.
bool Same(const CompositeView& a, const CompositeView& b, int level, GlobalVar& g) {
  if (level >= kMaxNesting) return Refuse(g, KURVO_ERR_CURVE, false);
  if (a.count != b.count) return false;
  for (int32_t i = 0; i < a.count; ++i) {
    const Curve& left = a.curves[i];
    const Curve& right = b.curves[i];
    if (!KurvoclSame(a.widths[i], b.widths[i], &g) || left.type != right.type) return false;
    if (!left.data || !right.data || !SameType(left, right, level + 1, g)) return false;
  }
  return true;
}

// True for two curves of one type that are the same. Records the error of one that cannot be right.
bool SameType(const Curve& a, const Curve& b, int level, GlobalVar& g) {
  const auto compare = [&]<class View>(const View& left, const View& right) {
    if constexpr (std::is_same_v<View, CompositeView>) {
      return Same(left, right, level, g);
    } else if constexpr (requires { left.order; }) {
      return left.order == right.order ? Same(left, right, g) : SameAsComposites(a, b, g);
    } else {
      return Same(left, right, g);
    }
  };
  return VisitCurve(a, [&]<class Left>(const Left& left) {
    return VisitCurve(b, [&]<class Right>(const Right& right) {
      if constexpr (std::is_same_v<Left, Right> && !std::is_same_v<Left, Refused>) {
        return compare(left, right);
      } else {
        return Refuse(g, KURVO_ERR_CURVE, false);
      }
    });
  });
}

// Both brought to the smaller type code. No arc becomes a line.
bool SameWhenConverted(const Curve& a, const Curve& b, GlobalVar& g) {
  const Curve& low = a.type < b.type ? a : b;
  const Curve& high = a.type < b.type ? b : a;
  const OwnedCurve converted = Converted(high, low.type, g);
  return converted.curve().data && SameType(low, converted.curve(), 0, g);
}

bool IsRefused(const Curve& curve) {
  return VisitCurve(
      curve, [](const auto& view) { return std::is_convertible_v<decltype(view), Refused>; });
}

uint32_t Match(const Curve& a, const Curve& b, GlobalVar& g) {
  if (IsRefused(a) || IsRefused(b)) {
    Fail(g, KURVO_ERR_CURVE);
    return KURVO_MATCH_NONE;
  }
  if (a.type == b.type) return SameType(a, b, 0, g) ? KURVO_MATCH_SAME : KURVO_MATCH_NONE;
  return SameWhenConverted(a, b, g) ? KURVO_MATCH_CONVERTED : KURVO_MATCH_NONE;
}

}  // namespace
}  // namespace kurvo

extern "C" uint32_t KurvocvMatch(const Curve* a, const Curve* b, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g) || !a || !b || !a->data || !b->data) return KURVO_MATCH_NONE;
  const auto match = [&] { return kurvo::Match(*a, *b, *g); };
  return kurvo::Guard(*g, uint32_t{KURVO_MATCH_NONE}, match);
}
