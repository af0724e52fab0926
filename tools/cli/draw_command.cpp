// kurvo draw: what the outlines of a drawing are made of.
#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "picture/pictures.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

// Units of the drawing.
constexpr double kThinnestStroke = 1e-6;
constexpr double kThickestStroke = 1e6;
constexpr double kLeastDeviation = 1e-6;
constexpr double kGreatestDeviation = 1e9;

struct DrawOptions {
  std::string input;
  OutputOptions output;
  PictureOptions picture;
  double flatten = 0;  // deviations; 0: the curves as they are
  double biarcs = 0;
};

void AddPictureOptions(CLI::App& draw, PictureOptions& picture, OutputOptions& output) {
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
  draw.add_option("--stroke-width", picture.stroke_width,
                  "Stroke width of the curves, in units of the drawing")
      ->check(Between(kThinnestStroke, kThickestStroke))
      ->type_name("WIDTH")
      ->group(kGroup);
  AddSize(draw, output)->group(kGroup);
}

void AddDeviations(CLI::App& draw, DrawOptions& options) {
  const auto add = [&](const char* name, double& deviation, const char* text) {
    return draw.add_option(name, deviation, text)
        ->check(Between(kLeastDeviation, kGreatestDeviation))
        ->type_name("DEVIATION");
  };
  CLI::Option* flatten =
      add("--flatten", options.flatten,
          "Take chords that stay this close to the outlines, in units of the drawing");
  add("--biarcs", options.biarcs,
      "Take lines and arcs that stay this close to the outlines, the arcs in alternating colours")
      ->excludes(flatten);
}

Drawing ReadDrawing(Library& library, const DrawOptions& options) {
  Drawing drawing = ReadSvg(library, options.input);
  if (options.flatten > 0) return Flattened(library, drawing, options.flatten);
  if (options.biarcs > 0) return FittedByArcs(library, drawing, options.biarcs);
  return drawing;
}

void Draw(const DrawOptions& options) {
  Library library;
  const Drawing drawing = ReadDrawing(library, options);
  Deliver(
      options.output, {{options.input, &drawing}},
      [&] { return DrawingPicture(library, drawing, options.picture, options.output.size); },
      [&] { return OutlineTable(library, drawing); });
}

}  // namespace

Command AddDrawCommand(CLI::App& app) {
  const auto options = std::make_shared<DrawOptions>();
  CLI::App* draw = app.add_subcommand(
      "draw", "Read the outlines of an SVG drawing, print a table of them and draw their curves");
  AddDrawing(*draw, options->input);
  AddOutput(*draw, options->output,
            "Write the picture of the curves to this SVG file; without it only the table is "
            "printed");
  AddQuiet(*draw, options->output);
  AddDeviations(*draw, *options);
  AddPictureOptions(*draw, options->picture, options->output);
  draw->footer(
      "Lines become line records, circular arcs arc records, other arcs of ellipses rational "
      "Beziers,\nquadratic and cubic curves Beziers. Paint, clipping and style sheets are not "
      "looked at.");
  return {draw, [options] {
            options->picture.alternate = options->biarcs > 0;
            // Centres of flat arcs lie far out.
            if (options->flatten > 0 || options->biarcs > 0) options->picture.control = false;
            Draw(*options);
          }};
}

}  // namespace kurvo::tools
