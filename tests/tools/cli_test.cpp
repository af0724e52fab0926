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

TEST(Progress, ShowsOnATerminalAndTakesItselfAway) {
  const Terminal terminal;
  std::string text;
  {
    Progress progress(terminal.Fd(), "measured", 100, Progress::Clock::duration(0));
    progress.Step(7);
    const auto limit = Progress::Clock::now() + std::chrono::seconds(20);
    while (text.find("7 of") == text.npos && Progress::Clock::now() < limit)
      text += terminal.Read();
  }
  EXPECT_NE(text.find("\rkurvo: measured 7 of 100 curves, "), text.npos) << text;
  const std::string end = terminal.Read();
  EXPECT_EQ(end.substr(end.size() - 9), "        \r") << end;
}

TEST(Progress, IsSilentWhileNobodyWaitsAndInAPipe) {
  const Terminal terminal;
  { Progress(terminal.Fd(), "measured", 100, std::chrono::hours(1)).Step(); }
  EXPECT_EQ(terminal.Read(), "");
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  { Progress(ends[1], "writing", 0, Progress::Clock::duration(0)).Step(); }
  close(ends[1]);
  char byte;
  EXPECT_EQ(read(ends[0], &byte, 1), 0);
  close(ends[0]);
}

}  // namespace
}  // namespace kurvo::tools
