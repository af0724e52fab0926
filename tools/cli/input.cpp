#include "cli/input.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <stdexcept>
#include <utility>

#include "cli/progress.h"
#include "dxf/reader.h"
#include "report/text.h"
#include "svg/input.h"
#include "svg/sheet.h"

namespace kurvo::tools {
namespace {

constexpr const char* kAssumed =
    "warning: has no physical size; a pixel is taken as 1/96 in, a unit without size as a pixel";

constexpr std::size_t kLongestStart = 64;  // bytes, of spaces before the first sign

void NoteAssumption(Drawing& drawing) {
  if (drawing.sheet.physical) return;
  if (std::find(drawing.notes.begin(), drawing.notes.end(), kAssumed) != drawing.notes.end())
    return;
  drawing.notes.push_back(kAssumed);
}

// Whether the content says so; the name counts where that does not.
bool IsDxfFile(const std::string& path, std::string_view bytes) {
  const std::string_view start = Trimmed(bytes.substr(0, kLongestStart));
  const bool is_other = start.starts_with('<') || start.starts_with('{');
  return IsDxf(bytes) || (path.ends_with(".dxf") && !is_other);
}

// At the scale of these units, or of its own where they are 0.
Drawing ReadOne(Context& context, const std::string& path, const InputOptions& options,
                double mm_per_unit) {
  const ReadOptions how = {.strict = options.strict, .mm_per_unit = mm_per_unit};
  const std::string bytes = ReadUnpacked(path);
  const Progress progress(STDERR_FILENO, "reading", 0);
  if (IsFontFile(path, bytes)) {
    FontOptions font = options.font;
    if (options.em.number > 0 && options.em.mm == 0)
      throw std::runtime_error("--em needs a unit of length, such as 20mm");
    font.em_mm = options.em.number * options.em.mm;
    return ReadFontFile(context, path, bytes, font, how);
  }
  Drawing drawing = IsDxfFile(path, bytes) ? ReadDxf(context, path, bytes, how)
                                           : ReadDrawing(context, path, bytes, how);
  if (!options.font.text.empty() || !options.font.glyphs.empty())
    drawing.notes.push_back("note: is no font; --text and --glyphs are not looked at");
  return drawing;
}

// A number and its unit, which may be missing; nothing for an unknown one.
std::optional<LengthOption> ScanLength(TextScanner& scanner) {
  scanner.SkipSpace();
  LengthOption length = {scanner.Number()};
  scanner.SkipSpace();
  const std::string_view unit = scanner.Word();
  length.em = unit == "em";
  if (!unit.empty()) length.mm = MillimetresOf(unit).value_or(0);
  scanner.SkipSpace();
  if (unit.empty() || length.em || length.mm > 0) return length;
  return std::nullopt;
}

}  // namespace

double LengthOption::In(Drawing& drawing) const {
  if (mm != 0 && mm != MillimetresOf("px")) NoteAssumption(drawing);
  return On(drawing.sheet);
}

double LengthOption::On(const Sheet& sheet) const {
  if (em && sheet.units_per_em == 0)
    throw std::runtime_error("a length in em, and the drawing is of no font");
  if (em) return number * sheet.units_per_em;
  return mm == 0 ? number : number * mm / sheet.mm_per_unit;
}

std::string OutOfRange(double low, double high) {
  return "not a number from " + ShortNumber(low) + " to " + ShortNumber(high);
}

LengthOption ParseLengthOption(const std::string& name, const std::string& text, double low,
                               double high) {
  try {
    TextScanner scanner(name, text);
    const std::optional<LengthOption> length = ScanLength(scanner);
    if (length && scanner.AtEnd()) {
      if (length->number >= low && length->number <= high) return *length;
      throw CLI::ValidationError(name, OutOfRange(low, high));
    }
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(
      name,
      "expected a length such as 2, 1.5mm, 1cm, 0.5in, 3pt or 4px, found '" + Excerpt(text) + "'");
}

PointOption ParsePointOption(const std::string& name, const std::string& text) {
  try {
    TextScanner scanner(name, text);
    const std::optional<LengthOption> x = ScanLength(scanner);
    scanner.SkipCommaSpace();
    const std::optional<LengthOption> y = x ? ScanLength(scanner) : x;
    if (y && scanner.AtEnd()) return {*x, *y};
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(
      name, "expected a point such as 10,20 or 5mm,2.5mm, found '" + Excerpt(text) + "'");
}

std::vector<LengthOption> ParseLengths(const std::string& name, const std::string& text, double low,
                                       double high) {
  std::vector<LengthOption> lengths;
  for (std::size_t begin = 0; begin <= text.size();) {
    const std::size_t end = std::min(text.find(',', begin), text.size());
    lengths.push_back(ParseLengthOption(name, text.substr(begin, end - begin), low, high));
    begin = end + 1;
  }
  return lengths;
}

Drawing ReadInput(Context& context, const std::string& path, const InputOptions& options) {
  if (options.stage->given) {
    if (!options.unit.empty()) {
      throw std::runtime_error("--unit belongs to the first command of a pipe");
    }
    Drawing given = std::move(*options.stage->given);
    options.stage->given.reset();
    return given;
  }
  const double mm = options.unit.empty() ? 0 : *MillimetresOf(options.unit);
  Drawing drawing = ReadOne(context, path, options, mm);
  if (mm > 0 && options.unit != "px") NoteAssumption(drawing);
  return drawing;
}

Drawing ReadBeside(Context& context, const std::string& path, const InputOptions& options,
                   Drawing& first) {
  Drawing second = ReadOne(context, path, options, first.sheet.mm_per_unit);
  if (first.sheet.y_up != second.sheet.y_up) TurnOver(context, second);
  if (first.sheet.physical != second.sheet.physical) {
    NoteAssumption(first);
    NoteAssumption(second);
  }
  return second;
}

}  // namespace kurvo::tools
