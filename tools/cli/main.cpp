// The command-line client: one command for each thing to do with the outlines of a drawing.
#include <signal.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands.h"
#include "cli/output.h"
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

int Run(int argc, char** argv) {
  CLI::App app(
      "Reads outlines as curve records, shows what they are made of, draws, intersects, measures, "
      "splits, joins and offsets them, tells what lies inside and how far drawings are apart, and "
      "fits "
      "curves to points.",
      "kurvo");
  app.set_version_flag("--version", "kurvo " KURVO_VERSION);
  app.require_subcommand(1);
  app.failure_message([](const CLI::App* parser, const CLI::Error& error) {
    return "kurvo: " + OneLine(Problem(*parser, error)) + " (try --help)\n";
  });
  app.footer(
      "Examples:\n  kurvo draw part.svg --picture curves.svg\n"
      "  kurvo draw part.svg --biarcs 0.01mm -o arcs.svg\n"
      "  kurvo intersect part.svg tool.svg --picture crossings.svg\n"
      "  kurvo measure part.svg --near 120,45 --unit mm\n"
      "  kurvo locate part.svg 10,20 --grid 90 --picture region.svg\n"
      "  kurvo split part.svg --parts=12 -o pieces.svg\n"
      "  kurvo join loose.svg --gap 0.05mm -o joined.svg\n"
      "  kurvo offset part.svg -d 2mm -o offset.svg\n"
      "  kurvo distance part.svg tool.svg --picture links.svg\n"
      "  kurvo fit points.csv --order 4 -o curve.svg\n\n"
      "-o writes the result as a drawing of its curves alone, at the scale of the source, "
      "--picture "
      "explains\nit; the file - is standard input or output. Lengths take the units mm, cm, in, "
      "pt, pc "
      "and px;\nwithout one they are in units of the drawing.\n\n"
      "Exit status: 0 done; 1 wrong options, or an output cannot be written; 2 an input cannot be "
      "read;\n3 done, but without elements that cannot be read. Each fault is one line on standard "
      "error; with 1\nand 2 no output file is made or changed.");
  const Command commands[] = {
      AddDrawCommand(app),   AddIntersectCommand(app), AddMeasureCommand(app),
      AddLocateCommand(app), AddSplitCommand(app),     AddJoinCommand(app),
      AddOffsetCommand(app), AddDistanceCommand(app),  AddFitCommand(app)};
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    std::ostringstream output;  // help, version
    const int status = app.exit(error, output);
    Print(output.str());
    return status == 0 ? kSuccess : kFailure;
  }
  for (const Command& command : commands) {
    if (command.options->parsed()) return command.run();
  }
  return kSuccess;
}

}  // namespace
}  // namespace kurvo::tools

int main(int argc, char** argv) {
  using kurvo::tools::InputError;
  signal(SIGXFSZ, SIG_IGN);  // a file too large is a write that fails
  try {
    return kurvo::tools::Run(argc, argv);
  } catch (const InputError& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
    return kurvo::tools::kBadInput;
  } catch (const std::bad_alloc&) {
    std::cerr << "kurvo: out of memory\n";
  } catch (const std::exception& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
  }
  return kurvo::tools::kFailure;
}
