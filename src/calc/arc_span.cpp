// The parameter of a point on an arc.
#include "calc/arc_span.h"

namespace kurvo {

bool ParameterOnArc(const KurvoArc& arc, const ArcSpan& span, Vec3 p, double length_tol,
                    double& t) {
  const Vec3 from_centre = p - Spatial(arc.centre);
  const double angle = AngleFromStart(span, Planar(from_centre));
  // Past the end but nearer the start: counted backwards from the start. The margin keeps the arc's
  // own end, which rounding may put just past the sweep, at t = 1.
  const double back = kTwoPi - angle;
  const bool before_start = angle > span.sweep + kSpanMargin && angle > back;
  const double u = (before_start ? -back : angle) / span.sweep;
  t = span.reversed ? 1 - u : u;
  return SweepsAngle(span, angle) && length_tol >= std::fabs(arc.radius - Length(from_centre));
}

}  // namespace kurvo
