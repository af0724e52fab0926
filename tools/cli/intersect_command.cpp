// kurvo intersect: where the curves of drawings cross, touch and run together.
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"

namespace kurvo::tools {
namespace {

struct IntersectOptions {
  std::string first;
  std::string second;
  InputOptions reading;
  OutputOptions output;
  bool joints = false;
};

bool IsOneFile(const IntersectOptions& options) {
  std::error_code ignored;
  return options.second.empty() || options.second == options.first ||
         std::filesystem::equivalent(options.first, options.second, ignored);
}

// The drawings and their curves; with one file the second drawing is missing.
struct Inputs {
  Inputs(Context& context, const IntersectOptions& options)
      : first(ReadInput(context, options.first, options.reading)),
        first_curves(ListCurves(context, first)) {
    if (IsOneFile(options)) return;
    second = ReadBeside(context, options.second, options.reading, first);
    second_curves = ListCurves(context, *second);
  }

  Drawing first;
  CurveList first_curves;
  std::optional<Drawing> second;
  CurveList second_curves;
};

Crossings Find(Context& context, const Inputs& inputs, bool joints) {
  const std::size_t count = inputs.first_curves.curves.size() + inputs.second_curves.curves.size();
  Progress progress(STDERR_FILENO, "intersected", count);
  const auto step = [&] { progress.Step(); };
  if (!inputs.second) return FindCrossings(context, inputs.first_curves, joints, step);
  return FindCrossings(context, inputs.first_curves, inputs.second_curves, step);
}

int Intersect(const IntersectOptions& options) {
  Context context;
  const Inputs inputs(context, options);
  const Crossings found = Find(context, inputs, options.joints);
  const Drawing* second = inputs.second ? &*inputs.second : nullptr;
  const CrossingReport report = {BaseName(options.first), second ? BaseName(options.second) : "",
                                 inputs.first_curves,
                                 second ? inputs.second_curves : inputs.first_curves, found};
  return Deliver(context, options.reading, options.output,
                 {{options.first, &inputs.first}, {options.second, second}},
                 {.drawing = nullptr,
                  .picture =
                      [&] {
                        return CrossingPicture(context, inputs.first, second, report,
                                               options.output.size);
                      },
                  .table = [&] { return CrossingTable(report); },
                  .json = [&] { return CrossingJson(report); }});
}

}  // namespace

Command AddIntersectCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<IntersectOptions>();
  CLI::App* intersect = app.add_subcommand(
      "intersect", "List the points and the stretches that the curves of two drawings share");
  AddDrawings(*intersect, options->first, options->second,
              "Another one; without it, or when it is the same file, the curves of the first are "
              "intersected with each other",
              false);
  AddReading(*intersect, options->reading, stage);
  AddOutputs(*intersect, options->output, nullptr,
             "Write a picture of the drawings with the crossings marked to this SVG file");
  intersect->add_flag("--joints", options->joints,
                      "With one drawing, also list the points where an outline goes from one curve "
                      "to the next");
  intersect->footer(
      "Both drawings are taken in the coordinates of their outermost viewBox, the second at the "
      "scale of\nthe first. Curves are counted from 1 in each outline; t runs from 0 to 1 along a "
      "curve. Contacts count as crossings. A "
      "crossing where\nan outline goes from one curve to the next is listed once, with one of "
      "them.");
  return {intersect, [options] { return Intersect(*options); }};
}

}  // namespace kurvo::tools
