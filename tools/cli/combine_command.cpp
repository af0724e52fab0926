// kurvo combine: what two drawings surround, put together.
#include <unistd.h>

#include <iterator>
#include <memory>
#include <utility>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/region_command.h"

namespace kurvo::tools {
namespace {

struct OperationName {
  const char* name;
  const char* about;
};
constexpr OperationName kOperations[] = {  // KURVO_UNION ...
    {"union", "What either drawing covers"},
    {"intersection", "What both cover"},
    {"difference", "What the first covers and the second does not"},
    {"xor", "What just one of them covers"}};

struct CombineOptions {
  std::string first, second;
  InputOptions reading;
  OutputOptions output;
  int operation = KURVO_UNION;
  Nesting nesting = Nesting::kElements;
  LengthOption gap;
};

int RunCombine(const CombineOptions& options) {
  Context context;
  Drawing first = ReadInput(context, options.first, options.reading);
  Drawing second = ReadBeside(context, options.second, options.reading, first);
  const Closing closing = {options.gap.In(first)};
  const std::size_t count = first.shapes.size();
  Drawing both = Together(std::move(first), std::move(second));
  const Regions regions = [&] {
    Progress progress(STDERR_FILENO, "combined", CurveCount(both));
    return Combined(both, count, options.operation, options.nesting, closing,
                    [&] { progress.Step(); });
  }();
  const RegionReport report = {{BaseName(options.first), BaseName(options.second)},
                               kOperations[options.operation].name,
                               both,
                               regions,
                               false,
                               count};
  return DeliverRegions(context, options.reading, options.output,
                        {{options.first, &first}, {options.second, &second}}, report,
                        Look::kAsElements);
}

}  // namespace

Command AddCombineCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<CombineOptions>();
  CLI::App* combine =
      app.add_subcommand("combine", "Put together, cut out or take away what two drawings cover");
  AddDrawings(*combine, options->first, options->second, "Another one", true);
  CLI::Option_group* how = combine->add_option_group("How");
  for (int i = 0; i < static_cast<int>(std::size(kOperations)); ++i) {
    how->add_flag_callback(
        std::string("--") + kOperations[i].name, [options, i] { options->operation = i; },
        kOperations[i].about);
  }
  how->require_option(1);
  AddReading(*combine, options->reading, stage);
  AddGap(*combine, options->gap);
  AddNested(*combine, options->nesting,
            "Take outlines inside others as holes, whatever their elements");
  AddOutputs(
      *combine, options->output,
      "Write the result to this SVG file, one path for each element of which something is left",
      "Write a picture of the drawings and the result to this SVG file");
  combine->footer(
      "A drawing covers what its elements fill, each by its fill-rule, also those that are only "
      "lines. Curves\nstay curves; what nothing touches stays as it is. Each outline goes to the "
      "element that it begins with,\nand what is inside it with it. The second drawing is taken at "
      "the scale of the first.");
  return {combine, [options] { return RunCombine(*options); }};
}

}  // namespace kurvo::tools
