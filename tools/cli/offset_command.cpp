// kurvo offset: outlines moved sideways.
#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kLargestDistance = 1e6;
constexpr double kSmallestTolerance = 1e-6;

struct OffsetOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  std::vector<LengthOption> distances;
  LengthOption tolerance;  // 0: the usual part of the distance
};

std::vector<OutlineOffset> Offset(Drawing& drawing, const OffsetOptions& options) {
  std::vector<double> distances;
  for (const LengthOption& distance : options.distances) distances.push_back(distance.In(drawing));
  std::optional<double> tolerance;
  if (options.tolerance.number > 0) tolerance = options.tolerance.In(drawing);
  Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * distances.size());
  return OffsetOutlines(drawing, distances, tolerance, [&] { progress.Step(); });
}

int RunOffset(const OffsetOptions& options) {
  Library library;
  Drawing drawing = ReadInput(library, options.input, options.reading);
  const std::vector<OutlineOffset> offsets = Offset(drawing, options);
  const std::string name = BaseName(options.input);
  return Deliver(
      library, options.reading, options.output, {{options.input, &drawing}},
      {.drawing = [&] { return ResultOf(library, drawing, offsets); },
       .picture =
           [&] { return OffsetPicture(library, drawing, offsets, name, options.output.size); },
       .table = [&] { return OffsetTable(library, offsets); },
       .json = [&] { return OffsetJson(library, OneLine(options.input), offsets); }});
}

}  // namespace

Command AddOffsetCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<OffsetOptions>();
  CLI::App* offset = app.add_subcommand(
      "offset", "Move the curves of a drawing sideways by a distance, list and draw them");
  AddDrawing(*offset, options->input);
  offset
      ->add_option_function<std::vector<std::string>>(
          "-d,--distance",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
              options->distances.push_back(
                  ParseLengthOption("--distance", text, -kLargestDistance, kLargestDistance));
            }
          },
          "How far: to the left of travel, a negative distance to the right; may be given several "
          "times")
      ->required()
      ->allow_extra_args(false)
      ->type_name("LENGTH");
  AddLength(*offset, "--tolerance", options->tolerance, kSmallestTolerance, kLargestDistance,
            "How far offsets of Bezier curves may be off; a thousandth of the distance unless "
            "given");
  AddReading(*offset, options->reading, stage);
  AddOutputs(*offset, options->output, "Write the offsets alone to this SVG file",
             "Write a picture of the drawing and its offsets to this SVG file");
  offset->footer(
      "The left of travel is the outside of rect, circle and ellipse elements. Curves are moved "
      "one by\none: at corners their ends part or cross. Arcs whose radius would be 0 or less "
      "vanish.");
  return {offset, [options] { return RunOffset(*options); }};
}

}  // namespace kurvo::tools
