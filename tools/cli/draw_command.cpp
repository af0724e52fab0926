// kurvo draw: what the outlines of a drawing are made of.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Units of the drawing.
constexpr double kThinnestStroke = 1e-6;
constexpr double kThickestStroke = 1e6;
constexpr double kLeastDeviation = 1e-6;
constexpr double kGreatestDeviation = 1e9;

struct DrawOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  PictureOptions picture;
  LengthOption flatten;  // deviations; 0: the curves as they are
  LengthOption biarcs;
  LengthOption stroke_width;  // 0: the usual one
};

void AddPictureOptions(CLI::App& draw, PictureOptions& picture, LengthOption& stroke_width) {
  constexpr const char* kGroup = "Picture";
  const auto leave_out = [&](const char* name, bool& part, const char* text) {
    draw.add_flag_function(
            name, [&part](std::int64_t) { part = false; }, text)
        ->group(kGroup);
  };
  leave_out("--no-control", picture.control, "Leave out control polygons and arc centres");
  leave_out("--no-points", picture.points, "Leave out end points");
  leave_out("--no-boxes", picture.boxes, "Leave out the boxes of outlines");
  leave_out("--no-legend", picture.legend, "Leave out the legend");
  draw.add_flag("--comb", picture.comb,
                "Draw curvature combs: teeth on the outer side of each bend, longer the closer it "
                "is bent")
      ->group(kGroup);
  draw.add_flag("--curves-only", picture.curves_only,
                "Draw nothing but the curves, in one thin black stroke")
      ->group(kGroup);
  draw.add_flag("--fill", picture.fill,
                "Fill the shapes by the fill rule of the drawing; with --curves-only in black "
                "and without a stroke")
      ->group(kGroup);
  AddLength(draw, "--stroke-width", stroke_width, kThinnestStroke, kThickestStroke,
            "Stroke width of the curves")
      ->group(kGroup);
}

void AddDeviations(CLI::App& draw, DrawOptions& options) {
  const auto add = [&](const char* name, LengthOption& deviation, const char* text) {
    return AddLength(draw, name, deviation, kLeastDeviation, kGreatestDeviation, text);
  };
  CLI::Option* flatten =
      add("--flatten", options.flatten, "Take chords that stay this close to the outlines");
  add("--biarcs", options.biarcs,
      "Take lines and arcs that stay this close to the outlines, the arcs in alternating colours")
      ->excludes(flatten);
}

Drawing Remade(Context& context, Drawing drawing, const DrawOptions& options) {
  const double flatten = options.flatten.In(drawing), biarcs = options.biarcs.In(drawing);
  if (!(flatten > 0 || biarcs > 0)) return drawing;
  Progress progress(STDERR_FILENO, flatten > 0 ? "flattened" : "fitted", CurveCount(drawing));
  const auto step = [&] { progress.Step(); };
  return flatten > 0 ? Flattened(context, drawing, flatten, step)
                     : FittedByArcs(context, drawing, biarcs, step);
}

int Draw(const DrawOptions& options) {
  Context context;
  Drawing drawing = Remade(context, ReadInput(context, options.input, options.reading), options);
  PictureOptions picture = options.picture;
  if (options.stroke_width.number > 0) picture.stroke_width = options.stroke_width.In(drawing);
  return Deliver(
      context, options.reading, options.output, {{options.input, &drawing}},
      {.drawing = [&] { return ResultOf(drawing); },
       .picture = [&] { return DrawingPicture(context, drawing, picture, options.output.size); },
       .table = [&] { return OutlineTable(context, drawing); },
       .json = [&] { return OutlineJson(context, OneLine(options.input), drawing); }});
}

}  // namespace

Command AddDrawCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<DrawOptions>();
  CLI::App* draw = app.add_subcommand(
      "draw",
      "Read the outlines of a drawing or a font, print a table of them and draw their curves");
  AddDrawing(*draw, options->input);
  AddReading(*draw, options->reading, stage);
  AddDeviations(*draw, *options);
  AddOutputs(*draw, options->output, "Write the curves alone to this SVG file",
             "Write a picture of the curves by type, with what they are made of, to this SVG file");
  AddPictureOptions(*draw, options->picture, options->stroke_width);
  draw->footer(
      "Lines become line records, circular arcs arc records, other arcs of ellipses rational "
      "Beziers,\nquadratic and cubic curves Beziers. Clip paths and masks are not looked at.");
  return {draw, [options] {
            options->picture.alternate = options->biarcs.number > 0;
            // Centres of flat arcs lie far out.
            if (options->flatten.number > 0 || options->biarcs.number > 0) {
              options->picture.control = false;
            }
            return Draw(*options);
          }};
}

}  // namespace kurvo::tools
