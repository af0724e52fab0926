// kurvo join: loose curves as chains.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr double kWidestGap = 1e9;  // a length

struct JoinOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  LengthOption gap;
};

int RunJoin(const JoinOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const JoinedCurves joined = [&] {
    const Progress progress(STDERR_FILENO, "joining", 0);
    return JoinCurves(context, drawing, options.gap.In(drawing));
  }();
  return Deliver(
      context, options.reading, options.output, {{options.input, &drawing}},
      {.drawing =
           [&] {
             return ResultOf(drawing, {&joined.chains, 1});
           },
       .picture =
           [&] {
             return SplitPicture(context, drawing, {&joined.chains, 1}, options.output.size);
           },
       .table = [&] { return JoinTable(context, joined); },
       .json = [&] { return JoinJson(context, OneLine(options.input), joined); }});
}

}  // namespace

Command AddJoinCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<JoinOptions>();
  CLI::App* join = app.add_subcommand(
      "join", "Join the curves of a drawing to chains, whatever their order and direction");
  AddDrawing(*join, options->input);
  AddReading(*join, options->reading, stage);
  AddLength(*join, "--gap", options->gap, 0, kWidestGap,
            "Join ends no farther apart than this; without it those that meet");
  AddOutputs(*join, options->output, "Write the chains to this SVG file, each as a path of its own",
             "Write a picture of the chains, neighbours in different colours, to this SVG file");
  join->footer(
      "Every curve of the drawing counts as loose. Closed chains come first. Gaps are the joints "
      "whose ends\nwere apart and are bridged; dropped are curves that were there twice.");
  return {join, [options] { return RunJoin(*options); }};
}

}  // namespace kurvo::tools
