#include "geometry/locate.h"

#include <algorithm>
#include <cmath>
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

Locator::Locator(Library& library, const Drawing& drawing) : library_(library) {
  for (const Shape& shape : drawing.shapes) {
    KurvoRegion& region = shapes_.emplace_back().record;
    for (const Outline& outline : shape.outlines) {
      const Chain chain(outline.curves);
      const Cvseq seq = chain.Seq();
      KurvoRegionAdd(&region, &seq, HUGE_VAL, library.State());
    }
    library.Check();
    region.rule = shape.even_odd ? KURVO_FILL_EVENODD : KURVO_FILL_NONZERO;
    for (std::int32_t i = 0; i < region.count; ++i) loops_.push_back(region.loops + i);
  }
}

std::vector<Place> Locator::In(const KurvoRegion& region, const std::vector<Point>& points) const {
  std::vector<double> coordinates;
  coordinates.reserve(3 * points.size());
  for (const Point p : points) coordinates.insert(coordinates.end(), {p.x, p.y, 0});
  std::vector<std::int32_t> where(points.size());
  KurvoRegionLocate(&region, coordinates.data(), static_cast<std::int32_t>(points.size()),
                    where.data(), nullptr, library_.State());
  library_.Check();
  std::vector<Place> places;
  places.reserve(where.size());
  for (const std::int32_t at : where) {
    places.push_back(at == KURVO_REGION_ON       ? Place::kOn
                     : at == KURVO_REGION_INSIDE ? Place::kInside
                                                 : Place::kOutside);
  }
  return places;
}

std::vector<Place> Locator::InOutline(std::size_t outline, const std::vector<Point>& points) const {
  return In({1, KURVO_FILL_NONZERO, loops_[outline], nullptr}, points);
}

std::vector<Place> Locator::InDrawing(const std::vector<Point>& points) const {
  std::vector<Place> places(points.size(), Place::kOutside);
  for (const OwnedRegion& shape : shapes_) {
    const std::vector<Place> own = In(shape.record, points);
    for (std::size_t i = 0; i < places.size(); ++i) places[i] = std::min(places[i], own[i]);
  }
  return places;
}

}  // namespace kurvo::tools
