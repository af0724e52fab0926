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
#include "geometry/allowances.h"
#include "geometry/region_work.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kLargestDistance = 1e6;

constexpr double kMostRings = 10000;
constexpr double kMostEdges = 1e7;

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
  struct Allowance {
    std::string element;
    std::vector<std::pair<std::size_t, std::size_t>> edges;
    LengthOption width;
  };
  std::vector<Allowance> allowances;
  std::int32_t keeping = 0;  // into Keeping
};

// "0-3,5": none for what is no such list.
std::vector<std::pair<std::size_t, std::size_t>> ParseEdges(const std::string& text) {
  std::vector<std::pair<std::size_t, std::size_t>> edges;
  TextScanner scanner("--allowance", text);
  do {
    const auto number = [&] {
      const bool is_digit = scanner.Peek() >= '0' && scanner.Peek() <= '9';
      const double value = is_digit ? scanner.Number() : -1;
      if (!(value >= 0 && value <= kMostEdges && value == std::floor(value)))
        scanner.Fail("no edge");
      return static_cast<std::size_t>(value);
    };
    const std::size_t first = number();
    const std::size_t last = scanner.Accept('-') ? number() : first;
    if (last < first) scanner.Fail("no run of edges");
    edges.emplace_back(first, last);
  } while (scanner.Accept(','));
  if (!scanner.AtEnd()) scanner.Fail("no edges");
  return edges;
}

// "path#front:0-3=15mm", or "path#front=15mm" for all of its edges.
OffsetOptions::Allowance ParseAllowance(const std::string& text) {
  constexpr const char* kOption = "--allowance";
  const std::size_t equals = text.rfind('=');
  const std::size_t colon = text.rfind(':', equals);
  try {
    OffsetOptions::Allowance allowance;
    const bool has_edges = colon != text.npos;
    allowance.element = text.substr(0, has_edges ? colon : equals);
    if (equals == text.npos || allowance.element.empty()) throw ElementError("no element");
    if (has_edges) allowance.edges = ParseEdges(text.substr(colon + 1, equals - colon - 1));
    allowance.width = ParseLengthOption(kOption, text.substr(equals + 1), 0, kLargestDistance);
    return allowance;
  } catch (const ElementError&) {
    throw CLI::ValidationError(
        kOption,
        "expected ELEMENT:EDGES=LENGTH such as front:0-3=15mm, found '" + Excerpt(text) + "'");
  }
}

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
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const std::vector<double> distances = Distances(options, drawing);
  const std::optional<double> tolerance = PenOf(options.corners, drawing).tolerance;
  const std::vector<OutlineOffset> offsets = [&] {
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * distances.size());
    return OffsetOutlines(drawing, distances, tolerance, [&] { progress.Step(); });
  }();
  const std::string name = BaseName(options.input);
  return Deliver(
      context, options.reading, options.output, {{options.input, &drawing}},
      {.drawing = [&] { return ResultOf(context, drawing, offsets); },
       .picture =
           [&] { return OffsetPicture(context, drawing, offsets, name, options.output.size); },
       .table = [&] { return OffsetTable(context, offsets); },
       .json = [&] { return OffsetJson(context, OneLine(options.input), offsets); }});
}

// Elements with allowances by themselves; the others by the distance, or as they are without one.
Regions OffsetByEdges(Drawing& drawing, const std::vector<double>& distances,
                      const OffsetOptions& options, const Closing& closing, const PenOptions& pen,
                      const CurveDone& done) {
  const bool is_one = distances.size() < 2 && (distances.empty() || distances.front() >= 0);
  if (!is_one) throw std::runtime_error("--allowance takes one distance, outwards");
  std::vector<Allowance> allowances;
  for (const OffsetOptions::Allowance& allowance : options.allowances)
    allowances.push_back({allowance.element, allowance.edges, allowance.width.In(drawing)});
  const std::vector<std::vector<double>> widths =
      WidthsOf(drawing, allowances, distances.empty() ? 0 : distances.front());
  Regions regions = WithAllowances(drawing, widths, closing, pen, done);
  // The rest has the same numbers of elements.
  std::vector<std::vector<Outline>> named(drawing.shapes.size());
  std::vector<bool> is_rest;
  for (std::size_t i = 0; i < named.size(); ++i) {
    is_rest.push_back(widths[i].empty());
    if (!widths[i].empty()) named[i].swap(drawing.shapes[i].outlines);
  }
  if (distances.empty()) {
    const std::size_t left_out = regions.left_out;  // of the others
    KeepOutlines(drawing, Keeping::kAll, closing, &is_rest, regions);
    regions.left_out = left_out;
  } else {
    Regions rest = Offset(drawing, distances, options.nesting, closing, pen, done);
    Append(rest, regions);
    SortByElement(regions);
  }
  for (std::size_t i = 0; i < named.size(); ++i) {
    if (!widths[i].empty()) named[i].swap(drawing.shapes[i].outlines);
  }
  // Without a distance the rest is there already.
  is_rest.flip();
  KeepOutlines(drawing, static_cast<Keeping>(options.keeping), closing,
               distances.empty() ? &is_rest : nullptr, regions);
  return regions;
}

int RunOffset(const OffsetOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const bool has_distance = !options.distances.empty() || options.step.number != 0;
  const bool by_edges = !options.allowances.empty();
  const std::vector<double> distances =
      has_distance || !by_edges ? Distances(options, drawing) : std::vector<double>();
  const Closing closing = {options.gap.In(drawing)};
  const PenOptions pen = PenOf(options.corners, drawing);
  const auto keeping = static_cast<Keeping>(options.keeping);
  const Regions regions = [&] {
    const std::size_t times = std::max<std::size_t>(1, distances.size());
    Progress progress(STDERR_FILENO, "offset", CurveCount(drawing) * times);
    const auto step = [&] { progress.Step(); };
    if (by_edges) return OffsetByEdges(drawing, distances, options, closing, pen, step);
    Regions made = Offset(drawing, distances, options.nesting, closing, pen, step);
    KeepOutlines(drawing, keeping, closing, nullptr, made);
    return made;
  }();
  const RegionReport report = {{BaseName(options.input)}, "offset", drawing, regions, true};
  const bool is_lines = distances.size() > 1 || keeping == Keeping::kAll;
  const Look look = is_lines ? Look::kLines : Look::kAsElements;
  return DeliverRegions(context, options.reading, options.output, {{options.input, &drawing}},
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
  offset
      ->add_option_function<std::vector<std::string>>(
          "--allowance",
          [options](const std::vector<std::string>& texts) {
            for (const std::string& text : texts)
              options->allowances.push_back(ParseAllowance(text));
          },
          "How far outwards along edges of an element, such as front:0-3=15mm or front=10mm; other "
          "edges by the distance; may be given several times")
      ->allow_extra_args(false)
      ->type_name("ELEMENT[:EDGES]=LENGTH");
  AddChoice(*offset, "--keep", options->keeping, {"none", "open", "all"},
            "Which outlines of the drawing stay beside the offsets: none unless given, open ones "
            "such as grain lines and notches, or all");
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
  offset->get_option("--allowance")->excludes(inside)->excludes(offset->get_option("--rings"));
  for (const char* other : {"--join", "--miter-limit", "--gap", "--allowance", "--keep"})
    curves->excludes(offset->get_option(other));
  AddReading(*offset, options->reading, stage);
  AddOutputs(*offset, options->output,
             "Write the offsets alone to this SVG file, those of an element in one path",
             "Write a picture of the drawing and its offsets to this SVG file");
  offset->footer(
      "Elements without a fill are one region, in which an outline inside another is a hole: "
      "outlines grow\nand holes shrink, merge and vanish. Elements with a fill move each by "
      "itself, "
      "and so do elements with\nallowances; without a distance the others stay as they are then. "
      "Open "
      "outlines of elements without a\nfill are left out unless --keep says otherwise. With "
      "--curves "
      "arcs whose radius would be 0 or less\nvanish; the left of travel is the outside of rect, "
      "circle "
      "and ellipse elements.");
  return {offset, [options] {
            return options->curve_by_curve ? RunCurves(*options) : RunOffset(*options);
          }};
}

}  // namespace kurvo::tools
