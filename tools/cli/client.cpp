#include "cli/client.h"

#include <algorithm>
#include <iostream>
#include <sstream>

#include "cli/whole_file.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

// The first word that the parser could not place, "drow" of "kurvo drow part.svg", says more than
// what it misses for that reason.
std::string Problem(const CLI::App& app, const CLI::Error& error) {
  const std::vector<std::string> unknown = app.remaining(true);
  const auto kind = static_cast<CLI::ExitCodes>(error.get_exit_code());
  const bool is_missed =
      kind == CLI::ExitCodes::RequiredError || kind == CLI::ExitCodes::ExtrasError;
  if (unknown.empty() || !is_missed) return error.what();
  const std::string& first = unknown.front();
  if (app.get_subcommands().empty() && !first.starts_with('-')) {
    return "There is no subcommand " + first;
  }
  return "The following argument was not expected: " + first;
}

}  // namespace

Client::Client()
    : app_(
          "Reads outlines as curve records, shows what they are made of, draws, intersects, "
          "measures, splits, joins, cleans, combines, offsets, strokes, marks and prints them, "
          "tells what lies inside and how far drawings are apart, makes machine code of them, and "
          "fits curves to points.",
          "kurvo") {
  app_.set_version_flag("--version", "kurvo " KURVO_VERSION);
  app_.require_subcommand(1);
  app_.failure_message([](const CLI::App* parser, const CLI::Error& error) {
    return "kurvo: " + OneLine(Problem(*parser, error)) + " (try --help)\n";
  });
  app_.footer(
      "Examples:\n  kurvo draw part.svg --picture curves.svg\n"
      "  kurvo draw part.svg --biarcs 0.01mm -o arcs.svg\n"
      "  kurvo intersect part.svg tool.svg --picture crossings.svg\n"
      "  kurvo measure part.svg --near 120,45 --unit mm\n"
      "  kurvo locate part.svg 10,20 --grid 90 --picture region.svg\n"
      "  kurvo split part.svg --parts=12 -o pieces.svg\n"
      "  kurvo join loose.svg --gap 0.05mm -o joined.svg\n"
      "  kurvo clean part.svg -o clean.svg\n"
      "  kurvo combine part.svg tool.svg --difference -o cut.svg\n"
      "  kurvo offset part.svg -d 2mm -o offset.svg\n"
      "  kurvo stroke part.svg --width 2mm --cap round -o stroke.svg\n"
      "  kurvo cut part.dxf --kerf 0.15mm --lead-in 2mm -o part.nc\n"
      "  kurvo mark part.svg --at 120mm,250mm -o notched.svg\n"
      "  kurvo tile part.svg --page a4 -o pages.svg\n"
      "  kurvo distance part.svg tool.svg --picture links.svg\n"
      "  kurvo fit points.csv --order 4 -o curve.svg\n"
      "  kurvo pipe in.svg join --gap 0.05mm : offset -d 0.2mm -o out.svg\n\n"
      "-o writes the result as a drawing of its curves alone, at the scale of the source, "
      "--picture "
      "explains\nit; the file - is standard input or output. Lengths take the units mm, cm, in, "
      "pt, pc "
      "and px;\nwithout one they are in units of the drawing.\n\n"
      "Exit status: 0 done; 1 wrong options, or an output cannot be written; 2 an input cannot be "
      "read;\n3 done, but without elements that cannot be read. Each fault is one line on standard "
      "error; with 1\nand 2 no output file is made or changed.");
  for (const auto add :
       {AddDrawCommand, AddIntersectCommand, AddMeasureCommand, AddLocateCommand, AddSplitCommand,
        AddJoinCommand, AddCleanCommand, AddCombineCommand, AddOffsetCommand, AddStrokeCommand,
        AddCutCommand, AddMarkCommand, AddTileCommand, AddDistanceCommand, AddFitCommand})
    commands_.push_back(add(app_, stage_));
  CLI::App* pipe =
      app_.add_subcommand("pipe", "Run several commands, each on what the one before made");
  pipe->footer(
      "kurvo pipe FILE COMMAND [OPTIONS] : COMMAND [OPTIONS] ...\n\n"
      "The first command reads the file, the others have no first file of their own. All but the "
      "last make\na drawing, which the next one takes, with all its curves as what they are. "
      "Tables are those of the\nlast command; -o and --picture write what a command makes wherever "
      "they stand.");
}

std::optional<int> Client::Parse(std::vector<std::string> arguments) {
  try {
    std::reverse(arguments.begin(), arguments.end());
    app_.parse(std::move(arguments));
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    std::ostringstream output;  // help, version
    const int status = app_.exit(error, output);
    Print(output.str());
    return status == 0 ? kSuccess : kFailure;
  }
}

int Client::Run() {
  for (const Command& command : commands_) {
    if (command.options->parsed()) return command.run();
  }
  throw std::runtime_error("pipe needs a file and commands (try --help)");
}

}  // namespace kurvo::tools
