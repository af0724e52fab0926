#include "geometry/locate.h"

#include <cstdint>

namespace kurvo::tools {

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
