#include "cli/progress.h"

#include <unistd.h>

#include <utility>

namespace kurvo::tools {
namespace {

constexpr std::chrono::milliseconds kInterval{100};  // between two states of the line

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
  ++count_;
  if (active_ && Clock::now() >= next_) Show();
}

void Progress::Show() {
  const std::string text = "kurvo: " + done_ + " " + std::to_string(count_) + " of " +
                           std::to_string(total_) + (total_ == 1 ? " curve" : " curves");
  Write("\r" + text);  // never shorter than the one before it
  shown_ = text.size();
  next_ = Clock::now() + kInterval;
}

void Progress::Write(const std::string& text) const {
  // A terminal that has gone away is no reason to stop.
  [[maybe_unused]] const ssize_t written = write(fd_, text.data(), text.size());
}

}  // namespace kurvo::tools
