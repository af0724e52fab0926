#include "geometry/measure.h"

#include <algorithm>
#include <functional>

#include "geometry/arc_length.h"

namespace kurvo::tools {
namespace {

CurveMeasures MeasureCurve(Library& library, const OwnedCurve& curve,
                           const std::optional<Point>& near) {
  CurveMeasures measures = {curve.Type(),
                            DegreeOf(library, curve),
                            StartOf(library, curve),
                            EndOf(library, curve),
                            BoundsOf(library, curve),
                            ArcLength(library, curve).Total(),
                            BendingOf(library, curve),
                            std::nullopt};
  if (near) measures.nearest = NearestOn(library, curve, *near);
  return measures;
}

// The turning of the curves and in the corners between them, also in the last one of a closed
// outline. Points turn nowhere.
double TurningOf(const OutlineMeasures& outline) {
  double turning = 0;
  std::optional<Point> first;
  std::optional<Point> last;
  for (const CurveMeasures& curve : outline.curves) {
    const Bending& bending = curve.bending;
    if (!bending.start_direction || !bending.end_direction) continue;
    if (last) turning += TurnBetween(*last, *bending.start_direction);
    turning += bending.turning;
    if (!first) first = bending.start_direction;
    last = bending.end_direction;
  }
  if (outline.closed && last) turning += TurnBetween(*last, *first);
  return turning;
}

OutlineMeasures MeasureOutline(Library& library, const std::string& label, const Outline& outline,
                               const std::optional<Point>& near, Progress& progress) {
  OutlineMeasures measures = {label, outline.closed, {}, {}};
  for (const OwnedCurve& curve : outline.curves) {
    const std::size_t number = measures.curves.size();
    measures.curves.push_back(MeasureCurve(library, curve, near));
    measures.box.Add(measures.curves.back().box);
    measures.length += measures.curves.back().length;
    if (near && measures.curves[number].nearest->distance < NearestIn(measures).distance) {
      measures.nearest_curve = number;
    }
    progress.Step();
  }
  measures.turning = TurningOf(measures);
  return measures;
}

// The first curve whose `extreme` is before that of all others.
template <class Before>
std::optional<std::size_t> Foremost(const OutlineMeasures& outline,
                                    std::optional<CurvatureAt> Bending::*extreme,
                                    const Before& before) {
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < outline.curves.size(); ++i) {
    const auto& value = outline.curves[i].bending.*extreme;
    if (!value) continue;
    if (!found || before(value->curvature, (outline.curves[*found].bending.*extreme)->curvature)) {
      found = i;
    }
  }
  return found;
}

}  // namespace

std::optional<std::size_t> LeastCurved(const OutlineMeasures& outline) {
  return Foremost(outline, &Bending::least, std::less<double>());
}

std::optional<std::size_t> MostCurved(const OutlineMeasures& outline) {
  return Foremost(outline, &Bending::greatest, std::greater<double>());
}

std::vector<OutlineMeasures> Measure(Library& library, const Drawing& drawing,
                                     const std::optional<Point>& near, Progress& progress) {
  std::vector<OutlineMeasures> outlines;
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      outlines.push_back(
          MeasureOutline(library, OutlineLabel(shape, i), shape.outlines[i], near, progress));
    }
  }
  return outlines;
}

const NearestPoint& NearestIn(const OutlineMeasures& outline) {
  return *outline.curves[outline.nearest_curve].nearest;
}

const OutlineMeasures* NearestOutline(const std::vector<OutlineMeasures>& outlines) {
  const auto nearest = std::min_element(outlines.begin(), outlines.end(),
                                        [](const OutlineMeasures& a, const OutlineMeasures& b) {
                                          return NearestIn(a).distance < NearestIn(b).distance;
                                        });
  return nearest == outlines.end() ? nullptr : &*nearest;
}

}  // namespace kurvo::tools
