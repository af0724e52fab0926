#include "svg/sheet.h"

#include <algorithm>
#include <cmath>

#include "svg/attributes.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

struct Unit {
  std::string_view name;
  double mm;
};
constexpr Unit kUnits[] = {{"mm", 1},
                           {"cm", 10},
                           {"in", kMillimetresPerInch},
                           {"pt", kMillimetresPerInch / 72},
                           {"pc", kMillimetresPerInch / 6},
                           {"px", kMillimetresPerInch / kPixelsPerInch}};

// Relative: sizes of sheets are often rounded to a few digits.
constexpr double kSameUnit = 1e-6;

struct SheetLength {
  double mm;
  bool physical;
};

std::optional<SheetLength> ReadSheetLength(const pugi::xml_node& root, const char* attribute) {
  try {
    TextScanner in(attribute, root.attribute(attribute).value());
    in.SkipSpace();
    const double number = in.Number();
    const std::string_view word = in.Word();
    const auto mm = MillimetresOf(word.empty() ? "px" : word);
    in.SkipSpace();
    if (!mm || !in.AtEnd() || !(number > 0)) return std::nullopt;
    return SheetLength{number * *mm, !word.empty() && word != "px"};
  } catch (const ElementError&) {
    return std::nullopt;
  }
}

// Of the view in the sheet, after its preserveAspectRatio.
double Scale(const Sheet& sheet) {
  const double sx = sheet.width / sheet.view.Width();
  const double sy = sheet.height / sheet.view.Height();
  if (sheet.width == 0 || sheet.height == 0) return std::max(sx, sy);
  if (sheet.fit.find("none") != std::string::npos) return std::sqrt(sx * sy);
  return sheet.fit.find("slice") == std::string::npos ? std::min(sx, sy) : std::max(sx, sy);
}

}  // namespace

std::optional<double> MillimetresOf(std::string_view unit) {
  for (const Unit& known : kUnits) {
    if (known.name == unit) return known.mm;
  }
  return std::nullopt;
}

std::string_view UnitName(double mm_per_unit) {
  for (const Unit& unit : kUnits) {
    if (kSameUnit * unit.mm >= std::fabs(mm_per_unit - unit.mm)) return unit.name;
  }
  return {};
}

Sheet ReadSheet(const pugi::xml_node& root) {
  Sheet sheet;
  sheet.fit = root.attribute("preserveAspectRatio").value();
  const auto width = ReadSheetLength(root, "width");
  const auto height = ReadSheetLength(root, "height");
  if (width) sheet.width = width->mm;
  if (height) sheet.height = height->mm;
  sheet.physical = (width && width->physical) || (height && height->physical);
  if (const std::optional<ViewBox> box = ReadViewBox(root)) {
    sheet.view = {box->x, box->y, box->x + box->width, box->y + box->height};
    if (width || height) sheet.mm_per_unit = Scale(sheet);
  } else if (width && height) {
    sheet.view = {0, 0, sheet.width / sheet.mm_per_unit, sheet.height / sheet.mm_per_unit};
  }
  sheet.y_up = root.attribute(kYAxis).value() == std::string_view(kYUp);
  if (sheet.y_up && !sheet.view.IsEmpty()) sheet.view = sheet.view.TurnedOver();
  sheet.units_per_em = std::max(0.0, root.attribute(kEm).as_double());
  if (!(sheet.units_per_em <= kLargestNumber)) sheet.units_per_em = 0;
  return sheet;
}

}  // namespace kurvo::tools
