// The functions of one group, called as the fuzzer's bytes say. The first byte chooses the
// function, the second how it is called, the third which request for memory fails; the rest are its
// arguments.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>

#include "fuzz/given_region.h"
#include "robust/table.h"

namespace kurvo_test {
namespace {

constexpr uint8_t kHostileBit = 1;
constexpr uint8_t kFailureBit = 2;   // memory fails in half the runs,
constexpr uint8_t kFromThenBit = 4;  // once or from then on
constexpr uint8_t kRepeatBit = 8;    // a second run must give the same bits
constexpr uint8_t kGivenBit = 16;    // curves and chains come from the bytes
constexpr std::size_t kHeader = 3;

#ifdef KURVO_FUZZER
// Code that counts every branch for a fuzzer and watches every access takes some six times as long
// as with the sanitizers alone, under which the limit of a call holds.
constexpr RunOptions kStandard{.max_seconds = 8};
#else
constexpr RunOptions kStandard{};
#endif

// The functions of each target; records, transforms and the planar calculus are that of all others,
// the second library is one by itself.
// clang-format off
const std::pair<std::string, std::string> kGroups[] = {
    // foot points: the root finder, through the interface
    {"roots", " KurvocvParameter KurvofcPOntoCurve KurvocvDistPoint "},
    {"evaluators", " KurvocvPosition KurvocvDeriv KurvocvNDeriv KurvocvCurvature KurvocvCurveLen KurvocvStartPoint KurvocvEndPoint KurvocvDegree KurvocvIsLine KurvocvDegenerate KurvocvBoundBox KurvocvCvseqBoundBox "},
    {"intersection", " KurvocrCurveCurve "},
    {"conversion", " KurvocvConvert KurvocvDivide KurvocvNDivide KurvocvBsplRemoveKnots KurvocvChgOrder KurvocvMatch "},
    {"extension", " KurvocvExtendCurve "}, {"offset", " KurvocvOffsetCurve "},
    {"region", " KurvosfPntBoundForPlane KurvocvCvseqNormal KurvocvCvseqToSegcv "},
    {"generation", " KurvocvGenBspl KurvocvDistCurve "}};
// clang-format on

std::vector<Entry> EntriesOfThisGroup() {
  std::vector<Entry> entries = Table();
  std::erase_if(entries, [](const Entry& entry) {
    const std::string name = entry.name;
    std::string of = "records";
    for (const char* start : {"KurvoOutline", "KurvoRegion", "KurvoChain"})
      if (name.rfind(start, 0) == 0) of = "outline";
    for (const auto& [group, functions] : kGroups)
      if (functions.find(' ' + name + ' ') != std::string::npos) of = group;
    return of != KURVO_FUZZ_GROUP;
  });
  return entries;
}

[[noreturn]] void Report(const Entry& entry, const Outcome& outcome, const char* complaint) {
  std::fprintf(stderr, "%s: %s; error 0x%X, %g s, %lld bytes\n", entry.name, complaint,
               static_cast<unsigned>(outcome.error), outcome.seconds,
               static_cast<long long>(outcome.memory.peak));
  std::abort();
}

}  // namespace

[[gnu::weak]] const Gallery* TakeGiven(std::span<const uint8_t>&) { return nullptr; }

}  // namespace kurvo_test

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  using namespace kurvo_test;
  static const std::vector<Entry> kEntries = EntriesOfThisGroup();
  if (size < kHeader || kEntries.empty()) return 0;
  const Entry& entry = kEntries[data[0] % kEntries.size()];
  RunOptions options = kStandard;
  if (data[1] & kHostileBit) options.mode = Mode::kHostile;
  if (data[1] & kFailureBit)
    options.failure = {.granted = data[2] % 32, .from_then = (data[1] & kFromThenBit) != 0};
  std::span<const uint8_t> bytes(data + kHeader, size - kHeader);
  if (data[1] & kGivenBit) options.gallery = TakeGiven(bytes);
  const uint64_t before = options.gallery ? options.gallery->Checksum() : 0;
  const auto run = [&] {
    Source source(bytes.data(), bytes.size());
    const Outcome outcome = RunOnce(entry, source, options);
    if (!outcome.complaint.empty()) Report(entry, outcome, outcome.complaint.c_str());
    if (options.gallery && options.gallery->Checksum() != before)
      Report(entry, outcome, "input changed");
    return outcome;
  };
  const Outcome first = run();
  options.fill = 0x3C;
  if (data[1] & kRepeatBit && run().digest != first.digest) Report(entry, first, "other bits");
  return 0;
}
