#include "cli/progress.h"

#include <fmt/format.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr std::chrono::milliseconds kInterval{100};  // between two states of the line
constexpr double kShortest = 1e-6;                   // seconds that a rate is worked out from

}  // namespace

Progress::Progress(int fd, std::string done, std::size_t total, Clock::duration patience)
    : fd_(fd), done_(std::move(done)), total_(total) {
  if (isatty(fd) != 1) return;
  watcher_ = std::jthread([this, patience](const std::stop_token& stop) { Watch(stop, patience); });
}

Progress::~Progress() {
  if (!watcher_.joinable()) return;
  watcher_.request_stop();
  watcher_.join();
  if (shown_ > 0) Write("\r" + std::string(shown_, ' ') + "\r");
}

void Progress::Watch(const std::stop_token& stop, Clock::duration patience) {
  // Signals are for the thread that holds them back while it writes a file.
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  std::mutex mutex;
  std::condition_variable_any nothing;
  std::unique_lock lock(mutex);
  const auto never = [] { return false; };
  nothing.wait_for(lock, stop, patience, never);
  while (!stop.stop_requested()) {
    Show();
    nothing.wait_for(lock, stop, kInterval, never);
  }
}

void Progress::Show() {
  const std::chrono::duration<double> time = Clock::now() - begin_;
  const std::size_t count = count_;
  std::string text = "kurvo: " + done_;
  if (total_ > 0) text += fmt::format(" {} of {} curve{}", count, total_, total_ == 1 ? "" : "s");
  text += count > 0 ? fmt::format(", {:.0f}/s",
                                  static_cast<double>(count) / std::max(time.count(), kShortest))
                    : fmt::format(", {:.0f} s", time.count());
  text.resize(std::max(text.size(), shown_), ' ');
  Write("\r" + text);
  shown_ = text.size();
}

void Progress::Write(const std::string& text) const {
  // A terminal that has gone away is no reason to stop.
  [[maybe_unused]] const ssize_t written = write(fd_, text.data(), text.size());
}

}  // namespace kurvo::tools
