#include "measure.h"

#include <algorithm>

namespace kurvo::tools {
namespace {

CurveMeasures MeasureCurve(Library& library, const OwnedCurve& curve,
                           const std::optional<Point>& near) {
  CurveMeasures measures = {
      curve.Type(),          DegreeOf(library, curve), StartOf(library, curve),
      EndOf(library, curve), BoundsOf(library, curve), std::nullopt};
  if (near) measures.nearest = NearestOn(library, curve, *near);
  return measures;
}

OutlineMeasures MeasureOutline(Library& library, const std::string& label, const Outline& outline,
                               const std::optional<Point>& near, Progress& progress) {
  OutlineMeasures measures = {label, outline.closed, {}, {}};
  for (const OwnedCurve& curve : outline.curves) {
    const std::size_t number = measures.curves.size();
    measures.curves.push_back(MeasureCurve(library, curve, near));
    measures.box.Add(measures.curves.back().box);
    if (near && measures.curves[number].nearest->distance < NearestIn(measures).distance) {
      measures.nearest_curve = number;
    }
    progress.Step();
  }
  return measures;
}

}  // namespace

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

std::size_t CurveCount(const Drawing& drawing) {
  std::size_t count = 0;
  for (const Shape& shape : drawing.shapes) {
    for (const Outline& outline : shape.outlines) count += outline.curves.size();
  }
  return count;
}

}  // namespace kurvo::tools
