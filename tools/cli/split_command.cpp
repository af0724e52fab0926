// kurvo split: outlines in pieces.
#include <unistd.h>

#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "geometry/extrema.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr double kMostParts = 10000;

struct SplitOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  std::vector<double> at;
  std::size_t parts = 0;
  CutPlaces cut;

  // Outlines stay whole then, with more curves.
  bool KeepsOutlines() const { return cut.extrema || cut.inflections; }
};

// Each greater than the one before it, all in [0, 1].
bool Ascend(const std::vector<double>& parameters) {
  double before = -1;
  for (const double t : parameters) {
    if (!(t > before && t >= 0 && t <= 1)) return false;
    before = t;
  }
  return true;
}

// "t1,t2,..."
std::vector<double> ParseParameters(const std::string& text) {
  constexpr const char* kOption = "--at";
  try {
    TextScanner scanner(kOption, text);
    std::vector<double> parameters;
    scanner.SkipSpace();
    do {
      parameters.push_back(scanner.Number());
      scanner.SkipCommaSpace();
    } while (!scanner.AtEnd());
    if (Ascend(parameters)) return parameters;
  } catch (const ElementError&) {
    // The message below says what is wanted.
  }
  throw CLI::ValidationError(
      kOption, "expected t1,t2,... ascending from 0 to 1, found '" + Excerpt(text) + "'");
}

Drawing CutPieces(Context& context, const Drawing& drawing, const SplitOptions& options) {
  Progress progress(STDERR_FILENO, "cut", CurveCount(drawing));
  return Cut(context, drawing, options.cut, [&] { progress.Step(); });
}

std::vector<SplitOutline> Split(Context& context, const Drawing& drawing,
                                const SplitOptions& options) {
  Progress progress(STDERR_FILENO, "split", CurveCount(drawing));
  const auto step = [&] { progress.Step(); };
  if (options.parts > 0) return SplitIntoParts(context, drawing, options.parts, step);
  return SplitAt(context, drawing, options.at, step);  // at none after Cut
}

int RunSplit(const SplitOptions& options) {
  Context context;
  const Drawing drawing = [&] {
    Drawing whole = ReadInput(context, options.input, options.reading);
    return options.KeepsOutlines() ? CutPieces(context, whole, options) : std::move(whole);
  }();
  const std::vector<SplitOutline> outlines = Split(context, drawing, options);
  return Deliver(
      context, options.reading, options.output, {{options.input, &drawing}},
      {.drawing =
           [&] {
             return options.KeepsOutlines() ? ResultOf(drawing) : ResultOf(drawing, outlines);
           },
       .picture = [&] { return SplitPicture(context, drawing, outlines, options.output.size); },
       .table = [&] { return SplitTable(context, outlines); },
       .json = [&] { return SplitJson(context, OneLine(options.input), outlines); }});
}

}  // namespace

Command AddSplitCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<SplitOptions>();
  CLI::App* split = app.add_subcommand("split", "Cut the outlines of a drawing into pieces");
  AddDrawing(*split, options->input);
  CLI::Option_group* how = split->add_option_group("How");
  CLI::Option* at =
      how->add_option_function<std::string>(
             "--at", [options](const std::string& text) { options->at = ParseParameters(text); },
             "Cut every curve at these parameters, which ascend from 0 to 1")
          ->type_name("T1,T2,...");
  at->excludes(how->add_option("--parts", options->parts,
                               "Cut every outline into N pieces of equal arc length")
                   ->check(Between(1, kMostParts))
                   ->type_name("N"));
  CLI::Option* extrema =
      how->add_flag("--extrema", options->cut.extrema,
                    "Cut every curve where it is farthest in x or in y; outlines stay whole");
  CLI::Option* inflections =
      how->add_flag("--inflections", options->cut.inflections,
                    "Cut every curve where its bend changes sides; outlines stay whole");
  for (CLI::Option* whole : {extrema, inflections}) {
    for (const char* other : {"--at", "--parts"}) whole->excludes(how->get_option(other));
  }
  how->require_option(1, 2);
  AddReading(*split, options->reading, stage);
  AddOutputs(*split, options->output,
             "Write the pieces to this SVG file, those of an element as the parts of one path",
             "Write a picture of the pieces, neighbours in different colours, to this SVG file");
  split->footer(
      "The pieces are lines, arcs and curves as before, in the order of the drawing. t runs from 0 "
      "to 1\nalong a curve. A piece of an outline goes through as many curves as its length "
      "takes. With --extrema and --inflections\neach curve is a piece, and the drawing has the "
      "outlines as they were, with more curves.");
  return {split, [options] { return RunSplit(*options); }};
}

}  // namespace kurvo::tools
