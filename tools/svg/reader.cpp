#include "svg/reader.h"

#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "svg/attributes.h"
#include "svg/curve_file.h"
#include "svg/document.h"
#include "svg/gzip.h"
#include "svg/inherited.h"
#include "svg/input.h"
#include "svg/left_out.h"
#include "svg/shapes.h"
#include "svg/sheet.h"

namespace kurvo::tools {
namespace {

constexpr int kMaxUseDepth = 32;          // use inside what use shows
constexpr int kMaxNamedUses = 4;          // of them in the name of a shape
constexpr int kMaxUsedElements = 200000;  // that use elements show, all together
constexpr std::size_t kMaxCurves = 5000000;
constexpr std::string_view kLayer = "layer";

// Walks the tree with a stack of its own, so that nesting is limited by memory alone.
class SvgReader {
 public:
  SvgReader(Context& context, const std::string& path, std::string_view bytes,
            const ReadOptions& options)
      : context_(context), options_(options), document_(path, bytes) {}

  Drawing Read() {
    Inherited inherited;
    AtElement(document_.Root(), inherited, [&] { EnterRoot(inherited); });
    while (!stack_.empty()) {
      const Pending pending = stack_.back();
      stack_.pop_back();
      if (!pending.alone && pending.element.next_sibling()) {
        stack_.push_back({pending.element.next_sibling(), pending.inherited, false});
      }
      AtElement(pending.element, pending.inherited,
                [&] { Visit(pending.element, pending.inherited); });
    }
    drawing_.notes = left_out_.Notes();
    return std::move(drawing_);
  }

 private:
  struct Pending {
    pugi::xml_node element;
    Inherited inherited;
    bool alone = false;  // without the siblings after it
  };

  // Runs `step`; faults that it finds are those of `element`.
  template <typename Step>
  void AtElement(const pugi::xml_node& element, const Inherited& inherited, const Step& step) {
    try {
      step();
    } catch (const ElementError& error) {
      const std::string place =
          error.HasOffset() ? "" : "offset " + std::to_string(SvgDocument::Offset(element)) + ": ";
      const std::string fault =
          inherited.users + document_.Label(element) + ", " + place + error.what();
      if (options_.strict || element == document_.Root() || error.IsLimit()) {
        throw InputError(OneLine(document_.Path()) + ": " + fault);
      }
      drawing_.faults.push_back(fault);
    }
  }

  // 0 where it does not say, as with a part of a window that is not here.
  static double SizeOfRoot(const pugi::xml_node& root, const char* side) {
    try {
      return Size(root, side, Axis::kX, {}).value_or(0);
    } catch (const ElementError&) {
      return 0;
    }
  }

  void EnterRoot(Inherited& inherited) {
    const pugi::xml_node root = document_.Root();
    if (const std::optional<ViewBox> box = ReadViewBox(root)) {
      inherited.viewport = {box->width, box->height};
    } else {
      inherited.viewport = {SizeOfRoot(root, "width"), SizeOfRoot(root, "height")};
    }
    drawing_.sheet = ReadSheet(root);
    double factor = 1;
    if (options_.mm_per_unit > 0) {
      factor = drawing_.sheet.mm_per_unit / options_.mm_per_unit;
      drawing_.sheet = drawing_.sheet.Scaled(factor);
    }
    inherited.map = Scaling(factor, drawing_.sheet.y_up ? -factor : factor);
    if (Inherit(document_, root, inherited, left_out_.transforms)) PushChildren(root, inherited);
  }

  void Visit(const pugi::xml_node& element, Inherited inherited) {
    if (inherited.use_depth > 0 && ++used_elements_ > kMaxUsedElements) {
      throw ElementError::Limit("use elements show more than " + std::to_string(kMaxUsedElements) +
                                " elements");
    }
    const std::string_view name = document_.LocalName(element);
    if (name == "text" || name == "image" || name == "foreignObject" || name == "flowRoot") {
      return CountSkipped(name, element, inherited);
    }
    // What is neither a shape nor a group (defs, clipPath, metadata, ...) shows nothing here.
    const bool is_shape = IsShape(name);
    if (!is_shape && !IsGroup(name)) return;
    if (!Inherit(document_, element, inherited, left_out_.transforms)) {
      if (IsLayer(element)) ++left_out_.hidden_layers;
      return;
    }
    left_out_.LookAt(element);
    if (is_shape) return AddShape(name, element, inherited);
    OpenGroup(name, element, inherited);
    if (name == "svg") {
      EnterViewport(element, element, inherited);
    } else if (name == "switch") {
      EnterSwitch(element, inherited);
    } else if (name == "use") {
      EnterUse(element, inherited);
    } else {
      PushChildren(element, inherited);
    }
  }

  static bool IsGroup(std::string_view name) {
    return name == "g" || name == "a" || name == "svg" || name == "switch" || name == "use";
  }

  static bool IsLayer(const pugi::xml_node& element) {
    return element.attribute("inkscape:groupmode").value() == kLayer;
  }

  // Groups, and others around elements where they have a name.
  void OpenGroup(std::string_view name, const pugi::xml_node& element, Inherited& inherited) {
    const Group group = {inherited.group, element.attribute("id").value(),
                         element.attribute("inkscape:label").value(), IsLayer(element)};
    // The one that turns a drawing over is part of the sheet.
    const bool turns = drawing_.sheet.y_up && element.parent() == document_.Root();
    const bool is_named = !group.id.empty() || !group.layer.empty();
    if (!is_named && (name != "g" || turns)) return;
    inherited.group = drawing_.groups.size();
    drawing_.groups.push_back(group);
  }

  void CountSkipped(std::string_view name, const pugi::xml_node& element,
                    const Inherited& inherited) {
    const bool shown = inherited.visible && Property(element, "display") != "none";
    if (shown) ++left_out_.without_outline[std::string(name)];
  }

  void PushChildren(const pugi::xml_node& element, const Inherited& inherited) {
    const pugi::xml_node first = element.first_child();
    if (first) stack_.push_back({first, inherited, false});
  }

  // The first child that asks for nothing.
  void EnterSwitch(const pugi::xml_node& element, const Inherited& inherited) {
    for (const pugi::xml_node& child : element.children()) {
      const bool conditional = child.attribute("requiredExtensions") ||
                               child.attribute("requiredFeatures") ||
                               child.attribute("systemLanguage");
      if (conditional) continue;
      stack_.push_back({child, inherited, true});
      return;
    }
    if (element.first_child()) ++left_out_.empty_switches;
  }

  // The content of an svg or symbol element, whose size may come from a use element.
  void EnterViewport(const pugi::xml_node& element, const pugi::xml_node& sized,
                     Inherited inherited) {
    const Viewport outer = inherited.viewport;
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
    inherited.map = inherited.map * Translation(x, y);
    inherited.viewport = viewport;
    if (const std::optional<ViewBox> box = ReadViewBox(element)) {
      inherited.map = inherited.map * ViewBoxMap(element, *box, viewport);
      inherited.viewport = {box->width, box->height};
    }
    PushChildren(element, inherited);
  }

  void EnterUse(const pugi::xml_node& use, Inherited inherited) {
    const pugi::xml_node target = UseTarget(use);
    if (!target) return;
    if (++inherited.use_depth > kMaxUseDepth) {
      throw ElementError("use is nested more than " + std::to_string(kMaxUseDepth) +
                         " deep: it shows itself");
    }
    inherited.map =
        inherited.map * Translation(LengthOr(0, use, "x", Axis::kX, inherited.viewport),
                                    LengthOr(0, use, "y", Axis::kY, inherited.viewport));
    const std::string_view name = document_.LocalName(target);
    if (inherited.use_depth <= kMaxNamedUses) inherited.users += document_.Label(use) + "/";
    if (name != "symbol" && name != "svg") {
      stack_.push_back({target, inherited, true});
    } else if (Inherit(document_, target, inherited, left_out_.transforms)) {
      EnterViewport(target, use, inherited);
    }
  }

  // The element that `use` refers to; empty when it refers to nothing at all.
  pugi::xml_node UseTarget(const pugi::xml_node& use) {
    pugi::xml_attribute href = use.attribute("href");
    if (!href) href = use.attribute("xlink:href");
    const std::string_view reference = href.value();
    if (reference.empty()) return {};
    const bool is_here = reference.front() == '#';
    const pugi::xml_node target = is_here ? document_.ById(reference.substr(1)) : pugi::xml_node();
    if (!target && options_.strict) {
      throw ElementError(
          href.name(), 0,
          is_here ? "there is no element with the id '" + Excerpt(reference.substr(1)) + "'"
                  : "refers to another file: " + Excerpt(reference));
    }
    if (!target) {
      left_out_.lost_uses.Add(document_.Label(use) + (is_here ? " to the id '" : " to the file '") +
                              Excerpt(is_here ? reference.substr(1) : reference) + "'");
    }
    return target;
  }

  void AddShape(std::string_view name, const pugi::xml_node& element, const Inherited& inherited) {
    OutlineBuilder pen(context_, inherited.map);
    DrawShape(name, element, inherited.viewport, pen);
    if (!inherited.visible) return;
    Shape shape;
    shape.label = inherited.users + document_.Label(element);
    shape.even_odd = inherited.even_odd;
    shape.outlines = pen.Finish();
    shape.id = element.attribute("id").value();
    shape.group = inherited.group;
    shape.paint = inherited.paint.Own();
    shape.paint.stroke_width *= std::sqrt(std::fabs(inherited.map.Determinant()));
    if (drawing_.sheet.y_up) shape.origin = inherited.map.Apply({});
    if (shape.outlines.empty()) return;
    for (const Outline& outline : shape.outlines) curve_count_ += outline.curves.size();
    if (curve_count_ > kMaxCurves) {
      throw ElementError::Limit("the drawing has more than " + std::to_string(kMaxCurves) +
                                " curves");
    }
    drawing_.shapes.push_back(std::move(shape));
  }

  Context& context_;
  const ReadOptions options_;
  const SvgDocument document_;
  std::vector<Pending> stack_;
  Drawing drawing_;
  LeftOut left_out_{document_};
  int used_elements_ = 0;
  std::size_t curve_count_ = 0;
};

}  // namespace

std::string ReadUnpacked(const std::string& path) {
  std::string bytes = ReadWholeFile(path);
  return IsGzip(bytes) ? Unpacked(path, bytes) : bytes;
}

Drawing ReadDrawing(Context& context, const std::string& path, std::string_view bytes,
                    const ReadOptions& options) {
  if (IsCurveFile(bytes)) return ReadCurveFile(context, path, bytes, options);
  return SvgReader(context, path, bytes, options).Read();
}

Drawing ReadDrawing(Context& context, const std::string& path, const ReadOptions& options) {
  return ReadDrawing(context, path, ReadUnpacked(path), options);
}

}  // namespace kurvo::tools
