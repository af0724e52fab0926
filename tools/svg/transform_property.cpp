#include "svg/transform_property.h"

#include <fmt/format.h>

#include <numbers>
#include <optional>
#include <string>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

// What a function takes: numbers (n), angles (a), and lengths along x, y and towards the eye (z).
// Seen from in front, without perspective, a depth changes nothing.
struct Function {
  std::string_view name;
  std::string_view takes;
  std::size_t least;  // of its arguments
  Affine (*make)(const TransformArguments& v);
};

using Values = TransformArguments;

// clang-format off
constexpr Function kFunctions[] = {
    {"matrix", "nnnnnn", 6, [](const Values& v) { return Affine{v[0], v[1], v[2], v[3], v[4], v[5]}; }},
    {"translate", "xy", 1, [](const Values& v) { return Translation(v[0], v[1]); }},
    {"translatex", "x", 1, [](const Values& v) { return Translation(v[0], 0); }},
    {"translatey", "y", 1, [](const Values& v) { return Translation(0, v[0]); }},
    {"translatez", "z", 1, [](const Values&) { return Affine(); }},
    {"translate3d", "xyz", 3, [](const Values& v) { return Translation(v[0], v[1]); }},
    {"scale", "nn", 1, [](const Values& v) { return Scaling(v[0], v[v.count - 1]); }},
    {"scalex", "n", 1, [](const Values& v) { return Scaling(v[0], 1); }},
    {"scaley", "n", 1, [](const Values& v) { return Scaling(1, v[0]); }},
    {"scalez", "n", 1, [](const Values&) { return Affine(); }},
    {"scale3d", "nnn", 3, [](const Values& v) { return Scaling(v[0], v[1]); }},
    {"rotate", "a", 1, [](const Values& v) { return Rotation(v[0]); }},
    {"rotatez", "a", 1, [](const Values& v) { return Rotation(v[0]); }},
    {"skew", "aa", 1, [](const Values& v) { return Affine{1, SkewY(v[1]).b, SkewX(v[0]).c, 1, 0, 0}; }},
    {"skewx", "a", 1, [](const Values& v) { return SkewX(v[0]); }},
    {"skewy", "a", 1, [](const Values& v) { return SkewY(v[0]); }},
};
// clang-format on

// What CSS knows besides: functions that leave the plane, values that are worked out, and units of
// what is not here.
constexpr std::string_view kBeyond[] = {"matrix3d", "rotate3d", "rotatex", "rotatey", "perspective",
                                        "calc",     "var",      "min",     "max",     "clamp",
                                        "env",      "inherit",  "em",      "ex",      "ch",
                                        "rem",      "vw",       "vh",      "vmin",    "vmax"};

struct AngleUnit {
  std::string_view name;
  double degrees;
};
constexpr AngleUnit kAngleUnits[] = {
    {"deg", 1}, {"grad", 0.9}, {"rad", 180 / std::numbers::pi}, {"turn", 360}};

std::string SmallLetters(std::string_view text) {
  std::string small(text);
  for (char& c : small) c = 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return small;
}

// The value of one property.
class PropertyScanner {
 public:
  // `allows_numbers`: whether lengths may have no unit.
  PropertyScanner(const char* property, std::string_view text, const Viewport& viewport,
                  bool allows_numbers)
      : property_(property),
        text_(SmallLetters(text)),
        in_(property_, text_),
        viewport_(viewport),
        allows_numbers_(allows_numbers) {
    in_.SkipSpace();
  }

  bool AtEnd() const { return in_.AtEnd(); }
  bool AtNumber() const { return in_.AtNumber(); }
  void SkipSpace() { in_.SkipSpace(); }

  // Letters, and "3d" behind them.
  std::string Name() {
    std::string name(in_.Word());
    if (in_.Accept('3')) name += "3" + std::string(in_.Word());
    return name;
  }

  [[noreturn]] void Refuse(std::string_view word) const {
    for (const std::string_view known : kBeyond) {
      if (known == word) throw ElementError(fmt::format("{}: {} is not read", property_, word));
    }
    in_.Fail("unknown '" + Excerpt(word) + "'");
  }

  Affine Function() {
    const std::string name = Name();
    for (const tools::Function& function : kFunctions) {
      if (function.name == name) return function.make(Arguments(function));
    }
    Refuse(name);
  }

  // `kind` as in Function.
  double Value(char kind) {
    if (!in_.AtNumber()) Refuse(Name());
    const double number = in_.Number();
    if (in_.Accept('%')) return number / 100 * Whole(kind);
    const std::string_view unit = in_.Word();
    const bool needs_unit = kind == 'a' || (kind != 'n' && !allows_numbers_);
    if (unit.empty() && (number == 0 || !needs_unit)) return number;
    if (kind == 'a') {
      for (const AngleUnit& angle : kAngleUnits) {
        if (angle.name == unit) return number * angle.degrees;
      }
    } else if (kind != 'n' && !unit.empty()) {
      if (const std::optional<double> size = UnitSize(unit)) return number * *size;
    }
    Refuse(unit);
  }

  // What a percentage is of.
  double Whole(char kind) const {
    const double whole = kind == 'n'   ? 1
                         : kind == 'x' ? viewport_.width
                         : kind == 'y' ? viewport_.height
                                       : 0;
    if (whole == 0) throw ElementError(property_ + ": a part of what has no size");
    return whole;
  }

 private:
  Values Arguments(const tools::Function& function) {
    Values arguments;
    if (!in_.Accept('(')) in_.Fail("expected '(', found " + in_.Found());
    do {
      in_.SkipSpace();
      arguments.values[arguments.count] = Value(function.takes[arguments.count]);
      ++arguments.count;
      in_.SkipSpace();
    } while (arguments.count < function.takes.size() && in_.Accept(','));
    if (arguments.count < function.least || !in_.Accept(')')) {
      in_.Fail("expected another argument or ')', found " + in_.Found());
    }
    return arguments;
  }

  const std::string property_, text_;
  TextScanner in_;
  const Viewport& viewport_;
  const bool allows_numbers_;
};

}  // namespace

bool SaysNothing(std::string_view value) {
  return value.empty() || value == "none" || value == "initial" || value == "unset" ||
         value == "revert";
}

Affine ParseTransformProperty(std::string_view text, const Viewport& viewport) {
  Affine all;
  if (SaysNothing(text)) return all;
  PropertyScanner in("transform", text, viewport, false);
  while (!in.AtEnd()) {
    all = all * in.Function();
    in.SkipSpace();
  }
  return all;
}

// One or two places, that along x first unless they are words that say otherwise; a third is a
// depth. "center", and what is not said, is the middle.
Point ParseTransformOrigin(std::string_view text, const Viewport& viewport, bool is_attribute) {
  Point origin;
  if (SaysNothing(Trimmed(text))) return origin;
  PropertyScanner in("transform-origin", text, viewport, is_attribute);
  bool has_x = false, has_y = false;
  const auto set = [](double& place, bool& has, double value) { place = value, has = true; };
  for (int count = 0; !in.AtEnd(); ++count, in.SkipSpace()) {
    if (count == 3) in.Refuse("");
    const std::string word = in.AtNumber() ? "" : in.Name();
    if (word == "left" || word == "right") {
      set(origin.x, has_x, word == "left" ? 0 : in.Whole('x'));
    } else if (word == "top" || word == "bottom") {
      set(origin.y, has_y, word == "top" ? 0 : in.Whole('y'));
    } else if (word.empty() && count == 2) {
      in.Value('z');
    } else if (word.empty() && count == 1 && !has_y) {
      set(origin.y, has_y, in.Value('y'));
    } else if (word.empty()) {
      set(origin.x, has_x, in.Value('x'));
    } else if (word != "center") {
      in.Refuse(word);
    }
  }
  if (!has_x) origin.x = in.Whole('x') / 2;
  if (!has_y) origin.y = in.Whole('y') / 2;
  return origin;
}

}  // namespace kurvo::tools
