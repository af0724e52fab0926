#include "cli/input.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <stdexcept>
#include <utility>

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

// What the file is by its content; its name tells where that does not.
Drawing ReadAny(Library& library, const std::string& path, const ReadOptions& options) {
  const std::string bytes = ReadUnpacked(path);
  const std::string_view start = Trimmed(std::string_view(bytes).substr(0, kLongestStart));
  const bool is_other = start.starts_with('<') || start.starts_with('{');
  const bool is_dxf = IsDxf(bytes) || (path.ends_with(".dxf") && !is_other);
  if (is_dxf) return ReadDxf(library, path, bytes, options);
  return ReadDrawing(library, path, bytes, options);
}

}  // namespace

double LengthOption::In(Drawing& drawing) const {
  if (mm == 0) return number;
  if (mm != MillimetresOf("px")) NoteAssumption(drawing);
  return number * mm / drawing.sheet.mm_per_unit;
}

std::string OutOfRange(double low, double high) {
  return "not a number from " + ShortNumber(low) + " to " + ShortNumber(high);
}

LengthOption ParseLengthOption(const std::string& name, const std::string& text, double low,
                               double high) {
  try {
    TextScanner scanner(name, text);
    scanner.SkipSpace();
    LengthOption length = {scanner.Number(), 0};
    scanner.SkipSpace();
    const std::string_view unit = scanner.Word();
    if (!unit.empty()) length.mm = MillimetresOf(unit).value_or(0);
    if (scanner.AtEnd() && (unit.empty() || length.mm > 0)) {
      if (length.number >= low && length.number <= high) return length;
      throw CLI::ValidationError(name, OutOfRange(low, high));
    }
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(
      name,
      "expected a length such as 2, 1.5mm, 1cm, 0.5in, 3pt or 4px, found '" + Excerpt(text) + "'");
}

Drawing ReadInput(Library& library, const std::string& path, const InputOptions& options) {
  if (options.stage->given) {
    if (!options.unit.empty()) {
      throw std::runtime_error("--unit belongs to the first command of a pipe");
    }
    Drawing given = std::move(*options.stage->given);
    options.stage->given.reset();
    return given;
  }
  const double mm = options.unit.empty() ? 0 : *MillimetresOf(options.unit);
  Drawing drawing = ReadAny(library, path, {.strict = options.strict, .mm_per_unit = mm});
  if (mm > 0 && options.unit != "px") NoteAssumption(drawing);
  return drawing;
}

Drawing ReadBeside(Library& library, const std::string& path, const InputOptions& options,
                   Drawing& first) {
  Drawing second =
      ReadAny(library, path, {.strict = options.strict, .mm_per_unit = first.sheet.mm_per_unit});
  if (first.sheet.physical != second.sheet.physical) {
    NoteAssumption(first);
    NoteAssumption(second);
  }
  return second;
}

}  // namespace kurvo::tools
