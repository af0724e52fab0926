#include "svg/attributes.h"

#include <algorithm>
#include <cmath>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

struct Unit {
  std::string_view name;
  double size;  // user units
};

constexpr Unit kUnits[] = {{"", 1},           {"px", 1},         {"in", 96},
                           {"mm", 96 / 25.4}, {"cm", 96 / 2.54}, {"pt", 96 / 72.0},
                           {"pc", 16},        {"q", 96 / 101.6}, {"Q", 96 / 101.6}};

double Whole(Axis axis, const Viewport& viewport) {
  if (axis == Axis::kX) return viewport.width;
  if (axis == Axis::kY) return viewport.height;
  // The side of the square with the same diagonal (SVG 1.1, section 7.10).
  return std::hypot(viewport.width, viewport.height) / std::sqrt(2.0);
}

double ReadUnit(TextScanner& in, Axis axis, const Viewport& viewport) {
  const std::size_t offset = in.Offset();
  if (in.Accept('%')) {
    const double whole = Whole(axis, viewport);
    if (whole == 0) in.FailAt(offset, "a percentage, and the drawing has no size");
    return whole / 100;
  }
  const std::string_view name = in.Word();
  if (const std::optional<double> size = UnitSize(name)) return *size;
  in.FailAt(offset, "unknown unit '" + Excerpt(name) + "'");
}

// Whether styles may say it too (SVG 2, section 8.3).
bool IsGeometry(std::string_view attribute) {
  for (const char* name : {"x", "y", "cx", "cy", "r", "rx", "ry", "width", "height"}) {
    if (attribute == name) return true;
  }
  return false;
}

// Whether `name` stands somewhere as a word before a colon, which is quick to say of most.
bool HasName(std::string_view style, std::string_view name) {
  for (std::size_t at = style.find(name); at != style.npos; at = style.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    const bool begins = at == 0 || style[at - 1] == ';' || IsSpace(style[at - 1]);
    if (begins && end < style.size() && (style[end] == ':' || IsSpace(style[end]))) return true;
  }
  return false;
}

// The value of `name`; the last one counts.
std::string_view StyleValue(std::string_view style, std::string_view name) {
  std::string_view value;
  if (!HasName(style, name)) return value;
  while (!style.empty()) {
    const std::size_t end = std::min(style.find(';'), style.size());
    const std::string_view declaration = style.substr(0, end);
    style.remove_prefix(std::min(end + 1, style.size()));
    const std::size_t colon = declaration.find(':');
    if (colon == std::string_view::npos) continue;
    if (Trimmed(declaration.substr(0, colon)) != name) continue;
    const std::string_view all = declaration.substr(colon + 1);
    value = Trimmed(all.substr(0, all.find('!')));  // "!important" changes nothing here
  }
  return value;
}

// The place of the box in its viewport along one axis: at the start, in the middle or at the end of
// the room that is left, after the words of preserveAspectRatio.
double Alignment(std::string_view words, std::string_view axis, double room) {
  if (words.find(std::string(axis) + "Min") != std::string_view::npos) return 0;
  if (words.find(std::string(axis) + "Max") != std::string_view::npos) return room;
  return room / 2;
}

}  // namespace

std::optional<double> UnitSize(std::string_view unit) {
  for (const Unit& known : kUnits) {
    if (known.name == unit) return known.size;
  }
  return std::nullopt;
}

std::optional<double> Length(const pugi::xml_node& element, const char* attribute, Axis axis,
                             const Viewport& viewport) {
  const std::string styled = IsGeometry(attribute) ? StyleProperty(element, attribute) : "";
  const std::string_view text =
      styled.empty() ? std::string_view(element.attribute(attribute).value()) : styled;
  if (Trimmed(text).empty() || Trimmed(text) == "auto") return std::nullopt;
  return ParseLength(attribute, text, axis, viewport);
}

double ParseLength(std::string_view attribute, std::string_view text, Axis axis,
                   const Viewport& viewport) {
  TextScanner in(attribute, text);
  in.SkipSpace();
  const double number = in.Number();
  const double length = number * ReadUnit(in, axis, viewport);
  in.SkipSpace();
  if (!in.AtEnd()) in.Fail("expected one length, found " + in.Found() + " after it");
  return length;
}

double LengthOr(double fallback, const pugi::xml_node& element, const char* attribute, Axis axis,
                const Viewport& viewport) {
  return Length(element, attribute, axis, viewport).value_or(fallback);
}

std::optional<double> Size(const pugi::xml_node& element, const char* attribute, Axis axis,
                           const Viewport& viewport) {
  const std::optional<double> size = Length(element, attribute, axis, viewport);
  if (size && *size < 0) throw ElementError(attribute, 0, "must not be negative");
  return size;
}

std::vector<double> NumberList(const pugi::xml_node& element, const char* attribute) {
  TextScanner in(attribute, element.attribute(attribute).value());
  std::vector<double> numbers;
  in.SkipSpace();
  bool comma = false;
  while (comma || !in.AtEnd()) {
    numbers.push_back(in.Number());
    comma = in.SkipCommaSpace();
  }
  return numbers;
}

std::string StyleProperty(const pugi::xml_node& element, std::string_view name) {
  return std::string(StyleValue(element.attribute("style").value(), name));
}

std::string Property(const pugi::xml_node& element, std::string_view name) {
  std::string styled = StyleProperty(element, name);
  if (!styled.empty()) return styled;
  return std::string(Trimmed(element.attribute(std::string(name).c_str()).value()));
}

std::optional<ViewBox> ReadViewBox(const pugi::xml_node& element) {
  const std::vector<double> box = NumberList(element, "viewBox");
  if (box.empty()) return std::nullopt;
  if (box.size() != 4) throw ElementError("viewBox", 0, "expected 4 numbers");
  if (!(box[2] > 0 && box[3] > 0)) throw ElementError("viewBox", 0, "the size must be positive");
  return ViewBox{box[0], box[1], box[2], box[3]};
}

Affine ViewBoxMap(const pugi::xml_node& element, const ViewBox& box, const Viewport& viewport) {
  if (viewport.width == 0 || viewport.height == 0) return {};
  double sx = viewport.width / box.width;
  double sy = viewport.height / box.height;
  const std::string_view fit = element.attribute("preserveAspectRatio").value();
  double dx = 0;
  double dy = 0;
  if (fit.find("none") == std::string_view::npos) {
    sx = sy = fit.find("slice") == std::string_view::npos ? std::min(sx, sy) : std::max(sx, sy);
    dx = Alignment(fit, "x", viewport.width - sx * box.width);
    dy = Alignment(fit, "Y", viewport.height - sy * box.height);
  }
  return Translation(dx, dy) * Scaling(sx, sy) * Translation(-box.x, -box.y);
}

}  // namespace kurvo::tools
