// Runs other programs.
#pragma once

#include <string>
#include <vector>

namespace kurvo::tools {

struct ProcessResult {
  int exit_code;  // 128 + signal when a signal ended it; 127 when there is no such program
  std::string output;
  std::string errors;
};

// Runs arguments[0], found on the path, and waits for it.
ProcessResult RunProcess(const std::vector<std::string>& arguments);

// Runs the client.
ProcessResult Client(std::vector<std::string> arguments);

}  // namespace kurvo::tools
