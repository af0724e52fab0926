// Conversion, division, extension, offset and matching when memory runs out: every allocation fails
// once.
#include <gtest/gtest.h>

#include <cstdlib>
#include <new>

#include "build/curves.h"

namespace {

int allocations_left = -1;  // the one after them fails; negative for no limit
int live_blocks = 0;

bool MayAllocate() { return allocations_left < 0 || allocations_left-- > 0; }

}  // namespace

// The library is linked into this program, with the allocator renamed by the linker.
extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void __real_free(void* p);

void* __wrap_malloc(std::size_t size) {
  void* p = MayAllocate() ? __real_malloc(size) : nullptr;
  if (p) ++live_blocks;
  return p;
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
  void* p = MayAllocate() ? __real_calloc(count, size) : nullptr;
  if (p) ++live_blocks;
  return p;
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

// Calls `run(g)` with ever more allocations allowed, until it succeeds. Result: how many it needed.
template <class Run>
int FailEachAllocation(const char* name, Run&& run) {
  for (int allowed = 0;; ++allowed) {
    Globals g;
    const int before = live_blocks;
    allocations_left = allowed;
    const bool done = run(g);
    allocations_left = -1;
    EXPECT_EQ(live_blocks, before) << name << " leaks with " << allowed << " allocations";
    if (done) return allowed;
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_MEMORY) << name << " with " << allowed << " allocations";
  }
}

TEST(Memory, OfConversions) {
  const struct {
    const char* name;
    const char* curve;
    int32_t type;
    int allocations;
  } rows[] = {{"line to Bezier", "l 0 0 1 2", CV_BEZIER, 1},
              {"line to composite", "l 0 0 1 2", CV_SEGCV, 2},
              {"arc to rational Bezier", "a 0 0 1 0 1", CV_RBEZIER, 1},
              {"Bezier to composite", "b 0 0 1 2 3 2", CV_SEGCV, 2},
              {"circle to arc", "r 1 0 1 1 1 .70710678118654752 0 1 1", CV_ARC, 1},
              {"B-spline to composite", "B 0 0 1 2 3 2 5 0 | 0 0 0 .5 1 1 1", CV_SEGCV, 3},
              {"B-spline to rational", "B 0 0 1 2 3 2 5 0 | 0 0 0 .5 1 1 1", CV_RBSPLINE, 1},
              {"copy of a composite", "c 1 1 (b 0 0 1 2)(r 1 2 1 3 0 1)", CV_SEGCV, 3},
              {"joined composite", "c 1 1 (b 0 0 1 2)(r 1 2 1 3 0 1)", CV_RBSPLINE, 1}};
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    const int used = FailEachAllocation(row.name, [&](GlobalVar& g) {
      Owned target(row.type);
      const bool done = KurvocvConvert(source.get(), target.get(), &g) == KURVO_CONVERTED;
      EXPECT_EQ(target->data != nullptr, done);
      EXPECT_EQ(target->type, done ? row.type : 0);
      return done;
    });
    EXPECT_EQ(used, row.allocations) << row.name;
  }
}

// Points of high order need memory too: without it nobody can tell whether they lie on an arc.
TEST(Memory, OfArcRecognition) {
  Random random;
  Numbers knots(130, 0.0);
  knots.resize(260, 1.0);
  const Owned source = MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 130, true), knots);
  FailEachAllocation("recognition", [&](GlobalVar& g) {
    Owned target(CV_ARC);
    EXPECT_EQ(KurvocvConvert(source.get(), target.get(), &g), KURVO_NOT_CONVERTED);
    return KurvoErrGet(&g) == 0;
  });
}

TEST(Memory, OfMatches) {
  const struct {
    const char* name;
    const char* a;
    const char* b;
  } rows[] = {{"degrees", "b 0 0 2 4", "b 0 0 1 2 2 4"},
              {"orders", "B 0 0 2 4 | 0 0 1 1", "B 0 0 1 2 2 4 | 0 0 0 1 1 1"},
              {"types", "b 0 0 2 4", "B 0 0 2 4 | 0 0 1 1"}};
  for (const auto& row : rows) {
    const Owned a = Make(row.a), b = Make(row.b);
    const int used = FailEachAllocation(row.name, [&](GlobalVar& g) {
      return KurvocvMatch(a.get(), b.get(), &g) != KURVO_MATCH_NONE;
    });
    EXPECT_GT(used, 0) << row.name;
  }
}

// One curve of each type, cut, extended and rid of knots.
TEST(Memory, OfDivisionsAndExtensions) {
  for (const char* text :
       {"l 0 0 1 2", "a 0 0 1 0 1", "b 0 0 1 2 3 1", "r 0 0 1 1 2 2 3 1 1",
        "B 0 0 1 2 3 2 5 0 | 0 0 0 .3 1 1 1", "R 0 0 1 2 2 1 4 4 1 | 0 0 .5 1 1",
        "c .3 .7 (b 0 0 1 2)(c .5 .5 (l 1 2 3 4)(B 3 4 5 5 6 1 | 0 0 .5 1 1))"}) {
    const Owned source = Make(text);
    for (const double t : {0., .4, 1.})
      FailEachAllocation(text, [&](GlobalVar& g) {
        Owned first, second;
        KurvocvDivide(source.get(), t, first.get(), second.get(), &g);
        EXPECT_EQ(first->data != nullptr, KurvoOk(&g)) << text;
        return KurvoOk(&g) != 0;
      });
    FailEachAllocation(text, [&](GlobalVar& g) {
      double cuts[] = {.2, .4, .6, .9, 1};
      const CvParam list = {5, cuts};
      Cvseq pieces;
      KurvocvNDivide(source.get(), &list, &pieces, &g);
      EXPECT_EQ(pieces.count, KurvoOk(&g) ? 6 : 0) << text;
      const bool done = pieces.count > 0;
      KurvocvFreeCvseq(&pieces);
      return done;
    });
    for (const double a : {.1, -.1})
      FailEachAllocation(text, [&](GlobalVar& g) {
        Owned result;
        KurvocvExtendCurve(source.get(), a, .1, result.get(), &g);
        EXPECT_EQ(result->data != nullptr, KurvoOk(&g)) << text;
        return KurvoOk(&g) != 0;
      });
  }
  const Owned source = Make("B 0 0 1 1 2 2 | 0 0 .5 1 1");
  FailEachAllocation("knots", [&](GlobalVar& g) {
    Owned result;
    KurvocvBsplRemoveKnots(source.get(), result.get(), &g);
    return result->data != nullptr;
  });
}

TEST(Memory, OfCurveDistances) {
  Random random;
  const Owned high = MakeFreeForm(CV_BEZIER, RandomPoints(random, 50, false)),
              chain = Make("c 1 1 (l 9 9 20 9)(B 20 9 21 22 23 9 25 20 | 0 0 0 .3 1 1 1)");
  const int used = FailEachAllocation("distance", [&](GlobalVar& g) {
    double ta = -77;
    const double dist = KurvocvDistCurve(high.get(), chain.get(), &ta, nullptr, &g);
    EXPECT_EQ(dist > 0, KurvoOk(&g)) << dist;
    EXPECT_EQ(ta != -77, KurvoOk(&g));
    return KurvoOk(&g) != 0;
  });
  EXPECT_GT(used, 6);
}

TEST(Memory, OfInterpolation) {
  Numbers points;
  for (int i = 0; i < 100; ++i) points.insert(points.end(), {1.0 * i, 0.1 * (i % 7), 0});
  for (const int order : {2, 4, 5, 70}) {  // beyond 64 basis values need memory as well
    const int used = FailEachAllocation("interpolation", [&](GlobalVar& g) {
      Owned result;
      KurvocvGenBspl(points.data(), 100, order, result.get(), &g);
      EXPECT_EQ(result->data != nullptr, KurvoOk(&g)) << order;
      return KurvoErrGet(&g) != KURVO_ERR_MEMORY;  // the highest order is refused in the end
    });
    EXPECT_GE(used, 2) << order;
  }
}

// One curve of each type, offset.
TEST(Memory, OfOffsets) {
  for (const char* text : {"l 0 0 1 2", "a 0 0 1 0 1", "b 0 0 1 2 3 1 0 0", "r 0 0 1 1 2 2 3 1 1",
                           "B 0 0 1 2 3 2 5 0 | 0 0 0 .3 1 1 1", "R 0 0 1 2 2 1 4 4 1 | 0 0 .5 1 1",
                           "c .3 .7 (b 0 0 1 2 5 3)(r 5 3 1 6 2 1)"}) {
    const Owned source = Make(text);
    const int used = FailEachAllocation(text, [&](GlobalVar& g) {
      Cvseq pieces;
      KurvocvOffsetCurve(source.get(), Point{0, 0, 1}, .1, 1e-3, &pieces, &g);
      const bool done = pieces.count > 0;
      EXPECT_EQ(done, KurvoOk(&g) != 0) << text;
      KurvocvFreeCvseq(&pieces);
      return done;
    });
    EXPECT_GT(used, 1) << text;
  }
}

// Degrees, orders and chains beyond what lies on the stack.
TEST(Memory, OfMeasurements) {
  Random random;
  const Owned high = MakeFreeForm(CV_RBEZIER, RandomPoints(random, 60, true)),
              weightless = Make("R 0 0 1 1 2 1 4 4 1 | 0 0 .5 1 1");
  const auto measured = [](const Owned& cv, double to, GlobalVar& g) {
    double length;
    KurvocvCurveLen(cv.get(), 0, to, &length, &g);
    EXPECT_EQ(length > 0, KurvoOk(&g) != 0);
    return length > 0;
  };
  FailEachAllocation("length", [&](GlobalVar& g) { return measured(high, .7, g); });
  FailEachAllocation("plain copy", [&](GlobalVar& g) { return measured(weightless, 1, g); });
  FailEachAllocation("derivative", [&](GlobalVar& g) {
    Point p;
    KurvocvNDeriv(high.get(), .3, p, 60, &g);
    EXPECT_EQ(p == (Point{0, 0, 0}), KurvoOk(&g) == 0);
    return KurvoOk(&g) != 0;
  });
}

// An unclamped end of high order; without memory nothing moves.
TEST(Memory, OfEndMoves) {
  Random random;
  Numbers knots(260);
  for (std::size_t i = 0; i < knots.size(); ++i) knots[i] = static_cast<double>(i);
  Owned cv = MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 130, true), knots);
  const int used = FailEachAllocation("end move", [&](GlobalVar& g) {
    const FreeForm form(*cv);
    const double middle = form.points[65 * 4];
    KurvocvMvStartPoint(cv.get(), Point{1, 2, 0}, &g);
    EXPECT_EQ(form.points[65 * 4] != middle, KurvoOk(&g) != 0);
    return KurvoOk(&g) != 0;
  });
  EXPECT_GT(used, 0);
}

TEST(Memory, OfChains) {
  Owned curves[] = {
      Make("l 0 0 1 0"), Make("a 1 1 1 -1.57079632679489661923 1.57079632679489661923"),
      Make("c 2 1 (b 2 1 2 3)(l 2 3 0 3)"), Make("B 0 3 -1 2 1 1 0 0 | 0 0 0 .3 1 1 1")};
  Curve array[] = {*curves[0], *curves[1], *curves[2], *curves[3]};
  const Cvseq chain = {4, array};
  const int used = FailEachAllocation("segmentation", [&](GlobalVar& g) {
    Owned out;
    KurvocvCvseqToSegcv(&chain, out.get(), &g);
    EXPECT_EQ(out->data != nullptr, KurvoOk(&g));
    return KurvoOk(&g) != 0;
  });
  EXPECT_EQ(used, 12);  // the list of members, 2 + 2 + 3 + 3 for their records, the result
}

}  // namespace
}  // namespace kurvo_test
