// kurvo stroke: what a pen covers along the outlines.
#include <unistd.h>

#include <algorithm>
#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/region_command.h"

namespace kurvo::tools {
namespace {

constexpr double kWidest = 1e6;  // lengths
constexpr double kLongest = 1e9;

struct StrokeOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  LengthOption width, left, right, phase;
  std::vector<LengthOption> dashes;
  CornerOptions corners;
};

std::vector<LengthOption> ParseDashes(const std::string& text) {
  const std::vector<LengthOption> dashes = ParseLengths("--dash", text, 0, kLongest);
  const auto is_some = [](const LengthOption& dash) { return dash.number > 0; };
  if (std::any_of(dashes.begin(), dashes.end(), is_some)) return dashes;
  throw CLI::ValidationError("--dash", "must not all be 0");
}

int RunStroke(const StrokeOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  PenOptions pen = PenOf(options.corners, drawing);
  for (const LengthOption& dash : options.dashes) pen.dashes.push_back(dash.In(drawing));
  pen.record.phase = options.phase.In(drawing);
  const double half = options.width.In(drawing) / 2;
  const double left = half > 0 ? half : options.left.In(drawing);
  const double right = half > 0 ? half : options.right.In(drawing);
  const Regions regions = [&] {
    Progress progress(STDERR_FILENO, "stroked", CurveCount(drawing));
    return Stroked(drawing, left, right, pen, [&] { progress.Step(); });
  }();
  const RegionReport report = {{BaseName(options.input)}, "stroke", drawing, regions};
  return DeliverRegions(context, options.reading, options.output, {{options.input, &drawing}},
                        report, Look::kSurround);
}

}  // namespace

Command AddStrokeCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<StrokeOptions>();
  CLI::App* stroke = app.add_subcommand(
      "stroke", "Outline what a pen covers that runs along the outlines of a drawing");
  AddDrawing(*stroke, options->input);
  CLI::Option_group* how = stroke->add_option_group("How wide");
  CLI::Option* width =
      AddLength(*how, "--width", options->width, 0, kWidest, "How wide, half of it to either side");
  AddLength(*how, "--left", options->left, 0, kWidest, "How far to the left of travel")
      ->excludes(width);
  AddLength(*how, "--right", options->right, 0, kWidest, "How far to the right")->excludes(width);
  how->require_option(1, 2);
  AddChoice(*stroke, "--cap", options->corners.record.cap, {"butt", "round", "square"},
            "What open outlines and dashes end in: butt unless given, round or square");
  AddCorners(*stroke, options->corners);
  stroke
      ->add_option_function<std::string>(
          "--dash", [options](const std::string& text) { options->dashes = ParseDashes(text); },
          "Lengths of dashes and of the gaps after them, which begin anew on each outline")
      ->type_name("LENGTH,...");
  AddLength(*stroke, "--phase", options->phase, -kLongest, kLongest,
            "How far into the dashes an outline begins");
  AddReading(*stroke, options->reading, stage);
  AddOutputs(*stroke, options->output,
             "Write what is covered to this SVG file, one path for each element",
             "Write a picture of the drawing and what is covered to this SVG file");
  stroke->footer(
      "What the pen covers along the outlines of an element is one path, filled with the colour of "
      "its stroke.\nThe left of travel is the outside of rect, circle and ellipse elements. A side "
      "that is not given is 0.");
  return {stroke, [options] { return RunStroke(*options); }};
}

}  // namespace kurvo::tools
