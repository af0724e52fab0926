#include "cli/intersect_command.h"

#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>

#include "cli/output_file.h"
#include "cli/progress.h"
#include "geometry/crossings.h"
#include "geometry/library.h"
#include "picture/crossing_picture.h"
#include "report/crossing_report.h"

namespace kurvo::tools {
namespace {

struct IntersectOptions {
  std::string first;
  std::string second;
  std::string output;
  bool quiet = false;
  bool json = false;
  bool joints = false;
  double size = 1000;
};

bool IsOneFile(const IntersectOptions& options) {
  std::error_code ignored;
  return options.second.empty() ||
         std::filesystem::equivalent(options.first, options.second, ignored);
}

// The drawings and their curves; with one file the second drawing is missing.
struct Inputs {
  Inputs(Library& library, const IntersectOptions& options)
      : first(ReadSvg(library, options.first)), first_curves(ListCurves(library, first)) {
    if (IsOneFile(options)) return;
    second = ReadSvg(library, options.second);
    second_curves = ListCurves(library, *second);
  }

  Drawing first;
  CurveList first_curves;
  std::optional<Drawing> second;
  CurveList second_curves;
};

Crossings Find(Library& library, const Inputs& inputs, bool joints) {
  const std::size_t count = inputs.first_curves.curves.size() + inputs.second_curves.curves.size();
  Progress progress(STDERR_FILENO, "intersected", count);
  if (!inputs.second) return FindCrossings(library, inputs.first_curves, joints, progress);
  return FindCrossings(library, inputs.first_curves, inputs.second_curves, progress);
}

void Intersect(const IntersectOptions& options) {
  Library library;
  const Inputs inputs(library, options);
  const Crossings found = Find(library, inputs, options.joints);
  const bool one = !inputs.second;
  const CrossingReport report = {BaseName(options.first), one ? "" : BaseName(options.second),
                                 inputs.first_curves,
                                 one ? inputs.first_curves : inputs.second_curves, found};
  if (!options.output.empty()) {
    RefuseInputAsOutput({options.first, options.second}, options.output);
    WriteWholeFile(options.output,
                   CrossingPicture(library, inputs.first, one ? nullptr : &*inputs.second, report,
                                   options.size));
  }
  PrintSkipped(options.first, inputs.first);
  if (!one) PrintSkipped(options.second, *inputs.second);
  if (!options.quiet) Print(options.json ? CrossingJson(report) : CrossingTable(report));
}

}  // namespace

Command AddIntersectCommand(CLI::App& app) {
  const auto options = std::make_shared<IntersectOptions>();
  CLI::App* intersect = app.add_subcommand(
      "intersect", "List the points and the stretches that the curves of two drawings share");
  intersect->add_option("first", options->first, "An SVG drawing")->required()->type_name("FILE");
  intersect
      ->add_option("second", options->second,
                   "Another one; without it, or when it is the same file, the curves of the first "
                   "are intersected with each other")
      ->type_name("FILE");
  AddOutputOption(*intersect, options->output,
                  "Write a picture of the drawings with the crossings marked to this SVG file");
  AddSizeOption(*intersect, options->size);
  intersect->add_flag("--json", options->json, "Print JSON with all digits in place of the table");
  intersect->add_flag("--joints", options->joints,
                      "With one drawing, also list the points where an outline goes from one curve "
                      "to the next");
  intersect->add_flag("-q,--quiet", options->quiet, "Do not print the table");
  intersect->footer(
      "Both drawings are taken in the coordinates of their outermost viewBox. Curves are counted "
      "from 1\nin each outline; t runs from 0 to 1 along a curve. Contacts count as crossings. A "
      "crossing where\nan outline goes from one curve to the next is listed once, with one of "
      "them.");
  return {intersect, [options] { Intersect(*options); }};
}

}  // namespace kurvo::tools
