// kurvo offset: outlines moved outwards and inwards, or their curves sideways.
#include <unistd.h>

#include <cmath>
#include <memory>
#include <optional>
#include <stdexcept>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "cli/region_command.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kLargestDistance = 1e6;

constexpr double kMostRings = 10000;

struct OffsetOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  std::vector<LengthOption> distances;
  LengthOption step;  // of rings
  std::size_t rings = 1;
  bool inside = false;
  bool curve_by_curve = false;
  Nesting nesting = Nesting::kUnfilled;
  LengthOption gap;
  CornerOptions corners;
};

// Those that were given, or rings: from the first one outwards or inwards, whichever way it goes.
std::vector<double> Distances(const OffsetOptions& options, Drawing& drawing) {
  const double sign = options.inside ? -1 : 1;
  std::vector<double> given;
  for (const LengthOption& distance : options.distances)
    given.push_back(sign * distance.In(drawing));
  if (given.empty()) {
    if (options.step.number == 0)
      throw std::runtime_error("offset needs -d, --inside, --outside or --step (try --help)");
    given.push_back(options.step.In(drawing));
  }
  if (options.rings == 1) return given;
  if (given.size() > 1) throw std::runtime_error("--rings takes one distance");
  const double step =
      options.step.number == 0 ? given[0] : std::copysign(options.step.In(drawing), given[0]);
  std::vector<double> rings;
  for (std::size_t i = 0; i < options.rings; ++i)
    rings.push_back(given[0] + static_cast<double>(i) * step);
  return rings;
}

// Curve by curve.
int RunCurves(const OffsetOptions& options) {
  Library library;
  Drawing drawing = ReadInput(library, options.input, options.reading);
  const std::vector<double> distances = Distances(options, drawing);
  const std::optional<double> tolerance = PenOf(options.corners, drawing).tolerance;
  const std::vector<OutlineOffset> offsets = [&] {
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * distances.size());
    return OffsetOutlines(drawing, distances, tolerance, [&] { progress.Step(); });
  }();
  const std::string name = BaseName(options.input);
  return Deliver(
      library, options.reading, options.output, {{options.input, &drawing}},
      {.drawing = [&] { return ResultOf(library, drawing, offsets); },
       .picture =
           [&] { return OffsetPicture(library, drawing, offsets, name, options.output.size); },
       .table = [&] { return OffsetTable(library, offsets); },
       .json = [&] { return OffsetJson(library, OneLine(options.input), offsets); }});
}

int RunOffset(const OffsetOptions& options) {
  Library library;
  Drawing drawing = ReadInput(library, options.input, options.reading);
  const std::vector<double> distances = Distances(options, drawing);
  const Closing closing = {options.gap.In(drawing)};
  const PenOptions pen = PenOf(options.corners, drawing);
  const Regions regions = [&] {
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * distances.size());
    return Offset(drawing, distances, options.nesting, closing, pen, [&] { progress.Step(); });
  }();
  const RegionReport report = {{BaseName(options.input)}, "offset", drawing, regions, true};
  const Look look = distances.size() > 1 ? Look::kLines : Look::kAsElements;
  return DeliverRegions(library, options.reading, options.output, {{options.input, &drawing}},
                        report, look);
}

}  // namespace

Command AddOffsetCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<OffsetOptions>();
  CLI::App* offset = app.add_subcommand(
      "offset", "Grow or shrink what the outlines of a drawing surround by a distance");
  AddDrawing(*offset, options->input);
  CLI::Option* distance =
      offset
          ->add_option_function<std::vector<std::string>>(
              "-d,--distance",
              [options](const std::vector<std::string>& texts) {
                for (const std::string& text : texts) {
                  options->distances.push_back(
                      ParseLengthOption("--distance", text, -kLargestDistance, kLargestDistance));
                }
              },
              "How far: outwards, a negative distance inwards; may be given several times")
          ->allow_extra_args(false)
          ->type_name("LENGTH");
  const auto add_side = [&](const char* name, bool inside, const char* about) {
    return offset
        ->add_option_function<std::string>(
            name,
            [options, name, inside](const std::string& text) {
              options->distances = {ParseLengthOption(name, text, 0, kLargestDistance)};
              options->inside = inside;
            },
            about)
        ->type_name("LENGTH")
        ->excludes(distance);
  };
  CLI::Option* outside = add_side("--outside", false, "How far outwards");
  CLI::Option* inside = add_side("--inside", true, "How far inwards")->excludes(outside);
  offset
      ->add_option("--rings", options->rings,
                   "As many outlines around each other, all of them made of the drawing itself")
      ->check(Between(1, kMostRings))
      ->type_name("N");
  AddLength(*offset, "--step", options->step, -kLargestDistance, kLargestDistance,
            "From one ring to the next; the distance unless given, which it stands for alone");
  AddCorners(*offset, options->corners);
  AddGap(*offset, options->gap);
  CLI::Option* nested = AddNested(*offset, options->nesting,
                                  "Take outlines inside others as holes, whatever their elements");
  CLI::Option* each = offset->add_flag_callback(
      "--each", [options] { options->nesting = Nesting::kElements; },
      "Offset each element by itself, also those without a fill");
  each->excludes(nested);
  CLI::Option* curves = offset->add_flag(
      "--curves", options->curve_by_curve,
      "Move curve by curve, to the left of travel, and leave corners as they come");
  for (CLI::Option* other : {outside, inside, nested, each}) curves->excludes(other);
  for (const char* other : {"--join", "--miter-limit", "--gap"})
    curves->excludes(offset->get_option(other));
  AddReading(*offset, options->reading, stage);
  AddOutputs(*offset, options->output,
             "Write the offsets alone to this SVG file, those of an element in one path",
             "Write a picture of the drawing and its offsets to this SVG file");
  offset->footer(
      "Elements without a fill are one region, in which an outline inside another is a hole: "
      "outlines grow\nand holes shrink, merge and vanish. Elements with a fill move each by "
      "itself. Open outlines of elements\nwithout a fill are left out. With --curves arcs whose "
      "radius would be 0 or less vanish; the left of\ntravel is the outside of rect, circle and "
      "ellipse elements.");
  return {offset, [options] {
            return options->curve_by_curve ? RunCurves(*options) : RunOffset(*options);
          }};
}

}  // namespace kurvo::tools
