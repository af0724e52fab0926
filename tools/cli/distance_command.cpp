// kurvo distance: the shortest links between two drawings.
#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "picture/pictures.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

struct DistanceOptions {
  std::string first;
  std::string second;
  OutputOptions output;
};

void RunDistance(const DistanceOptions& options) {
  Library library;
  const Drawing first = ReadSvg(library, options.first);
  const Drawing second = ReadSvg(library, options.second);
  const CurveList first_curves = ListCurves(library, first);
  const CurveList second_curves = ListCurves(library, second);
  const std::vector<Link> links = FindLinks(library, first_curves, second_curves);
  const LinkReport report = {BaseName(options.first), BaseName(options.second), first_curves,
                             second_curves, links};
  Deliver(
      options.output, {{options.first, &first}, {options.second, &second}},
      [&] { return LinkPicture(library, first, second, report, options.output.size); },
      [&] { return options.output.json ? LinkJson(report) : LinkTable(report); });
}

}  // namespace

Command AddDistanceCommand(CLI::App& app) {
  const auto options = std::make_shared<DistanceOptions>();
  CLI::App* distance = app.add_subcommand(
      "distance", "List the shortest link from each outline of a drawing to those of another");
  AddDrawings(*distance, options->first, options->second, "Another one", true);
  AddOutput(*distance, options->output,
            "Write a picture of the drawings with their links to this SVG file");
  AddSize(*distance, options->output);
  AddJson(*distance, options->output);
  AddQuiet(*distance, options->output);
  distance->footer(
      "Both drawings are taken in the coordinates of their outermost viewBox. Outlines are lines: "
      "what lies\ninside a closed one is as far away as its border. Curves are counted from 1 in "
      "each outline; t runs\nfrom 0 to 1 along a curve. Outlines that cross or touch are at "
      "distance 0.");
  return {distance, [options] { RunDistance(*options); }};
}

}  // namespace kurvo::tools
