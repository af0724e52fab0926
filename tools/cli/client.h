// One run of the program's commands: their options, which are read, and the command, which is run.
#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/commands.h"

namespace kurvo::tools {

class Client {
 public:
  Client();
  Client(const Client&) = delete;
  Client& operator=(const Client&) = delete;

  // Prints help and version, and faults to standard error. Result: the exit status, when there is
  // nothing to run.
  std::optional<int> Parse(std::vector<std::string> arguments);
  int Run();

  const CLI::App& Options() const { return app_; }
  Stage& InPipe() { return stage_; }

 private:
  CLI::App app_;
  Stage stage_;
  std::vector<Command> commands_;
};

// "kurvo pipe FILE COMMAND ... : COMMAND ...": each command takes what the one before it made.
// `arguments` follow the word "pipe". Result: the exit status. Throws std::runtime_error.
int RunPipe(const std::vector<std::string>& arguments);

}  // namespace kurvo::tools
