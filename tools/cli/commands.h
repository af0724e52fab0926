// The commands of the client; one file each says what a command takes and does.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace kurvo::tools {

// A command and what it does once its options are read.
struct Command {
  CLI::App* options;
  std::function<int()> run;  // the exit status
};

Command AddDistanceCommand(CLI::App& app);
Command AddDrawCommand(CLI::App& app);
Command AddFitCommand(CLI::App& app);
Command AddIntersectCommand(CLI::App& app);
Command AddJoinCommand(CLI::App& app);
Command AddLocateCommand(CLI::App& app);
Command AddMeasureCommand(CLI::App& app);
Command AddOffsetCommand(CLI::App& app);
Command AddSplitCommand(CLI::App& app);

}  // namespace kurvo::tools
