#include "svg/reader.h"

#include <fmt/format.h>
#include <utf8.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "svg/attributes.h"
#include "svg/document.h"
#include "svg/input.h"
#include "svg/shapes.h"
#include "svg/sheet.h"

namespace kurvo::tools {
namespace {

constexpr int kMaxUseDepth = 32;          // use inside what use shows
constexpr int kMaxNamedUses = 4;          // of them in the name of a shape
constexpr int kMaxUsedElements = 200000;  // that use elements show, all together
constexpr std::size_t kMaxCurves = 5000000;
constexpr std::string_view kLayer = "layer";

// What an element inherits.
struct Context {
  Affine map;  // from the coordinates of the element to those of the drawing
  Viewport viewport;
  bool visible = true;
  bool even_odd = false;
  Paint paint;            // the width of strokes in the units around
  std::size_t group = 0;  // into Drawing::groups
  int use_depth = 0;
  std::string users;  // labels of the use elements around, each with a '/' after it
};

// Walks the tree with a stack of its own, so that nesting is limited by memory alone.
class SvgReader {
 public:
  SvgReader(Library& library, const std::string& path, const ReadOptions& options)
      : library_(library), options_(options), document_(path) {}

  Drawing Read() {
    Context context;
    AtElement(document_.Root(), context, [&] { EnterRoot(context); });
    while (!stack_.empty()) {
      const Pending pending = stack_.back();
      stack_.pop_back();
      if (!pending.alone && pending.element.next_sibling()) {
        stack_.push_back({pending.element.next_sibling(), pending.context, false});
      }
      AtElement(pending.element, pending.context, [&] { Visit(pending.element, pending.context); });
    }
    NoteSkipped();
    return std::move(drawing_);
  }

 private:
  struct Pending {
    pugi::xml_node element;
    Context context;
    bool alone = false;  // without the siblings after it
  };

  // Runs `step`; faults that it finds are those of `element`.
  template <typename Step>
  void AtElement(const pugi::xml_node& element, const Context& context, const Step& step) {
    try {
      step();
    } catch (const ElementError& error) {
      const std::string place =
          error.HasOffset() ? "" : "offset " + std::to_string(SvgDocument::Offset(element)) + ": ";
      throw InputError(OneLine(document_.Path()) + ": " + context.users + document_.Label(element) +
                       ", " + place + error.what());
    }
  }

  void EnterRoot(Context& context) {
    const pugi::xml_node root = document_.Root();
    if (const std::optional<ViewBox> box = ReadViewBox(root)) {
      context.viewport = {box->width, box->height};
    } else {
      context.viewport.width = Size(root, "width", Axis::kX, {}).value_or(0);
      context.viewport.height = Size(root, "height", Axis::kY, {}).value_or(0);
    }
    drawing_.sheet = ReadSheet(root);
    if (options_.mm_per_unit > 0) {
      const double factor = drawing_.sheet.mm_per_unit / options_.mm_per_unit;
      drawing_.sheet = drawing_.sheet.Scaled(factor);
      context.map = Scaling(factor, factor);
    }
    if (Inherit(root, context)) PushChildren(root, context);
  }

  void Visit(const pugi::xml_node& element, Context context) {
    if (context.use_depth > 0 && ++used_elements_ > kMaxUsedElements) {
      throw ElementError("use elements show more than " + std::to_string(kMaxUsedElements) +
                         " elements");
    }
    const std::string_view name = document_.LocalName(element);
    if (name == "text" || name == "image" || name == "foreignObject") {
      return CountSkipped(name, element, context);
    }
    // What is neither a shape nor a group (defs, clipPath, metadata, ...) shows nothing here.
    const bool is_shape = IsShape(name);
    if ((!is_shape && !IsGroup(name)) || !Inherit(element, context)) return;
    if (is_shape) return AddShape(name, element, context);
    OpenGroup(name, element, context);
    if (name == "svg") {
      EnterViewport(element, element, context);
    } else if (name == "switch") {
      EnterSwitch(element, context);
    } else if (name == "use") {
      EnterUse(element, context);
    } else {
      PushChildren(element, context);
    }
  }

  static bool IsGroup(std::string_view name) {
    return name == "g" || name == "a" || name == "svg" || name == "switch" || name == "use";
  }

  // Groups, and others around elements where they have a name.
  void OpenGroup(std::string_view name, const pugi::xml_node& element, Context& context) {
    const Group group = {context.group, element.attribute("id").value(),
                         element.attribute("inkscape:label").value(),
                         element.attribute("inkscape:groupmode").value() == kLayer};
    if (name != "g" && group.id.empty()) return;
    context.group = drawing_.groups.size();
    drawing_.groups.push_back(group);
  }

  void CountSkipped(std::string_view name, const pugi::xml_node& element, const Context& context) {
    const bool shown = context.visible && Property(element, "display") != "none";
    if (shown) ++skipped_[std::string(name)];
  }

  void NoteSkipped() {
    for (const auto& [name, count] : skipped_) {
      drawing_.notes.push_back(fmt::format("note: {} {} element{} no outline", count, name,
                                           count == 1 ? " has" : "s have"));
    }
  }

  // Takes over what the attributes of `element` change for it and for what it contains. Result:
  // whether anything is displayed.
  static bool Inherit(const pugi::xml_node& element, Context& context) {
    if (Property(element, "display") == "none") return false;
    const std::string visibility = Property(element, "visibility");
    if (!visibility.empty() && visibility != "inherit") context.visible = visibility == "visible";
    const std::string fill_rule = Property(element, "fill-rule");
    if (!fill_rule.empty() && fill_rule != "inherit") context.even_odd = fill_rule == "evenodd";
    InheritPaint(element, context);

    context.map = context.map * OwnMap(element);
    const double determinant = context.map.Determinant();
    if (!std::isfinite(determinant)) throw ElementError("transform", 0, "out of range");
    return determinant != 0;  // what a transform flattens is not displayed
  }

  static void InheritPaint(const pugi::xml_node& element, Context& context) {
    const auto take = [&](std::string_view name, std::string& colour) {
      const std::string value = Property(element, name);
      if (value.empty() || value == "inherit") return;
      // Gradients and patterns stay behind, and so does what colour is current.
      const bool is_plain = value.find("url(") == std::string::npos && value != "currentColor";
      colour = is_plain ? value : "#000";
    };
    take("fill", context.paint.fill);
    take("stroke", context.paint.stroke);
    const std::string width = Property(element, "stroke-width");
    if (width.empty() || width == "inherit") return;
    try {
      context.paint.stroke_width =
          ParseLength("stroke-width", width, Axis::kDiagonal, context.viewport);
    } catch (const ElementError&) {
      // Paint is no reason to refuse an outline.
    }
  }

  static Affine OwnMap(const pugi::xml_node& element) {
    const std::string styled = StyleProperty(element, "transform");
    if (!styled.empty() && styled != "none") {
      throw ElementError("a transform in a style cannot be read, only the attribute");
    }
    const std::string_view list = element.attribute("transform").value();
    if (list.empty() || list == "none") return {};
    if (!Property(element, "transform-origin").empty()) {
      throw ElementError("transform-origin cannot be read");
    }
    return ParseTransformList("transform", list);
  }

  void PushChildren(const pugi::xml_node& element, const Context& context) {
    const pugi::xml_node first = element.first_child();
    if (first) stack_.push_back({first, context, false});
  }

  // The first child that asks for nothing.
  void EnterSwitch(const pugi::xml_node& element, const Context& context) {
    for (const pugi::xml_node& child : element.children()) {
      const bool conditional = child.attribute("requiredExtensions") ||
                               child.attribute("requiredFeatures") ||
                               child.attribute("systemLanguage");
      if (conditional) continue;
      stack_.push_back({child, context, true});
      return;
    }
  }

  // The content of an svg or symbol element, whose size may come from a use element.
  void EnterViewport(const pugi::xml_node& element, const pugi::xml_node& sized, Context context) {
    const Viewport outer = context.viewport;
    const auto size = [&](const char* side, Axis axis) {
      const std::optional<double> given = Size(sized, side, axis, outer);
      return given ? given : Size(element, side, axis, outer);
    };
    const std::optional<double> width = size("width", Axis::kX);
    const std::optional<double> height = size("height", Axis::kY);
    if (width == 0 || height == 0) return;
    const Viewport viewport = {width.value_or(outer.width), height.value_or(outer.height)};
    const double x = LengthOr(0, element, "x", Axis::kX, outer);
    const double y = LengthOr(0, element, "y", Axis::kY, outer);
    context.map = context.map * Translation(x, y);
    context.viewport = viewport;
    if (const std::optional<ViewBox> box = ReadViewBox(element)) {
      context.map = context.map * ViewBoxMap(element, *box, viewport);
      context.viewport = {box->width, box->height};
    }
    PushChildren(element, context);
  }

  void EnterUse(const pugi::xml_node& use, Context context) {
    const pugi::xml_node target = UseTarget(use);
    if (!target) return;
    if (++context.use_depth > kMaxUseDepth) {
      throw ElementError("use is nested more than " + std::to_string(kMaxUseDepth) +
                         " deep: it shows itself");
    }
    context.map = context.map * Translation(LengthOr(0, use, "x", Axis::kX, context.viewport),
                                            LengthOr(0, use, "y", Axis::kY, context.viewport));
    const std::string_view name = document_.LocalName(target);
    if (context.use_depth <= kMaxNamedUses) context.users += document_.Label(use) + "/";
    if (name != "symbol" && name != "svg") {
      stack_.push_back({target, context, true});
    } else if (Inherit(target, context)) {
      EnterViewport(target, use, context);
    }
  }

  // The element that `use` refers to; empty when it refers to nothing at all.
  pugi::xml_node UseTarget(const pugi::xml_node& use) const {
    pugi::xml_attribute href = use.attribute("href");
    if (!href) href = use.attribute("xlink:href");
    const std::string_view reference = href.value();
    if (reference.empty()) return {};
    if (reference.front() != '#') {
      throw ElementError(href.name(), 0, "refers to another file: " + Excerpt(reference));
    }
    const pugi::xml_node target = document_.ById(reference.substr(1));
    if (!target) {
      throw ElementError(href.name(), 0,
                         "there is no element with the id '" + Excerpt(reference.substr(1)) + "'");
    }
    return target;
  }

  void AddShape(std::string_view name, const pugi::xml_node& element, const Context& context) {
    OutlineBuilder pen(library_, context.map);
    DrawShape(name, element, context.viewport, pen);
    if (!context.visible) return;
    Shape shape;
    shape.label = context.users + document_.Label(element);
    shape.even_odd = context.even_odd;
    shape.outlines = pen.Finish();
    shape.id = element.attribute("id").value();
    shape.group = context.group;
    shape.paint = context.paint;
    shape.paint.stroke_width *= std::sqrt(std::fabs(context.map.Determinant()));
    if (shape.outlines.empty()) return;
    for (const Outline& outline : shape.outlines) curve_count_ += outline.curves.size();
    if (curve_count_ > kMaxCurves) {
      throw ElementError("the drawing has more than " + std::to_string(kMaxCurves) + " curves");
    }
    drawing_.shapes.push_back(std::move(shape));
  }

  Library& library_;
  const ReadOptions options_;
  const SvgDocument document_;
  std::vector<Pending> stack_;
  Drawing drawing_;
  std::map<std::string, int> skipped_;  // elements without outline, by name
  int used_elements_ = 0;
  std::size_t curve_count_ = 0;
};

// The point on a line that is not empty. Throws ElementError.
Point ParseLine(TextScanner& scanner) {
  const double x = scanner.Number();
  scanner.SkipCommaSpace();
  const double y = scanner.Number();
  scanner.SkipSpace();
  if (!scanner.AtEnd()) scanner.Fail("expected the end of the line, found " + scanner.Found());
  return {x, y};
}

}  // namespace

Drawing ReadSvg(Library& library, const std::string& path, const ReadOptions& options) {
  return SvgReader(library, path, options).Read();
}

std::vector<Point> ReadPoints(Library& library, const std::string& path) {
  const std::string bytes = ReadWholeFile(path);
  std::string_view rest = bytes;
  if (utf8::starts_with_bom(bytes)) rest.remove_prefix(std::size(utf8::bom));
  std::vector<Point> points;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    const std::string where = "line " + std::to_string(number);
    const auto refuse = [&](const std::string& problem) {
      throw InputError(OneLine(path) + ": " + problem);
    };
    TextScanner scanner(where, line);
    scanner.SkipSpace();
    if (scanner.AtEnd() || scanner.Peek() == '#') continue;
    try {
      points.push_back(ParseLine(scanner));
    } catch (const ElementError& error) {
      refuse(error.what());
    }
    const std::size_t count = points.size();
    if (count > 1 && AreSame(library, points[count - 2], points[count - 1])) {
      refuse(where + ": the same point as the one before");
    }
  }
  if (points.size() < 2) throw InputError(OneLine(path) + ": fewer than two points");
  return points;
}

}  // namespace kurvo::tools
