#include "geometry/locate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "geometry/box_tree.h"

namespace kurvo::tools {
namespace {

// Of the size of a shape: points that near count as on it, with room to spare.
constexpr double kOnShare = 1e-8;

std::vector<Place> In(Library& library, const KurvoRegion& region,
                      const std::vector<Point>& points) {
  std::vector<double> coordinates;
  coordinates.reserve(3 * points.size());
  for (const Point p : points) coordinates.insert(coordinates.end(), {p.x, p.y, 0});
  std::vector<std::int32_t> where(points.size());
  KurvoRegionLocate(&region, coordinates.data(), static_cast<std::int32_t>(points.size()),
                    where.data(), nullptr, library.State());
  library.Check();
  std::vector<Place> places;
  places.reserve(where.size());
  for (const std::int32_t at : where) {
    places.push_back(at == KURVO_REGION_ON       ? Place::kOn
                     : at == KURVO_REGION_INSIDE ? Place::kInside
                                                 : Place::kOutside);
  }
  return places;
}

}  // namespace

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
    Bounds box;
    for (const Outline& outline : shape.outlines) box.Add(BoundsOf(library, outline.curves));
    if (!box.IsEmpty()) box.Grow(2 * library.Tolerance() + kOnShare * Size(box.Max() - box.Min()));
    boxes_.push_back(box);
    region.rule = shape.even_odd ? KURVO_FILL_EVENODD : KURVO_FILL_NONZERO;
    for (std::int32_t i = 0; i < region.count; ++i) loops_.push_back(region.loops + i);
  }
}

std::vector<Place> Locator::InOutline(std::size_t outline, const std::vector<Point>& points) const {
  return In(library_, {1, KURVO_FILL_NONZERO, loops_[outline], nullptr}, points);
}

std::vector<Place> Locator::InDrawing(const std::vector<Point>& points, std::size_t threads,
                                      const CurveDone& done) const {
  std::vector<Bounds> spots;
  spots.reserve(points.size());
  for (const Point p : points) spots.push_back({p.x, p.y, p.x, p.y});
  const BoxTree tree(spots);
  std::vector<std::vector<std::size_t>> near(shapes_.size());
  std::vector<std::vector<Place>> found(shapes_.size());
  ParallelFor(
      shapes_.size(),
      [&](std::size_t i, Library& library) {
        if (boxes_[i].IsEmpty()) return;
        const KurvoRegion& shape = shapes_[i].record;
        near[i] = tree.Meeting(boxes_[i]);
        std::vector<Point> own;
        for (const std::size_t k : near[i]) own.push_back(points[k]);
        if (!own.empty()) found[i] = In(library, shape, own);
        for (std::int32_t k = 0; k < shape.count; ++k) {
          for (std::int32_t j = 0; j < shape.loops[k].count; ++j) done();
        }
      },
      threads);
  std::vector<Place> places(points.size(), Place::kOutside);
  for (std::size_t i = 0; i < found.size(); ++i) {
    for (std::size_t k = 0; k < found[i].size(); ++k) {
      Place& place = places[near[i][k]];
      place = std::min(place, found[i][k]);
    }
  }
  return places;
}

}  // namespace kurvo::tools
