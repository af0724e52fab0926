#include "cli/options.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "report/text.h"
#include "svg/input.h"
#include "svg/sheet.h"

namespace kurvo::tools {
namespace {

// Sizes that a picture can have, in pixels.
constexpr double kSmallestSize = 16;
constexpr double kLargestSize = 32768;

// Lengths.
constexpr double kLeastDeviation = 1e-6;
constexpr double kGreatestDeviation = 1e9;
constexpr double kWidestGap = 1e9;
constexpr double kLeastEm = 1e-3;
constexpr double kGreatestEm = 1e6;

constexpr double kGreatestMiterLimit = 1e6;  // of the distance

}  // namespace

CLI::Validator Between(double low, double high) {
  return CLI::Validator(
      [=](const std::string& text) {
        const double value = std::strtod(text.c_str(), nullptr);
        if (value >= low && value <= high) return std::string();
        return OutOfRange(low, high);
      },
      "");
}

void AddDrawing(CLI::App& command, std::string& input) {
  command.add_option("input", input, "The drawing to read, SVG, DXF or JSON, or a font")
      ->required()
      ->type_name("FILE");
}

void AddDrawings(CLI::App& command, std::string& first, std::string& second,
                 const std::string& about_second, bool needs_second) {
  command.add_option("first", first, "A drawing: SVG, DXF or JSON")->required()->type_name("FILE");
  command.add_option("second", second, about_second)->required(needs_second)->type_name("FILE");
}

void AddReading(CLI::App& command, InputOptions& options, Stage& stage) {
  options.stage = &stage;
  command
      .add_option("--unit", options.unit,
                  "Take drawings in this unit: mm, cm, in, pt, pc or px; in their own unless given")
      ->check(CLI::Validator(
          [](const std::string& text) {
            return MillimetresOf(text) ? "" : "not one of mm, cm, in, pt, pc and px";
          },
          ""))
      ->type_name("UNIT");
  command.add_flag("--strict", options.strict,
                   "Refuse a drawing with an element that cannot be read, instead of leaving it "
                   "out");
  constexpr const char* kGroup = "Fonts";
  CLI::Option* text =
      command.add_option("--text", options.font.text, "Lay out this text in a font")
          ->type_name("TEXT")
          ->group(kGroup);
  command
      .add_option("--glyphs", options.font.glyphs,
                  "Take these glyphs of a font: letters, names, uni0041, numbers #36, or all")
      ->type_name("G1,G2,...")
      ->excludes(text)
      ->group(kGroup);
  AddLength(command, "--em", options.em, kLeastEm, kGreatestEm,
            "The size of an em; without it that of as many pixels as the font has units in one")
      ->group(kGroup);
}

CLI::Option* AddLength(CLI::App& command, const std::string& name, LengthOption& length, double low,
                       double high, const std::string& about) {
  const std::string long_name = name.substr(name.find("--"));
  return command
      .add_option_function<std::string>(
          name,
          [=, &length](const std::string& text) {
            length = ParseLengthOption(long_name, text, low, high);
          },
          about)
      ->type_name("LENGTH");
}

CLI::Option* AddChoice(CLI::App& command, const std::string& name, std::int32_t& value,
                       std::vector<std::string> names, const std::string& about) {
  return command
      .add_option_function<std::string>(
          name,
          [names, name, &value](const std::string& text) {
            const auto at = std::find(names.begin(), names.end(), text);
            if (at == names.end()) {
              throw CLI::ValidationError(name,
                                         fmt::format("not one of {}", fmt::join(names, ", ")));
            }
            value = static_cast<std::int32_t>(at - names.begin());
          },
          about)
      ->type_name("KIND");
}

void AddGap(CLI::App& command, LengthOption& gap) {
  AddLength(command, "--gap", gap, 0, kWidestGap,
            "Close outlines whose ends are no farther apart than this; without it those that meet, "
            "and those that are filled");
}

CLI::Option* AddNested(CLI::App& command, Nesting& nesting, const std::string& about) {
  return command.add_flag_callback(
      "--nested", [&nesting] { nesting = Nesting::kAll; }, about);
}

void AddCorners(CLI::App& command, CornerOptions& options) {
  AddChoice(command, "--join", options.record.join, {"round", "miter", "bevel"},
            "What corners become that come apart: round unless given, miter or bevel");
  command
      .add_option("--miter-limit", options.record.miter_limit,
                  "Bevel miters that are longer than this many distances, 4 unless given")
      ->check(Between(1, kGreatestMiterLimit))
      ->type_name("NUMBER");
  AddLength(command, "--tolerance", options.tolerance, kLeastDeviation, kGreatestDeviation,
            "How far what is made of curves may be off; a thousandth of the distance unless given, "
            "or a hundred thousandth of the drawing where that is less");
}

PenOptions PenOf(const CornerOptions& options, Drawing& drawing) {
  PenOptions pen = {.record = options.record};
  if (options.tolerance.number > 0) pen.tolerance = options.tolerance.In(drawing);
  return pen;
}

void AddOutputs(CLI::App& command, OutputOptions& options, const char* drawing,
                const char* picture) {
  constexpr const char* kGroup = "Output";
  const auto add_file = [&](const char* name, std::string& file, const char* about) {
    const auto is_name = [](const std::string& text) {
      return text.empty() ? std::string("the name of the file is empty") : std::string();
    };
    command.add_option(name, file, about)
        ->check(CLI::Validator(is_name, ""))
        ->type_name("FILE")
        ->group(kGroup);
  };
  if (drawing != nullptr) {
    add_file("-o,--output", options.drawing, drawing);
    command
        .add_option(
            "--format", options.format,
            "Write it as svg, svgz, json or dxf; what the name of the file ends with unless "
            "given, or else svg")
        ->check(CLI::Validator(
            [](const std::string& text) {
              const bool is_known =
                  std::find(std::begin(kFormats), std::end(kFormats), text) != std::end(kFormats);
              return is_known ? "" : "not one of svg, svgz, json and dxf";
            },
            ""))
        ->type_name("FORMAT")
        ->group(kGroup);
    command
        .add_flag("--r12", options.r12, "Write DXF of version R12, with arcs in place of splines")
        ->group(kGroup);
    AddLength(command, "--deviation", options.deviation, kLeastDeviation, kGreatestDeviation,
              "How far curves that the drawing has no form for may be off; a ten thousandth of "
              "their size unless given")
        ->group(kGroup);
    AddLength(command, "--grid", options.grid, kLeastDeviation, kGreatestDeviation,
              "Round its points to multiples of this, and say how far they were moved")
        ->group(kGroup);
  }
  if (picture != nullptr) {
    add_file("--picture", options.picture, picture);
    command
        .add_option("--size", options.size,
                    "Longer side of the picture in pixels, 1000 unless given")
        ->check(Between(kSmallestSize, kLargestSize))
        ->type_name("PIXELS")
        ->group(kGroup);
  }
  CLI::Option* json =
      command.add_flag("--json", options.json, "Print JSON with all digits in place of the table");
  json->group(kGroup);
  command
      .add_flag("--csv", options.csv,
                "Print comma-separated values with all digits in place of the table")
      ->excludes(json)
      ->group(kGroup);
  command.add_flag("-q,--quiet", options.quiet, "Print nothing")->group(kGroup);
}

}  // namespace kurvo::tools
