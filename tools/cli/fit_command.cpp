#include "cli/fit_command.h"

#include <memory>
#include <optional>

#include "cli/output_file.h"
#include "geometry/library.h"
#include "picture/fit_picture.h"
#include "report/json.h"
#include "svg/input_error.h"
#include "svg/number_text.h"
#include "svg/point_list.h"

namespace kurvo::tools {
namespace {

constexpr int kHighestOrder = 40;  // that the library fits

struct FitOptions {
  std::string input;
  std::string output;
  int order = 4;
  bool json = false;
  bool quiet = false;
  FitPictureOptions picture;
};

std::string Summary(Library& library, const OwnedCurve& spline) {
  const KurvoBSpline& block = spline.Block<KurvoBSpline>();
  return "B-spline of order " + std::to_string(block.order) + " through " +
         std::to_string(block.count) + " points, length " +
         ShortNumber(LengthOf(library, spline, 0, 1)) + "\n";
}

std::string Json(const OwnedCurve& spline) {
  constexpr auto kLines = JsonWriter::Layout::kLines;
  const KurvoBSpline& block = spline.Block<KurvoBSpline>();
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("order");
  json.Count(static_cast<std::size_t>(block.order));
  json.Key("knots");
  json.BeginArray();
  for (int i = 0; i < block.order + block.count; ++i) json.Number(block.knots[i]);
  json.EndArray();
  json.Key("control_points");
  json.BeginArray(kLines);
  for (int i = 0; i < block.count; ++i) {
    json.Coordinates({block.points[i][0], block.points[i][1]});
  }
  json.EndArray();
  json.EndObject();
  return json.Take();
}

void Fit(const FitOptions& options) {
  Library library;
  const std::vector<Point> points = ReadPoints(library, options.input);
  if (points.size() < static_cast<std::size_t>(options.order)) {
    throw InputError(OneLine(options.input) + ": " + std::to_string(points.size()) +
                     " points are too few for order " + std::to_string(options.order));
  }
  const std::optional<OwnedCurve> through = OwnedCurve::Through(library, points, options.order);
  if (!through) {
    throw InputError(OneLine(options.input) + ": no B-spline of order " +
                     std::to_string(options.order) + " passes through these points");
  }
  const OwnedCurve& spline = *through;
  if (!options.output.empty()) {
    RefuseInputAsOutput({options.input}, options.output);
    WriteWholeFile(options.output, FitPicture(library, points, spline, options.picture));
  }
  if (!options.quiet) Print(options.json ? Json(spline) : Summary(library, spline));
}

}  // namespace

Command AddFitCommand(CLI::App& app) {
  const auto options = std::make_shared<FitOptions>();
  CLI::App* fit = app.add_subcommand("fit", "Make a B-spline that passes through points");
  fit->add_option("points", options->input, "A text file with a point x,y on each line")
      ->required()
      ->type_name("FILE");
  fit->add_option("--order", options->order,
                  "Order of the spline, its degree + 1; 4 unless given, 2 is the polygon")
      ->check(Between(2, kHighestOrder))
      ->type_name("K");
  AddOutputOption(*fit, options->output,
                  "Write a picture of the spline with the points marked to this SVG file");
  AddSizeOption(*fit, options->picture.size);
  fit->add_flag("--control", options->picture.control, "Draw the control polygon too");
  fit->add_flag("--json", options->json, "Print knots and control points as JSON");
  fit->add_flag("-q,--quiet", options->quiet, "Print nothing");
  fit->footer(
      "Numbers may stand apart by spaces in place of the comma; empty lines and lines that begin "
      "with #\nare passed over. In the picture y runs downwards, as it does in SVG.");
  return {fit, [options] { Fit(*options); }};
}

}  // namespace kurvo::tools
