// B-splines split into their Bezier pieces.
#include "control/bezier_pieces.h"
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

// Knots repeated up to full multiplicity, the ends clamped or not, any domain.
Owned RandomSpline(Random& random, int round) {
  const int order = RandomInt(random, 1, 7);
  return RandomSplineOver(random, round % 2 == 1, order, -1, round % 3 ? 8 : 0, order);
}

Owned Composite(const Curve& spline) {
  Owned target(CV_SEGCV);
  Globals g;
  EXPECT_EQ(KurvocvConvert(&spline, target.get(), &g), KURVO_CONVERTED);
  return target;
}

TEST(Pieces, AreThoseOfTheOracle) {
  Rounds(400, [&](Random& random, int round) {
    const Owned spline = RandomSpline(random, round), target = Composite(*spline);
    const std::vector<Oracle::Part> parts = Oracle(*spline).Parts();
    const auto& c = target.block<KurvoSegcv>();
    ASSERT_EQ(c.count, static_cast<int>(parts.size()));
    EXPECT_EQ(Domain(*target).second, 1.0);
    const FreeForm whole(*spline);
    for (int i = 0; i < c.count; ++i) {
      EXPECT_EQ(c.curves[i].type, IsRational(spline->type) ? CV_RBEZIER : CV_BEZIER);
      const auto& [points, cx, cy, r, angle, sweep, start, width] =
          parts[static_cast<std::size_t>(i)];
      EXPECT_NEAR(c.widths[i], static_cast<double>(width) / Domain(*spline).second, 1e-14);
      const FreeForm piece(c.curves[i]);
      for (int j = 0; j < piece.count; ++j) {
        const auto [x, y, w] = points[static_cast<std::size_t>(j)];
        EXPECT_LE(Gap({piece.point(j)[0], piece.point(j)[1]}, {x / w, y / w}), 1e-12 * kSize);
        EXPECT_TRUE(piece.stride == 3 || 1e-14 >= std::fabs(piece.point(j)[3] - w));
      }
      const double at = static_cast<double>(start + width);
      if (i + 1 == c.count || std::count(whole.knots, whole.knots + whole.count, at) == whole.order)
        continue;
      const double* end = piece.point(piece.order - 1);  // the next one starts there, to the bit
      EXPECT_TRUE(std::equal(end, end + piece.stride, FreeForm(c.curves[i + 1]).points));
    }
    // A span between knots as often as they can be has control points that are its own to the bit.
    const Owned own =
        MakeFreeForm(CV_RBSPLINE, RandomPoints(random, 6, true), {2, 2, 2, 3, 3, 3, 5, 5, 5});
    const Owned two = Composite(*own);
    for (int i = 0; i < 6; ++i)
      EXPECT_TRUE(std::equal(FreeForm(*own).point(i), FreeForm(*own).point(i + 1),
                             FreeForm(two.block<KurvoSegcv>().curves[i / 3]).point(i % 3)));
  });
}

// Span by span the same as the composite's records, over the source's own parameters.
TEST(Pieces, OneByOneEqualThoseOfTheComposite) {
  Rounds(50, [&](Random& random, int round) {
    Owned spline = RandomSpline(random, round);
    const Owned pieces = Composite(*spline);
    const auto& c = pieces.block<KurvoSegcv>();
    const auto [start, range] = Domain(*spline);
    const double length = range;
    Owned whole = Make("c 3 2 (l 0 0 1 1)(c 4 .5 (b 0 0 1 1)(e))");
    auto& inner = *static_cast<KurvoSegcv*>(whole.block<KurvoSegcv>().curves[1].data);
    inner.curves[1] = spline.Release();
    const auto counts = kurvo::CountBezierSpans(*whole, 4096);
    ASSERT_TRUE(counts.has_value());
    ASSERT_EQ(counts->spans.value(), static_cast<std::size_t>(c.count) + 1);
    int i = -1;  // of the composite's pieces; the first span is the line that stands before them
    double before = start;
    kurvo::ForEachBezierSpan(*whole, [&](const kurvo::BezierSpan& span) {
      if (i < 0) {
        EXPECT_EQ(span.start, 3);
        EXPECT_EQ(span.width, 8);
      } else {
        EXPECT_NEAR(span.start, 3 + 2 * (4 + .5 * before), 1e-12);
        EXPECT_NEAR(span.width, c.widths[i] * length, 1e-12);
        before += c.widths[i] * length;
        const Numbers want = ControlPoints(c.curves[i]);
        EXPECT_TRUE(std::equal(want.begin(), want.end(), span.points));
      }
      ++i;
    });
    EXPECT_EQ(i, c.count);
  });
  const auto held = [](const char* text, int degree) {
    return kurvo::CountBezierSpans(*Make(text), degree).has_value();
  };
  EXPECT_TRUE(held("deep 64", 9) && !held("deep 65", 9));
  EXPECT_TRUE(held("b^3", 3) && !held("b^3", 2));
  EXPECT_TRUE(held("B^2", 2) && !held("B^2", 1));
}

}  // namespace
}  // namespace kurvo_test
