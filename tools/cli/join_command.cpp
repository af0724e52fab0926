// kurvo join: loose curves as chains.
#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "picture/pictures.h"
#include "svg/input.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

constexpr double kWidestGap = 1e9;  // units of the drawing

struct JoinOptions {
  std::string input;
  OutputOptions output;
  double gap = 0;
};

void RunJoin(const JoinOptions& options) {
  Library library;
  const Drawing drawing = ReadSvg(library, options.input);
  const JoinedCurves joined = JoinCurves(library, drawing, options.gap);
  const double extent = Extent(library, {&drawing});
  Deliver(
      options.output, {{options.input, &drawing}},
      [&] {
        return SplitPicture(library, {&joined.chains, 1}, extent, options.output.size);
      },
      [&] {
        return options.output.json ? JoinJson(library, OneLine(options.input), joined)
                                   : JoinTable(library, joined);
      });
}

}  // namespace

Command AddJoinCommand(CLI::App& app) {
  const auto options = std::make_shared<JoinOptions>();
  CLI::App* join = app.add_subcommand(
      "join", "Join the curves of a drawing to chains, whatever their order and direction");
  AddDrawing(*join, options->input);
  join->add_option(
          "--gap", options->gap,
          "Join ends no farther apart than this, in units of the drawing; without it those "
          "that meet")
      ->check(Between(0, kWidestGap))
      ->type_name("GAP");
  AddOutput(*join, options->output, "Write the chains to this SVG file, each as a path of its own");
  AddSize(*join, options->output);
  AddJson(*join, options->output);
  AddQuiet(*join, options->output);
  join->footer(
      "Every curve of the drawing counts as loose. Closed chains come first. Gaps are the joints "
      "whose ends\nwere apart and are bridged; dropped are curves that were there twice.");
  return {join, [options] { RunJoin(*options); }};
}

}  // namespace kurvo::tools
