// Chains joined into one composite.
#include <gtest/gtest.h>

#include <string>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

Owned Segmented(const Chain& chain) {
  Globals g;
  Owned out(CV_LINE);
  KurvocvCvseqToSegcv(chain.get(), out.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  EXPECT_EQ(out->type, out->data ? CV_SEGCV : 0);
  return out;
}

// Widths and degrees of the pieces; rational ones have the degree negated.
TEST(CvseqToSegcv, Table) {
  const struct {
    const char *name, *chain;
    Numbers widths;
    std::vector<int> degrees;
  } rows[] = {
      // clang-format off
      {"lines of length 1 and 3", "(l 0 0 1 0)(l 1 0 1 3)", {.25, .75}, {1, 1}},
      {"line and quarter circle", "(l 0 0 3.14159265358979323846 0)(a 3.14159265358979323846 2 2 -1.57079632679489661923 1.57079632679489661923)", {.5, .5}, {1, -2}},
      {"B-spline in its own pieces", "(l -5 0 0 0)(B 0 0 1 0 2 0 3 0 5 0 | 3 3 5 9 11 13 13)", {.5, .1, .2, .1, .1}, {1, 1, 1, 1, 1}},
      {"composite whose widths do not add up to 1", "(c 3 6 9 (l 0 0 1 0)(b 1 0 2 0)(b 2 0 4 0))(l 4 0 8 0)", {1. / 12, 2. / 12, 3. / 12, .5}, {0, 1, 1, 1}},
      {"composite whose widths add up to nothing", "(l 0 0 2 0)(c 0 0 (b 2 0 3 0)(b 3 0 4 0))(l 2 0 4 0)", {.5, 0, 0, .5}, {1, 1, 1, 1}},
      {"first curve degenerate", "(l 0 0 0 0)(l 0 0 0 2)", {0, 1}, {1, 1}},
      {"last curve degenerate", "(l 1 1 0 0)(l 0 0 0 2)(b 0 2 0 2)", {M_SQRT2 / (2 + M_SQRT2), 2 / (2 + M_SQRT2), 0}, {1, 1, 1}},
      {"ends within epsilon", "(l 0 0 1 0)(l 1.0000009 0 2.0000009 0)", {.5, .5}, {1, 1}},
      // clang-format on
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Owned out = Segmented(Chain(row.chain));
    ASSERT_TRUE(out->data);
    const auto& c = out.block<KurvoSegcv>();
    ASSERT_EQ(static_cast<std::size_t>(c.count), row.widths.size());
    double sum = 0;
    for (int i = 0; i < c.count; ++i) {
      const auto at = static_cast<std::size_t>(i);
      EXPECT_NEAR(c.widths[i], row.widths[at], 1e-15) << i;
      const int degree = row.degrees[at];
      EXPECT_EQ(c.curves[i].type, degree > 0 ? CV_BEZIER : degree < 0 ? CV_RBEZIER : CV_LINE) << i;
      if (degree != 0) {
        EXPECT_EQ(FreeForm(c.curves[i]).order, std::abs(degree) + 1) << i;
      }
      sum += c.widths[i];
    }
    EXPECT_EQ(sum, 1.0);
  }
}

// Every curve keeps its points, and the whole can be evaluated up to its end.
TEST(CvseqToSegcv, RunsThroughTheSamePointsInProportionToLength) {
  const Chain chain(
      "(b 0 0 100 300 400 -200)(R 400 -200 1 500 0 3 300 300 1 0 500 2 | 5 5 5 7 11 11 11)"
      "(l 0 500 -300 500)(r -300 500 1 -400 400 .5 -300 300 1)(a -300 0 300 1.57079632679489661923 "
      "1)");
  const Owned out = Segmented(chain);
  ASSERT_TRUE(out->data);
  double lengths[5], total = 0, before = 0;
  for (int i = 0; i < 5; ++i) {
    const auto [start, length] = Domain(chain[i]);
    Globals g;
    KurvocvCurveLen(&chain[i], start, start + length, lengths + i, &g);
    total += lengths[i];
  }
  for (int i = 0; i < 5; before += lengths[i++] / total)
    for (const double f : {.01, .2, .5, .7, .99})
      if (chain[i].type != CV_ARC) {  // the same points at other parameters
        EXPECT_LE(KurvoclDistPoint(At(*out, before + f * lengths[i] / total), PointAt(chain[i], f)),
                  1e-9)
            << i << " at " << f;
      }
  EXPECT_LE(KurvoclDistPoint(At(*out, 1), PointAt(chain[4], 1)), 1e-9);
}

}  // namespace
}  // namespace kurvo_test
