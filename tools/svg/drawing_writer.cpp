#include "svg/drawing_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "svg/sheet.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

constexpr std::string_view kNoPaint = "none";
constexpr std::string_view kEditor = "http://www.inkscape.org/namespaces/inkscape";  // of layers

// Sizes of sheets, in the digits that people gave.
std::string SizeText(double size) { return fmt::format("{:.12g}", size); }

class DrawingWriter {
 public:
  DrawingWriter(Context& context, const Result& result, const PathAccuracy& accuracy)
      : context_(context), result_(result), source_(result.source), accuracy_(accuracy) {}

  std::string Write() {
    OpenSheet();
    for (const auto& chains : Elements(result_)) WriteElement(chains);
    EnterGroup(0);
    return std::move(text_) + (source_.sheet.y_up ? "</g>\n" : "") + "</svg>\n";
  }

 private:
  void OpenSheet() {
    const Sheet& sheet = source_.sheet;
    Bounds view = ViewOf(context_, result_);
    if (sheet.y_up) view = view.TurnedOver();
    const bool is_given = !sheet.view.IsEmpty();
    const double width = is_given ? sheet.width : sheet.mm_per_unit * view.Width();
    const double height = is_given ? sheet.height : sheet.mm_per_unit * view.Height();
    thin_stroke_ = ThinStroke(view);
    text_ = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    if (std::any_of(source_.groups.begin(), source_.groups.end(),
                    [](const Group& group) { return group.is_layer || !group.layer.empty(); }))
      text_ += fmt::format(" xmlns:inkscape=\"{}\"", kEditor);
    AddSize("width", width);
    AddSize("height", height);
    text_ += fmt::format(" viewBox=\"{} {} {} {}\"", ExactNumber(view.min_x),
                         ExactNumber(view.min_y), SizeText(view.Width()), SizeText(view.Height()));
    AddText("preserveAspectRatio", sheet.fit);
    if (sheet.units_per_em > 0) AddText(kEm, ExactNumber(sheet.units_per_em));
    if (sheet.y_up) AddText(kYAxis, kYUp);
    text_ += ">\n";
    if (sheet.y_up) text_ += "<g transform=\"scale(1 -1)\">\n";
  }

  void AddSize(std::string_view side, double mm) {
    if (!(mm > 0)) return;
    const Sheet& sheet = source_.sheet;
    text_ += sheet.physical ? fmt::format(" {}=\"{}mm\"", side, SizeText(mm))
                            : fmt::format(" {}=\"{}\"", side,
                                          SizeText(mm * kPixelsPerInch / kMillimetresPerInch));
  }

  void AddText(std::string_view name, std::string_view value) {
    if (!value.empty()) text_ += fmt::format(" {}=\"{}\"", name, EscapedText(value));
  }

  void AddOpacity(std::string_view name, double opacity) {
    if (opacity != 1) AddText(name, ExactNumber(opacity));
  }

  // Of several elements with one id, such as what use elements show, the first keeps it.
  void AddId(const std::string& id) {
    if (!id.empty() && ids_.insert(id).second) AddText("id", id);
  }

  // Closes and opens groups until `group` is the innermost one.
  void EnterGroup(std::size_t group) {
    std::vector<std::size_t> path;
    for (std::size_t at = group; at != 0; at = source_.groups[at].parent) path.push_back(at);
    std::reverse(path.begin(), path.end());
    const auto parts = std::mismatch(path.begin(), path.end(), open_.begin(), open_.end());
    for (auto i = parts.second; i != open_.end(); ++i) text_ += "</g>\n";
    open_.erase(parts.second, open_.end());
    for (auto i = parts.first; i != path.end(); ++i) {
      const Group& opened = source_.groups[*i];
      text_ += "<g";
      AddId(opened.id);
      if (opened.is_layer) AddText("inkscape:groupmode", "layer");
      AddText("inkscape:label", opened.layer);
      text_ += ">\n";
      open_.push_back(*i);
    }
  }

  static bool IsZero(Point p) { return p.x == 0 && p.y == 0; }

  // In the coordinates that have their origin there.
  std::string ChainData(std::span<const Curve> curves, Point origin) {
    if (IsZero(origin)) return PathData(context_, curves, accuracy_);
    std::vector<Curve> moved;
    for (const Curve& curve : curves) {
      moved.push_back(curve.Copy(context_).value());
      moved.back().Move(Point() - origin, context_).value();
    }
    return PathData(context_, moved, accuracy_);
  }

  void WriteElement(std::span<const ResultChain> chains) {
    std::string data;
    const std::size_t element = chains.front().element;
    const Shape* shape = element == kNoElement ? nullptr : &source_.shapes[element];
    const Point origin = shape == nullptr ? Point() : shape->origin;
    for (const ResultChain& chain : chains)
      data += ChainData(chain.curves, origin) + (chain.closed ? "Z" : "");
    if (data.empty()) return;
    EnterGroup(shape == nullptr ? 0 : shape->group);
    text_ += "<path";
    if (shape != nullptr) AddId(shape->id);
    if (!IsZero(origin)) {
      AddText("transform",
              fmt::format("translate({} {})", ExactNumber(origin.x), ExactNumber(origin.y)));
    }
    text_ += " d=\"" + data + "\"";
    const Paint paint = PaintOf(result_, element, thin_stroke_);
    AddText("fill", paint.fill);
    if (paint.fill != kNoPaint) AddOpacity("fill-opacity", paint.fill_opacity);
    // It says what the element covers, also where it is not filled.
    if (shape != nullptr && shape->even_odd &&
        (paint.fill != kNoPaint || result_.look == Look::kAsElements)) {
      AddText("fill-rule", "evenodd");
    }
    if (paint.stroke != kNoPaint) {
      AddText("stroke", paint.stroke);
      AddOpacity("stroke-opacity", paint.stroke_opacity);
      AddText("stroke-width", ExactNumber(paint.stroke_width));
    }
    text_ += "/>\n";
  }

  Context& context_;
  const Result& result_;
  const Drawing& source_;
  const PathAccuracy accuracy_;
  std::string text_;
  std::vector<std::size_t> open_;  // groups
  std::set<std::string> ids_;
  double thin_stroke_ = 1;
};

}  // namespace

std::string DrawingText(Context& context, const Result& result, const PathAccuracy& accuracy) {
  return DrawingWriter(context, result, accuracy).Write();
}

}  // namespace kurvo::tools
