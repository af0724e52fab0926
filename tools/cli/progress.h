// How far a long run has come, for a person who waits for it.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

namespace kurvo::tools {

// One line on a terminal, "kurvo: intersected 1200 of 45000 curves, 9000/s", written over itself
// and taken away in the end. Nothing at all when the file is not a terminal, or when the run is
// over before anyone wonders.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPatience{1000};

  // fd (in): the file descriptor to write to. `done` is the word for what is done with a curve.
  Progress(int fd, std::string done, std::size_t total, Clock::duration patience = kPatience);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();

  // One more curve is done; any thread may say so.
  void Step();

 private:
  void Show();
  void Write(const std::string& text) const;

  std::mutex mutex_;
  const int fd_;
  const bool active_;
  const std::string done_;
  const std::size_t total_;
  std::size_t count_ = 0;
  std::size_t shown_ = 0;  // letters on the line
  const Clock::time_point begin_ = Clock::now();
  Clock::time_point next_;
};

}  // namespace kurvo::tools
