// What a command reads: drawings at their scale, and lengths.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "font/font_file.h"
#include "geometry/drawing.h"

namespace kurvo::tools {

// Where a command stands in a pipe; alone it is the last of one.
struct Stage {
  std::optional<Drawing> given;    // what the command before it made; it is taken
  std::vector<std::string> files;  // that commands before it read
  bool is_last = true;
  std::optional<Drawing> made;  // for the next command
};

// A length that was given with or without a unit.
struct LengthOption {
  double number = 0;
  double mm = 0;    // millimetres of its unit; 0: it is in units of the drawing
  bool em = false;  // or in those of a font

  // In units of the drawing. Notes with the drawing when its size had to be assumed for that.
  double In(Drawing& drawing) const;
  // The same without a note.
  double On(const Sheet& sheet) const;
};

// A point whose coordinates were given so.
struct PointOption {
  LengthOption x, y;

  Point In(Drawing& drawing) const { return {x.In(drawing), y.In(drawing)}; }
};

struct InputOptions {
  Stage* stage = nullptr;
  bool strict = false;  // whether an element that cannot be read ends all
  std::string unit;     // that drawings are taken in; empty for their own
  FontOptions font;
  LengthOption em;  // the size of it; 0: none
};

// "12", "1.5mm" or "2 in" with a number from `low` to `high`. Throws CLI::ValidationError, which
// names the option.
LengthOption ParseLengthOption(const std::string& name, const std::string& text, double low,
                               double high);

// Several with commas between them.
std::vector<LengthOption> ParseLengths(const std::string& name, const std::string& text, double low,
                                       double high);

// "x,y" or "x y", each with or without a unit. Throws CLI::ValidationError.
PointOption ParsePointOption(const std::string& name, const std::string& text);

// "not a number from ... to ..."
std::string OutOfRange(double low, double high);

// The drawing in its own units, or in those that were asked for; in a pipe what the command before
// made.
Drawing ReadInput(Context& context, const std::string& path, const InputOptions& options);
// A second drawing at the scale of the first. Either notes when its size had to be assumed for
// that.
Drawing ReadBeside(Context& context, const std::string& path, const InputOptions& options,
                   Drawing& first);

}  // namespace kurvo::tools
