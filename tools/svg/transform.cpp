#include "svg/transform.h"

#include <fmt/format.h>

#include <cstddef>
#include <string>

#include "svg/transform_property.h"

namespace kurvo::tools {
namespace {

struct Kind {
  std::string_view name;
  bool (*takes)(std::size_t count);
  const char* wanted;
  Affine (*make)(const TransformArguments& v);
};

Affine RotationAbout(const TransformArguments& v) {
  return Translation(v[1], v[2]) * Rotation(v[0]) * Translation(-v[1], -v[2]);
}

constexpr Kind kKinds[] = {
    {"matrix", [](std::size_t n) { return n == 6; }, "6 numbers",
     [](const TransformArguments& v) { return Affine{v[0], v[1], v[2], v[3], v[4], v[5]}; }},
    {"translate", [](std::size_t n) { return n == 1 || n == 2; }, "1 or 2 numbers",
     [](const TransformArguments& v) { return Translation(v[0], v[1]); }},
    {"scale", [](std::size_t n) { return n == 1 || n == 2; }, "1 or 2 numbers",
     [](const TransformArguments& v) { return Scaling(v[0], v.count == 1 ? v[0] : v[1]); }},
    {"rotate", [](std::size_t n) { return n == 1 || n == 3; }, "1 or 3 numbers", RotationAbout},
    {"skewX", [](std::size_t n) { return n == 1; }, "1 number",
     [](const TransformArguments& v) { return SkewX(v[0]); }},
    {"skewY", [](std::size_t n) { return n == 1; }, "1 number",
     [](const TransformArguments& v) { return SkewY(v[0]); }},
};

TransformArguments ReadArguments(TextScanner& in) {
  TransformArguments arguments;
  in.SkipSpace();
  if (!in.Accept('(')) in.Fail("expected '(', found " + in.Found());
  in.SkipSpace();
  bool comma = false;
  while (comma || in.Peek() != ')') {
    if (arguments.count == arguments.values.size()) in.Fail("expected ')', found " + in.Found());
    arguments.values[arguments.count++] = in.Number();
    comma = in.SkipCommaSpace();
  }
  in.Accept(')');
  return arguments;
}

Affine ReadTransform(TextScanner& in) {
  const std::size_t offset = in.Offset();
  const std::string_view name = in.Word();
  if (name.empty()) in.Fail("expected a transform, found " + in.Found());
  for (const Kind& kind : kKinds) {
    if (kind.name != name) continue;
    const TransformArguments arguments = ReadArguments(in);
    if (!kind.takes(arguments.count)) {
      in.FailAt(offset, std::string(name) + " takes " + kind.wanted + ", found " +
                            std::to_string(arguments.count));
    }
    return kind.make(arguments);
  }
  in.FailAt(offset, "unknown transform '" + Excerpt(name) + "'");
}

// Properties that move elements too.
constexpr const char* kOtherMoves[] = {"translate", "rotate", "scale", "offset-path"};

// What `read` makes of the declaration of the style, or else of the attribute of that name. What
// CSS takes for no declaration goes to `ignored`.
template <class Read>
auto Declared(const pugi::xml_node& element, const char* name, Tally& ignored, const Read& read) {
  const std::string styled = StyleProperty(element, name);
  try {
    if (!styled.empty()) return read(styled, false);
  } catch (const ElementError& error) {
    if (!error.HasOffset()) throw;
    ignored.Add(name + (": " + Excerpt(styled)));
  }
  return read(std::string(element.attribute(name).value()), true);
}

}  // namespace

Affine ParseTransformList(std::string_view attribute, std::string_view text) {
  TextScanner in(attribute, text);
  Affine all;
  in.SkipSpace();
  bool comma = false;
  while (comma || !in.AtEnd()) {
    all = all * ReadTransform(in);
    comma = in.SkipCommaSpace();
  }
  return all;
}

Affine OwnMap(const pugi::xml_node& element, const Viewport& viewport, Tally& ignored) {
  for (const char* move : kOtherMoves) {
    const std::string value = StyleProperty(element, move);
    if (!SaysNothing(value)) {
      throw ElementError(fmt::format("{}: {} is not read", move, Excerpt(value)));
    }
  }
  const std::string box = Property(element, "transform-box");
  const bool is_known = SaysNothing(box) || box == "view-box";
  const Viewport whole = is_known ? viewport : Viewport{};
  const Affine map =
      Declared(element, "transform", ignored, [&](const std::string& text, bool own) {
        if (Trimmed(text) == "none") return Affine();
        return own ? ParseTransformList("transform", text) : ParseTransformProperty(text, whole);
      });
  const bool only_moves = map.a == 1 && map.b == 0 && map.c == 0 && map.d == 1;
  if (only_moves) return map;
  if (!is_known) throw ElementError("transform-box: " + Excerpt(box) + " is not read");
  const Point origin = Declared(
      element, "transform-origin", ignored,
      [&](const std::string& text, bool own) { return ParseTransformOrigin(text, whole, own); });
  return Translation(origin.x, origin.y) * map * Translation(-origin.x, -origin.y);
}

}  // namespace kurvo::tools
