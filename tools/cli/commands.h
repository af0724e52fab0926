// The commands of the client; one file each says what a command takes and does.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>

#include "cli/output.h"

namespace kurvo::tools {

// A command and what it does once its options are read.
struct Command {
  CLI::App* options;
  std::function<int()> run;  // the exit status
};

// `stage` is where the command stands in a pipe.
Command AddCleanCommand(CLI::App& app, Stage& stage);
Command AddCombineCommand(CLI::App& app, Stage& stage);
Command AddCutCommand(CLI::App& app, Stage& stage);
Command AddDistanceCommand(CLI::App& app, Stage& stage);
Command AddDrawCommand(CLI::App& app, Stage& stage);
Command AddFitCommand(CLI::App& app, Stage& stage);
Command AddIntersectCommand(CLI::App& app, Stage& stage);
Command AddJoinCommand(CLI::App& app, Stage& stage);
Command AddLocateCommand(CLI::App& app, Stage& stage);
Command AddMarkCommand(CLI::App& app, Stage& stage);
Command AddMeasureCommand(CLI::App& app, Stage& stage);
Command AddOffsetCommand(CLI::App& app, Stage& stage);
Command AddSplitCommand(CLI::App& app, Stage& stage);
Command AddStrokeCommand(CLI::App& app, Stage& stage);
Command AddTileCommand(CLI::App& app, Stage& stage);

}  // namespace kurvo::tools
