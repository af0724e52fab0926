#include "describe.h"

#include "number_text.h"

namespace kurvo::tools {
namespace {

std::string Pair(const double* p) { return ShortNumber(p[0]) + "," + ShortNumber(p[1]); }

}  // namespace

std::string Describe(const OwnedCurve& curve) {
  const void* data = curve.Get()->data;
  if (curve.Type() == CV_LINE) {
    const auto* line = static_cast<const KurvoLine*>(data);
    return "L " + Pair(line->start) + " " + Pair(line->end);
  }
  if (curve.Type() == CV_ARC) {
    const auto* arc = static_cast<const KurvoArc*>(data);
    return std::string(arc->normal[2] < 0 ? "A- " : "A+ ") + Pair(arc->centre) + " r" +
           ShortNumber(arc->radius) + " " + Pair(arc->start) + " " + Pair(arc->end);
  }
  std::string text;
  if (curve.Type() == CV_BEZIER) {
    const auto* bezier = static_cast<const KurvoBezier*>(data);
    text = "B";
    for (int i = 0; i <= bezier->degree; ++i) text += " " + Pair(bezier->points[i]);
  } else if (curve.Type() == CV_RBEZIER) {
    const auto* bezier = static_cast<const KurvoRBezier*>(data);
    text = "R";
    for (int i = 0; i <= bezier->degree; ++i) {
      const double weight = bezier->points[i][3];
      text += " " + Pair(bezier->points[i]) + (weight == 1 ? "" : "*" + ShortNumber(weight));
    }
  }
  return text;
}

std::string Describe(const Outline& outline) {
  std::string text;
  for (const OwnedCurve& curve : outline.curves) {
    text += (text.empty() ? "" : "; ") + Describe(curve);
  }
  return text + (outline.closed ? " z" : "");
}

}  // namespace kurvo::tools
