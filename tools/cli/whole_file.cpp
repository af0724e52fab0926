#include "cli/whole_file.h"

#include <signal.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxAttempts = 1000;  // names tried for the temporary file

[[noreturn]] void Fail(const std::string& path, int error) {
  throw std::runtime_error(OneLine(path) + ": cannot be written: " + std::strerror(error));
}

// Keeps signals that end the program waiting, so that none ends it between a temporary file's
// beginning and its end.
class SignalsWait {
 public:
  SignalsWait() {
    sigset_t ending;
    sigemptyset(&ending);
    for (const int signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&ending, signal);
    pthread_sigmask(SIG_BLOCK, &ending, &before_);
  }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;
  ~SignalsWait() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_;
};

// A new file beside its target; removed again unless it was kept.
class TemporaryFile {
 public:
  explicit TemporaryFile(const fs::path& target) : target_(target) {
    for (int i = 0; i < kMaxAttempts && file_ == nullptr; ++i) {
      path_ = target;
      path_ += ".part" + std::to_string(i);
      file_ = std::fopen(path_.c_str(), "wbx");
      if (file_ == nullptr && errno != EEXIST) break;
    }
    if (file_ == nullptr) Fail(target_.string(), errno);
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (file_ != nullptr) std::fclose(file_);
    if (!kept_) std::remove(path_.c_str());
  }

  void Write(std::string_view content) {
    if (std::fwrite(content.data(), 1, content.size(), file_) != content.size()) {
      Fail(target_.string(), errno);
    }
    const int status = std::fclose(file_);
    file_ = nullptr;
    if (status != 0) Fail(target_.string(), errno);
  }

  void Keep() {
    std::error_code error;
    fs::rename(path_, target_, error);
    if (error) Fail(target_.string(), error.value());
    kept_ = true;
  }

 private:
  const fs::path target_;
  fs::path path_;
  std::FILE* file_ = nullptr;
  bool kept_ = false;
};

}  // namespace

void WriteWholeFile(const std::string& path, std::string_view content) {
  std::error_code error;
  if (fs::exists(path, error) && !fs::is_regular_file(path, error)) {
    throw std::runtime_error(OneLine(path) + ": cannot be written: not a regular file");
  }
  // A link stays a link: what it points at is replaced.
  const fs::path target = fs::weakly_canonical(path, error);
  if (error) Fail(path, error.value());
  const SignalsWait signals_wait;
  TemporaryFile file(target);
  file.Write(content);
  file.Keep();
}

void Print(std::string_view text) {
  std::cout << text << std::flush;
  if (!std::cout) throw std::runtime_error("standard output cannot be written");
}

}  // namespace kurvo::tools
