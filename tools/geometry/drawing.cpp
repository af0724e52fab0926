#include "geometry/drawing.h"

#include "geometry/chain.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
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

void TurnOver(Context& context, Drawing& drawing) {
  drawing.sheet.y_up = !drawing.sheet.y_up;
  if (!drawing.sheet.view.IsEmpty()) drawing.sheet.view = drawing.sheet.view.TurnedOver();
  for (Shape& shape : drawing.shapes) {
    shape.origin.y = -shape.origin.y;
    for (Outline& outline : shape.outlines) {
      for (Curve& curve : outline.curves) curve.Mirror({}, {0, 1, 0}, context).value();
    }
  }
}

Drawing Flattened(Context& context, const Drawing& drawing, double deviation,
                  const CurveDone& done) {
  return Remade(drawing, [&](const Outline& outline) {
    for (std::size_t i = 0; i < outline.curves.size(); ++i) done();
    return Flattened(context, outline.curves, deviation);
  });
}

Drawing FittedByArcs(Context& context, const Drawing& drawing, double deviation,
                     const CurveDone& done) {
  return Remade(drawing, [&](const Outline& outline) {
    for (std::size_t i = 0; i < outline.curves.size(); ++i) done();
    return Fitted(context, outline.curves, Form::kArcs, deviation);
  });
}

std::string OutlineLabel(const Shape& shape, std::size_t outline) {
  if (shape.outlines.size() < 2) return shape.label;
  return shape.label + "." + std::to_string(outline + 1);
}

std::size_t CurveCount(const Drawing& drawing) {
  std::size_t count = 0;
  ForEachCurve(drawing, [&](const Curve&) { ++count; });
  return count;
}

Bounds BoundsOf(Context& context, const Drawing& drawing) {
  Bounds box;
  ForEachCurve(drawing, [&](const Curve& curve) { box.Add(BoundsOf(context, curve)); });
  return box;
}

double Extent(Context& context, const std::vector<const Drawing*>& drawings) {
  Bounds box;
  for (const Drawing* drawing : drawings) box.Add(BoundsOf(context, *drawing));
  return box.IsEmpty() ? 1 : box.LongerSide();
}

CurveList ListCurves(Context& context, const Drawing& drawing) {
  CurveList list;
  std::size_t joint = 0;
  ForEachOutline(drawing, [&](const Outline& outline, std::string label) {
    const std::size_t first_joint = joint;
    for (std::size_t i = 0; i < outline.curves.size(); ++i, ++joint) {
      const Curve& curve = outline.curves[i];
      list.curves.push_back(
          {&curve, list.outlines.size(), i, BoundsOf(context, curve), joint, joint + 1});
    }
    // An outline may come back to its start without being closed.
    if (Follows(context, outline.curves.back(), outline.curves.front()))
      list.curves.back().end_joint = first_joint;
    ++joint;
    list.outlines.push_back(std::move(label));
  });
  return list;
}

}  // namespace kurvo::tools
