// CGAL's polygon sets with exact coordinates, on polygons within a ten-thousandth of the size of
// the curves: no curves come out.
#include <CGAL/Boolean_set_operations_2.h>
#include <CGAL/Exact_predicates_exact_constructions_kernel.h>
#include <CGAL/Polygon_set_2.h>

#include <iterator>
#include <vector>

#include "driver.h"
#include "flatten.h"

namespace {

using Kernel = CGAL::Exact_predicates_exact_constructions_kernel;
using Polygon = CGAL::Polygon_2<Kernel>;
using PolygonWithHoles = CGAL::Polygon_with_holes_2<Kernel>;
using Set = CGAL::Polygon_set_2<Kernel>;

class CgalPolygons {
 public:
  static constexpr const char* kName = "cgal_polygons";

  static Set MakeOutline(const peers::Outline& outline) {
    Set set;
    for (const peers::Glyph& contour : outline) {
      Polygon polygon;
      for (const peers::Point p : peers::Corners(contour))
        if (polygon.is_empty() || polygon[polygon.size() - 1] != Kernel::Point_2(p.x, p.y))
          polygon.push_back({p.x, p.y});
      if (!polygon.is_simple()) continue;  // which it does not take
      if (polygon.orientation() == CGAL::CLOCKWISE) polygon.reverse_orientation();
      set.symmetric_difference(polygon);
    }
    return set;
  }
  static Set Combine(const Set& a, const Set& b, int operation) {
    Set result = a;
    if (operation == 0) result.join(b);
    if (operation == 1) result.intersection(b);
    if (operation == 2) result.difference(b);
    if (operation == 3) result.symmetric_difference(b);
    return result;
  }
  static peers::Outline ReadOutline(const Set& set) {
    std::vector<PolygonWithHoles> polygons;
    set.polygons_with_holes(std::back_inserter(polygons));
    peers::Outline outline;
    const auto add = [&outline](const Polygon& polygon) {
      const std::vector<Kernel::Point_2> ring(polygon.vertices_begin(), polygon.vertices_end());
      outline.push_back(peers::LinesOf(ring, [](const Kernel::Point_2& p) {
        return peers::Point{CGAL::to_double(p.x()), CGAL::to_double(p.y())};
      }));
    };
    for (const PolygonWithHoles& polygon : polygons) {
      add(polygon.outer_boundary());
      for (const Polygon& hole : polygon.holes()) add(hole);
    }
    return outline;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<CgalPolygons>::Main(argc, argv); }
