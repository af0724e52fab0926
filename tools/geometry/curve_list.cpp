#include "geometry/curve_list.h"

namespace kurvo::tools {
namespace {

// An outline may come back to its start without being closed.
bool EndMeetsStart(Library& library, const Outline& outline) {
  return AreSame(library, StartOf(library, outline.curves.front()),
                 EndOf(library, outline.curves.back()));
}

}  // namespace

CurveList ListCurves(Library& library, const Drawing& drawing) {
  CurveList list;
  std::size_t joint = 0;
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      const Outline& outline = shape.outlines[i];
      const std::size_t first_joint = joint;
      for (std::size_t k = 0; k < outline.curves.size(); ++k, ++joint) {
        const OwnedCurve& curve = outline.curves[k];
        list.curves.push_back(
            {&curve, list.outlines.size(), k, BoundsOf(library, curve), joint, joint + 1});
      }
      if (EndMeetsStart(library, outline)) list.curves.back().end_joint = first_joint;
      ++joint;
      list.outlines.push_back(OutlineLabel(shape, i));
    }
  }
  return list;
}

void BeginCurve(std::string_view key, const CurveList& list, std::size_t number, JsonWriter& json) {
  const ListedCurve& curve = list.curves[number];
  json.Key(key);
  json.BeginObject();
  json.Key("outline");
  json.String(list.outlines[curve.outline]);
  json.Key("curve");
  json.Count(curve.index + 1);
  json.Key("type");
  json.String(TypeName(curve.curve->Type()));
}

}  // namespace kurvo::tools
