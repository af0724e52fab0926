// The command-line client: one command for each thing to do with the outlines of a drawing.
#include <signal.h>

#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "cli/client.h"
#include "cli/manual.h"
#include "cli/output.h"
#include "cli/whole_file.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

int Run(const std::vector<std::string>& arguments) {
  const bool is_pipe = arguments.size() > 1 && arguments[0] == "pipe";
  if (is_pipe && (arguments[1] == kStandardStream || !arguments[1].starts_with('-'))) {
    return RunPipe({arguments.begin() + 1, arguments.end()});
  }
  Client client;
  if (arguments.size() == 2 && arguments[0] == "generate") {  // the build asks for it
    Print(Generated(client.Options(), arguments[1]));
    return kSuccess;
  }
  if (const std::optional<int> status = client.Parse(arguments)) return *status;
  return client.Run();
}

}  // namespace
}  // namespace kurvo::tools

int main(int argc, char** argv) {
  using kurvo::BadResult;
  using kurvo::tools::InputError;
  signal(SIGXFSZ, SIG_IGN);  // a file too large is a write that fails
  try {
    return kurvo::tools::Run({argv + 1, argv + argc});
  } catch (const InputError& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
    return kurvo::tools::kBadInput;
  } catch (const std::bad_alloc&) {
    std::cerr << "kurvo: out of memory\n";
  } catch (const BadResult& error) {
    std::cerr << "kurvo: " << kurvo::tools::ErrorText(error.error()) << "\n";
  } catch (const std::exception& error) {
    std::cerr << "kurvo: " << error.what() << "\n";
  }
  return kurvo::tools::kFailure;
}
