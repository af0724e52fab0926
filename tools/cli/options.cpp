#include "cli/options.h"

#include <cstdlib>

#include "report/text.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Sizes that a picture can have, in pixels.
constexpr double kSmallestSize = 16;
constexpr double kLargestSize = 32768;

}  // namespace

CLI::Validator Between(double low, double high) {
  return CLI::Validator(
      [=](const std::string& text) {
        const double value = std::strtod(text.c_str(), nullptr);
        if (value >= low && value <= high) return std::string();
        return "not a number from " + ShortNumber(low) + " to " + ShortNumber(high);
      },
      "");
}

Point ParsePoint(const std::string& name, const std::string& text) {
  try {
    TextScanner scanner(name, text);
    scanner.SkipSpace();
    const double x = scanner.Number();
    scanner.SkipCommaSpace();
    const double y = scanner.Number();
    scanner.SkipSpace();
    if (scanner.AtEnd()) return {x, y};
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(name, "expected a point x,y, found '" + Excerpt(text) + "'");
}

void AddDrawing(CLI::App& command, std::string& input) {
  command.add_option("input", input, "The SVG drawing to read")->required()->type_name("FILE");
}

void AddDrawings(CLI::App& command, std::string& first, std::string& second,
                 const std::string& about_second, bool needs_second) {
  command.add_option("first", first, "An SVG drawing")->required()->type_name("FILE");
  command.add_option("second", second, about_second)->required(needs_second)->type_name("FILE");
}

void AddOutput(CLI::App& command, OutputOptions& options, const std::string& about) {
  const auto is_name = [](const std::string& text) {
    return text.empty() ? std::string("the name of the file is empty") : std::string();
  };
  command.add_option("-o,--output", options.file, about)
      ->check(CLI::Validator(is_name, ""))
      ->type_name("FILE");
}

CLI::Option* AddSize(CLI::App& command, OutputOptions& options) {
  return command
      .add_option("--size", options.size, "Longer side of the picture in pixels, 1000 unless given")
      ->check(Between(kSmallestSize, kLargestSize))
      ->type_name("PIXELS");
}

void AddJson(CLI::App& command, OutputOptions& options, const std::string& about) {
  command.add_flag("--json", options.json, about);
}

void AddQuiet(CLI::App& command, OutputOptions& options, const std::string& about) {
  command.add_flag("-q,--quiet", options.quiet, about);
}

}  // namespace kurvo::tools
