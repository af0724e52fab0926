#include "svg/drawing_writer.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string_view>

#include "svg/writer.h"

namespace kurvo::tools {
namespace {

constexpr Bounds kNothing = {0, 0, 1, 1};  // the sheet of an empty drawing
constexpr double kStrokeShare = 1e-3;      // of the sheet, where the source has no stroke
constexpr std::string_view kNoPaint = "none";
constexpr std::string_view kEditor = "http://www.inkscape.org/namespaces/inkscape";  // of layers

// Sizes of sheets, in the digits that people gave.
std::string SizeText(double size) { return fmt::format("{:.12g}", size); }

class DrawingWriter {
 public:
  DrawingWriter(Library& library, const Result& result, const PathAccuracy& accuracy)
      : library_(library), result_(result), source_(result.source), accuracy_(accuracy) {}

  std::string Write() {
    OpenSheet();
    const std::vector<ResultChain>& chains = result_.chains;
    for (std::size_t begin = 0, end; begin < chains.size(); begin = end) {
      end = begin + 1;
      while (end < chains.size() && chains[end].element == chains[begin].element &&
             chains[end].element != kNoElement)
        ++end;
      WriteElement({&chains[begin], end - begin});
    }
    EnterGroup(0);
    return std::move(text_) + "</svg>\n";
  }

 private:
  void OpenSheet() {
    const Sheet& sheet = source_.sheet;
    Bounds view = sheet.view;
    double width = sheet.width, height = sheet.height;
    if (view.IsEmpty()) {
      view = BoundsOf(library_, result_);
      if (view.IsEmpty()) view = kNothing;
      view.Grow(kStrokeShare * view.LongerSide());
      width = sheet.mm_per_unit * view.Width();
      height = sheet.mm_per_unit * view.Height();
    }
    stroke_width_ = kStrokeShare * view.LongerSide();
    text_ = "<svg xmlns=\"http://www.w3.org/2000/svg\"";
    if (std::any_of(source_.groups.begin(), source_.groups.end(),
                    [](const Group& group) { return group.is_layer || !group.layer.empty(); }))
      text_ += fmt::format(" xmlns:inkscape=\"{}\"", kEditor);
    AddSize("width", width);
    AddSize("height", height);
    text_ += fmt::format(" viewBox=\"{} {} {} {}\"", ExactNumber(view.min_x),
                         ExactNumber(view.min_y), SizeText(view.Width()), SizeText(view.Height()));
    AddText("preserveAspectRatio", sheet.fit);
    text_ += ">\n";
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

  void WriteElement(std::span<const ResultChain> chains) {
    std::string data;
    for (const ResultChain& chain : chains) {
      data += PathData(library_, chain.curves, accuracy_) + (chain.closed ? "Z" : "");
    }
    if (data.empty()) return;
    const std::size_t element = chains.front().element;
    const Shape* shape = element == kNoElement ? nullptr : &source_.shapes[element];
    EnterGroup(shape == nullptr ? 0 : shape->group);
    text_ += "<path";
    if (shape != nullptr) AddId(shape->id);
    text_ += " d=\"" + data + "\"";
    if (shape == nullptr) {
      AddLinePaint("#000", stroke_width_);
    } else if (result_.lines) {
      AddPaintOfLines(shape->paint);
    } else {
      AddPaint(*shape);
    }
    text_ += "/>\n";
  }

  void AddLinePaint(const std::string& colour, double width) {
    AddText("fill", kNoPaint);
    AddText("stroke", colour);
    AddText("stroke-width", ExactNumber(width));
  }

  // A shape that was only filled shows its fill in its lines.
  void AddPaintOfLines(const Paint& paint) {
    if (paint.stroke != kNoPaint) return AddLinePaint(paint.stroke, paint.stroke_width);
    AddLinePaint(paint.fill == kNoPaint ? "#000" : paint.fill, stroke_width_);
  }

  void AddPaint(const Shape& shape) {
    AddText("fill", shape.paint.fill);
    if (shape.even_odd) AddText("fill-rule", "evenodd");
    if (shape.paint.stroke == kNoPaint) return;
    AddText("stroke", shape.paint.stroke);
    AddText("stroke-width", ExactNumber(shape.paint.stroke_width));
  }

  Library& library_;
  const Result& result_;
  const Drawing& source_;
  const PathAccuracy accuracy_;
  std::string text_;
  std::vector<std::size_t> open_;  // groups
  std::set<std::string> ids_;
  double stroke_width_ = 1;
};

}  // namespace

std::string DrawingText(Library& library, const Result& result, const PathAccuracy& accuracy) {
  return DrawingWriter(library, result, accuracy).Write();
}

}  // namespace kurvo::tools
