// Boost.Geometry, on polygons within a ten-thousandth of the size of the curves: no curves come
// out.
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>

#include "driver.h"
#include "flatten.h"

namespace {

namespace bg = boost::geometry;

using Vertex = bg::model::d2::point_xy<double>;
using Polygon = bg::model::polygon<Vertex, false>;
using Polygons = bg::model::multi_polygon<Polygon>;

class BoostPolygons {
 public:
  static constexpr const char* kName = "boost_polygons";

  static Polygons MakeOutline(const peers::Outline& outline) {
    Polygons polygons;
    for (const peers::Glyph& contour : outline) {
      Polygon polygon;
      for (const peers::Point p : peers::Corners(contour)) polygon.outer().push_back({p.x, p.y});
      bg::correct(polygon);
      Polygons sum;
      bg::sym_difference(polygons, Polygons{polygon}, sum);
      polygons = sum;
    }
    return polygons;
  }
  static Polygons Combine(const Polygons& a, const Polygons& b, int operation) {
    Polygons result;
    try {
      if (operation == 0) bg::union_(a, b, result);
      if (operation == 1) bg::intersection(a, b, result);
      if (operation == 2) bg::difference(a, b, result);
      if (operation == 3) bg::sym_difference(a, b, result);
    } catch (const std::exception&) {
      result.clear();
    }
    return result;
  }
  static peers::Outline ReadOutline(const Polygons& polygons) {
    peers::Outline outline;
    const auto add = [&outline](Polygon::ring_type ring) {
      ring.pop_back();  // the first again
      outline.push_back(peers::LinesOf(ring, [](const Vertex& p) {
        return peers::Point{p.x(), p.y()};
      }));
    };
    for (const Polygon& polygon : polygons) {
      add(polygon.outer());
      for (const auto& hole : polygon.inners()) add(hole);
    }
    return outline;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<BoostPolygons>::Main(argc, argv); }
