// Sequences and parameter lists when memory runs out: every allocation fails once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <new>

#include "build/curves.h"

namespace {

int allocations_left = -1;  // the one after them fails; negative for no limit
int live_blocks = 0;

void* Count(void* p) {
  if (p) ++live_blocks;
  return p;
}

bool MayAllocate() { return allocations_left < 0 || allocations_left-- > 0; }

}  // namespace

// The library is linked into this program, with the allocator renamed by the linker.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* p, std::size_t size);
void __real_free(void* p);

void* __wrap_malloc(std::size_t size) {
  return MayAllocate() ? Count(__real_malloc(size)) : nullptr;
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return MayAllocate() ? Count(__real_calloc(count, size)) : nullptr;
}
void* __wrap_realloc(void* p, std::size_t size) {
  if (!MayAllocate()) return nullptr;
  void* const grown = __real_realloc(p, size);
  return p ? grown : Count(grown);
}
void __wrap_free(void* p) {
  if (p) --live_blocks;
  __real_free(p);
}
}

[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* p = std::malloc(size)) return p;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
[[gnu::noinline]] void operator delete(void* p) noexcept { std::free(p); }
void operator delete[](void* p) noexcept { operator delete(p); }
void operator delete(void* p, std::size_t) noexcept { operator delete(p); }
void operator delete[](void* p, std::size_t) noexcept { operator delete(p); }

namespace kurvo_test {
namespace {

const char* const kComposite = "c 1 1 (l 1 0 2 0)(b 2 0 3 3 4 0)";  // three blocks

// Calls run(g) with ever more allocations allowed until no error is left; after each call
// intact(succeeded) tells whether the records are as they must be. Result: how many it needed.
template <class Run, class Intact>
int FailEachAllocation(Run&& run, Intact&& intact) {
  for (int allowed = 0; allowed < 99; ++allowed) {
    Globals g;
    allocations_left = allowed;
    run(&g);
    allocations_left = -1;
    const bool succeeded = KurvoErrGet(&g) == KURVO_ERR_NONE;
    EXPECT_TRUE(intact(succeeded)) << allowed << " allocations";
    if (succeeded) return allowed;
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_MEMORY) << allowed << " allocations";
  }
  return -1;
}

// From (1, 0) to (4, 0), of so high an order that its unclamped ends take a work area to evaluate.
Owned HighSpline() {
  constexpr int kOrder = 65;
  Numbers points, knots;
  for (int i = 0; i < kOrder; ++i) points.insert(points.end(), {1 + 3. * i / (kOrder - 1), 0});
  for (int i = 0; i < 2 * kOrder; ++i) knots.push_back(i < kOrder ? 0 : 1);
  knots.front() = -1;
  knots.back() = 2;
  return MakeFreeForm(CV_BSPLINE, points, knots);
}

TEST(SequenceMemory, InsertionThatFailsChangesNothing) {
  for (const bool spline : {false, true}) {
    const Owned curve = spline ? HighSpline() : Make(kComposite);
    Cvseq seq;
    KurvocvMallocCvseq(&seq, 2);
    seq.curves[0] = Make("l 0 0 1 0").Release();
    seq.curves[1] = Make("l 4 0 5 0").Release();
    const Cvseq before = seq;
    const Curve headers[] = {seq.curves[0], seq.curves[1]};
    const int live = live_blocks, added = spline ? 1 : 3;
    const int used = FailEachAllocation(
        [&](GlobalVar* g) { KurvocvCvseqInsert(curve.get(), &seq, 1, g); },
        [&](bool succeeded) {
          if (succeeded) return seq.count == 3 && live_blocks == live + added;
          return seq.count == 2 && seq.curves == before.curves && live_blocks == live &&
                 std::memcmp(seq.curves, headers, sizeof headers) == 0;
        });
    EXPECT_EQ(used, 4) << "the blocks or one with two work areas, and the array";
    KurvocvFreeCvseq(&seq);
  }
}

TEST(SequenceMemory, CopiesThatFailAreEmpty) {
  const Owned curve = Make(kComposite);
  Cvseq seq, out;
  KurvocvInitCvseq(&seq);
  KurvocvInitCvseq(&out);
  const int live = live_blocks;
  const auto intact = [&](bool succeeded) {
    const bool empty = out.count == 0 && !out.curves && live_blocks == live + (seq.curves ? 3 : 0);
    return succeeded || empty;
  };
  EXPECT_EQ(
      FailEachAllocation([&](GlobalVar* g) { KurvocvSegcvToCvseq(curve.get(), &out, g); }, intact),
      3);
  std::swap(seq, out);
  EXPECT_EQ(FailEachAllocation([&](GlobalVar* g) { KurvocvCopyCvseq(&seq, &out, g); }, intact), 3);
  KurvocvFreeCvseq(&seq);
  KurvocvFreeCvseq(&out);
  EXPECT_EQ(live_blocks, live);
}

TEST(SequenceMemory, RecordsWithoutTheirArrayAreEmpty) {
  Curve header;
  double value;
  Cvseq seq = {1, &header};
  CvParam list = {1, &value};
  allocations_left = 0;
  EXPECT_EQ(KurvocvMallocCvseq(&seq, 5), nullptr);
  allocations_left = 0;
  KurvocrMallocCvParam(&list);
  allocations_left = -1;
  EXPECT_EQ(seq.count, 0);
  EXPECT_EQ(seq.curves, nullptr);
  EXPECT_EQ(list.count, 0);
  EXPECT_EQ(list.values, nullptr);
}

}  // namespace
}  // namespace kurvo_test
