#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include "temporary_directory.h"

extern char** environ;

namespace kurvo::tools {

ProcessResult RunProcess(const std::vector<std::string>& arguments) {
  const TemporaryDirectory directory;
  const std::string output = directory.File("stdout");
  const std::string errors = directory.File("stderr");
  std::vector<std::string> copies = arguments;
  std::vector<char*> argv;
  argv.reserve(copies.size() + 1);
  for (std::string& copy : copies) argv.push_back(copy.data());
  argv.push_back(nullptr);

  constexpr int kFlags = O_WRONLY | O_CREAT | O_TRUNC;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), kFlags, 0600);
  posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), kFlags, 0600);
  pid_t child = 0;
  const int failure = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (failure != 0) return {127, "", "cannot run " + arguments[0]};

  int status = 0;
  waitpid(child, &status, 0);
  const int exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return {exit_code, FileContent(output), FileContent(errors)};
}

ProcessResult Client(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), KURVO_TOOL);
  return RunProcess(arguments);
}

}  // namespace kurvo::tools
