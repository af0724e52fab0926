#include "cli/progress.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr std::chrono::milliseconds kInterval{100};  // between two states of the line
constexpr double kShortest = 1e-6;                   // seconds that a rate is worked out from

}  // namespace

Progress::Progress(int fd, std::string done, std::size_t total, Clock::duration patience)
    : fd_(fd),
      active_(isatty(fd) == 1),
      done_(std::move(done)),
      total_(total),
      next_(Clock::now() + patience) {}

Progress::~Progress() {
  if (shown_ > 0) Write("\r" + std::string(shown_, ' ') + "\r");
}

void Progress::Step() {
  const std::lock_guard lock(mutex_);
  ++count_;
  if (active_ && Clock::now() >= next_) Show();
}

void Progress::Show() {
  const std::chrono::duration<double> time = Clock::now() - begin_;
  std::string text = fmt::format("kurvo: {} {} of {} curve{}, {:.0f}/s", done_, count_, total_,
                                 total_ == 1 ? "" : "s",
                                 static_cast<double>(count_) / std::max(time.count(), kShortest));
  text.resize(std::max(text.size(), shown_), ' ');
  Write("\r" + text);
  shown_ = text.size();
  next_ = Clock::now() + kInterval;
}

void Progress::Write(const std::string& text) const {
  // A terminal that has gone away is no reason to stop.
  [[maybe_unused]] const ssize_t written = write(fd_, text.data(), text.size());
}

}  // namespace kurvo::tools
