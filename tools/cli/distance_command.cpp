#include "cli/distance_command.h"

#include <memory>

#include "cli/output_file.h"
#include "geometry/curve_list.h"
#include "geometry/library.h"
#include "geometry/links.h"
#include "picture/link_picture.h"
#include "report/link_report.h"

namespace kurvo::tools {
namespace {

struct DistanceOptions {
  std::string first;
  std::string second;
  std::string output;
  bool json = false;
  bool quiet = false;
  double size = 1000;
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
  if (!options.output.empty()) {
    RefuseInputAsOutput({options.first, options.second}, options.output);
    WriteWholeFile(options.output, LinkPicture(library, first, second, report, options.size));
  }
  PrintSkipped(options.first, first);
  PrintSkipped(options.second, second);
  if (!options.quiet) Print(options.json ? LinkJson(report) : LinkTable(report));
}

}  // namespace

Command AddDistanceCommand(CLI::App& app) {
  const auto options = std::make_shared<DistanceOptions>();
  CLI::App* distance = app.add_subcommand(
      "distance", "List the shortest link from each outline of a drawing to those of another");
  distance->add_option("first", options->first, "An SVG drawing")->required()->type_name("FILE");
  distance->add_option("second", options->second, "Another one")->required()->type_name("FILE");
  AddOutputOption(*distance, options->output,
                  "Write a picture of the drawings with their links to this SVG file");
  AddSizeOption(*distance, options->size);
  distance->add_flag("--json", options->json, "Print JSON with all digits in place of the table");
  distance->add_flag("-q,--quiet", options->quiet, "Do not print the table");
  distance->footer(
      "Both drawings are taken in the coordinates of their outermost viewBox. Outlines are lines: "
      "what lies\ninside a closed one is as far away as its border. Curves are counted from 1 in "
      "each outline; t runs\nfrom 0 to 1 along a curve. Outlines that cross or touch are at "
      "distance 0.");
  return {distance, [options] { RunDistance(*options); }};
}

}  // namespace kurvo::tools
