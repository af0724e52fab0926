#include "geometry/drawing.h"

#include "geometry/chain.h"

namespace kurvo::tools {
namespace {

// An outline may come back to its start without being closed.
bool EndMeetsStart(Library& library, const Outline& outline) {
  return AreSame(library, StartOf(library, outline.curves.front()),
                 EndOf(library, outline.curves.back()));
}

}  // namespace

Sheet Sheet::Scaled(double factor) const {
  Sheet scaled = *this;
  scaled.mm_per_unit /= factor;
  scaled.units_per_em *= factor;
  if (!view.IsEmpty()) {
    scaled.view = {factor * view.min_x, factor * view.min_y, factor * view.max_x,
                   factor * view.max_y};
  }
  return scaled;
}

void TurnOver(Library& library, Drawing& drawing) {
  drawing.sheet.y_up = !drawing.sheet.y_up;
  if (!drawing.sheet.view.IsEmpty()) drawing.sheet.view = drawing.sheet.view.TurnedOver();
  for (Shape& shape : drawing.shapes) {
    shape.origin.y = -shape.origin.y;
    for (Outline& outline : shape.outlines) {
      for (OwnedCurve& curve : outline.curves) curve.TurnOver(library);
    }
  }
}

Drawing Flattened(Library& library, const Drawing& drawing, double deviation,
                  const CurveDone& done) {
  return Remade(drawing, [&](const Outline& outline) {
    for (std::size_t i = 0; i < outline.curves.size(); ++i) done();
    return Flattened(library, Chain(outline.curves), deviation);
  });
}

Drawing FittedByArcs(Library& library, const Drawing& drawing, double deviation,
                     const CurveDone& done) {
  return Remade(drawing, [&](const Outline& outline) {
    for (std::size_t i = 0; i < outline.curves.size(); ++i) done();
    return Fitted(library, Chain(outline.curves), KURVO_FIT_ARCS, deviation);
  });
}

std::string OutlineLabel(const Shape& shape, std::size_t outline) {
  if (shape.outlines.size() < 2) return shape.label;
  return shape.label + "." + std::to_string(outline + 1);
}

std::size_t CurveCount(const Drawing& drawing) {
  std::size_t count = 0;
  ForEachCurve(drawing, [&](const OwnedCurve&) { ++count; });
  return count;
}

Bounds BoundsOf(Library& library, const Drawing& drawing) {
  Bounds box;
  ForEachCurve(drawing, [&](const OwnedCurve& curve) { box.Add(BoundsOf(library, curve)); });
  return box;
}

double Extent(Library& library, const std::vector<const Drawing*>& drawings) {
  Bounds box;
  for (const Drawing* drawing : drawings) box.Add(BoundsOf(library, *drawing));
  return box.IsEmpty() ? 1 : box.LongerSide();
}

CurveList ListCurves(Library& library, const Drawing& drawing) {
  CurveList list;
  std::size_t joint = 0;
  ForEachOutline(drawing, [&](const Outline& outline, std::string label) {
    const std::size_t first_joint = joint;
    for (std::size_t i = 0; i < outline.curves.size(); ++i, ++joint) {
      const OwnedCurve& curve = outline.curves[i];
      list.curves.push_back(
          {&curve, list.outlines.size(), i, BoundsOf(library, curve), joint, joint + 1});
    }
    if (EndMeetsStart(library, outline)) list.curves.back().end_joint = first_joint;
    ++joint;
    list.outlines.push_back(std::move(label));
  });
  return list;
}

}  // namespace kurvo::tools
