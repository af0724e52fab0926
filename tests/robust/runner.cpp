#include "robust/runner.h"

#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace kurvo_test {
namespace {

// The call under way in this thread; no memory is needed to print it.
struct UnderWay {
  const char* name = nullptr;
  uint64_t number = 0;
  Mode mode = Mode::kBenign;
};
thread_local UnderWay under_way;

void PrintCallUnderWay() {
  if (!under_way.name) return;
  char text[200];
  const int length = std::snprintf(
      text, sizeof text, "\nThe call under way: KURVO_CALL=%s:%llu:%s KURVO_TEST_SEED=%llu\n",
      under_way.name, static_cast<unsigned long long>(under_way.number),
      under_way.mode == Mode::kHostile ? "hostile" : "benign",
      static_cast<unsigned long long>(Seed()));
  if (length > 0 && write(STDERR_FILENO, text, static_cast<std::size_t>(length)) < 0) _exit(1);
}

void OnSignal(int number) {
  PrintCallUnderWay();
  signal(number, SIG_DFL);
  raise(number);
}

uint64_t HashOf(const char* name) {
  Digest digest;
  for (; *name; ++name) digest.Add(int32_t{*name});
  return digest.value();
}

}  // namespace

void NameCallsThatDie() {
  if (__sanitizer_set_death_callback) return __sanitizer_set_death_callback(PrintCallUnderWay);
  alignas(16) static char stack[1 << 16];  // the overflow of a stack needs another one
  const stack_t other = {stack, 0, sizeof stack};
  sigaltstack(&other, nullptr);
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_ONSTACK;
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT, SIGILL})
    sigaction(number, &action, nullptr);
}

Outcome RunOnce(const Entry& entry, Source& source, const RunOptions& options) {
  under_way.name = entry.name;
  under_way.mode = options.mode;
  const int64_t live = LiveBlocks();
  Outcome outcome;
  {
    Call call(source, options.mode, options.gallery, options.failure, options.fill);
    if (entry.traits & kHeavy) call.ShortCurves();
    entry.call(call);
    outcome = call.Finish();
  }
  under_way.name = nullptr;
  const auto complain = [&](bool fault, const char* what) {
    if (fault && outcome.complaint.empty()) outcome.complaint = what;
  };
  const bool injected = options.failure.granted >= 0;
  const int64_t kept = outcome.complaint.capacity() > 15;  // the text of a complaint is a block
  complain(LiveBlocks() - live > kept, "memory leaked");
  complain(LiveBlocks() < live, "memory freed twice");
  complain(outcome.seconds > options.max_seconds, "takes too long");
  const bool asks = entry.traits & kAsks;
  complain(!asks && outcome.memory.peak > kMaxBytes, "takes more than 256 MB");
  complain(!asks && !injected && outcome.memory.refused > 0, "asks for absurd memory");
  return outcome;
}

Outcome RunNumbered(const Entry& entry, uint64_t number, const RunOptions& options) {
  Source source(Scramble(Seed() ^ HashOf(entry.name)) + (number << 20) +
                (options.mode == Mode::kHostile));
  under_way.number = number;
  return RunOnce(entry, source, options);
}

std::string Trace(const Entry& entry, uint64_t number, Mode mode) {
  return std::string("KURVO_CALL=") + entry.name + ':' + std::to_string(number) +
         (mode == Mode::kHostile ? ":hostile" : ":benign") +
         " KURVO_TEST_SEED=" + std::to_string(Seed());
}

int64_t Setting(const char* name, int64_t otherwise) {
  const char* const text = std::getenv(name);
  return text ? std::strtoll(text, nullptr, 10) : otherwise;
}

uint64_t Seed() {
  static const auto kSeed = static_cast<uint64_t>(Setting("KURVO_TEST_SEED", 20240607));
  return kSeed;
}

}  // namespace kurvo_test
