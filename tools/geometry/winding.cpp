// Counts where an outline crosses the half-line from p to the right: 1 where y grows, -1 where it
// falls (Alciatore and Miranda, "A Winding Number and Point-in-Polygon Algorithm", 1995). A curve
// whose box p is not in goes around p as its chord does; others are halved until that is so.
#include "geometry/winding.h"

#include <algorithm>
#include <cmath>

namespace kurvo::tools {
namespace {

constexpr int kMostHalvings = 60;  // far below the length tolerance for any coordinates

// Which side of the line from a to b the point is on. A point on the line counts as if it lay a
// hair to the right and, by still less, higher, as it does where heights are compared.
bool IsLeft(Point a, Point b, Point p) {
  const double side = Cross(b - a, p - a);
  if (side != 0) return side > 0;
  return a.y != b.y ? a.y > b.y : b.x > a.x;
}

int CrossLine(Point a, Point b, Point p) {
  const int step = (b.y > p.y) - (a.y > p.y);
  return IsLeft(a, b, p) == (step > 0) ? step : 0;
}

// An arc from a to b goes once more than its chord around what lies between them.
int CrossArc(const KurvoArc& arc, Point a, Point b, Point p) {
  const bool counter_clockwise = arc.normal[2] > 0;
  const bool in_circle = std::hypot(p.x - arc.centre[0], p.y - arc.centre[1]) < arc.radius;
  const bool between = in_circle && IsLeft(a, b, p) != counter_clockwise;
  return CrossLine(a, b, p) + (between ? (counter_clockwise ? 1 : -1) : 0);
}

}  // namespace

Winding::Winding(Library& library, const Outline& outline) : library_(library) {
  for (const OwnedCurve& curve : outline.curves) {
    pieces_.push_back(
        {&curve, BoundsOf(library, curve), StartOf(library, curve), EndOf(library, curve)});
  }
}

int Winding::CrossingsOf(const Piece& piece, Point p, int halvings_left) const {
  const auto& [curve, box, start, end] = piece;
  const bool is_small = std::max(box.Width(), box.Height()) <= library_.Tolerance();
  if (curve->Type() == CV_LINE || !box.Contains(p) || is_small || halvings_left == 0) {
    return CrossLine(start, end, p);
  }
  if (curve->Type() == CV_ARC) {
    return CrossArc(curve->Block<KurvoArc>(), start, end, p);
  }
  // The halves take over the ends, so that heights on either side of an end are the same.
  const std::vector<OwnedCurve> halves = OwnedCurve::Divided(library_, *curve, {0.5});
  const Point middle = EndOf(library_, halves[0]);
  const Piece first = {&halves[0], BoundsOf(library_, halves[0]), start, middle};
  const Piece second = {&halves[1], BoundsOf(library_, halves[1]), middle, end};
  return CrossingsOf(first, p, halvings_left - 1) + CrossingsOf(second, p, halvings_left - 1);
}

int Winding::TurnsAround(Point p) const {
  int turns = 0;
  for (std::size_t i = 0; i < pieces_.size(); ++i) {
    const Point next = pieces_[(i + 1) % pieces_.size()].start;
    turns += CrossingsOf(pieces_[i], p, kMostHalvings) + CrossLine(pieces_[i].end, next, p);
  }
  return turns;
}

}  // namespace kurvo::tools
