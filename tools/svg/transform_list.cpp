#include "svg/transform_list.h"

#include <array>
#include <cstddef>
#include <string>

#include "svg/input_error.h"
#include "svg/text_scanner.h"

namespace kurvo::tools {
namespace {

constexpr std::size_t kMaxArguments = 6;

struct Arguments {
  std::array<double, kMaxArguments> values{};
  std::size_t count = 0;
  double operator[](std::size_t i) const { return values[i]; }
};

struct Kind {
  std::string_view name;
  bool (*takes)(std::size_t count);
  const char* wanted;
  Affine (*make)(const Arguments& v);
};

Affine RotationAbout(const Arguments& v) {
  return Translation(v[1], v[2]) * Rotation(v[0]) * Translation(-v[1], -v[2]);
}

constexpr Kind kKinds[] = {
    {"matrix", [](std::size_t n) { return n == 6; }, "6 numbers",
     [](const Arguments& v) { return Affine{v[0], v[1], v[2], v[3], v[4], v[5]}; }},
    {"translate", [](std::size_t n) { return n == 1 || n == 2; }, "1 or 2 numbers",
     [](const Arguments& v) { return Translation(v[0], v[1]); }},
    {"scale", [](std::size_t n) { return n == 1 || n == 2; }, "1 or 2 numbers",
     [](const Arguments& v) { return Scaling(v[0], v.count == 1 ? v[0] : v[1]); }},
    {"rotate", [](std::size_t n) { return n == 1 || n == 3; }, "1 or 3 numbers", RotationAbout},
    {"skewX", [](std::size_t n) { return n == 1; }, "1 number",
     [](const Arguments& v) { return SkewX(v[0]); }},
    {"skewY", [](std::size_t n) { return n == 1; }, "1 number",
     [](const Arguments& v) { return SkewY(v[0]); }},
};

Arguments ReadArguments(TextScanner& in) {
  Arguments arguments;
  in.SkipSpace();
  if (!in.Accept('(')) in.Fail("expected '(', found " + in.Found());
  in.SkipSpace();
  bool comma = false;
  while (comma || in.Peek() != ')') {
    if (arguments.count == kMaxArguments) in.Fail("expected ')', found " + in.Found());
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
    const Arguments arguments = ReadArguments(in);
    if (!kind.takes(arguments.count)) {
      in.FailAt(offset, std::string(name) + " takes " + kind.wanted + ", found " +
                            std::to_string(arguments.count));
    }
    return kind.make(arguments);
  }
  in.FailAt(offset, "unknown transform '" + Excerpt(name) + "'");
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

}  // namespace kurvo::tools
