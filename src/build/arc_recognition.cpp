// Recognition of circular arcs in rational curves.
#include "build/arc_recognition.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "foundation/point.h"
#include "records/domain.h"

namespace kurvo {
namespace {

// Length; fixed and absolute, whatever the size of the curve and the tolerance in force.
constexpr double kOnSameCircle = 0.0001;

// How far the determinant of two chords may be from its value, in units of the size of the
// coordinates times the length of the chords: a few roundings of each.
constexpr double kChordRounding = 8.0 * std::numeric_limits<double>::epsilon();

constexpr int kArcSamples = 10;  // points that must lie on the circle, at every tenth of the domain

struct Circle {
  Vec2 centre;
  double radius;
};

// A curve sampled at fractions of its domain.
class Samples {
 public:
  Samples(const Curve& curve, double start, double end, GlobalVar& g)
      : curve_(curve), start_(start), end_(end), g_(g) {}

  Vec3 At(double fraction) const {
    const double t = fraction == 1.0 ? end_ : start_ + fraction * (end_ - start_);
    Coord p;
    KurvocvPosition(&curve_, t, p, &g_);
    return Spatial(p);
  }

 private:
  const Curve& curve_;
  double start_;
  double end_;
  GlobalVar& g_;
};

double LargestCoordinate(Vec2 p) { return std::max(std::fabs(p.x), std::fabs(p.y)); }

// The circle through three points, its centre v away from the middle one:
//   v . c1 = -|c1|^2 / 2,  v . c2 = |c2|^2 / 2  for the chords c1 and c2 on either side of it.
// Nothing for points on a line, as far as rounding can tell, and for a curve that closes.
std::optional<Circle> CircleThrough(Vec2 p0, Vec2 p1, Vec2 p2) {
  const Vec2 c1 = p1 - p0;
  const Vec2 c2 = p2 - p1;
  const double det = Cross(c1, c2);
  const double size =
      std::max({LargestCoordinate(p0), LargestCoordinate(p1), LargestCoordinate(p2)});
  if (!(std::fabs(det) > kChordRounding * size * (Length(c1) + Length(c2)))) return std::nullopt;
  const double h1 = -0.5 * Dot(c1, c1);
  const double h2 = 0.5 * Dot(c2, c2);
  const Vec2 v = {(h1 * c2.y - h2 * c1.y) / det, (h2 * c1.x - h1 * c2.x) / det};
  const Vec2 centre = p1 + v;
  return Circle{centre, Length(p0 - centre)};
}

std::optional<Circle> RecogniseCircle(const Samples& samples) {
  const auto circle =
      CircleThrough(Planar(samples.At(0.0)), Planar(samples.At(0.5)), Planar(samples.At(1.0)));
  if (!circle) return std::nullopt;
  for (int i = 1; i <= kArcSamples; ++i) {
    const Vec2 p = Planar(samples.At(static_cast<double>(i) / kArcSamples));
    if (!(kOnSameCircle >= std::fabs(Length(p - circle->centre) - circle->radius)))
      return std::nullopt;
  }
  return circle;
}

// The arc of the circle from `start` to `end`; the curve's point at a tenth tells which way.
KurvoArc MakeArc(const Circle& circle, Vec3 start, Vec3 end, Vec3 tenth) {
  KurvoArc arc{};
  arc.radius = circle.radius;
  Store(OnPlane(circle.centre), arc.centre);
  Store(start, arc.start);
  Store(end, arc.end);
  const double turn = Cross(Planar(start) - circle.centre, Planar(tenth) - circle.centre);
  arc.normal[2] = turn > 0.0 ? 1.0 : -1.0;
  return arc;
}

Samples OfBezier(const Curve& curve, GlobalVar& g) { return {curve, 0.0, 1.0, g}; }

bool SameCircle(const Circle& a, const Circle& b) {
  return kOnSameCircle > std::fabs(a.centre.x - b.centre.x) &&
         kOnSameCircle > std::fabs(a.centre.y - b.centre.y) &&
         kOnSameCircle > std::fabs(a.radius - b.radius);
}

}  // namespace

std::optional<KurvoArc> RecogniseArc(const Curve& curve, double start, double end, GlobalVar& g) {
  const Samples samples(curve, start, end, g);
  const auto circle = RecogniseCircle(samples);
  if (!circle) return std::nullopt;
  return MakeArc(*circle, samples.At(0.0), samples.At(1.0), samples.At(0.1));
}

std::optional<KurvoArc> RecogniseArcs(const Curve& curve, const CompositeView& composite,
                                      GlobalVar& g) {
  std::optional<Circle> reference;
  for (int32_t i = 0; i < composite.count; ++i) {
    const Curve& piece = composite.curves[i];
    if (piece.type != CV_RBEZIER) return std::nullopt;
    const auto circle = RecogniseCircle(OfBezier(piece, g));
    if (!circle || (reference && !SameCircle(*circle, *reference))) return std::nullopt;
    if (!reference) reference = circle;
  }
  if (!reference) return std::nullopt;
  return MakeArc(*reference, OfBezier(composite.curves[0], g).At(0.0),
                 OfBezier(composite.curves[composite.count - 1], g).At(1.0),
                 Samples(curve, 0.0, DomainOf(composite).end, g).At(0.1));
}

}  // namespace kurvo
