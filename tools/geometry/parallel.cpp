#include "geometry/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace kurvo::tools {
namespace {

constexpr std::size_t kChunksPerThread = 64;  // so that none waits long for another

// The fault of the lowest step so far; the steps below it still run.
class FirstFault {
 public:
  explicit FirstFault(std::size_t count) : step_(count) {}

  void Take(std::size_t step, std::exception_ptr fault) {
    const std::lock_guard lock(mutex_);
    if (step_ <= step) return;
    step_ = step;
    fault_ = std::move(fault);
  }
  std::size_t Step() const { return step_; }
  void Rethrow() const {
    if (fault_) std::rethrow_exception(fault_);
  }

 private:
  std::mutex mutex_;
  std::atomic<std::size_t> step_;
  std::exception_ptr fault_;
};

}  // namespace

std::size_t CoreCount() { return std::max(1u, std::thread::hardware_concurrency()); }

void ParallelFor(std::size_t count, const std::function<void(std::size_t, Context&)>& step,
                 std::size_t threads) {
  threads = std::clamp<std::size_t>(threads, 1, std::max<std::size_t>(count, 1));
  const std::size_t chunk = std::max<std::size_t>(1, count / (threads * kChunksPerThread));
  std::atomic<std::size_t> next = 0;
  FirstFault fault(count);
  const auto work = [&] {
    Context context;
    while (true) {
      const std::size_t begin = next.fetch_add(chunk);
      if (begin >= fault.Step()) return;
      for (std::size_t i = begin; i < std::min(begin + chunk, fault.Step()); ++i) {
        try {
          step(i, context);
        } catch (...) {
          fault.Take(i, std::current_exception());
        }
      }
    }
  };
  std::vector<std::jthread> others;
  for (std::size_t i = 1; i < threads; ++i) others.emplace_back(work);
  work();
  others.clear();
  fault.Rethrow();
}

}  // namespace kurvo::tools
