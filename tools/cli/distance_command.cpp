// kurvo distance: the shortest links between two drawings.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"

namespace kurvo::tools {
namespace {

struct DistanceOptions {
  std::string first;
  std::string second;
  InputOptions reading;
  OutputOptions output;
};

int RunDistance(const DistanceOptions& options) {
  Context context;
  Drawing first = ReadInput(context, options.first, options.reading);
  const Drawing second = ReadBeside(context, options.second, options.reading, first);
  const CurveList first_curves = ListCurves(context, first);
  const CurveList second_curves = ListCurves(context, second);
  const std::vector<Link> links = [&] {
    Progress progress(STDERR_FILENO, "linked", first_curves.curves.size());
    return FindLinks(first_curves, second_curves, [&] { progress.Step(); });
  }();
  const LinkReport report = {BaseName(options.first), BaseName(options.second), first_curves,
                             second_curves, links};
  const std::vector<Curve> lines = LinesOf(links);
  return Deliver(
      context, options.reading, options.output,
      {{options.first, &first}, {options.second, &second}},
      {.drawing = [&] { return OneByOne(first, lines); },
       .picture = [&] { return LinkPicture(context, first, second, report, options.output.size); },
       .table = [&] { return LinkTable(report); },
       .json = [&] { return LinkJson(report); }});
}

}  // namespace

Command AddDistanceCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<DistanceOptions>();
  CLI::App* distance = app.add_subcommand(
      "distance", "List the shortest link from each outline of a drawing to those of another");
  AddDrawings(*distance, options->first, options->second, "Another one", true);
  AddReading(*distance, options->reading, stage);
  AddOutputs(*distance, options->output, "Write the links to this SVG file, each as a line",
             "Write a picture of the drawings with their links to this SVG file");
  distance->footer(
      "Both drawings are taken in the coordinates of their outermost viewBox, the second at the "
      "scale of\nthe first. Outlines are lines: what lies inside a closed one is as far away as "
      "its border. Curves are counted from 1 in "
      "each outline; t runs\nfrom 0 to 1 along a curve. Outlines that cross or touch are at "
      "distance 0.");
  return {distance, [options] { return RunDistance(*options); }};
}

}  // namespace kurvo::tools
