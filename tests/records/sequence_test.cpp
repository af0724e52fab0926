// Sequences of curves and lists of parameters.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/generator.h"

namespace kurvo_test {
namespace {

constexpr int kNoError = KURVO_ERR_NONE;

// A sequence that frees itself, made of descriptions (see Make). "?" is an unknown type with data,
// "" an empty header.
class Sequence {
 public:
  Sequence() { KurvocvInitCvseq(&seq_); }
  explicit Sequence(const std::vector<std::string>& curves) {
    KurvocvMallocCvseq(&seq_, static_cast<int32_t>(curves.size()));
    for (std::size_t i = 0; i < curves.size(); ++i) seq_.curves[i] = MakeAny(curves[i]).Release();
  }
  Sequence(const Sequence&) = delete;
  Sequence& operator=(const Sequence&) = delete;
  ~Sequence() { KurvocvFreeCvseq(&seq_); }

  static Owned MakeAny(const std::string& text) {
    if (text.empty()) return Owned();
    if (text != "?") return Make(text);
    Owned unknown = Make("l 0 0 1 0");
    unknown.get()->type = 17;
    return unknown;
  }

  Cvseq* get() { return &seq_; }
  const Cvseq* operator->() const { return &seq_; }

 private:
  Cvseq seq_;
};

Point PointOf(const Curve& cv, double t) {
  Globals g;
  Point p;
  KurvocvPosition(&cv, t, p, &g);
  EXPECT_EQ(KurvoErrGet(&g), kNoError);
  return p;
}

const char* const kA = "l 0 0 1 0";
const char* const kB = "l 1 0 2 0";
const char* const kC = "l 2 0 3 0";

TEST(CvseqInsert, KeepsTheChain) {
  const struct {
    const char* name;
    std::vector<std::string> chain;
    const char* curve;
    int32_t index;
  } rows[] = {
      {"first", {}, kA, 0},
      {"append", {kA}, kB, 1},
      {"append within epsilon", {kA}, "l 1.0000009 -.0000009 2 0", 1},
      {"front", {kB, kC}, kA, 0},
      {"middle", {kA, kC}, kB, 1},
      {"joints elsewhere do not count", {"l 9 9 9 8", kA, kC}, kB, 2},
      {"arc", {kA}, "a 2 0 1 3.141592653589793 -1", 1},
      {"spline, unclamped", {"l 0 0 .5 0"}, "B 0 0 1 0 2 0 3 0 | 0 1 2 3 4 5 6", 1},
      {"composite", {kA}, "c 1 1 (l 1 0 2 0)(b 2 0 3 3 4 0)", 1},
      {"composite without pieces, alone", {}, "c", 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Globals g;
    Sequence seq(row.chain);
    for (int i = 0; i < seq->count; ++i) seq.get()->curves[i].attr = 7 + i;
    const Owned curve = Sequence::MakeAny(row.curve);
    const std::vector<Curve> headers(seq->curves, seq->curves + seq->count);

    KurvocvCvseqInsert(curve.get(), seq.get(), row.index, &g);
    EXPECT_EQ(KurvoErrGet(&g), kNoError);
    ASSERT_EQ(seq->count, static_cast<int32_t>(headers.size()) + 1);
    for (int i = 0, old = 0; i < seq->count; ++i) {
      const Curve& cv = seq->curves[i];
      if (i == row.index) {
        EXPECT_NE(cv.data, curve->data);
        EXPECT_EQ(cv.type, curve->type);
      } else {
        EXPECT_EQ(std::memcmp(&cv, &headers[static_cast<std::size_t>(old++)], sizeof cv), 0);
      }
    }
  }
}

TEST(CvseqInsert, TakesACurveOfTheSequenceItself) {
  Globals g;
  Sequence seq({"b 0 0 1 2 1 -2 0 0"});
  for (int n = 0; n < 40; ++n) KurvocvCvseqInsert(seq->curves + n / 2, seq.get(), n / 3, &g);
  EXPECT_EQ(KurvoErrGet(&g), kNoError);
  ASSERT_EQ(seq->count, 41);
  Coord end;
  for (int i = 0; i < seq->count; ++i) {
    KurvocvEndPoint(seq->curves + i, end, &g);
    EXPECT_EQ(end[0], 0);
    for (int j = 0; j < i; ++j) EXPECT_NE(seq->curves[i].data, seq->curves[j].data);
  }
}

TEST(Cvseq, MallocAndFree) {
  Sequence seq;
  for (const int32_t n : {0, -1, INT32_MIN}) {
    *seq.get() = {5, seq->curves};
    EXPECT_EQ(KurvocvMallocCvseq(seq.get(), n), nullptr);
    EXPECT_EQ(seq->count, 0);
    EXPECT_EQ(seq->curves, nullptr);
  }
  ASSERT_NE(KurvocvMallocCvseq(seq.get(), 3), nullptr);
  EXPECT_EQ(seq->count, 3);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(seq->curves[i].data, nullptr);
  EXPECT_EQ(seq->curves[2].type | seq->curves[2].attr, 0);
  KurvocvFreeCvseq(seq.get());
  EXPECT_EQ(seq->count, 0);
  EXPECT_EQ(seq->curves, nullptr);

  Curve header = {};
  Cvseq not_owned = {0, &header};  // a count of 0 owns nothing
  KurvocvFreeCvseq(&not_owned);
  EXPECT_EQ(not_owned.curves, &header);
  KurvocvFreeCvseq(nullptr);
  KurvocvInitCvseq(nullptr);
  EXPECT_EQ(KurvocvMallocCvseq(nullptr, 3), nullptr);
}

TEST(CopyCvseq, IsDeep) {
  const Sequence chain({kA, "c 1 1 (l 1 0 2 0)(r 2 0 1 3 1 2 4 0 1)", "", "e"});
  Globals g;
  Sequence copy;
  EXPECT_EQ(KurvocvCopyCvseq(chain.operator->(), copy.get(), &g), copy->curves);
  ASSERT_EQ(copy->count, 4);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(copy->curves[i].type, chain->curves[i].type);
    EXPECT_NE(copy->curves[i].data, chain->curves[i].data);
    EXPECT_EQ(PointOf(copy->curves[i], .7), PointOf(chain->curves[i], .7));
  }
  EXPECT_EQ(copy->curves[2].data, nullptr);
  EXPECT_EQ(copy->curves[3].type, CV_LINE);
}

TEST(SegcvToCvseq, CopiesThePieces) {
  const struct {
    const char* name;
    const char* curve;
    int32_t count;
    int error;
  } rows[] = {{"two pieces", "c 1 3 (l 0 0 1 0)(b 1 0 2 2 3 0)", 2, kNoError},
              {"composite in composite", "c 1 (c 1 1 (l 0 0 1 0)(l 1 0 2 0))", 1, kNoError},
              {"no pieces", "c", 0, kNoError}};
  Curve dummy = {};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Globals g;
    const Owned cv = Sequence::MakeAny(row.curve);
    Sequence out;
    *out.get() = {4, &dummy};  // overwritten, not freed
    KurvocvSegcvToCvseq(cv.get(), out.get(), &g);
    EXPECT_EQ(KurvoErrGet(&g), row.error);
    ASSERT_EQ(out->count, row.count);
    EXPECT_EQ(out->curves != nullptr, row.count > 0);
    for (int i = 0; i < row.count; ++i) {
      const Curve& piece = cv.block<KurvoSegcv>().curves[i];
      EXPECT_NE(out->curves[i].data, piece.data);
      EXPECT_EQ(PointOf(out->curves[i], .3), PointOf(piece, .3));
    }
  }
}

TEST(CvseqBoundBox, IsAroundTheBoxesOfAllCurves) {
  const char* const kBent = "b 1 -3 2 5 4 0";
  const struct {
    const char* name;
    std::vector<std::string> curves;
    std::vector<double> box;  // minimum x, y, maximum x, y
    int error;
  } rows[] = {
      {"no curves", {}, {0, 0, 0, 0}, kNoError},
      {"one", {kBent}, {1, -3, 4, 5}, kNoError},
      {"away from the origin", {"l 5 6 7 8", "l 7 8 9 9"}, {5, 6, 9, 9}, kNoError},
      {"negative", {"l -5 -6 -7 -8", "l -7 -8 -9 -9"}, {-9, -9, -5, -6}, kNoError},
      {"one without data", {kBent, "e"}, {0, 0, 0, 0}, kNoError},
      {"an empty header", {"", kBent}, {0, 0, 0, 0}, kNoError},
      {"unknown", {kBent, "?"}, {0, 0, 0, 0}, KURVO_ERR_CURVE},
      {"unknown after an empty one", {"e", "?"}, {0, 0, 0, 0}, KURVO_ERR_CURVE},
      {"composites of one piece", {"c 1 (c 1 (l 5 6 7 8))", kBent}, {1, -3, 7, 8}, kNoError},
      {"composite without pieces", {"c", kBent}, {1, -3, 4, 5}, kNoError},
      {"composite of two", {kBent, "c 1 1 (l 4 0 9 0)(l 9 0 9 9)"}, {1, -3, 9, 9}, kNoError},
  };
  for (const auto& row : rows) {
    Globals g;
    const Sequence seq(row.curves);
    Box box = {1, 2, 3, 4, 5, 6};
    KurvocvCvseqBoundBox(seq.operator->(), box, &g);
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
    EXPECT_EQ((std::vector<double>{box[0], box[1], box[3], box[4]}), row.box) << row.name;
    EXPECT_EQ(box[2], 0) << row.name;
  }
}

TEST(CvseqBoundBox, AtTheHeightOfTheFirstCurve) {
  Globals g;
  Sequence seq({kA, "b 1 0 9 9 2 0"});
  static_cast<KurvoLine*>(seq->curves[0].data)->start[2] = 4;
  Box box;
  KurvocvCvseqBoundBox(seq.get(), box, &g);
  EXPECT_EQ(box[2], 4);
  EXPECT_EQ(box[5], 4);
  EXPECT_EQ(box[4], 9);
}

TEST(CvParam, MallocAndFree) {
  CvParam list;
  KurvocrInitCvParam(&list);
  EXPECT_EQ(list.count, 0);
  EXPECT_EQ(list.values, nullptr);
  double not_owned = 0;
  for (const int32_t count : {0, -3}) {
    list = {count, &not_owned};
    KurvocrMallocCvParam(&list);
    EXPECT_EQ(list.count, count);
    EXPECT_EQ(list.values, &not_owned);
    KurvocrFreeCvParam(&list);
    EXPECT_EQ(list.count, 0);
    EXPECT_EQ(list.values, nullptr);
  }
  list.count = 3;
  KurvocrMallocCvParam(&list);
  ASSERT_NE(list.values, nullptr);
  list.values[2] = 1;
  KurvocrFreeCvParam(&list);
  EXPECT_EQ(list.count, 0);
  EXPECT_EQ(list.values, nullptr);
  KurvocrInitCvParam(nullptr);
  KurvocrMallocCvParam(nullptr);
  KurvocrFreeCvParam(nullptr);
}

}  // namespace
}  // namespace kurvo_test
