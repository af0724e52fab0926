// Extension of a curve at its ends.
#include "support/curve_text.h"

namespace kurvo_test {
namespace {

Owned Extend(const Curve& cv, double a, double b, GlobalVar& g) {
  Owned result(CV_ARC);  // to be emptied
  KurvocvExtendCurve(&cv, a, b, result.get(), &g);
  return result;
}

TEST(ExtendCurve, Table) {
  // clang-format off
  const struct {
    const char *name, *curve;
    double a, b;
    const char* want;
    int error = 0;
  } rows[] = {
      {"line", "l 0 0 1 0", 1, 2, "l -1 0 3 0"},
      {"nothing", "B 0 0 1 1 | 2 2 3 3", 4e-7, -4e-7, "B 0 0 1 1 | 2 2 3 3"},
      {"quarter", "a 0 0 1 0 1.5707963267948966", .4, .4, "a 0 0 1 -.62831853071795865 2.8274333882308138"},
      {"clockwise", "a 0 0 1 0 -1.5707963267948966", .4, -.4, "a 0 0 1 .62831853071795865 -1.5707963267948966"},
      {"cubic", "b 0 0 0 0 0 0 1 1", 0, 1, "b 0 0 0 0 0 0 8 8"},
      {"constant", "b 3 4", 1, 1, "b 3 4"},
      {"spline, three spans", "B 0 0 1 1 2 0 3 1 | 0 0 .25 .5 1 1", .25, .5, "B -1 -1 1 1 2 0 4 2 | 0 0 .2857142857142857 .4285714285714286 1 1"},
      {"spline cut at a knot by six decimals", "B 0 0 1 1 2 0 3 1 | 0 0 .25 .5 1 1", -.2500004, 0, "B 1 1 2 0 3 1 | 0 0 .3333333333333333 1 1"},
      {"composite", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", .5, 1, "c .4 .6 (l -1 0 1 0)(b 1 0 4 0)"},
      {"composite, trimmed", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", -.25, -.25, "c .5 .5 (l .5 0 1 0)(b 1 0 1.5 0)"},
      {"composite, widths of sum 4", "c 2 2 (l 0 0 1 0)(b 1 0 2 0)", -3, 4, "c 1 (b 1.5 0 4 0)"},
      {"composite, a piece less", "c .5 .5 (l 0 0 1 0)(b 1 0 2 0)", -.5, .5, "c 1 (b 1 0 3 0)"},
      {"composite, one piece", "c 1 (b 0 0 0 0 1 1)", 1, 1, "c 1 (b 1 1 -2 -2 4 4)"},
      {"composite, beyond its end", "c .5 .5 (b 0 0 9 9)(b 1 0 2 0)", -1.5, 1, "c 1 (b 3 0 4 0)"},
      {"composite, before its start", "c .5 .5 (b 0 0 1 0)(b 1 1 2 2)", 1, -1.5, "c 1 (b -2 0 -1 0)"},
      {"composite, arc piece", "c .5 .5 (a 0 0 1 0 1)(l 0 0 1 1)", .5, 0, "c .6666666666666667 .3333333333333333 (a 0 0 1 -1 2)(l 0 0 1 1)"},
      {"composite, long arc trimmed", "c .5 .5 (a 0 0 1 0 5)(l 0 0 1 1)", -.1, 0, "c .4444444444444444 .5555555555555556 (a 0 0 1 1 4)(l 0 0 1 1)"},
      {"nested", "c .5 .5 (c .5 .5 (l 0 0 1 0)(l 1 0 2 0))(l 2 0 3 0)", .25, 0, "c .6 .4 (c .6666666666666667 .3333333333333333 (l -1 0 1 0)(l 1 0 2 0))(l 2 0 3 0)"},
      {"closed, of lines", "c .5 .5 (l 0 0 1 0)(l 1 0 0 0)", .5, 0, "c .6666666666666667 .3333333333333333 (l -1 0 1 0)(l 1 0 0 0)"},
      {"closed, of Beziers, trimmed", "c .5 .5 (b 0 0 1 0)(b 1 0 0 0)", -.25, 0, "c .3333333333333333 .6666666666666667 (b .5 0 1 0)(b 1 0 0 0)"},
      // over one parameter the point there
      {"line, point", "l 0 0 1 2", -.5, -.5, "l .5 1 .5 1", KURVO_ERR_RANGE},
      {"line, point outside", "l 0 0 1 2", 1, -2, "l -1 -2 -1 -2", KURVO_ERR_RANGE},
      {"spline, point", "B 0 0 2 2 | 4 4 8 8", -.25, -.75, "B .5 .5 .5 .5 | 0 0 1 1", KURVO_ERR_RANGE},
      {"composite, point", "c 2 2 (b 0 0 2 2)(l 2 2 3 3)", -1, -3, "b 1 1 1 1 1 1", KURVO_ERR_RANGE},
  };
  // clang-format on
  for (const auto& row : rows) {
    Globals g;
    const Owned result = Extend(*Make(row.curve), row.a, row.b, g);
    EXPECT_EQ(KurvoErrGet(&g), row.error) << row.name;
    EXPECT_TRUE(IsCurve(*result, row.want, 1e-14)) << row.name;
    EXPECT_TRUE(result->type != CV_SEGCV || Domain(*result).second == 1.) << row.name;
  }
}

}  // namespace
}  // namespace kurvo_test
