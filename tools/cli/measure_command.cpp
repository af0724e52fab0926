#include "cli/measure_command.h"

#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/point_argument.h"
#include "cli/progress.h"
#include "geometry/library.h"
#include "geometry/measure.h"
#include "report/measure_report.h"
#include "svg/input_error.h"

namespace kurvo::tools {
namespace {

struct MeasureOptions {
  std::string input;
  std::optional<Point> near;
  bool json = false;
};

void RunMeasure(const MeasureOptions& options) {
  Library library;
  const Drawing drawing = ReadSvg(library, options.input);
  std::vector<OutlineMeasures> outlines;
  {
    Progress progress(STDERR_FILENO, "measured", CurveCount(drawing));
    outlines = Measure(library, drawing, options.near, progress);
  }
  const MeasureReport report = {OneLine(options.input), options.near, outlines};
  PrintSkipped(options.input, drawing);
  Print(options.json ? MeasureJson(report) : MeasureTable(report));
}

}  // namespace

Command AddMeasureCommand(CLI::App& app) {
  const auto options = std::make_shared<MeasureOptions>();
  CLI::App* measure = app.add_subcommand(
      "measure",
      "List the curves of a drawing: type, ends, box, length, bends, and what is nearest to a "
      "point");
  measure->add_option("input", options->input, "The SVG drawing to read")
      ->required()
      ->type_name("FILE");
  measure
      ->add_option_function<std::string>(
          "--near",
          [options](const std::string& text) { options->near = ParsePoint("--near", text); },
          "Find the nearest point of each curve, of each outline and of all to this one")
      ->type_name("X,Y");
  measure->add_flag("--json", options->json, "Print JSON with all digits in place of the table");
  measure->footer(
      "The box of a Bezier curve is that of its control points. Curvature is 1 / radius, its least "
      "and its\ngreatest value; turning is what the tangent turns by, in degrees, in an outline "
      "with its corners.\nBoth are positive from x towards y, clockwise as SVG is seen. Curves are "
      "counted from 1 in each\noutline; t runs from 0 to 1 along a curve.");
  return {measure, [options] { RunMeasure(*options); }};
}

}  // namespace kurvo::tools
