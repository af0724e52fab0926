// Points in boxes, boxes that meet, and distances to boxes.
#include "calc/boxes.h"

namespace kurvo {
namespace {

PlanarBox FromArray(const double* box) { return {Planar(box), Planar(box + 3)}; }

Vec2 Centre(const PlanarBox& box) {
  return {(box.min.x + box.max.x) / 2, (box.min.y + box.max.y) / 2};
}

Vec2 HalfSize(const PlanarBox& box) {
  return {(box.max.x - box.min.x) / 2, (box.max.y - box.min.y) / 2};
}

// The corner of a box on the given sides.
Vec2 Corner(const PlanarBox& box, bool right, bool upper) {
  return {right ? box.max.x : box.min.x, upper ? box.max.y : box.min.y};
}

// Both distances: the gaps in x and y alone where only one is open, else from corner to corner.
double AcrossGaps(Vec2 gap, Vec2 from_corner, Vec2 to_corner) {
  if (gap.x > 0 && gap.y > 0) return Length(from_corner - to_corner);
  if (gap.x > 0) return gap.x;
  return gap.y > 0 ? gap.y : 0.0;
}

double DistanceApart(const PlanarBox& a, const PlanarBox& b) {
  const Vec2 to_b = Centre(b) - Centre(a);
  const Vec2 halves = HalfSize(a) + HalfSize(b);
  const Vec2 gap = {std::fabs(to_b.x) - halves.x, std::fabs(to_b.y) - halves.y};
  const bool right = to_b.x > 0;
  const bool upper = to_b.y > 0;
  return AcrossGaps(gap, Corner(a, right, upper), Corner(b, !right, !upper));
}

}  // namespace

double Distance(const PlanarBox& box, Vec2 p) {
  if (Contains(box, p, 0.0)) return 0.0;
  const Vec2 to_p = p - Centre(box);
  const Vec2 half = HalfSize(box);
  const Vec2 gap = {std::fabs(to_p.x) - half.x, std::fabs(to_p.y) - half.y};
  return AcrossGaps(gap, Corner(box, to_p.x > 0, to_p.y > 0), p);
}

}  // namespace kurvo

using kurvo::FromArray;
using kurvo::Planar;

extern "C" {

int KurvoclBoxPoint(const Box b, const Coord p, const GlobalVar* g) noexcept {
  return int{kurvo::Contains(FromArray(b), Planar(p), g->epsilon)};
}

int KurvoclBoxBox(const Box a, const Box b, const GlobalVar* g) noexcept {
  return int{kurvo::Meet(FromArray(a), FromArray(b), g->epsilon)};
}

double KurvoclDistBoxPoint(const Box b, const Coord p) noexcept {
  return kurvo::Distance(FromArray(b), Planar(p));
}

double KurvoclDistBoxBox(const Box a, const Box b) noexcept {
  return kurvo::DistanceApart(FromArray(a), FromArray(b));
}

}  // extern "C"
