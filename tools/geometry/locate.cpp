#include "geometry/locate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "geometry/box_tree.h"

namespace kurvo::tools {
namespace {

// Of the size of a shape: points that near count as on it, with room to spare.
constexpr double kOnShare = 1e-8;

}  // namespace

std::vector<Where> WhereIn(Context& context, const KurvoRegion& region,
                           const std::vector<Point>& points) {
  const std::vector<kurvo::Point> all(points.begin(), points.end());
  std::vector<Where> where(points.size(), Where::kOutside);
  context
      .Do("KurvoRegionLocate", KurvoRegionLocate, &region,
          reinterpret_cast<const double*>(all.data()), static_cast<std::int32_t>(all.size()),
          reinterpret_cast<std::int32_t*>(where.data()), nullptr)
      .value();
  return where;
}

std::string_view PlaceName(Where place) {
  switch (place) {
    case Where::kOn:
      return "on";
    case Where::kInside:
      return "inside";
    default:
      return "outside";
  }
}

Locator::Locator(Context& context, const Drawing& drawing) : context_(context) {
  for (const Shape& shape : drawing.shapes) {
    Region& region = shapes_.emplace_back();
    for (const Outline& outline : shape.outlines)
      region.Add(*ChainView(outline.curves), context, HUGE_VAL).value();
    Bounds box;
    for (const Outline& outline : shape.outlines) box.Add(BoundsOf(context, outline.curves));
    if (!box.IsEmpty()) box.Grow(2 * context.Epsilon() + kOnShare * Size(box.Max() - box.Min()));
    boxes_.push_back(box);
    region.SetRule(shape.even_odd ? Fill::kEvenOdd : Fill::kNonZero);
    for (const Chain& loop : region) loops_.push_back(*loop.Get());
  }
}

std::vector<Where> Locator::InOutline(std::size_t outline, const std::vector<Point>& points) const {
  Cvseq loop = loops_[outline];
  return WhereIn(context_, {1, KURVO_FILL_NONZERO, &loop, nullptr}, points);
}

std::vector<Where> Locator::InDrawing(const std::vector<Point>& points, std::size_t threads,
                                      const CurveDone& done) const {
  std::vector<Bounds> spots;
  spots.reserve(points.size());
  for (const Point p : points) spots.push_back({p.x, p.y, p.x, p.y});
  const BoxTree tree(spots);
  std::vector<std::vector<std::size_t>> near(shapes_.size());
  std::vector<std::vector<Where>> found(shapes_.size());
  ParallelFor(
      shapes_.size(),
      [&](std::size_t i, Context& context) {
        if (boxes_[i].IsEmpty()) return;
        const KurvoRegion& shape = *shapes_[i].Get();
        near[i] = tree.Meeting(boxes_[i]);
        std::vector<Point> own;
        for (const std::size_t k : near[i]) own.push_back(points[k]);
        if (!own.empty()) found[i] = WhereIn(context, shape, own);
        for (std::int32_t k = 0; k < shape.count; ++k) {
          for (std::int32_t j = 0; j < shape.loops[k].count; ++j) done();
        }
      },
      threads);
  std::vector<Where> places(points.size(), Where::kOutside);
  for (std::size_t i = 0; i < found.size(); ++i) {
    for (std::size_t k = 0; k < found[i].size(); ++k) {
      Where& place = places[near[i][k]];
      place = std::min(place, found[i][k]);
    }
  }
  return places;
}

}  // namespace kurvo::tools
