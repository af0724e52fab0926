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

template <class P>  // of space, with or without a weight
std::string PointText(const P& p) {
  return "[" + ExactNumber(p.x) + ", " + ExactNumber(p.y) + "]";
}

std::string CurveText(const Curve& curve);

void AddFields(std::nullptr_t, Members&) {}

void AddFields(const KurvoLine& line, Members& out) {
  out.Add("start", PointText(Load(line.start)));
  out.Add("end", PointText(Load(line.end)));
}

void AddFields(const KurvoArc& arc, Members& out) {
  out.Add("centre", PointText(Load(arc.centre)));
  out.Add("radius", ExactNumber(arc.radius));
  out.Add("clockwise", arc.normal[2] < 0 ? "true" : "false");
  out.Add("start", PointText(Load(arc.start)));
  out.Add("end", PointText(Load(arc.end)));
}

void AddFields(const KurvoSegcv& composite, Members& out) {
  out.Add("widths", List(Widths(composite), " ", ExactNumber));
  out.Add("curves", List(Pieces(composite), " ", CurveText));
}

template <class FreeForm>
void AddFields(const FreeForm& block, Members& out) {
  const auto points = Points(block);
  if constexpr (requires { block.knots; }) out.Add("knots", List(Knots(block), " ", ExactNumber));
  out.Add("points", List(points, " ", [](const auto& p) { return PointText(p); }));
  if constexpr (requires { points[0].w; }) {
    out.Add("weights", List(points, " ", [](const auto& p) { return ExactNumber(p.w); }));
  }
}

std::string CurveText(const Curve& curve) {
  Members out;
  out.AddText("type", TypeName(curve.Type()));
  curve.Visit([&](const auto& block) { AddFields(block, out); });
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
    if (shape.origin.x != 0 || shape.origin.y != 0) out.Add("origin", PointText(shape.origin));
  }
  const Paint paint = PaintOf(result, element, thin);
  out.AddText("fill", paint.fill);
  out.AddText("stroke", paint.stroke);
  out.Add("stroke_width", ExactNumber(paint.stroke_width));
  if (paint.fill_opacity != 1) out.Add("fill_opacity", ExactNumber(paint.fill_opacity));
  if (paint.stroke_opacity != 1) out.Add("stroke_opacity", ExactNumber(paint.stroke_opacity));
  out.Add("outlines", List(chains, "\n     ", [](const ResultChain& chain) {
            Members outline;
            outline.Add("closed", chain.closed ? "true" : "false");
            outline.Add("curves", List(chain.curves, "\n      ", CurveText));
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
