// Whole files or none, also when a signal ends the program.
#include "cli/output_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <string>

#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

// The write that reaches the limit is where the signal comes.
void WriteInterrupted(const std::string& path, int interrupt) {
  static int signal_to_raise;
  signal_to_raise = interrupt;
  const rlimit limit = {512, 512};
  setrlimit(RLIMIT_FSIZE, &limit);
  signal(SIGXFSZ, [](int) { raise(signal_to_raise); });
  WriteWholeFile(path, std::string(4096, 'x'));
}

TEST(OutputFileDeathTest, AnInterruptLeavesNoTemporaryFile) {
  for (const int interrupt : {SIGHUP, SIGINT, SIGTERM}) {
    const TemporaryDirectory directory;
    EXPECT_EXIT(WriteInterrupted(directory.File("out.svg"), interrupt),
                testing::KilledBySignal(interrupt), "");
    EXPECT_EQ(directory.FileCount(), 0u) << interrupt;
  }
}

}  // namespace
}  // namespace kurvo::tools
