// The bounding box of a curve.
#include <cmath>
#include <optional>

#include "calc/arc_span.h"
#include "calc/boxes.h"
#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {
namespace {

constexpr double kSweepSlack = 0.0001;  // radians before the start that do not wrap to the far side

// A planar box at the height of the first point it was made from.
struct CurveBox {
  PlanarBox planar;
  double z = 0.0;
};

using MaybeBox = std::optional<CurveBox>;

CurveBox BoxOfLine(const KurvoLine& line) {
  CurveBox box{{}, line.start[2]};
  box.planar.Widen(Planar(line.start));
  box.planar.Widen(Planar(line.end));
  return box;
}

// The stored ends, and each axis direction that the arc sweeps over (strictly inside its sweep).
CurveBox BoxOfArc(const KurvoArc& arc) {
  CurveBox box{{}, arc.start[2]};
  box.planar.Widen(Planar(arc.start));
  box.planar.Widen(Planar(arc.end));

  const ArcSpan span = SpanOf(arc, kSweepSlack);
  const Vec2 centre = Planar(arc.centre);
  for (const double angle : {0.0, 0.5 * kPi, kPi, -0.5 * kPi}) {
    if (span.sweep > OneTurn(angle - span.start_angle, kSweepSlack))
      box.planar.Widen(centre + arc.radius * Vec2{std::cos(angle), std::sin(angle)});
  }
  return box;
}

double Height(const double (&p)[3]) { return p[2]; }
double Height(const double (&)[4]) { return 0.0; }

// The box of the control polygon, not the tight box of the curve: it is what callers prune with.
template <std::size_t kDim>
CurveBox BoxOfPoints(const double (*points)[kDim], int32_t count) {
  CurveBox box{{}, Height(points[0])};
  for (int32_t i = 0; i < count; ++i) box.planar.Widen(Planar(points[i]));
  return box;
}

MaybeBox BoxOf(const Curve& cv, int level, GlobalVar& g);

// A single piece gives no box, but within another composite: callers box it by itself. Pieces
// without a box are passed over.
MaybeBox BoxOfComposite(const CompositeView& composite, int level, GlobalVar& g) {
  if (level >= kMaxNesting) return Refuse(g, KURVO_ERR_CURVE, std::nullopt);
  MaybeBox box;
  if (composite.count < 2 && level == 0) return box;
  for (int32_t i = 0; i < composite.count; ++i) {
    const MaybeBox piece = BoxOf(composite.curves[i], level + 1, g);
    if (box && piece) {
      box->planar.Widen(piece->planar);
    } else if (piece) {
      box = piece;
    }
  }
  return box;
}

MaybeBox BoxOf(const Curve& cv, int level, GlobalVar& g) {
  const auto refuse = [&](Refused) -> MaybeBox { return Refuse(g, KURVO_ERR_CURVE, std::nullopt); };
  if (!cv.data && IsTypeCode(cv.type)) return std::nullopt;
  return VisitCurve(
      cv, Overloaded{
              [](const KurvoLine& line) -> MaybeBox { return BoxOfLine(line); },
              [](const KurvoArc& arc) -> MaybeBox { return BoxOfArc(arc); },
              []<std::size_t kDim>(const BezierView<kDim>& bezier) -> MaybeBox {
                return BoxOfPoints(bezier.points, bezier.degree + 1);
              },
              []<std::size_t kDim>(const SplineView<kDim>& spline) -> MaybeBox {
                return BoxOfPoints(spline.points, spline.count);
              },
              [&](const CompositeView& composite) { return BoxOfComposite(composite, level, g); },
              refuse});
}

}  // namespace
}  // namespace kurvo

extern "C" void KurvocvBoundBox(const Curve* cv, Box box, GlobalVar* g) noexcept {
  if (!cv) return kurvo::Fail(*g, KURVO_ERR_CURVE);
  const auto found = kurvo::BoxOf(*cv, 0, *g);
  if (!found) return;
  kurvo::Store({found->planar.min.x, found->planar.min.y, found->z}, box);
  kurvo::Store({found->planar.max.x, found->planar.max.y, found->z}, box + 3);
}
