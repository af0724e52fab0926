// Making, copying and freeing curve records.
#include <pthread.h>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

std::ptrdiff_t Offset(const void* array, const void* block) {
  return static_cast<const char*>(array) - static_cast<const char*>(block);
}

// The largest sizes do not wrap round to small blocks: they fail, or they are there.
TEST(MallocCurve, ComputesSizesInFull) {
  Owned cv;
  if (KurvocvMallocCurve(cv.get(), CV_RBSPLINE, INT32_MAX, INT32_MAX))
    EXPECT_EQ(Offset(FreeForm(*cv).knots, cv->data), 104 + 32 * std::ptrdiff_t{INT32_MAX});
  else
    EXPECT_TRUE(cv->type == 0 && cv->data == nullptr);
}

TEST(CopyCurve, IsDeep) {
  for (const char* text :
       {"l 1 2 3 4", "a 1 2 3 4 5", "b 1 2 3 4 5 6", "r 1 2 3 4 5 6", "B 1 2 3 4 5 6 | 0 0 1 2 3",
        "R 1 2 3 4 5 6 | 0 0 1 1", "c", "c 1 2 (l 1 2 3 4) (c 3 (a 1 2 3 4 5))"}) {
    Owned source = Make(text), copy;
    source->attr = 5;
    source->attr_p1 = 6;
    Globals g;
    EXPECT_NE(KurvocvCopyCurve(source.get(), copy.get(), &g), nullptr) << text;
    EXPECT_TRUE(IsCurve(*copy, text));
    EXPECT_EQ(copy->attr, 0);
    EXPECT_EQ(copy->attr_p1 | copy->attr_p2, 0u);
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }
}

TEST(CopyCurve, StopsAtAPieceOfUnknownType) {
  Owned source = Make("c 1 2 3 (l 1 2 3 4) (l 5 6 7 8) (l 1 1 2 2)"), copy;
  auto& pieces = source.block<KurvoSegcv>();
  pieces.curves[1].type = 17;
  Globals g;
  EXPECT_EQ(KurvocvCopyCurve(source.get(), copy.get(), &g), copy->data);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_CURVE);
  const auto& copied = copy.block<KurvoSegcv>();
  EXPECT_TRUE(IsCurve(copied.curves[0], pieces.curves[0]));
  EXPECT_EQ(copied.curves[1].type, 17);
  EXPECT_EQ(copied.curves[1].data, nullptr);
  EXPECT_EQ(copied.curves[2].type, 0);
  EXPECT_EQ(copied.widths[2], 3);
}

// Composites nest as deep as memory allows; freeing them takes no stack.
void* FreeDeep(void*) {
  Curve cv;
  KurvocvMallocCurve(&cv, CV_LINE);
  for (int level = 0; level < 100000; ++level) {
    Curve outer;
    auto* block = static_cast<KurvoSegcv*>(KurvocvMallocCurve(&outer, CV_SEGCV, 2));
    block->curves[level % 2] = cv;
    cv = outer;
  }
  KurvocvFreeCurve(&cv);
  return nullptr;
}

TEST(FreeCurve, FreesAnyDepthOnASmallStack) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, 256 * 1024);
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, &attributes, FreeDeep, nullptr), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace
}  // namespace kurvo_test
