// The command-line client: reads outlines, prints what they are made of, draws them.
#include <CLI/CLI.hpp>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <string>

#include "input_error.h"
#include "library.h"
#include "number_text.h"
#include "output_file.h"
#include "picture.h"
#include "report.h"
#include "svg_reader.h"

namespace kurvo::tools {
namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;   // wrong options, or the output could not be written
constexpr int kBadInput = 2;  // the drawing cannot be read

// Sizes that a picture can have; in pixels and in units of the drawing.
constexpr double kSmallestSize = 16;
constexpr double kLargestSize = 32768;
constexpr double kThinnestStroke = 1e-6;
constexpr double kThickestStroke = 1e6;

// Takes numbers from `low` to `high`; not a number is none of them.
CLI::Validator Between(double low, double high) {
  return CLI::Validator(
      [=](const std::string& text) {
        const double value = std::strtod(text.c_str(), nullptr);
        if (value >= low && value <= high) return std::string();
        return "not a number from " + ShortNumber(low) + " to " + ShortNumber(high);
      },
      "");
}

struct DrawCommand {
  std::string input;
  std::string output;
  bool quiet = false;
  PictureOptions picture;
};

void AddDrawCommand(CLI::App& app, DrawCommand& command) {
  CLI::App* draw = app.add_subcommand(
      "draw", "Read the outlines of an SVG drawing, print a table of them and draw their curves");
  draw->add_option("input", command.input, "The SVG drawing to read")
      ->required()
      ->type_name("FILE");
  draw->add_option("-o,--output", command.output,
                   "Write the picture of the curves to this SVG file; without it only the table "
                   "is printed")
      ->type_name("FILE");
  draw->add_flag("-q,--quiet", command.quiet, "Do not print the table");

  PictureOptions& picture = command.picture;
  constexpr const char* kGroup = "Picture";
  const auto leave_out = [&](const char* name, bool& part, const char* text) {
    draw->add_flag_function(
            name, [&part](std::int64_t) { part = false; }, text)
        ->group(kGroup);
  };
  leave_out("--no-control", picture.control, "Leave out control polygons and arc centres");
  leave_out("--no-points", picture.points, "Leave out end points");
  leave_out("--no-boxes", picture.boxes, "Leave out the boxes of outlines");
  leave_out("--no-legend", picture.legend, "Leave out the legend");
  draw->add_flag("--curves-only", picture.curves_only,
                 "Draw nothing but the curves, in one thin black stroke")
      ->group(kGroup);
  draw->add_flag("--fill", picture.fill,
                 "Fill the shapes by the fill rule of the drawing; with --curves-only in black "
                 "and without a stroke")
      ->group(kGroup);
  draw->add_option("--stroke-width", picture.stroke_width,
                   "Stroke width of the curves, in units of the drawing")
      ->check(Between(kThinnestStroke, kThickestStroke))
      ->type_name("WIDTH")
      ->group(kGroup);
  draw->add_option("--size", picture.size,
                   "Longer side of the picture in pixels, 1000 unless given")
      ->check(Between(kSmallestSize, kLargestSize))
      ->type_name("PIXELS")
      ->group(kGroup);
  draw->footer(
      "Lines become line records, circular arcs arc records, other arcs of ellipses rational "
      "Beziers,\nquadratic and cubic curves Beziers. Paint, clipping and style sheets are not "
      "looked at.");
}

void RefuseInputAsOutput(const DrawCommand& command) {
  std::error_code ignored;
  if (std::filesystem::equivalent(command.input, command.output, ignored)) {
    throw std::runtime_error(OneLine(command.output) + ": is the input; choose another output");
  }
}

void PrintSkipped(const DrawCommand& command, const Drawing& drawing) {
  for (const auto& [name, count] : drawing.skipped) {
    std::cerr << "kurvo: " << OneLine(command.input) << ": note: " << count << " " << name
              << (count == 1 ? " element has" : " elements have") << " no outline\n";
  }
}

void Draw(const DrawCommand& command) {
  Library library;
  const Drawing drawing = ReadSvg(library, command.input);
  const std::string table = OutlineTable(library, drawing);
  if (!command.output.empty()) {
    RefuseInputAsOutput(command);
    WriteWholeFile(command.output, PictureOf(library, drawing, command.picture));
  }
  PrintSkipped(command, drawing);
  if (!command.quiet) std::cout << table << std::flush;
  if (!std::cout) throw std::runtime_error("the table could not be printed");
}

int Run(int argc, char** argv) {
  CLI::App app("Reads outlines as curve records, shows what they are made of and draws them.",
               "kurvo");
  app.set_version_flag("--version", "kurvo " KURVO_VERSION);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return "kurvo: " + std::string(error.what()) + " (try --help)\n";
  });
  app.footer(
      "Example:\n  kurvo draw part.svg -o curves.svg\n\n"
      "Exit status: 0 done; 1 wrong options, or the output cannot be written; 2 the drawing cannot "
      "be\nread. Each fault is one line on standard error; no output file is then made or "
      "changed.");
  DrawCommand command;
  AddDrawCommand(app, command);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kSuccess : kFailure;
  }
  Draw(command);
  return kSuccess;
}

}  // namespace
}  // namespace kurvo::tools

int main(int argc, char** argv) {
  using kurvo::tools::InputError;
  try {
    return kurvo::tools::Run(argc, argv);
  } catch (const InputError& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
    return kurvo::tools::kBadInput;
  } catch (const std::bad_alloc&) {
    std::cerr << "kurvo: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
  }
  return kurvo::tools::kFailure;
}
