#include "robust/call.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "robust/table.h"
#include "support/curve_text.h"

extern "C" __attribute__((weak)) void __sanitizer_set_death_callback(void (*callback)());

namespace kurvo_test {
namespace {

double ProcessorSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

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

Call::Call(Source& source, const RunOptions& options)
    : in_(source),
      options_(options),
      inputs_(source, options.mode, store_),
      own_(source, options.mode, own_store_) {
  KurvoInitGlobalVar(&g);
  if (in_.OneIn(8)) KurvoclSetEpsilon(in_.Pick({1e-6, 1e-4, .01}), 1e-5, &g);
  if (in_.OneIn(8)) KurvoclSetEpsilon0(in_.Pick({1e-6, 1e-4, .01}), &g);
  if (in_.OneIn(8)) g.error = KURVO_WARN_SHORT_VECTOR;
  if (!hostile()) return;
  if (in_.OneIn(16)) KurvoclPushEpsilon(in_.Pick({1e-300, 5e-324, 1e-12, .01}), &g);
  if (in_.OneIn(16)) KurvoclPushEpsilon0(in_.Pick({1e-300, 5e-324, 1e-12, .01}), &g);
  while (in_.OneIn(64) && g.depth < KURVO_STACK_SIZE)
    for (int i = 0; i < 63; ++i) KurvoclPushEpsilon(1e-5, &g);
  if (in_.OneIn(32)) g.error = in_.Pick({int{KURVO_ERR_CURVE}, int{KURVO_ERR_TOLERANCE}});
}

double* Call::Array(int count) {
  double* const numbers = store_.Numbers(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) numbers[i] = Number();
  return numbers;
}

const Curve* Call::AnyCurve(int32_t wanted) {
  if (GivesNull()) return nullptr;
  if (options_.gallery) return &options_.gallery->curve(in_, options_.mode, wanted);
  return store_.Put(inputs_.Curve(wanted));
}

const Cvseq* Call::AnySequence() {
  if (GivesNull()) return nullptr;
  return options_.gallery ? &options_.gallery->sequence(in_, options_.mode)
                          : store_.Put(inputs_.Sequence());
}

const KurvoRegion* Call::AnyRegion() {
  if (GivesNull()) return nullptr;
  if (!options_.gallery) return store_.Put(inputs_.Region());
  const int count = in_.Between(0, 3);
  auto* const loops = store_.Zeroed<Cvseq>(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) loops[i] = options_.gallery->sequence(in_, options_.mode);
  return store_.Put(KurvoRegion{count, in_.Between(0, 3), loops, nullptr});
}

const CvParam* Call::AnyList() { return GivesNull() ? nullptr : store_.Put(inputs_.Parameters()); }

const KurvoArc* Call::AnyArc() {
  return GivesNull() ? nullptr : static_cast<const KurvoArc*>(inputs_.Arc().data);
}

Curve* Call::OwnCurve() { return GivesNull() ? nullptr : own_store_.Put(own_.Curve()); }

double* Call::Room(int count) {
  double* const room = OwnNumbers(count);
  for (int i = 0; i < count; ++i) room[i] = kUnwritten;
  return room;
}

void Call::Start() {
  before_ = store_.Checksum();
  own_before_ = own_store_.Checksum();
  state_before_ = g;
  UsedLibm();
  started_ = ProcessorSeconds();
  WatchMemory(options_.failure, options_.fill);
}

void Call::Stop() {
  outcome_.memory = UnwatchMemory();
  outcome_.seconds = ProcessorSeconds() - started_;
  outcome_.libm = UsedLibm();
  Expect(store_.Checksum() == before_, "input changed");
  Expect(NameOf(g.error) || g.error == state_before_.error, "unknown error code");
  state_before_.error = g.error;
  Expect(state_may_change_ || std::memcmp(&g, &state_before_, sizeof g) == 0, "tolerances changed");
}

void Call::Expect(bool truth, const char* what) {
  if (!truth && outcome_.complaint.empty()) outcome_.complaint = what;
}

void Call::Add(const double* numbers, int count) {
  for (int i = 0; i < count; ++i) digest_.Add(numbers[i]);
}

void Call::Code(int64_t result, const std::vector<int64_t>& documented) {
  Expect(std::find(documented.begin(), documented.end(), result) != documented.end(),
         "undocumented result");
  digest_.Add(static_cast<uint64_t>(result));
}

void Call::AddState() {
  for (const double x : {g.epsilon, g.epsilon_1, g.epsilon2, g.epsilon0}) Add(x);
  digest_.Add(g.depth);
  digest_.Add(g.depth0);
  Add(g.stack, g.depth);
  Add(g.stack0, g.depth0);
}

void Call::Read(const Curve& curve, bool bare) {
  digest_.Add(curve.type);
  if (attributes_stay_)
    for (const uint64_t word : {static_cast<uint64_t>(curve.attr), curve.attr_p1, curve.attr_p2})
      digest_.Add(word);
  else
    Expect(curve.attr == 0 && curve.attr_p1 == 0 && curve.attr_p2 == 0, "attribute of a result");
  if (!curve.data) return Expect(bare || curve.type == 0, "type without data");
  if (curve.type == CV_LINE || curve.type == CV_ARC)
    return Add(static_cast<const double*>(curve.data), curve.type == CV_LINE ? 6 : 13);
  if (curve.type == CV_SEGCV) {
    const auto& block = *static_cast<const KurvoSegcv*>(curve.data);
    digest_.Add(block.count);
    Expect(block.count >= 0, "pieces of a result");
    for (int32_t i = 0; i < block.count; ++i) Read(block.curves[i], bare);
    return Add(block.widths, block.count);
  }
  if (std::count(kAllTypes, std::end(kAllTypes), curve.type) == 0)
    return Expect(false, "data without a known type");
  const FreeForm form(curve);
  digest_.Add(form.order);
  digest_.Add(form.count);
  if (form.order < 1 || form.count < 0) return Expect(false, "sizes of a result");
  Add(form.points, form.stride * form.count);
  if (form.knots) Add(form.knots, form.order + form.count);
}

void Call::Take(Curve& curve, bool bare) {
  Read(curve, bare);
  Neutral(!curve.data);
  KurvocvFreeCurve(&curve);
}

template <class List>
void Call::Take(List& list, bool bare) {
  const auto& [count, array] = list;
  digest_.Add(count);
  Expect((count > 0) == (array != nullptr) && count >= 0, "count without an array");
  for (int32_t i = 0; array && i < count; ++i) Read(array[i], bare);
  Neutral(count == 0);
  if constexpr (std::is_same_v<List, Cvseq>)
    KurvocvFreeCvseq(&list);
  else
    KurvocrFreeCvParam(&list);
}
template void Call::Take(Cvseq&, bool);
template void Call::Take(CvParam&, bool);

Outcome Call::Finish() {
  for (const auto& judge : judges_) judge();
  digest_.Add(g.error);
  outcome_.digest = digest_.value();
  outcome_.error = g.error;
  return std::move(outcome_);
}

// ---- running it

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
    if (entry.traits & (kHeavy | kSquare)) call.ShortCurves(entry.traits & kSquare ? 16 : 1);
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
