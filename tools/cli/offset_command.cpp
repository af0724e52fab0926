// kurvo offset: outlines moved sideways.
#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

// Units of the drawing.
constexpr double kLargestDistance = 1e6;
constexpr double kSmallestTolerance = 1e-6;

struct OffsetOptions {
  std::string input;
  OutputOptions output;
  std::vector<double> distances;
  std::optional<double> tolerance;
};

std::vector<OutlineOffset> Offset(Library& library, const Drawing& drawing,
                                  const OffsetOptions& options) {
  Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * options.distances.size());
  return OffsetOutlines(library, drawing, options.distances, options.tolerance,
                        [&] { progress.Step(); });
}

void RunOffset(const OffsetOptions& options) {
  Library library;
  const Drawing drawing = ReadSvg(library, options.input);
  const std::vector<OutlineOffset> offsets = Offset(library, drawing, options);
  const std::string name = BaseName(options.input);
  Deliver(
      options.output, {{options.input, &drawing}},
      [&] { return OffsetPicture(library, drawing, offsets, name, options.output.size); },
      [&] { return OffsetTable(library, offsets); });
}

}  // namespace

Command AddOffsetCommand(CLI::App& app) {
  const auto options = std::make_shared<OffsetOptions>();
  CLI::App* offset = app.add_subcommand(
      "offset", "Move the curves of a drawing sideways by a distance, list and draw them");
  AddDrawing(*offset, options->input);
  offset
      ->add_option("-d,--distance", options->distances,
                   "How far, in units of the drawing: to the left of travel, a negative distance "
                   "to the right; may be given several times")
      ->required()
      ->check(Between(-kLargestDistance, kLargestDistance))
      ->allow_extra_args(false)
      ->type_name("LENGTH");
  AddOutput(*offset, options->output,
            "Write a picture of the drawing and its offsets to this SVG file; without it "
            "only the table is printed");
  offset
      ->add_option("--tolerance", options->tolerance,
                   "How far offsets of Bezier curves may be off, in units of the drawing; a "
                   "thousandth of the distance unless given")
      ->check(Between(kSmallestTolerance, kLargestDistance))
      ->type_name("LENGTH");
  AddSize(*offset, options->output);
  AddQuiet(*offset, options->output);
  offset->footer(
      "The left of travel is the outside of rect, circle and ellipse elements. Curves are moved "
      "one by\none: at corners their ends part or cross. Arcs whose radius would be 0 or less "
      "vanish.");
  return {offset, [options] { RunOffset(*options); }};
}

}  // namespace kurvo::tools
