// kurvo tile: drawings on sheets of paper.
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "geometry/tiles.h"
#include "picture/pictures.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// Lengths.
constexpr double kLeastPage = 1e-3;
constexpr double kGreatestPage = 1e6;

struct PageSize {
  const char* name;
  double width, height;  // millimetres
};
// ISO 216, ANSI/ASME Y14.1.
constexpr PageSize kPageSizes[] = {
    {"a4", 210, 297},  {"a3", 297, 420},         {"a2", 420, 594},         {"a1", 594, 841},
    {"a0", 841, 1189}, {"letter", 215.9, 279.4}, {"tabloid", 279.4, 431.8}};

struct TileOptions {
  std::string input;
  InputOptions reading;
  OutputOptions output;
  LengthOption width = {kPageSizes[0].width, 1};
  LengthOption height = {kPageSizes[0].height, 1};
  LengthOption margin = {10, 1};
  LengthOption overlap = {10, 1};
};

// "a4", or "600mmx900mm": the x stands before a number.
void ParsePage(const std::string& text, TileOptions& options) {
  constexpr const char* kOption = "--page";
  for (const PageSize& size : kPageSizes) {
    if (text != size.name) continue;
    options.width = {size.width, 1};
    options.height = {size.height, 1};
    return;
  }
  for (std::size_t x = 1; x + 1 < text.size(); ++x) {
    const bool is_between =
        text[x] == 'x' &&
        (std::isdigit(static_cast<unsigned char>(text[x + 1])) != 0 || text[x + 1] == '.');
    if (!is_between) continue;
    options.width = ParseLengthOption(kOption, text.substr(0, x), kLeastPage, kGreatestPage);
    options.height = ParseLengthOption(kOption, text.substr(x + 1), kLeastPage, kGreatestPage);
    return;
  }
  throw CLI::ValidationError(kOption,
                             "expected a4, a3, a2, a1, a0, letter, tabloid or a size such as "
                             "600mmx900mm, found '" +
                                 Excerpt(text) + "'");
}

int RunTile(const TileOptions& options) {
  Context context;
  Drawing drawing = ReadInput(context, options.input, options.reading);
  const Paper paper = {options.width.In(drawing), options.height.In(drawing),
                       options.margin.In(drawing), options.overlap.In(drawing)};
  const Pages pages = [&] {
    Progress progress(STDERR_FILENO, "tiled", CurveCount(drawing));
    return Tiled(context, drawing, paper, [&] { progress.Step(); });
  }();
  const Drawing all = OnOneSheet(context, drawing, pages, paper);
  const PageReport report = {OneLine(options.input), drawing, pages, paper};
  return Deliver(context, options.reading, options.output, {{options.input, &drawing}},
                 {.drawing = [&] { return ResultOf(all); },
                  .parts =
                      [&] {
                        std::vector<Part> parts;
                        for (const Page& page : pages.pages)
                          parts.push_back({PageName(page), ResultOf(page.drawing)});
                        return parts;
                      },
                  .picture = [&] { return PagePicture(context, report, options.output.size); },
                  .table = [&] { return PageTable(report); },
                  .json = [&] { return PageJson(report); }});
}

}  // namespace

Command AddTileCommand(CLI::App& app, Stage& stage) {
  const auto options = std::make_shared<TileOptions>();
  CLI::App* tile = app.add_subcommand(
      "tile", "Spread the lines of a drawing over sheets of paper at their true scale");
  AddDrawing(*tile, options->input);
  tile->add_option_function<std::string>(
          "--page", [options](const std::string& text) { ParsePage(text, *options); },
          "The paper: a4 unless given, a3, a2, a1, a0, letter, tabloid, or width and height such "
          "as 600mmx900mm")
      ->type_name("PAGE");
  AddLength(*tile, "--margin", options->margin, 0, kGreatestPage,
            "What stays free along the edges; 10mm unless given");
  AddLength(*tile, "--overlap", options->overlap, 0, kGreatestPage,
            "What neighbours have in common; 10mm unless given");
  AddReading(*tile, options->reading, stage);
  AddOutputs(*tile, options->output,
             "Write the pages beside each other, each a layer, to this SVG file; or where its name "
             "has a %, as in page-%.svg, each to a file of its own, with its row and column there",
             "Write a picture of the drawing under its pages to this SVG file");
  tile->footer(
      "Pages on which there is nothing are left out. On each is a frame around what is printed, "
      "its row and\ncolumn, and a cross near each corner, in the middle of the overlap: glue "
      "pages so that their crosses\nmeet. Fills are not printed, lines of open and closed outlines "
      "are, cut where the page ends.");
  return {tile, [options] { return RunTile(*options); }};
}

}  // namespace kurvo::tools
