// kurvo clean: elements by loops that do not cross.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/region_command.h"

namespace kurvo::tools {
namespace {

struct CleanOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  LengthOption gap;
};

int RunClean(const CleanOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const Closing closing = {options.gap.In(drawing)};
  const Regions regions = [&] {
    Progress progress(STDERR_FILENO, "cleaned", CurveCount(drawing));
    return Cleaned(drawing, closing, [&] { progress.Step(); });
  }();
  const RegionReport report = {{BaseName(options.input)}, "clean", drawing, regions};
  return DeliverRegions(context, options.reading, options.output, {{options.input, &drawing}},
                        report, Look::kAsElements);
}

}  // namespace

Command AddCleanCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<CleanOptions>();
  CLI::App* clean = app.add_subcommand(
      "clean", "Make each element of outlines and holes that do not cross and cover the same");
  AddDrawing(*clean, options->input);
  AddReading(*clean, options->reading, stage);
  AddGap(*clean, options->gap);
  AddOutputs(*clean, options->output,
             "Write the result to this SVG file, one path for each element",
             "Write a picture of the drawing and the result to this SVG file");
  clean->footer(
      "Elements stay apart, each filled by its fill-rule as before. Outlines that cross or touch "
      "themselves or\neach other are cut and put together, what lies inside others or covers "
      "nothing goes. Open outlines\nstay as they are where the element has a stroke or no fill.");
  return {clean, [options] { return RunClean(*options); }};
}

}  // namespace kurvo::tools
