// How far a long run has come, for a person who waits for it.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <stop_token>
#include <string>
#include <thread>

namespace kurvo::tools {

// One line on a terminal, "kurvo: intersected 1200 of 45000 curves, 9000/s", written over itself
// and taken away in the end; "kurvo: writing, 3 s" where nothing is counted. Nothing at all when
// the file is not a terminal, or when the run is over before anyone wonders. A thread of its own
// writes it, so that it comes also when one step takes long.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPatience{1000};

  // fd (in): the file descriptor to write to. `done` is the word for what is done with a curve, or
  // for what is done where `total` is 0.
  Progress(int fd, std::string done, std::size_t total, Clock::duration patience = kPatience);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // More curves are done; any thread may say so.
  void Step(std::size_t count = 1) { count_ += count; }

 private:
  void Watch(const std::stop_token& stop, Clock::duration patience);
  void Show();
  void Write(const std::string& text) const;

  const int fd_;
  const std::string done_;
  const std::size_t total_;
  std::atomic<std::size_t> count_ = 0;
  std::size_t shown_ = 0;  // letters on the line
  const Clock::time_point begin_ = Clock::now();
  std::jthread watcher_;
};

}  // namespace kurvo::tools
