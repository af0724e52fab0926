#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "robust/table.h"

extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace kurvo_test {
namespace {

thread_local char under_way[200];  // the call of this thread: no memory is needed to print it

void PrintCallUnderWay() {
  if (write(STDERR_FILENO, under_way, std::strlen(under_way)) < 0) _exit(1);
}

void OnSignal(int number) {
  PrintCallUnderWay();
  signal(number, SIG_DFL);
  raise(number);
}

bool NameCallsThatDie() {
  if (__sanitizer_set_death_callback) {
    __sanitizer_set_death_callback(PrintCallUnderWay);
    return true;
  }
  alignas(16) static char stack[1 << 16];  // the overflow of a stack needs another one
  const stack_t other = {stack, 0, sizeof stack};
  sigaltstack(&other, nullptr);
  struct sigaction action {};
  action.sa_handler = OnSignal;
  action.sa_flags = SA_ONSTACK;
  for (const int number : {SIGSEGV, SIGBUS, SIGFPE, SIGABRT, SIGILL})
    sigaction(number, &action, nullptr);
  return true;
}

uint64_t HashOf(const char* name) {
  Digest digest;
  for (; *name; ++name) digest.Add(int32_t{*name});
  return digest.value();
}

}  // namespace

// Blocks are counted by thread; otherwise what one has allocated another one may free.
#ifdef KURVO_PARALLEL
constexpr bool kOneThread = false;
#else
constexpr bool kOneThread = true;
#endif

Outcome RunOnce(const Entry& entry, Source& source, const RunOptions& options) {
  const int64_t live = LiveBlocks();
  Outcome outcome;
  {
    Call call(source, options);
    if (entry.traits & kHeavy) call.ShortCurves();
    entry.call(call);
    outcome = call.Finish();
  }
  const auto complain = [&](bool fault, const char* what) {
    if (fault && outcome.complaint.empty()) outcome.complaint = what;
  };
  const bool injected = options.failure.granted >= 0;
  const int64_t kept = outcome.complaint.capacity() > 15;  // the text of a complaint is a block
  complain(kOneThread && LiveBlocks() - live > kept, "memory leaked");
  complain(kOneThread && LiveBlocks() < live, "memory freed twice");
  complain(outcome.seconds > options.max_seconds, "takes too long");
  const bool asks = entry.traits & kAsks;
  complain(!asks && outcome.memory.peak > kMaxBytes, "takes more than 256 MB");
  complain(!asks && !injected && outcome.memory.refused > 0, "asks for absurd memory");
  return outcome;
}

Outcome RunNumbered(const Entry& entry, uint64_t number, const RunOptions& options) {
  static const bool kNamed = NameCallsThatDie();
  const bool hostile = options.mode == Mode::kHostile;
  std::snprintf(under_way, sizeof under_way, "%sThe call under way: %s\n", kNamed ? "\n" : "",
                Trace(entry, number, options).c_str());
  Source source(Scramble(Seed() ^ HashOf(entry.name)) + (number << 20) + hostile);
  const Outcome outcome = RunOnce(entry, source, options);
  under_way[0] = '\0';
  EXPECT_EQ(outcome.complaint, "")
      << Trace(entry, number, options) << "\nerror 0x" << std::hex << outcome.error << std::dec
      << ", " << outcome.seconds << " s, " << outcome.memory.peak << " bytes, largest request "
      << outcome.memory.largest;
  return outcome;
}

std::string Trace(const Entry& entry, uint64_t number, const RunOptions& options) {
  const bool hostile = options.mode == Mode::kHostile;
  const MemoryFailure& failure = options.failure;
  return std::string("KURVO_CALL=") + entry.name + ':' + std::to_string(number) +
         (hostile ? ":hostile" : ":benign") + " KURVO_TEST_SEED=" + std::to_string(Seed()) +
         (failure.granted < 0 ? "" : ", request " + std::to_string(failure.granted)) +
         (failure.from_then ? " on" : "");
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
