#include "strand/joints.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "strand/arc_sweep.h"
#include "strand/check.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

Vec2 At(const double* p) { return {p[0], p[1]}; }

// Splines whose outer knots are not p + 1 fold start and end within their polygon.
template <class Spline>
Ends EndsOfSpline(const Curve& curve, const Spline& spline) {
  const double* knots = spline.knots;
  const bool clamped = knots[0] == knots[spline.order - 1] &&
                       knots[spline.count] == knots[spline.count + spline.order - 1];
  if (clamped) return {At(spline.points[0]), At(spline.points[spline.count - 1])};
  Ends ends = {};
  bool is_first = true;
  const Frame frame;
  ForEachSpan(curve, 0, frame, [&](const Span& span) {
    if (is_first) ends.start = frame.Outwards(span.Start());
    is_first = false;
    ends.end = frame.Outwards(span.End());
  });
  return ends;
}

// A circle ends where it starts.
Ends EndsOfArc(const KurvoArc& arc) {
  const Ends ends = {At(arc.start), At(arc.end)};
  if (!(arc.radius > 0) || !Meet(ends.start, ends.end, 2 * kCircleSlack * arc.radius)) return ends;
  const auto out = [&arc](Vec2 p) { return (1 / arc.radius) * (p - At(arc.centre)); };
  const double sense = arc.normal[2] < 0 ? -1 : 1;
  const double sweep = SweepBetween(out(ends.start), out(ends.end), sense, false);
  return {ends.start, sweep == kTurn ? ends.start : ends.end};
}

bool EndsOfComposite(const KurvoSegcv& composite, Ends& ends) {
  bool found = false;
  Ends piece;
  for (int i = 0; i < composite.count; ++i) {
    if (!EndsOf(composite.curves[i], piece)) continue;
    if (!found) ends.start = piece.start;
    ends.end = piece.end;
    found = true;
  }
  return found;
}

template <class Spline>
bool HasFullKnot(const Spline& spline) {
  for (int k = spline.order; k < spline.count; ++k)
    if (spline.knots[k] == spline.knots[k + spline.order - 1]) return true;
  return false;
}

}  // namespace

bool EndsOf(const Curve& curve, Ends& ends) {
  switch (curve.type) {
    case CV_LINE: {
      const auto& line = BlockOf<KurvoLine>(curve);
      ends = {At(line.start), At(line.end)};
      return true;
    }
    case CV_ARC:
      ends = EndsOfArc(BlockOf<KurvoArc>(curve));
      return true;
    case CV_BEZIER: {
      const auto& bezier = BlockOf<KurvoBezier>(curve);
      ends = {At(bezier.points[0]), At(bezier.points[bezier.degree])};
      return true;
    }
    case CV_RBEZIER: {
      const auto& bezier = BlockOf<KurvoRBezier>(curve);
      ends = {At(bezier.points[0]), At(bezier.points[bezier.degree])};
      return true;
    }
    case CV_BSPLINE:
      ends = EndsOfSpline(curve, BlockOf<KurvoBSpline>(curve));
      return true;
    case CV_RBSPLINE:
      ends = EndsOfSpline(curve, BlockOf<KurvoRBSpline>(curve));
      return true;
    default:
      return EndsOfComposite(BlockOf<KurvoSegcv>(curve), ends);
  }
}

// Most points are plainly near or far.
bool Meet(Vec2 a, Vec2 b, double distance) {
  const double x = std::fabs(a.x - b.x), y = std::fabs(a.y - b.y);
  if (0.5 * distance >= x && 0.5 * distance >= y) return true;
  if (x > 2 * distance || y > 2 * distance) return false;
  return distance >= std::hypot(x, y);
}

bool IsUnbroken(const Curve& curve, double gap) {
  if (curve.type == CV_BSPLINE) return !HasFullKnot(BlockOf<KurvoBSpline>(curve));
  if (curve.type == CV_RBSPLINE) return !HasFullKnot(BlockOf<KurvoRBSpline>(curve));
  if (curve.type != CV_SEGCV) return true;
  const auto& composite = BlockOf<KurvoSegcv>(curve);
  Ends before, ends;
  bool has_before = false;
  for (int i = 0; i < composite.count; ++i) {
    if (!IsUnbroken(composite.curves[i], gap)) return false;
    if (!EndsOf(composite.curves[i], ends)) continue;
    if (has_before && !Meet(before.end, ends.start, gap)) return false;
    before = ends;
    has_before = true;
  }
  return true;
}

void RequireJoined(const Cvseq& chain, double gap) {
  Ends before, ends;
  bool has_before = false;
  for (int i = 0; i < chain.count; ++i) {
    if (!EndsOf(chain.curves[i], ends)) continue;
    Require(!has_before || Meet(before.end, ends.start, gap), KURVO_ERR_CHAIN_ENDS);
    before = ends;
    has_before = true;
  }
}

bool EndsOf(const Cvseq& chain, Ends& ends) {
  bool found = false;
  Ends curve;
  for (int i = 0; i < chain.count && !found; ++i) found = EndsOf(chain.curves[i], ends);
  if (!found) return false;
  for (int i = chain.count; i-- > 0;) {
    if (!EndsOf(chain.curves[i], curve)) continue;
    ends.end = curve.end;
    break;
  }
  return true;
}

bool IsClosed(const Cvseq& chain, double size, double epsilon) {
  Ends ends;
  return EndsOf(chain, ends) && Meet(ends.start, ends.end, std::min(epsilon, kClosingShare * size));
}

}  // namespace kurvo::outline
