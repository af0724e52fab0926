#include "geometry/notches.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "geometry/chain.h"
#include "geometry/curve_make.h"
#include "geometry/result.h"

namespace kurvo::tools {
namespace {

constexpr const char* kNotchId = "-notches";

// Adds those of one outline.
void NotchOutline(Context& context, const Outline& outline, const std::vector<double>& lengths,
                  double notch, const Notch& like, std::vector<Notch>& notches) {
  const ChainView chain(outline.curves);
  const double whole = LengthOf(context, chain);
  for (const double length : lengths) {
    if (length > whole + context.Epsilon()) continue;
    const Place place = PlaceAt(context, chain, std::min(length, whole));
    const Point p = place.point;
    const Point across = (notch / 2) * Point{-place.tangent.y, place.tangent.x};
    notches.push_back(
        {like.element, like.outline, length, p, Curve::Line(p - across, p + across).value()});
  }
}

}  // namespace

std::vector<std::size_t> ShapesNamed(const Drawing& drawing, const std::string& name) {
  const std::string id = name.substr(name.find('#') + 1);  // all of it where there is no #
  std::vector<std::size_t> named;
  for (std::size_t i = 0; i < drawing.shapes.size(); ++i) {
    const Shape& shape = drawing.shapes[i];
    if (shape.label == name || (!id.empty() && shape.id == id)) named.push_back(i);
  }
  if (named.empty()) throw std::runtime_error("the drawing has no element " + name);
  return named;
}

std::vector<Notch> NotchesOn(Context& context, const Drawing& drawing,
                             const std::vector<NotchRequest>& requests, double notch) {
  std::vector<Notch> notches;
  for (const NotchRequest& request : requests) {
    std::vector<std::size_t> elements;
    if (!request.element.empty()) elements = ShapesNamed(drawing, request.element);
    double longest = 0;
    ForEachOutline(drawing, [&](const Outline& outline, const std::string& label, std::size_t i) {
      const bool is_named = std::find(elements.begin(), elements.end(), i) != elements.end();
      if (!request.element.empty() && !is_named) return;
      longest = std::max(longest, LengthOf(context, outline.curves));
      NotchOutline(context, outline, request.lengths, notch, {i, label, 0, {}, {}}, notches);
    });
    for (const double length : request.lengths) {
      if (length > longest + context.Epsilon()) {
        throw std::runtime_error(
            fmt::format("{} is beyond the end: the longest outline{} has {:.6g}", length,
                        request.element.empty() ? "" : " of " + request.element, longest));
      }
    }
  }
  std::stable_sort(notches.begin(), notches.end(),
                   [](const Notch& a, const Notch& b) { return a.element < b.element; });
  return notches;
}

Drawing WithNotches(Context& context, const Drawing& drawing, const std::vector<Notch>& notches) {
  const double thin = ThinStroke(ViewOf(context, ResultOf(drawing)));
  Drawing marked =
      Remade(drawing, [&](const Outline& outline) { return Copies(context, outline.curves); });
  std::vector<Shape> shapes;
  auto notch = notches.begin();
  for (std::size_t i = 0; i < marked.shapes.size(); ++i) {
    const Shape& source = drawing.shapes[i];
    shapes.push_back(std::move(marked.shapes[i]));
    if (notch == notches.end() || notch->element != i) continue;
    Shape& behind = shapes.emplace_back();
    behind.label = source.label + kNotchId;
    if (!source.id.empty()) behind.id = source.id + kNotchId;
    behind.group = source.group;
    behind.origin = source.origin;
    const bool has_stroke = source.paint.stroke != "none";
    behind.paint = {"none", has_stroke ? source.paint.stroke : source.paint.fill,
                    has_stroke ? source.paint.stroke_width : thin};
    for (; notch != notches.end() && notch->element == i; ++notch) {
      Outline& outline = behind.outlines.emplace_back();
      outline.curves.push_back(notch->line.Copy(context).value());
    }
  }
  marked.shapes = std::move(shapes);
  return marked;
}

}  // namespace kurvo::tools
