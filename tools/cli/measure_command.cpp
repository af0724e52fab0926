// kurvo measure: the outlines of a drawing and their curves, one by one.
#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "report/reports.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

struct MeasureOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;  // no file
  std::optional<PointOption> near;
};

std::vector<OutlineMeasures> MeasureAll(const Drawing& drawing, const std::optional<Point>& near) {
  Progress progress(STDERR_FILENO, "measured", CurveCount(drawing));
  return Measure(drawing, near, [&] { progress.Step(); });
}

int RunMeasure(const MeasureOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  std::optional<Point> near;
  if (options.near) near = options.near->In(drawing);
  const std::vector<OutlineMeasures> outlines = MeasureAll(drawing, near);
  const MeasureReport report = {OneLine(options.input), near, outlines};
  return Deliver(context, options.reading, options.output, {{options.input, &drawing}},
                 {.drawing = nullptr,
                  .picture = nullptr,
                  .table = [&] { return MeasureTable(report); },
                  .json = [&] { return MeasureJson(report); }});
}

}  // namespace

Command AddMeasureCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<MeasureOptions>();
  CLI::App* measure = app.add_subcommand(
      "measure",
      "List the outlines of a drawing and their curves: type, ends, box, length, bends, area, "
      "centroid, and what is nearest to a point");
  AddDrawing(*measure, options->input);
  measure
      ->add_option_function<std::string>(
          "--near",
          [options](const std::string& text) { options->near = ParsePointOption("--near", text); },
          "Find the nearest point of each curve, of each outline and of all to this one")
      ->type_name("X,Y");
  AddReading(*measure, options->reading, stage);
  AddOutputs(*measure, options->output, nullptr, nullptr);
  measure->footer(
      "Boxes are the narrowest. Curvature is 1 / radius, its least and its greatest value; turning "
      "is what the\ntangent turns by, in degrees, in an outline with its corners. Both and the "
      "area "
      "are positive from x\ntowards y, clockwise as SVG is seen. The length of a closed outline is "
      "its perimeter; a line closes an\nopen one for its area, and without an area the centroid is "
      "that of the length. Curves are counted\nfrom 1 in each outline; t runs from 0 to 1 along a "
      "curve.");
  return {measure, [options] { return RunMeasure(*options); }};
}

}  // namespace kurvo::tools
