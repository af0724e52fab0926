// kurvo pipe: several commands in one run, which read a drawing once.
#include <algorithm>
#include <deque>
#include <stdexcept>

#include "cli/client.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr const char* kNext = ":";

// The arguments of each command, with the file of the first one, and "-" for what is piped.
std::vector<std::vector<std::string>> Commands(const std::vector<std::string>& arguments) {
  std::vector<std::vector<std::string>> commands(1);
  for (auto i = arguments.begin() + 1; i != arguments.end(); ++i) {
    if (*i == kNext) {
      commands.emplace_back();
      continue;
    }
    commands.back().push_back(*i);
    if (commands.back().size() > 1) continue;
    const bool is_first = commands.size() == 1;
    commands.back().push_back(is_first ? arguments.front() : std::string(kStandardStream));
  }
  for (const std::vector<std::string>& command : commands) {
    if (command.empty()) throw std::runtime_error("pipe needs a file and commands (try --help)");
  }
  return commands;
}

}  // namespace

int RunPipe(const std::vector<std::string>& arguments) {
  const std::vector<std::vector<std::string>> commands = Commands(arguments);
  std::deque<Client> clients(commands.size());
  for (std::size_t i = 0; i < commands.size(); ++i) {
    if (const std::optional<int> status = clients[i].Parse(commands[i])) return *status;
    clients[i].InPipe().is_last = i + 1 == commands.size();
  }
  int status = kSuccess;
  for (std::size_t i = 0; i < clients.size(); ++i) {
    Stage& stage = clients[i].InPipe();
    if (i > 0) {
      stage.given = std::move(clients[i - 1].InPipe().made);
      stage.files = clients[i - 1].InPipe().files;
    }
    status = std::max(status, clients[i].Run());
  }
  return status;
}

}  // namespace kurvo::tools
