#include <nlohmann/json.hpp>

#include "svg/curve_file.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

std::string Quoted(const std::string& text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// Writes members of objects on one line.
class Members {
 public:
  void Add(const char* name, const std::string& value) {
    text_.append(text_.empty() ? "\"" : ", \"").append(name).append("\": ").append(value);
  }
  void AddText(const char* name, const std::string& value) {
    if (!value.empty()) Add(name, Quoted(value));
  }
  std::string Object() const { return "{" + text_ + "}"; }

 private:
  std::string text_;
};

template <class Items, class Make>
std::string List(const Items& items, const std::string& between, const Make& make) {
  std::string text;
  for (const auto& item : items)
    text.append(text.empty() ? (between == " " ? "" : between) : "," + between).append(make(item));
  return "[" + text + "]";
}

template <class C>  // Coord, HCoord
std::string PointText(const C& p) {
  return "[" + ExactNumber(p[0]) + ", " + ExactNumber(p[1]) + "]";
}

template <class C>
void AddPoints(const C* points, int count, Members& out) {
  const std::span all(points, static_cast<std::size_t>(count));
  out.Add("points", List(all, " ", [](const C& p) { return PointText(p); }));
  if constexpr (sizeof(C) > sizeof(Coord)) {
    out.Add("weights", List(all, " ", [](const C& p) { return ExactNumber(p[3]); }));
  }
}

template <class Block>
void AddSpline(const Block& spline, Members& out) {
  const std::span knots(spline.knots, static_cast<std::size_t>(spline.order + spline.count));
  out.Add("knots", List(knots, " ", ExactNumber));
  AddPoints(spline.points, spline.count, out);
}

std::string CurveText(const ::Curve& curve) {
  Members out;
  switch (curve.type) {
    case CV_LINE: {
      const auto& line = *static_cast<const KurvoLine*>(curve.data);
      out.AddText("type", "line");
      out.Add("start", PointText(line.start));
      out.Add("end", PointText(line.end));
      break;
    }
    case CV_ARC: {
      const auto& arc = *static_cast<const KurvoArc*>(curve.data);
      out.AddText("type", "arc");
      out.Add("centre", PointText(arc.centre));
      out.Add("radius", ExactNumber(arc.radius));
      out.Add("clockwise", arc.normal[2] < 0 ? "true" : "false");
      out.Add("start", PointText(arc.start));
      out.Add("end", PointText(arc.end));
      break;
    }
    case CV_BEZIER: {
      const auto& bezier = *static_cast<const KurvoBezier*>(curve.data);
      out.AddText("type", "Bezier");
      AddPoints(bezier.points, bezier.degree + 1, out);
      break;
    }
    case CV_RBEZIER: {
      const auto& bezier = *static_cast<const KurvoRBezier*>(curve.data);
      out.AddText("type", "rational Bezier");
      AddPoints(bezier.points, bezier.degree + 1, out);
      break;
    }
    case CV_BSPLINE:
      out.AddText("type", "B-spline");
      AddSpline(*static_cast<const KurvoBSpline*>(curve.data), out);
      break;
    case CV_RBSPLINE:
      out.AddText("type", "rational B-spline");
      AddSpline(*static_cast<const KurvoRBSpline*>(curve.data), out);
      break;
    default: {
      const auto& composite = *static_cast<const KurvoSegcv*>(curve.data);
      const auto count = static_cast<std::size_t>(composite.count);
      out.AddText("type", "composite");
      out.Add("widths", List(std::span(composite.widths, count), " ", ExactNumber));
      out.Add("curves", List(std::span(composite.curves, count), " ", CurveText));
    }
  }
  return out.Object();
}

std::string SheetText(const Sheet& sheet) {
  Members out;
  out.Add("mm_per_unit", ExactNumber(sheet.mm_per_unit));
  if (!sheet.physical) out.Add("assumed", "true");
  if (sheet.width > 0) out.Add("width", ExactNumber(sheet.width));
  if (sheet.height > 0) out.Add("height", ExactNumber(sheet.height));
  const Bounds& view = sheet.view;
  if (!view.IsEmpty()) {
    const double sides[] = {view.min_x, view.min_y, view.max_x, view.max_y};
    out.Add("view", List(sides, " ", ExactNumber));
  }
  out.AddText("fit", sheet.fit);
  if (sheet.y_up) out.Add("y_up", "true");
  if (sheet.units_per_em > 0) out.Add("units_per_em", ExactNumber(sheet.units_per_em));
  return out.Object();
}

std::string GroupText(const Group& group) {
  Members out;
  out.Add("parent", std::to_string(group.parent));
  out.AddText("id", group.id);
  out.AddText("label", group.layer);
  if (group.is_layer) out.Add("layer", "true");
  return out.Object();
}

std::string ShapeText(const Result& result, std::span<const ResultChain> chains, double thin) {
  Members out;
  const std::size_t element = chains.front().element;
  if (element != kNoElement) {
    const Shape& shape = result.source.shapes[element];
    out.AddText("id", shape.id);
    if (shape.group > 0) out.Add("group", std::to_string(shape.group));
    if (shape.even_odd) out.AddText("fill_rule", "evenodd");
    const double origin[] = {shape.origin.x, shape.origin.y};
    if (origin[0] != 0 || origin[1] != 0) out.Add("origin", PointText(origin));
  }
  const Paint paint = PaintOf(result, element, thin);
  out.AddText("fill", paint.fill);
  out.AddText("stroke", paint.stroke);
  out.Add("stroke_width", ExactNumber(paint.stroke_width));
  out.Add("outlines", List(chains, "\n     ", [](const ResultChain& chain) {
            Members outline;
            outline.Add("closed", chain.closed ? "true" : "false");
            outline.Add("curves", List(chain.curves, "\n      ",
                                       [](const Curve& curve) { return CurveText(*curve.Get()); }));
            return outline.Object();
          }));
  return out.Object();
}

}  // namespace

std::string CurveFileText(Context& context, const Result& result) {
  const double thin = ThinStroke(ViewOf(context, result));
  const std::vector<Group>& groups = result.source.groups;
  return "{\n  \"format\": \"kurvo curves\",\n  \"version\": 1,\n  \"sheet\": " +
         SheetText(result.source.sheet) +
         ",\n  \"groups\": " + List(std::span(groups).subspan(1), "\n    ", GroupText) +
         ",\n  \"shapes\": " +
         List(
             Elements(result), "\n    ",
             [&](std::span<const ResultChain> chains) { return ShapeText(result, chains, thin); }) +
         "\n}\n";
}

}  // namespace kurvo::tools
