// Removal of knots.
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

// A B-spline in long double.
struct LongSpline {
  int order;
  std::vector<Wide> knots;
  std::vector<WidePoint> points;

  explicit LongSpline(const Curve& cv) : order(FreeForm(cv).order) {
    const FreeForm form(cv);
    knots.assign(form.knots, form.knots + order + form.count);
    for (int i = 0; i < form.count; ++i) {
      const double *p = form.point(i), w = form.stride == 4 ? p[3] : 1;
      points.push_back({L(w) * p[0], L(w) * p[1], w});
    }
  }

  // Boehm's insertion as in textbooks: Q_i = a P_i + (1 - a) P_(i-1) for every i.
  void Insert(Wide u) {
    const auto degree = static_cast<std::size_t>(order - 1);
    const auto next = std::upper_bound(knots.begin(), knots.end(), u);
    const auto span = static_cast<std::size_t>(next - knots.begin()) - 1;
    std::vector<WidePoint> inserted(points.begin(), points.begin() + 1);
    for (std::size_t i = 1; i <= points.size(); ++i) {
      const Wide a = i + degree <= span ? 1
                     : i > span         ? 0
                                        : (u - knots[i]) / (knots[i + degree] - knots[i]);
      inserted.push_back(Between(points[i - 1], points[std::min(i, points.size() - 1)], a));
    }
    points = inserted;
    knots.insert(next, u);
  }
  auto Count(double u) const { return std::count(knots.begin(), knots.end(), L(u)); }

  Owned Get(int32_t type) const {
    Numbers flat;
    for (const auto& [x, y, w] : points) {
      flat.insert(flat.end(), {static_cast<double>(x / w), static_cast<double>(y / w)});
      if (IsRational(type)) flat.push_back(static_cast<double>(w));
    }
    return MakeFreeForm(type, flat, Numbers(knots.begin(), knots.end()));
  }
};

Owned Removed(const Curve& cv, double eps = 1e-6) {
  Globals g(eps);
  Owned result(CV_ARC);
  KurvocvBsplRemoveKnots(&cv, result.get(), &g);
  EXPECT_EQ(KurvoErrGet(&g), 0);
  return result;
}

// What has been inserted goes, what was there before stays. The tolerance is tight: next to another
// knot a knot that matters may hardly show at a fifth of the short interval.
TEST(BsplRemoveKnots, UndoesInsertions) {
  Rounds(300, [&](Random& random, int round) {
    const int order = 2 + round % 6;
    const bool unit = round % 3 == 0;
    const Owned source = RandomSplineOver(random, round % 2 == 1, order, unit ? 0 : -2,
                                          unit ? 1 : 7, std::min(2, order - 1));
    LongSpline refined(*source);
    const Numbers own = Knots(*source);
    const auto [start, length] = Domain(*source);
    const double near = length / 17;
    for (int i = 0; i < 6; ++i) {
      const double u = start + length * std::round(random.Uniform(1, 15)) / 16;
      // Two points a fifth away would not see the change at a knot that is next to this one.
      const bool crowded = std::any_of(own.begin(), own.end(),
                                       [=](double knot) { return std::fabs(knot - u) < near; });
      if (refined.Count(u) < order - 1 && !crowded) refined.Insert(u);
    }
    for (int i = order - 1; i < SplineCount(*source); i += 2) {  // and at those that carry a change
      const double u = FreeForm(*source).knots[i];
      if (u > start && refined.Count(u) < order - 1) refined.Insert(u);
    }
    EXPECT_TRUE(IsCurve(*Removed(*refined.Get(source->type), 1e-9), *source, 1e-9))
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
