// kurvo fit: a spline through points.
#include <unistd.h>

#include <memory>
#include <optional>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "geometry/curve_make.h"
#include "picture/pictures.h"
#include "svg/input.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

constexpr int kHighestOrder = 40;  // that the library fits

struct FitOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  int order = 4;
  bool control = false;
};

int Fit(const FitOptions& options) {
  Context context;
  const std::vector<Point> points = ReadPoints(context, options.input);
  const auto refuse = [&](const std::string& problem) {
    throw InputError(OneLine(options.input) + ": " + problem);
  };
  const std::string order = std::to_string(options.order);
  if (points.size() < static_cast<std::size_t>(options.order)) {
    refuse(std::to_string(points.size()) + " points are too few for order " + order);
  }
  const std::optional<Curve> spline = [&] {
    const Progress progress(STDERR_FILENO, "fitting", 0);
    return SplineThrough(context, points, options.order);
  }();
  if (!spline) refuse("no B-spline of order " + order + " passes through these points");
  const Drawing no_sheet;
  return Deliver(context, options.reading, options.output, {{options.input, nullptr}},
                 {.drawing =
                      [&] {
                        return OneByOne(no_sheet, {&*spline, 1});
                      },
                  .picture =
                      [&] {
                        return FitPicture(context, points, *spline, options.control,
                                          options.output.size);
                      },
                  .table = [&] { return FitText(context, *spline); },
                  .json = [&] { return FitJson(*spline); }});
}

}  // namespace

Command AddFitCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<FitOptions>();
  options->reading.stage = &stage;
  CLI::App* fit = app.add_subcommand("fit", "Make a B-spline that passes through points");
  fit->add_option("points", options->input, "A text file with a point on each line, x,y or x;y")
      ->required()
      ->type_name("FILE");
  fit->add_option("--order", options->order,
                  "Order of the spline, its degree + 1; 4 unless given, 2 is the polygon")
      ->check(Between(2, kHighestOrder))
      ->type_name("K");
  AddOutputs(*fit, options->output, "Write the spline to this SVG file",
             "Write a picture of the spline with the points marked to this SVG file");
  fit->add_flag("--control", options->control, "Show the control polygon in the picture too");
  fit->footer(
      "Numbers may stand apart by spaces too; empty lines, lines that begin with # and a first "
      "line "
      "of names\nare passed over. In the picture y runs downwards, as it does in SVG.");
  return {fit, [options] { return Fit(*options); }};
}

}  // namespace kurvo::tools
