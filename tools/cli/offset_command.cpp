#include "cli/offset_command.h"

#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/output_file.h"
#include "cli/progress.h"
#include "geometry/library.h"
#include "geometry/offset.h"
#include "picture/offset_picture.h"

namespace kurvo::tools {
namespace {

// Units of the drawing.
constexpr double kLargestDistance = 1e6;
constexpr double kSmallestTolerance = 1e-6;

struct OffsetOptions {
  std::string input;
  std::string output;
  std::vector<double> distances;
  std::optional<double> tolerance;
  bool quiet = false;
  double size = 1000;
};

void RunOffset(const OffsetOptions& options) {
  Library library;
  const Drawing drawing = ReadSvg(library, options.input);
  std::vector<OutlineOffset> offsets;
  {
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * options.distances.size());
    offsets = OffsetOutlines(library, drawing, options.distances, options.tolerance, progress);
  }
  const std::string table = OffsetTable(library, offsets);
  if (!options.output.empty()) {
    RefuseInputAsOutput({options.input}, options.output);
    WriteWholeFile(options.output,
                   OffsetPicture(library, drawing, offsets, BaseName(options.input), options.size));
  }
  PrintSkipped(options.input, drawing);
  if (!options.quiet) Print(table);
}

}  // namespace

Command AddOffsetCommand(CLI::App& app) {
  const auto options = std::make_shared<OffsetOptions>();
  CLI::App* offset = app.add_subcommand(
      "offset", "Move the curves of a drawing sideways by a distance, list and draw them");
  offset->add_option("input", options->input, "The SVG drawing to read")
      ->required()
      ->type_name("FILE");
  offset
      ->add_option("-d,--distance", options->distances,
                   "How far, in units of the drawing: to the left of travel, a negative distance "
                   "to the right; may be given several times")
      ->required()
      ->check(Between(-kLargestDistance, kLargestDistance))
      ->allow_extra_args(false)
      ->type_name("LENGTH");
  AddOutputOption(*offset, options->output,
                  "Write a picture of the drawing and its offsets to this SVG file; without it "
                  "only the table is printed");
  offset
      ->add_option("--tolerance", options->tolerance,
                   "How far offsets of Bezier curves may be off, in units of the drawing; a "
                   "thousandth of the distance unless given")
      ->check(Between(kSmallestTolerance, kLargestDistance))
      ->type_name("LENGTH");
  AddSizeOption(*offset, options->size);
  offset->add_flag("-q,--quiet", options->quiet, "Do not print the table");
  offset->footer(
      "The left of travel is the outside of rect, circle and ellipse elements. Curves are moved "
      "one by\none: at corners their ends part or cross. Arcs whose radius would be 0 or less "
      "vanish.");
  return {offset, [options] { RunOffset(*options); }};
}

}  // namespace kurvo::tools
