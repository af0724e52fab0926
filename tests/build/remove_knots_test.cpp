// Removal of knots.
#include "support/generator.h"

namespace kurvo_test {
namespace {

Owned Removed(const Curve& cv, double eps = 1e-6) {
  Globals g(eps);
  Owned result(CV_ARC);
  KurvocvBsplRemoveKnots(&cv, result.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return result;
}

// Cut into its Bezier pieces and joined again, a spline has every knot as often as it can be; those
// that were inserted go, the others stay.
TEST(BsplRemoveKnots, UndoesInsertions) {
  Rounds(300, [&](Random& random, int round) {
    const int order = 2 + round % 6;
    const bool rational = round % 2 == 1;
    const Owned source =
        RandomSplineOver(random, rational, order, 0, 1, std::min(2, order - 1), true);
    Owned pieces(CV_SEGCV), refined(source->type);
    Globals g;
    ASSERT_EQ(KurvocvConvert(source.get(), pieces.get(), &g), KURVO_CONVERTED);
    ASSERT_EQ(KurvocvConvert(pieces.get(), refined.get(), &g), KURVO_CONVERTED);
    EXPECT_TRUE(IsCurve(*Removed(*refined, 1e-9), *source, 1e-9))
        << "round " << round << ", order " << order;
  });
}

TEST(BsplRemoveKnots, Table) {
  const char* const same = nullptr;
  // clang-format off
  const struct {
    const char *name, *curve, *want;
  } rows[] = {
      {"one span cut in the middle", "B 0 0 0 2 1 3 2 3 3 3 4 2 4 0 | 0 0 0 0 .5 .5 .5 1 1 1 1", "B 0 0 0 4 4 4 4 0 | 0 0 0 0 1 1 1 1"},
      {"no inner knot", "B 0 0 1 5 2 0 | 0 0 0 1 1 1", same},
      {"a corner", "B 0 0 1 1 2 0 | 0 0 .5 1 1", same},
      {"inner knots that matter", "R .1 0 1 1 .7 2 2 .3 .4 3 .9 3 4 .2 1 5 .6 1 | -1 -1 -1 0 1 1.7 3 3 3", same},
      {"a straight corner", "B 0 0 1 1 2 2 | 0 0 .5 1 1", "B 0 0 2 2 | 0 0 1 1"},
      {"one of two", "B 0 0 1 1 2 2 3 0 | 0 0 1 2 3 3", "B 0 0 2 2 3 0 | 0 0 2 3 3"},
      {"a closed jump", "B 0 0 1 1 1 1 2 2 | 0 0 1 1 2 2", "B 0 0 2 2 | 0 0 2 2"},
      {"an open jump", "B 0 0 1 1 5 1 2 2 | 0 0 1 1 2 2", same},
      {"points that act nowhere", "B 0 0 1 1 9 9 8 8 5 1 2 2 | 0 0 1 1 1 1 2 2", "B 0 0 1 1 5 1 2 2 | 0 0 1 1 2 2"},
      {"order 1", "B 0 0 0 0 1 1 | 0 1 2 3", "B 0 0 1 1 | 0 2 3"},
      {"knots beyond the domain", "B 0 0 1 1 2 2 3 3 | -1 0 1 2 3 4", "B 0 0 3 3 | -1 0 3 4"},
      {"descending", "B 0 0 1 1 2 2 | 1 1 .5 0 0", same},
      {"out of order", "B 1 1 1 1 1 1 1 1 | 0 0 .5 .2 1 1", same},
      {"a jump within epsilon closes in the middle", "B 0 0 1 1 1 1.0000008 2 0 | 0 0 1 1 2 2", "B 0 0 1 1.0000004 2 0 | 0 0 1 2 2"},
      {"so does the middle point", "B 0 0 1 2.0000001 3 2 4 0 | 0 0 0 1 2 2 2", "B 0 0 2 4.0000001 4 0 | 0 0 0 2 2 2"},
      {"no length", "B 0 0 1 1 2 2 | 1 1 1 1 1", same},
      // at the two test points of the knot 1, .8 and 1.2, removal moves the curve by .8 of the height
      {"corner as high as the tolerance", "B 0 0 1 1.249e-6 2 0 | 0 0 1 2 2", "B 0 0 2 0 | 0 0 2 2"},
      {"corner higher than the tolerance", "B 0 0 1 1.251e-6 2 0 | 0 0 1 2 2", same},
      {"the same on a tiny domain", "B 0 0 1 1.249e-6 2 0 | 0 0 1e-7 2e-7 2e-7", "B 0 0 2 0 | 0 0 2e-7 2e-7"},
      {"too high on a wide domain", "B 0 0 1 1.251e-6 2 0 | -1024 -1024 3072 7168 7168", same},
  };
  // clang-format on
  for (const auto& row : rows)
    EXPECT_TRUE(
        IsCurve(*Removed(*Make(row.curve)), row.want ? row.want : row.curve, row.want ? 1e-14 : 0))
        << row.name;
  const Owned nan = MakeFreeForm(CV_BSPLINE, {0, 0, 1, 1, 2, 2, 3, 3}, {0, 0, 1, kNaN, 2, 2});
  EXPECT_EQ(SplineCount(*Removed(*nan)), 4);
}

}  // namespace
}  // namespace kurvo_test
