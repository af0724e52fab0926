#include "geometry/locate.h"

#include <cmath>
#include <cstdint>

#include "geometry/chain.h"

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

// Counts where an outline crosses the half-line from p to the right: 1 where y grows, -1 where it
// falls (Alciatore and Miranda, "A Winding Number and Point-in-Polygon Algorithm", 1995). A curve
// whose box p is not in goes around p as its chord does; others are halved until that is so.
Winding::Winding(Library& library, const Outline& outline) : library_(library) {
  for (const OwnedCurve& curve : outline.curves) {
    pieces_.push_back(
        {&curve, BoundsOf(library, curve), StartOf(library, curve), EndOf(library, curve)});
  }
}

int Winding::CrossingsOf(const Piece& piece, Point p, int halvings_left) const {
  const auto& [curve, box, start, end] = piece;
  const bool is_small = box.LongerSide() <= library_.Tolerance();
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

std::string_view PlaceName(Place place) {
  switch (place) {
    case Place::kOn:
      return "on";
    case Place::kInside:
      return "inside";
    default:
      return "outside";
  }
}

// The library does not write to a chain that it reads, but its record has no const array.
Cvseq Locator::Chain::Seq() const {
  return {static_cast<std::int32_t>(curves.size()), const_cast<Curve*>(curves.data())};
}

Locator::Locator(Library& library, const Drawing& drawing) : library_(library) {
  for (std::size_t shape = 0; shape < drawing.shapes.size(); ++shape) {
    for (const Outline& outline : drawing.shapes[shape].outlines) {
      Chain chain = {{}, {}, shape, drawing.shapes[shape].even_odd, Winding(library, outline)};
      for (const OwnedCurve& curve : outline.curves) chain.curves.push_back(*curve.Get());
      const Point start = StartOf(library, outline.curves.front());
      const Point end = EndOf(library, outline.curves.back());
      if (!AreSame(library, start, end)) {
        chain.closing_line = OwnedCurve::Line(end, start);
        chain.curves.push_back(*chain.closing_line.Get());
      }
      outlines_.push_back(std::move(chain));
    }
  }
}

Place Locator::InOutline(std::size_t outline, Point p) const {
  const Coord normal = {0, 0, 1};
  const Coord point = {p.x, p.y, 0};
  const Cvseq seq = outlines_[outline].Seq();
  std::uint32_t result = KURVO_REGION_OUTSIDE;
  KurvosfPntBoundForPlane(normal, &seq, point, &result, library_.State());
  if (KurvoErrGet(library_.State()) == KURVO_WARN_NO_ORIENTATION) KurvoErrReset(library_.State());
  library_.Check();
  if (result == KURVO_REGION_ON) return Place::kOn;
  return result == KURVO_REGION_INSIDE ? Place::kInside : Place::kOutside;
}

Place Locator::InDrawing(Point p) const {
  bool inside = false;
  int turns = 0;  // of the outlines of one shape
  for (std::size_t i = 0; i < outlines_.size(); ++i) {
    const Chain& chain = outlines_[i];
    if (i > 0 && outlines_[i - 1].shape != chain.shape) turns = 0;
    const Place place = InOutline(i, p);
    if (place == Place::kOn) return place;
    if (place == Place::kInside) turns += chain.winding.TurnsAround(p);
    const bool last = i + 1 == outlines_.size() || outlines_[i + 1].shape != chain.shape;
    if (last && (chain.even_odd ? turns % 2 : turns) != 0) inside = true;
  }
  return inside ? Place::kInside : Place::kOutside;
}

}  // namespace kurvo::tools
