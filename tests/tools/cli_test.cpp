// Whole files or none, also when a signal ends the program; the progress line.
#include <gtest/gtest.h>
#include <pty.h>
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include "cli/progress.h"
#include "cli/whole_file.h"
#include "support.h"

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
    EXPECT_TRUE(directory.IsEmpty()) << interrupt;
  }
}

// A terminal whose screen can be read.
class Terminal {
 public:
  Terminal() {
    const termios raw = {};
    if (openpty(&screen_, &line_, nullptr, &raw, nullptr) != 0) {
      throw std::runtime_error("no terminal");
    }
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    close(line_);
    close(screen_);
  }

  int Fd() const { return line_; }
  // What was written since the last time: everything before a mark that follows it. What goes in
  // at one end of a terminal comes out at the other in its own time, and in parts.
  std::string Read() const {
    constexpr char kMark = '\0';
    EXPECT_EQ(write(line_, &kMark, 1), 1);
    std::string text;
    char byte = kMark;
    while (read(screen_, &byte, 1) == 1 && byte != kMark) text += byte;
    return text;
  }

 private:
  int screen_;
  int line_;
};

void RunSteps(int fd, int steps, Progress::Clock::duration patience) {
  Progress progress(fd, "measured", 100, patience);
  for (int i = 0; i < steps; ++i) progress.Step();
}

TEST(Progress, ShowsOnATerminalAndTakesItselfAway) {
  const Terminal terminal;
  RunSteps(terminal.Fd(), 2, Progress::Clock::duration(0));
  const std::string text = terminal.Read();  // the second step comes too soon to be shown
  const std::size_t size = text.find('\r', 1) - 1;
  EXPECT_EQ(text.substr(0, 34), "\rkurvo: measured 1 of 100 curves, ");
  EXPECT_EQ(text.substr(size - 1), "/s\r" + std::string(size, ' ') + "\r");
}

TEST(Progress, IsSilentWhileNobodyWaitsAndInAPipe) {
  const Terminal terminal;
  RunSteps(terminal.Fd(), 100, std::chrono::hours(1));
  RunSteps(terminal.Fd(), 0, Progress::Clock::duration(0));
  EXPECT_EQ(terminal.Read(), "");
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  RunSteps(ends[1], 100, Progress::Clock::duration(0));
  close(ends[1]);
  char byte;
  EXPECT_EQ(read(ends[0], &byte, 1), 0);
  close(ends[0]);
}

}  // namespace
}  // namespace kurvo::tools
