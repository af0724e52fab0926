#include "geometry/result.h"

#include <string>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"

namespace kurvo::tools {
namespace {

constexpr Bounds kNothing = {0, 0, 1, 1};  // the view of an empty drawing
constexpr const char* kNoPaint = "none";

}  // namespace

std::vector<std::span<const ResultChain>> Elements(const Result& result) {
  const std::span<const ResultChain> chains = result.chains;
  std::vector<std::span<const ResultChain>> elements;
  for (std::size_t begin = 0, end; begin < chains.size(); begin = end) {
    end = begin + 1;
    while (end < chains.size() && chains[end].element == chains[begin].element &&
           chains[end].element != kNoElement)
      ++end;
    elements.push_back(chains.subspan(begin, end - begin));
  }
  return elements;
}

Bounds ViewOf(Context& context, const Result& result) {
  Bounds view = result.source.sheet.view;
  if (!view.IsEmpty()) return view;
  for (const ResultChain& chain : result.chains) {
    for (const Curve& curve : chain.curves) view.Add(BoundsOf(context, curve));
  }
  if (view.IsEmpty()) view = kNothing;
  view.Grow(ThinStroke(view));
  return view;
}

Paint PaintOf(const Result& result, std::size_t element, double thin) {
  if (element == kNoElement) return {kNoPaint, "#000", thin};
  const Paint& paint = result.source.shapes[element].paint;
  if (result.look == Look::kAsElements) return paint;
  if (result.look == Look::kSurround) {
    const bool has_stroke = paint.stroke != kNoPaint;
    const std::string& line = has_stroke ? paint.stroke : paint.fill;
    return {line == kNoPaint ? "#000" : line, kNoPaint, 0,
            has_stroke ? paint.stroke_opacity : paint.fill_opacity};
  }
  if (paint.stroke != kNoPaint)
    return {kNoPaint, paint.stroke, paint.stroke_width, 1, paint.stroke_opacity};
  return {kNoPaint, paint.fill == kNoPaint ? "#000" : paint.fill, thin, 1, paint.fill_opacity};
}

Drawing DrawingOf(Context& context, const Result& result) {
  Drawing drawing;
  drawing.groups = result.source.groups;
  drawing.sheet = result.source.sheet;
  const double thin = ThinStroke(ViewOf(context, result));
  for (const auto& chains : Elements(result)) {
    Shape& shape = drawing.shapes.emplace_back();
    const std::size_t element = chains.front().element;
    shape.label = "path[" + std::to_string(drawing.shapes.size()) + "]";
    shape.paint = PaintOf(result, element, thin);
    if (element != kNoElement) {
      const Shape& source = result.source.shapes[element];
      shape.label = source.label;
      shape.id = source.id;
      shape.group = source.group;
      shape.origin = source.origin;
      shape.even_odd = source.even_odd;
    }
    for (const ResultChain& chain : chains) {
      Outline& outline = shape.outlines.emplace_back();
      outline.closed = chain.closed;
      outline.curves = Copies(context, chain.curves);
    }
  }
  return drawing;
}

Result ResultOf(const Drawing& drawing) {
  Result result = {drawing, {}};
  for (std::size_t i = 0; i < drawing.shapes.size(); ++i) {
    for (const Outline& outline : drawing.shapes[i].outlines)
      result.chains.push_back({outline.curves, outline.closed, i});
  }
  return result;
}

Result OneByOne(const Drawing& source, std::span<const Curve> curves) {
  Result result = {source, {}, Look::kLines};
  for (const Curve& curve : curves) result.chains.push_back({{&curve, 1}});
  return result;
}

void AddRuns(Context& context, std::span<const Curve> curves, std::size_t element,
             std::vector<ResultChain>& chains) {
  for (std::size_t begin = 0, end; begin < curves.size(); begin = end) {
    end = begin + 1;
    while (end < curves.size() && Follows(context, curves[end - 1], curves[end])) ++end;
    const bool closed = Follows(context, curves[end - 1], curves[begin]);
    chains.push_back({curves.subspan(begin, end - begin), closed, element});
  }
}

}  // namespace kurvo::tools
