// Division of a curve at several parameters.
#include "build/stretch.h"

namespace kurvo_test {
namespace {

Chain Divide(const Curve& cv, Numbers cuts, GlobalVar& g) {
  const CvParam list = {static_cast<int32_t>(cuts.size()), cuts.data()};
  Chain pieces;
  *pieces = {7, nullptr};  // to be emptied
  KurvocvNDivide(&cv, &list, pieces.get(), &g);
  return pieces;
}

// Identities D1 and D2 of the header, for every piece.
TEST(NDivide, PiecesFollowTheCurve) {
  Rounds(420, [&](Random& random, int round) {
    const Owned source = RandomCurve(random, kAllTypes[round % 7], 7);
    Numbers cuts;
    const int count = RandomInt(random, 1, 6);
    for (int i = 1; i <= count; ++i)
      cuts.push_back(RandomCut(random, (i - .45) / (count + 1), (i + .45) / (count + 1)));
    Globals g;
    const Chain pieces = Divide(*source, cuts, g);
    SCOPED_TRACE(round);
    ASSERT_EQ(pieces.count(), count + 1);
    double from = 0;
    cuts.push_back(1);
    Point end, start;
    for (int i = 0; i <= count; from = cuts[static_cast<std::size_t>(i++)]) {
      ExpectStretch(pieces[i], *source, from, cuts[static_cast<std::size_t>(i)], 1e-10);
      KurvocvStartPoint(&pieces[i], start, &g);
      EXPECT_TRUE(i == 0 || start == end) << "at joint " << i;
      KurvocvEndPoint(&pieces[i], end, &g);
    }
    EXPECT_EQ(KurvoErrGet(&g), 0);
  });
}

TEST(NDivide, KnotsOfSplinePieces) {
  const Numbers line = {0, 0, 1, 1}, quadratic = {0, 0, 0, 1, 1, 1};
  const char* const corner = "B 0 0 1 5 2 2 | 0 0 .5 1 1";
  // clang-format off
  const struct {
    const char *name, *curve;
    Numbers cuts;
    std::vector<Numbers> want;
  } rows[] = {
      {"a needless knot goes", "B 0 0 1 1 2 2 | 0 0 .5 1 1", {.25}, {line, line}},
      {"a needed one stays", corner, {.25}, {line, {0, 0, 1. / 3, 1, 1}}},
      {"several cuts in one span", "B 0 0 1 5 2 2 | 0 0 0 1 1 1", {.25, .5}, {quadratic, quadratic, quadratic}},
      {"at a knot within epsilon", corner, {.5 + 9e-7}, {line, line}},
      {"twice at a knot", corner, {.5 - 3e-7, .5 + 3e-7}, {line, line, line}},
      {"at both ends", corner, {0, .5, 1}, {line, line, line, line}},
      {"nothing but an end", corner, {1}, {{0, 0, .5, 1, 1}, line}},
      {"of order 1", "B 0 0 1 5 | 0 .5 1", {.25}, {{0, 1}, {0, 1. / 3, 1}}},
      {"values are knots", "B 0 0 1 5 2 2 | 0 0 2 4 4", {.5, 1}, {line, line, {0, 0, 1. / 3, 1, 1}}},
      {"no cuts", "B 0 0 1 1 2 2 | 2 2 3 4 4", {}, {{2, 2, 3, 4, 4}}},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Chain pieces = Divide(*Make(row.curve), row.cuts, g);
    ASSERT_EQ(pieces.count(), static_cast<int>(row.want.size())) << row.name;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_LE(LargestGap(Knots(pieces[i]), row.want[static_cast<std::size_t>(i)]), 1e-15)
          << row.name << ", piece " << i;
  }
}

// Point curves at ends and between close cuts; composites are cut in their own parameter, at the
// ends of pieces, several times in one piece, and where a piece has no width.
TEST(NDivide, Pieces) {
  const char* const two = "c .5 .5 (b 0 0 2 2)(r 2 2 1 4 0 1)";
  // clang-format off
  const struct {
    const char* curve;
    Numbers cuts;
    const char* want;
  } rows[] = {
      {"l 0 0 8 4", {0, .25, .5, 1}, "(l 0 0 0 0)(l 0 0 2 1)(l 2 1 4 2)(l 4 2 8 4)(l 8 4 8 4)"},
      {"b 0 0 4 4 8 0", {0, .5, .5 + 4e-7}, "(b 0 0 0 0 0 0)(b 0 0 2 2 4 2)(b 4 2 4 2 4 2)(b 4 2 6 2 8 0)"},
      {"b 0 0 4 4 8 0", {.5, 1 - 4e-7, 1}, "(b 0 0 2 2 4 2)(b 4 2 6 2 8 0)(b 8 0 8 0 8 0)(b 8 0 8 0 8 0)"},
      // after a cut at 1/2 the tolerance is half as wide, but for the end of a composite
      {"b 0 0 4 4 8 0", {.5, 1 - 7e-7}, "(b 0 0 2 2 4 2)(b 4 2 5.9999972 2 7.9999944 5.6e-6)(b 7.9999944 5.6e-6 7.9999972 2.8e-6 8 0)"},
      {two, {.5, 1 - 7e-7}, "(c 1 (b 0 0 2 2))(c 1 (r 2 2 1 4 0 1))(r 4 0 1 4 0 1 4 0 1)"},
      {two, {0, .5, 1}, "(b 0 0 0 0 0 0)(c 1 (b 0 0 2 2))(c 1 (r 2 2 1 4 0 1))(r 4 0 1 4 0 1 4 0 1)"},
      {"r 0 0 2 4 4 1 8 0 3", {0}, "(r 0 0 1 0 0 1 0 0 1)(r 0 0 2 4 4 1 8 0 3)"},
      {"B 0 0 4 4 8 0 | 0 0 0 1 1 1", {5e-7, .5}, "(B 0 0 0 0 0 0 | 0 0 0 1 1 1)(B 0 0 2 2 4 2 | 0 0 0 1 1 1)(B 4 2 6 2 8 0 | 0 0 0 1 1 1)"},
      {"c .5 0 1 .5 (l 0 0 1 0)(l 1 0 1 0)(B 1 0 2 4 3 0 | 0 0 .5 1 1)(l 3 0 9 6)", {.25, .5, .75, .875, 1},
       "(c 1 (l 0 0 .5 0))(c 1 (l .5 0 1 0))(c 0 1 (l 1 0 1 0)(B 1 0 1.5 2 | 0 0 1 1))(c 1 (B 1.5 2 1.75 3 | 0 0 1 1))"
       "(c 1 (B 1.75 3 2 4 | 0 0 1 1))(c .5 .5 (B 2 4 3 0 | 0 0 1 1)(l 3 0 9 6))"},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Chain pieces = Divide(*Make(row.curve), row.cuts, g), want(row.want);
    ASSERT_EQ(pieces.count(), want.count()) << row.curve;
    for (int i = 0; i < pieces.count(); ++i)
      EXPECT_TRUE(IsCurve(pieces[i], want[i], 2e-9)) << row.curve << ", piece " << i;
  }
}

}  // namespace
}  // namespace kurvo_test
