// kurvo locate: which points lie inside the outlines of a drawing.
#include <unistd.h>

#include <cmath>
#include <memory>
#include <stdexcept>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr int kMostGridPoints = 2000;  // along the longer side

struct LocateOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  std::vector<PointOption> points;
  int grid = 0;  // points along the longer side of the drawing
};

std::vector<Point> GridPoints(const Bounds& box, int count) {
  std::vector<Point> points;
  if (box.IsEmpty() || count < 1) return points;
  if (count == 1) return {0.5 * (box.Min() + box.Max())};
  const double step = box.LongerSide() / (count - 1);
  const auto along = [step](double length) {
    return step > 0 ? static_cast<int>(std::floor(length / step + 1e-9)) + 1 : 1;
  };
  for (int j = 0; j < along(box.Height()); ++j) {
    for (int i = 0; i < along(box.Width()); ++i) {
      points.push_back({box.min_x + i * step, box.min_y + j * step});
    }
  }
  return points;
}

LocateReport ReportOn(Context& context, Drawing& drawing, const LocateOptions& options) {
  std::vector<Point> given;
  for (const PointOption& point : options.points) given.push_back(point.In(drawing));
  LocateReport report = {OneLine(options.input), {}, {}, {}};
  ForEachOutline(
      drawing, [&](const Outline&, const std::string& label) { report.outlines.push_back(label); });
  const Locator locator(context, drawing);
  const bool is_grid = options.grid > 0;
  Progress progress(STDERR_FILENO, "looked at",
                    CurveCount(drawing) * ((given.empty() ? 0u : 1u) + (is_grid ? 1u : 0u)));
  const auto located = [&](const std::vector<Point>& points) {
    std::vector<LocatedPoint> list;
    list.reserve(points.size());
    if (points.empty()) return list;
    const std::vector<Where> places =
        locator.InDrawing(points, CoreCount(), [&] { progress.Step(); });
    for (std::size_t i = 0; i < points.size(); ++i) list.push_back({points[i], places[i], {}});
    return list;
  };
  report.points = located(given);
  for (std::size_t i = 0; i < report.outlines.size(); ++i) {
    const std::vector<Where> places = locator.InOutline(i, given);
    for (std::size_t k = 0; k < places.size(); ++k) report.points[k].outlines.push_back(places[k]);
  }
  report.grid = located(GridPoints(BoundsOf(context, drawing), options.grid));
  return report;
}

int Locate(const LocateOptions& options) {
  if (options.points.empty() && options.grid == 0) {
    throw std::runtime_error("locate needs points or --grid (try --help)");
  }
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const LocateReport report = ReportOn(context, drawing, options);
  return Deliver(
      context, options.reading, options.output, {{options.input, &drawing}},
      {.drawing = nullptr,
       .picture = [&] { return LocatePicture(context, drawing, report, options.output.size); },
       .table = [&] { return LocateTable(report); },
       .json = [&] { return LocateJson(report); }});
}

}  // namespace

Command AddLocateCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<LocateOptions>();
  CLI::App* locate = app.add_subcommand(
      "locate", "Tell which points lie on, inside or outside the outlines of a drawing");
  AddDrawing(*locate, options->input);
  locate
      ->add_option_function<std::vector<std::string>>(
          "points",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts) {
              options->points.push_back(ParsePointOption("points", text));
            }
          },
          "The points to look at, each coordinate with or without a unit")
      ->type_name("X,Y");
  locate
      ->add_option("--grid", options->grid,
                   "Look at a square grid of points over the drawing, this many along its longer "
                   "side; one is the middle")
      ->check(CLI::Range(1, kMostGridPoints))
      ->type_name("COUNT");
  AddReading(*locate, options->reading, stage);
  AddOutputs(*locate, options->output, nullptr,
             "Write a picture of the curves and the points to this SVG file");
  locate->footer(
      "Inside is what the fill rule of a shape fills, also where outlines cross themselves; a line "
      "closes\noutlines whose ends do not meet. Named are the outlines that a point is on or that "
      "go "
      "around it. A\npoint within the length tolerance of a curve or of such a line is on it.");
  return {locate, [options] { return Locate(*options); }};
}

}  // namespace kurvo::tools
