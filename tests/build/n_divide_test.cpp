// Division of a curve at several parameters.
#include <gtest/gtest.h>

#include "build/division.h"

namespace kurvo_test {
namespace {

// A sequence that frees itself.
class Pieces {
 public:
  Pieces(const Curve& cv, Numbers cuts, GlobalVar& g) {
    const CvParam list = {static_cast<int32_t>(cuts.size()), cuts.data()};
    KurvocvNDivide(&cv, &list, &seq_, &g);
  }
  Pieces(const Pieces&) = delete;
  Pieces& operator=(const Pieces&) = delete;
  ~Pieces() { KurvocvFreeCvseq(&seq_); }

  int count() const { return seq_.count; }
  const Curve& operator[](int i) const { return seq_.curves[i]; }

 private:
  Cvseq seq_ = {7, nullptr};  // to be emptied
};

// Cuts in ascending order, anywhere inside.
Numbers RandomCuts(Random& random) {
  Numbers cuts;
  const int count = static_cast<int>(random.Uniform(1, 7));
  for (int i = 1; i <= count; ++i)
    cuts.push_back(RandomCut(random, (i - .45) / (count + 1), (i + .45) / (count + 1)));
  return cuts;
}

// Identities D1 and D2 of the header, for every piece.
TEST(NDivide, PiecesFollowTheCurve) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (const int32_t type : kAllTypes) {
    for (int round = 0; round < 60; ++round) {
      const Owned source = RandomCurve(random, type, 7);
      const Numbers cuts = RandomCuts(random);
      Globals g;
      const Pieces pieces(*source, cuts, g);
      SCOPED_TRACE(testing::Message() << "type " << type << ", round " << round);
      ASSERT_EQ(pieces.count(), static_cast<int>(cuts.size()) + 1);
      double from = 0;
      Point end{}, start{};
      for (int i = 0; i < pieces.count(); ++i) {
        const double to = i + 1 < pieces.count() ? cuts[static_cast<std::size_t>(i)] : 1;
        ExpectStretch(pieces[i], *source, from, to, 1e-10);  // up to six cuts, each of the last one
        KurvocvStartPoint(&pieces[i], start, &g);
        if (i > 0) {
          EXPECT_EQ(start, end) << "at joint " << i;
        }
        KurvocvEndPoint(&pieces[i], end, &g);
        from = to;
      }
      EXPECT_EQ(KurvoErrGet(&g), 0);
    }
  }
}

TEST(NDivide, KnotsOfSplinePieces) {
  const struct {
    const char* name;
    const char* curve;
    Numbers cuts;
    std::vector<Numbers> want;
  } rows[] = {
      {"a needless knot goes", "B 0 0 1 1 2 2 | 0 0 .5 1 1", {.25}, {{0, 0, 1, 1}, {0, 0, 1, 1}}},
      {"a needed one stays",
       "B 0 0 1 5 2 2 | 0 0 .5 1 1",
       {.25},
       {{0, 0, 1, 1}, {0, 0, 1. / 3, 1, 1}}},
      {"several cuts in one span",
       "B 0 0 1 5 2 2 | 0 0 0 1 1 1",
       {.25, .5},
       {{0, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 1, 1}, {0, 0, 0, 1, 1, 1}}},
      {"at a knot within epsilon",
       "B 0 0 1 5 2 2 | 0 0 .5 1 1",
       {.5 + 9e-7},
       {{0, 0, 1, 1}, {0, 0, 1, 1}}},
      {"twice at a knot",
       "B 0 0 1 5 2 2 | 0 0 .5 1 1",
       {.5 - 3e-7, .5 + 3e-7},
       {{0, 0, 1, 1}, {0, 0, 1, 1}, {0, 0, 1, 1}}},
      {"at both ends",
       "B 0 0 1 5 2 2 | 0 0 .5 1 1",
       {0, .5, 1},
       {{0, 0, 1, 1}, {0, 0, 1, 1}, {0, 0, 1, 1}, {0, 0, 1, 1}}},
      {"nothing but an end", "B 0 0 1 5 2 2 | 0 0 .5 1 1", {1}, {{0, 0, .5, 1, 1}, {0, 0, 1, 1}}},
      {"of order 1", "B 0 0 1 5 | 0 .5 1", {.25}, {{0, 1}, {0, 1. / 3, 1}}},
      {"values are knots",
       "B 0 0 1 5 2 2 | 0 0 2 4 4",
       {.5, 1},
       {{0, 0, 1, 1}, {0, 0, 1, 1}, {0, 0, 1. / 3, 1, 1}}},
  };
  for (const auto& row : rows) {
    const Owned source = Make(row.curve);
    Globals g;
    const Pieces pieces(*source, row.cuts, g);
    ASSERT_EQ(pieces.count(), static_cast<int>(row.want.size())) << row.name;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_LE(LargestGap(Knots(pieces[i]), row.want[static_cast<std::size_t>(i)]), 1e-15)
          << row.name << ", piece " << i;
  }
}

TEST(NDivide, PointCurvesAtEndsAndBetweenCloseCuts) {
  const struct {
    const char* curve;
    Numbers cuts;
    std::vector<const char*> want;
  } rows[] = {
      {"l 0 0 8 4",
       {0, .25, .5, 1},
       {"l 0 0 0 0", "l 0 0 2 1", "l 2 1 4 2", "l 4 2 8 4", "l 8 4 8 4"}},
      {"b 0 0 4 4 8 0",
       {0, .5, .5 + 4e-7},
       {"b 0 0 0 0 0 0", "b 0 0 2 2 4 2", "b 4 2 4 2 4 2", "b 4 2 6 2 8 0"}},
      {"b 0 0 4 4 8 0",
       {.5, 1 - 4e-7, 1},
       {"b 0 0 2 2 4 2", "b 4 2 6 2 8 0", "b 8 0 8 0 8 0", "b 8 0 8 0 8 0"}},
      // after a cut at 1/2 the tolerance is half as wide, but for the end of a composite
      {"b 0 0 4 4 8 0",
       {.5, 1 - 7e-7},
       {"b 0 0 2 2 4 2", "b 4 2 5.9999972 2 7.9999944 5.6e-6",
        "b 7.9999944 5.6e-6 7.9999972 2.8e-6 8 0"}},
      {"c .5 .5 (b 0 0 2 2)(r 2 2 1 4 0 1)",
       {.5, 1 - 7e-7},
       {"c 1 (b 0 0 2 2)", "c 1 (r 2 2 1 4 0 1)", "r 4 0 1 4 0 1 4 0 1"}},
      {"r 0 0 2 4 4 1 8 0 3", {0}, {"r 0 0 1 0 0 1 0 0 1", "r 0 0 2 4 4 1 8 0 3"}},
      {"B 0 0 4 4 8 0 | 0 0 0 1 1 1",
       {5e-7, .5},
       {"B 0 0 0 0 0 0 | 0 0 0 1 1 1", "B 0 0 2 2 4 2 | 0 0 0 1 1 1",
        "B 4 2 6 2 8 0 | 0 0 0 1 1 1"}},
      {"c .5 .5 (b 0 0 2 2)(r 2 2 1 4 0 1)",
       {0, .5, 1},
       {"b 0 0 0 0 0 0", "c 1 (b 0 0 2 2)", "c 1 (r 2 2 1 4 0 1)", "r 4 0 1 4 0 1 4 0 1"}},
  };
  for (const auto& row : rows) {
    Globals g;
    const Pieces pieces(*Make(row.curve), row.cuts, g);
    ASSERT_EQ(pieces.count(), static_cast<int>(row.want.size())) << row.curve;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_EQ(KurvocvMatch(&pieces[i], Make(row.want[static_cast<std::size_t>(i)]).get(), &g),
                KURVO_MATCH_SAME)
          << row.curve << ", piece " << i;
  }
}

// The end of a piece that a cut falls on, several cuts in one piece, pieces without width.
TEST(NDivide, CompositesInTheirOwnParameter) {
  const Owned source =
      Make("c .5 0 1 .5 (l 0 0 1 0)(l 1 0 1 0)(B 1 0 2 5 3 0 | 0 0 .5 1 1)(l 3 0 9 9)");
  Globals g;
  const Pieces pieces(*source, {.25, .5, .6, .7, 1}, g);
  ASSERT_EQ(pieces.count(), 6);
  const int counts[] = {1, 1, 2, 1, 1, 2};
  double from = 0;
  const double ends[] = {.25, .5, .6, .7, 1, 2};
  for (int i = 0; i < 6; ++i) {
    const auto& c = *static_cast<KurvoSegcv*>(pieces[i].data);
    EXPECT_EQ(c.count, counts[i]) << i;
    if (i != 2) ExpectStretch(pieces[i], *source, from, ends[i]);
    from = ends[i];
  }
}

TEST(NDivide, AnEmptyListGivesOneCopy) {
  const Owned source = Make("B 0 0 1 1 2 2 | 2 2 3 4 4");
  Globals g;
  const Pieces pieces(*source, {}, g);
  ASSERT_EQ(pieces.count(), 1);
  EXPECT_EQ(Knots(pieces[0]), Knots(*source));
}

TEST(NDivide, OfKnotsWithoutOrderIsSomeResult) {
  for (const Numbers& knots :
       {Numbers{0, 1, 0, 1, 0, 1, 0, 1}, Numbers{1, 1, .7, .2, .5, 0, 0},
        Numbers{0, 0, 0, kNaN, .2, .9, 1, 1, 1}, Numbers{0, 0, 7, -7, 1, 1}}) {
    const Owned source = MakeFreeForm(CV_BSPLINE, Numbers(2 * (knots.size() - 3), 1.), knots);
    Globals g;
    Pieces(*source, {0, .1, .3, .300000001, .8, 1}, g);
  }
}

}  // namespace
}  // namespace kurvo_test
