// Boost.Geometry, on polygons within a ten-thousandth of the size of the curves: no curves come
// out.
#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <cmath>
#include <cstddef>

#include "driver.h"

namespace {

namespace bg = boost::geometry;

using Vertex = bg::model::d2::point_xy<double>;
using Polygon = bg::model::polygon<Vertex, false>;
using Polygons = bg::model::multi_polygon<Polygon>;

constexpr double kDeviation = 1e-4 * 1000;  // of an em of 1000

class BoostPolygons {
 public:
  static constexpr const char* kName = "boost_polygons";

  static Polygons MakeOutline(const peers::Outline& outline) {
    Polygons polygons;
    for (const peers::Glyph& contour : outline) {
      Polygon polygon;
      for (const peers::Bezier& b : contour) Flatten(b, polygon.outer());
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
    const auto add = [&outline](const Polygon::ring_type& ring) {
      peers::Glyph contour;
      for (std::size_t i = 0; i + 1 < ring.size(); ++i)
        contour.push_back({{ring[i].x(), ring[i].y()}, {ring[i + 1].x(), ring[i + 1].y()}});
      outline.push_back(contour);
    };
    for (const Polygon& polygon : polygons) {
      add(polygon.outer());
      for (const auto& hole : polygon.inners()) add(hole);
    }
    return outline;
  }

 private:
  // In equal steps: a chord is no farther off than an eighth of the second derivative.
  static void Flatten(const peers::Bezier& b, Polygon::ring_type& ring) {
    const std::size_t degree = b.size() - 1;
    double bend = 0;
    for (std::size_t i = 0; i + 2 <= degree; ++i)
      bend = std::max(bend, std::hypot(b[i].x - 2 * b[i + 1].x + b[i + 2].x,
                                       b[i].y - 2 * b[i + 1].y + b[i + 2].y));
    const double second = double(degree * (degree - 1)) * bend;
    const int steps = std::max(1, static_cast<int>(std::ceil(std::sqrt(second / 8 / kDeviation))));
    for (int i = 0; i < steps; ++i) {
      peers::Bezier d = b;
      const double t = double(i) / steps;
      for (std::size_t n = degree; n > 0; --n)
        for (std::size_t k = 0; k < n; ++k)
          d[k] = {d[k].x + t * (d[k + 1].x - d[k].x), d[k].y + t * (d[k + 1].y - d[k].y)};
      ring.push_back({d[0].x, d[0].y});
    }
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<BoostPolygons>::Main(argc, argv); }
