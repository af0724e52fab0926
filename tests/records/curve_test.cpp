// Making, copying and freeing curve records.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cstring>
#include <vector>

#include "support/generator.h"

namespace kurvo_test {
namespace {

std::ptrdiff_t Offset(const void* array, const void* block) {
  return static_cast<const char*>(array) - static_cast<const char*>(block);
}

TEST(MallocCurve, LaysOutTheBlock) {
  const Owned bezier = Make("b 0 0 0 0 0 0 0 0"), rational = Make("r 0 0 1 0 0 1");
  EXPECT_EQ(bezier.block<KurvoBezier>().degree, 3);
  EXPECT_EQ(Offset(bezier.block<KurvoBezier>().points, bezier->data), 104);
  EXPECT_EQ(Offset(rational.block<KurvoRBezier>().points, rational->data), 104);
  Curve cv;
  auto* spline = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&cv, CV_BSPLINE, 4, 7));
  EXPECT_EQ(spline->order, 4);
  EXPECT_EQ(spline->count, 7);
  EXPECT_EQ(Offset(spline->knots, spline), 104 + 168);
  KurvocvFreeCurve(&cv);
  auto* weighted = static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&cv, CV_RBSPLINE, 3, 5));
  EXPECT_EQ(Offset(weighted->knots, weighted), 104 + 160);
  KurvocvFreeCurve(&cv);
  auto* pieces = static_cast<KurvoSegcv*>(KurvocvMallocCurve(&cv, CV_SEGCV, 3));
  EXPECT_EQ(Offset(pieces->curves, pieces), 104);
  EXPECT_EQ(Offset(pieces->widths, pieces), 104 + 120);
  EXPECT_EQ(pieces->curves[2].type, 0);
  EXPECT_EQ(pieces->curves[2].data, nullptr);
  KurvocvFreeCurve(&cv);
  EXPECT_EQ(cv.type, 0);
  EXPECT_EQ(cv.data, nullptr);
  KurvocvFreeCurve(nullptr);
  KurvocvInitCurve(nullptr);
}

// The largest sizes do not wrap round to small blocks: they fail, or they are there.
TEST(MallocCurve, ComputesSizesInFull) {
  Curve cv;
  auto* spline =
      static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&cv, CV_RBSPLINE, INT32_MAX, INT32_MAX));
  if (spline) {
    EXPECT_EQ(Offset(spline->knots, spline), 104 + 32 * std::ptrdiff_t{INT32_MAX});
  } else {
    EXPECT_EQ(cv.type, 0);
    EXPECT_EQ(cv.data, nullptr);
  }
  KurvocvFreeCurve(&cv);
}

// The content of two curves, compared as a program that reads records would.
void ExpectEqual(const Curve& a, const Curve& b) {
  ASSERT_EQ(a.type, b.type);
  ASSERT_NE(a.data, b.data);
  EXPECT_EQ(b.attr, 0);
  EXPECT_EQ(b.attr_p1, 0u);
  EXPECT_EQ(b.attr_p2, 0u);
  if (a.type == CV_LINE || a.type == CV_ARC) {
    EXPECT_EQ(std::memcmp(a.data, b.data, a.type == CV_LINE ? 48 : 104), 0);
  } else if (a.type == CV_SEGCV) {
    const auto &x = *static_cast<KurvoSegcv*>(a.data), &y = *static_cast<KurvoSegcv*>(b.data);
    ASSERT_EQ(x.count, y.count);
    for (int i = 0; i < x.count; ++i) {
      EXPECT_EQ(x.widths[i], y.widths[i]);
      ExpectEqual(x.curves[i], y.curves[i]);
    }
  } else {
    const FreeForm x(a), y(b);
    const bool bezier = a.type == CV_BEZIER || a.type == CV_RBEZIER;
    const int count = bezier ? x.order : SplineCount(a);
    ASSERT_EQ(x.order, y.order);
    ASSERT_NE(x.points, y.points);
    EXPECT_TRUE(std::equal(x.points, x.points + count * x.stride, y.points));
    const auto knots = bezier ? 0 : count + x.order;
    EXPECT_TRUE(knots == 0 || std::equal(x.knots, x.knots + knots, y.knots));
  }
}

TEST(CopyCurve, IsDeep) {
  for (const char* text :
       {"l 1 2 3 4", "a 1 2 3 4 5", "b 1 2 3 4 5 6", "r 1 2 3 4 5 6", "B 1 2 3 4 5 6 | 0 0 1 2 3",
        "R 1 2 3 4 5 6 | 0 0 1 1", "c", "c 1 2 (l 1 2 3 4) (c 3 (a 1 2 3 4 5))"}) {
    Owned source = Make(text), copy;
    source.get()->attr = 5;
    source.get()->attr_p1 = 6;
    Globals g;
    EXPECT_NE(KurvocvCopyCurve(source.get(), copy.get(), &g), nullptr) << text;
    ExpectEqual(*source, *copy);
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
  ExpectEqual(pieces.curves[0], copied.curves[0]);
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
