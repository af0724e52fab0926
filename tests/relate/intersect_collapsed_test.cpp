// Intersections of curves that are collapsed to a point.
#include "relate/cases.h"

namespace kurvo_test {
namespace {

TEST(IntersectCollapsed, MeetsACurveThatPassesThroughIt) {
  const struct {
    const char* name;
    std::string point, curve;
    std::vector<Hit> hits;
  } rows[] = {
      // clang-format off
      {"line on a line", "l 1 1 1 1", "l 0 0 4 4", {{0, .25}}},
      {"line off a line", "l 1 1.1 1 1.1", "l 0 0 4 4", {}},
      {"line shorter than epsilon", "l 1 1 1.0000005 1", "l 0 0 4 4", {{0, .25}}},
      {"Bezier on an arc", "b 0 1 0 1 0 1", "a 0 0 1 0 2", {{0, kPi / 4}}},
      {"full circle, a point to intersection", Text("a 1 0 1 0", {2 * kPi}), "l 2 -1 2 1", {{0, .5}}},
      {"rational Bezier on a Bezier", "r 1 .5 1 1 .5 3", "b 0 0 1 1 2 0", {{0, .5}}},
      {"B-spline on a B-spline", "B 2 0 2 0 2 0 | 2 2 2 5 5 5", "B 2 -1 2 0 2 1 | 0 0 0 1 1 1", {{2, .5}}},
      {"composite on a composite", "c 1 2 (b 1 1 1 1)(b 1 1 1 1)", "c 2 2 (b 0 0 0 1)(b 0 1 4 1)", {{0, 2.5}}},
      {"composite off a composite", "c 1 2 (b 1 1 1 1)(b 1 1 1 1)", "c 2 2 (b 0 0 0 1)(b 0 2 4 2)", {}},
      {"two at one place", "l 1 1 1 1", "b 1 1 1 1", {}},
      // degrees without a polynomial of foot points
      {"on a Bezier of degree 21", "l 7 0 7 0", Even('b', 21), {{0, 1 / 3.}}},
      {"on a Bezier of degree 39", "l 39 0 39 0", Even('b', 39), {{0, 1}}},
      {"off a Bezier of degree 21", "l 7 1e-5 7 1e-5", Even('b', 21), {}},
      {"on a rational Bezier of degree 14", "a 7 1 1 -1.57079632679489662 0", Even('r', 14), {{0, .5}}},
      {"on a B-spline of order 26", "b 5 0 5 0", Even('B', 25), {{0, .2}}},
      {"on a rational B-spline of order 15", "l 7 0 7 0", Even('R', 14), {{0, .5}}},
      {"on a composite", "l 7 0 7 0", "c 1 1 (b 0 1 0 0)(" + Even('b', 21) + ")", {{0, 1 + 1 / 3.}}},
      // clang-format on
  };
  for (const auto& row : rows) {
    const Owned point = Make(row.point), curve = Make(row.curve);
    for (int mode = 0; mode < 8; ++mode) {
      Globals g;
      const Answer got = mode % 2 == 0 ? Intersect(*point, *curve, mode / 2, g)
                                       : Intersect(*curve, *point, mode / 2, g);
      ASSERT_EQ(got.hits.size(), row.hits.size()) << row.name << ", mode " << mode / 2;
      EXPECT_EQ(got.result, static_cast<uint32_t>(row.hits.empty() ? KURVO_NOTHING : KURVO_FOUND))
          << row.name;
      for (const Hit& hit : got.hits) {
        EXPECT_EQ(mode % 2 == 0 ? hit.a : hit.b, row.hits[0].a) << row.name;
        EXPECT_NEAR(mode % 2 == 0 ? hit.b : hit.a, row.hits[0].b, 1e-9) << row.name;
      }
    }
  }
}

}  // namespace
}  // namespace kurvo_test
