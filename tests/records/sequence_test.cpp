// Making, copying and freeing curve records, sequences of curves and lists of parameters.
#include <pthread.h>

#include <cstring>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

TEST(CvseqInsert, KeepsTheChain) {
  const char* const a = "l 0 0 1 0";
  const char* const b = "l 1 0 2 0";
  // clang-format off
  const struct {
    const char *name, *chain, *curve;
    int32_t index;
  } rows[] = {
      {"first", "", a, 0},
      {"append", "(l 0 0 1 0)", b, 1},
      {"append within epsilon", "(l 0 0 1 0)", "l 1.0000009 -.0000009 2 0", 1},
      {"front", "(l 1 0 2 0)(l 2 0 3 0)", a, 0},
      {"middle", "(l 0 0 1 0)(l 2 0 3 0)", b, 1},
      {"joints elsewhere do not count", "(l 9 9 9 8)(l 0 0 1 0)(l 2 0 3 0)", b, 2},
      {"arc", "(l 0 0 1 0)", "a 2 0 1 3.141592653589793 -1", 1},
      {"spline, unclamped", "(l 0 0 .5 0)", "B 0 0 1 0 2 0 3 0 | 0 1 2 3 4 5 6", 1},
      {"composite", "(l 0 0 1 0)", "c 1 1 (l 1 0 2 0)(b 2 0 3 3 4 0)", 1},
      {"composite without pieces, alone", "", "c", 0},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Globals g;
    Chain seq(row.chain);
    for (int i = 0; i < seq.count(); ++i) seq[i].attr = 7 + i;
    const Owned curve = Make(row.curve);
    const std::vector<Curve> headers(seq.begin(), seq.end());
    KurvocvCvseqInsert(curve.get(), seq.get(), row.index, &g);
    EXPECT_EQ(KurvoErrGet(&g), 0);
    ASSERT_EQ(seq.count(), static_cast<int>(headers.size()) + 1);
    EXPECT_TRUE(IsCurve(seq[row.index], *curve));
    EXPECT_NE(seq[row.index].data, curve->data);
    for (int i = 0, old = 0; i < seq.count(); ++i) {
      if (i == row.index) continue;
      EXPECT_EQ(std::memcmp(&seq[i], &headers[static_cast<std::size_t>(old++)], sizeof(Curve)), 0);
    }
  }
}

TEST(CopyCvseq, IsDeep) {
  const Chain chain("(l 0 0 1 0)(c 1 1 (l 1 0 2 0)(r 2 0 1 3 1 2 4 0 1))(e)(e)");
  chain[2] = {};
  Globals g;
  Chain copy;
  EXPECT_EQ(KurvocvCopyCvseq(chain.get(), copy.get(), &g), copy->curves);
  ASSERT_EQ(copy.count(), 4);
  for (int i = 0; i < 4; ++i) {
    EXPECT_TRUE(IsCurve(copy[i], chain[i])) << i;
    EXPECT_TRUE(i > 1 || copy[i].data != chain[i].data) << i;
  }
}

TEST(SegcvToCvseq, CopiesThePieces) {
  Curve dummy = {};
  for (const char* text :
       {"c 1 3 (l 0 0 1 0)(b 1 0 2 2 3 0)", "c 1 (c 1 1 (l 0 0 1 0)(l 1 0 2 0))", "c"}) {
    Globals g;
    const Owned cv = Make(text);
    const auto& block = cv.block<KurvoSegcv>();
    Chain out;
    *out = {4, &dummy};  // overwritten, not freed
    KurvocvSegcvToCvseq(cv.get(), out.get(), &g);
    ASSERT_EQ(out.count(), block.count) << text;
    EXPECT_EQ(out->curves != nullptr, block.count > 0) << text;
    for (int i = 0; i < block.count; ++i) EXPECT_TRUE(IsCurve(out[i], block.curves[i])) << text;
  }
}

TEST(CvseqBoundBox, IsAroundTheBoxesOfAllCurves) {
  const std::string bent = "(b 1 -3 2 5 4 0)";
  // clang-format off
  const struct {
    std::string chain;
    Numbers box;  // minimum x, y, maximum x, y
  } rows[] = {
      {"", {0, 0, 0, 0}},
      {bent, {1, -3, 4, 5}},
      {"(l 5 6 7 8)(l 7 8 9 9)", {5, 6, 9, 9}},  // away from the origin
      {"(l -5 -6 -7 -8)(l -7 -8 -9 -9)", {-9, -9, -5, -6}},
      {bent + "(e)", {0, 0, 0, 0}},
      {"(c 1 (c 1 (l 5 6 7 8)))" + bent, {1, -3, 7, 8}},
      {"(c)" + bent, {1, -3, 4, 5}},
      {bent + "(c 1 1 (l 4 0 9 0)(l 9 0 9 9))", {1, -3, 9, 9}},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    Box box = {1, 2, 3, 4, 5, 6};
    KurvocvCvseqBoundBox(Chain(row.chain).get(), box, &g);
    EXPECT_EQ(KurvoErrGet(&g), 0) << row.chain;
    EXPECT_EQ((Numbers{box[0], box[1], box[3], box[4]}), row.box) << row.chain;
    EXPECT_EQ(box[2], 0) << row.chain;
  }
  const Chain high("(l 0 0 1 0)(b 1 0 9 9 2 0)");
  static_cast<KurvoLine*>(high[0].data)->start[2] = 4;  // the height of the first curve
  Globals g;
  Box box;
  KurvocvCvseqBoundBox(high.get(), box, &g);
  EXPECT_EQ((Numbers{box, box + 6}), (Numbers{0, 0, 4, 9, 9, 4}));
}

// ---- curves

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
