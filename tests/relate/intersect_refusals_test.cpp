// Intersections of what is collapsed, missing, broken or out of proportion.
#include <limits>

#include "relate/cases.h"

namespace kurvo_test {
namespace {

const char* const kSound[] = {
    "l -1 .3 2 .7",
    "a .5 .5 .6 -1 4",
    "b 0 0 2 3 -1 2 1 0",
    "r 0 0 1 2 3 .5 -1 2 2 1 0 1",
    "B 0 1 1 0 2 2 0 2 -1 0 1 1 | 2 2 2 3 4 4 5 5 5",
    "R 0 1 1 1 0 2 2 2 .5 0 2 1 -1 0 3 1 1 1 | 2 2 2 3 4 4 5 5 5",
    "c 1 2 (b 0 0 2 3 1 0)(r 1 0 1 0 2 .5 2 2 1)",
};

// Puts `number` in the place of a curve's number `at`, counted through points, weights, knots and
// widths; false when there are not so many.
bool Replace(Curve& cv, std::size_t at, double number) {
  const auto put = [&](double* from, std::size_t count) {
    if (at < count) from[at] = number;
    const bool done = at < count;
    at -= count;
    return done;
  };
  if (cv.type == CV_LINE) return put(static_cast<KurvoLine*>(cv.data)->start, 6);
  if (cv.type == CV_ARC) return put(&static_cast<KurvoArc*>(cv.data)->radius, 13);
  if (cv.type == CV_SEGCV) {
    auto& block = *static_cast<KurvoSegcv*>(cv.data);
    if (put(block.widths, static_cast<std::size_t>(block.count))) return true;
    return Replace(block.curves[0], at, number);
  }
  const FreeForm form(cv);
  const bool spline = cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE;
  const int count = spline ? SplineCount(cv) : form.order;
  if (put(form.points, static_cast<std::size_t>(count * form.stride))) return true;
  return spline && put(form.knots, static_cast<std::size_t>(count + form.order));
}

// From (0, 0) to (n, 0) at even speed, of degree n; all weights are 2.
std::string Even(char letter, int n) {
  std::string text(1, letter), knots = " |";
  for (int i = 0; i <= n; ++i)
    text += Text("", {1. * i, 0}) + (letter == 'r' || letter == 'R' ? " 2" : "");
  for (int i = 0; i <= 2 * n + 1; ++i) knots += i <= n ? " 0" : " 1";
  return letter == 'b' || letter == 'r' ? text : text + knots;
}

TEST(IntersectCollapsed, MeetsACurveThatPassesThroughIt) {
  const struct {
    const char* name;
    std::string point;
    std::string curve;
    std::vector<Hit> hits;
  } rows[] = {
      {"line on a line", "l 1 1 1 1", "l 0 0 4 4", {{0, .25}}},
      {"line off a line", "l 1 1.1 1 1.1", "l 0 0 4 4", {}},
      {"line shorter than epsilon", "l 1 1 1.0000005 1", "l 0 0 4 4", {{0, .25}}},
      {"Bezier on an arc", "b 0 1 0 1 0 1", "a 0 0 1 0 2", {{0, kPi / 4}}},
      {"full circle, a point to intersection",
       Text("a 1 0 1 0", {2 * kPi}),
       "l 2 -1 2 1",
       {{0, .5}}},
      {"rational Bezier on a Bezier", "r 1 .5 1 1 .5 3", "b 0 0 1 1 2 0", {{0, .5}}},
      {"B-spline on a B-spline",
       "B 2 0 2 0 2 0 | 2 2 2 5 5 5",
       "B 2 -1 2 0 2 1 | 0 0 0 1 1 1",
       {{2, .5}}},
      {"composite on a composite",
       "c 1 2 (b 1 1 1 1)(b 1 1 1 1)",
       "c 2 2 (b 0 0 0 1)(b 0 1 4 1)",
       {{0, 2.5}}},
      {"composite off a composite",
       "c 1 2 (b 1 1 1 1)(b 1 1 1 1)",
       "c 2 2 (b 0 0 0 1)(b 0 2 4 2)",
       {}},
      {"two at one place", "l 1 1 1 1", "b 1 1 1 1", {}},
      // degrees without a polynomial of foot points
      {"on a Bezier of degree 21", "l 7 0 7 0", Even('b', 21), {{0, 1 / 3.}}},
      {"on a Bezier of degree 39", "l 39 0 39 0", Even('b', 39), {{0, 1}}},
      {"off a Bezier of degree 21", "l 7 1e-5 7 1e-5", Even('b', 21), {}},
      {"on a rational Bezier of degree 14",
       "a 7 1 1 -1.57079632679489662 0",
       Even('r', 14),
       {{0, .5}}},
      {"on a B-spline of order 26", "b 5 0 5 0", Even('B', 25), {{0, .2}}},
      {"on a rational B-spline of order 15", "l 7 0 7 0", Even('R', 14), {{0, .5}}},
      {"on a composite",
       "l 7 0 7 0",
       "c 1 1 (b 0 1 0 0)(" + Even('b', 21) + ")",
       {{0, 1 + 1 / 3.}}},
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

// The highest degrees that work, and the next ones.
TEST(IntersectRefuses, DegreesThatAreTooHigh) {
  const struct {
    const char* other;
    int highest;
  } rows[] = {{"l -1 .1 4 .3", 39}, {"a 2 0 1 -2 4", 19}, {"b 0 1 2 -2 4 1", 63}};
  for (const auto& row : rows) {
    for (const int degree : {row.highest, row.highest + 1}) {
      for (const char kind : {'b', 'r', 'B', 'R'}) {
        const bool rational = kind == 'r' || kind == 'R';
        Numbers points, knots;
        for (int i = 0; i <= degree; ++i) {
          points.insert(points.end(), {4.0 * i / degree, std::sin(i)});
          if (rational) points.push_back(1 + .5 * std::cos(i));
        }
        for (int i = 0; i < 2 * degree + 2; ++i) knots.push_back(i <= degree ? 0 : 1);
        const std::string text = Text({kind}, points);
        const Owned curve = Make(kind == 'B' || kind == 'R' ? Text(text + " |", knots) : text);
        const Owned other = Make(row.other);
        Globals g;
        const Answer got = Intersect(*curve, *other, 3, g);
        const bool works = degree == row.highest;
        EXPECT_EQ(got.result, static_cast<uint32_t>(works ? KURVO_FOUND : KURVO_NOTHING))
            << kind << degree;
        EXPECT_EQ(KurvoErrGet(&g), works ? 0 : KURVO_ERR_CURVE) << kind << degree;
        const WideCurve on_a = Pieces(*other);
        for (const Hit& hit : got.hits) {
          Point p;
          KurvocvPosition(curve.get(), hit.a, p, &g);
          const WideJet q = on_a[0](hit.b);
          EXPECT_LE(std::hypot(q.x - p[0], q.y - p[1]), 1e-6) << kind << degree;
        }
      }
    }
  }
}

// Numbers that make no curve: some result, finite parameters, in time.
TEST(IntersectSurvives, AnyNumbers) {
  constexpr double kMax = std::numeric_limits<double>::max();
  constexpr double kTiny = std::numeric_limits<double>::denorm_min();
  const double numbers[] = {kNaN, kInfinity, -kInfinity, kMax, 1e300,
                            1e15, -1e15,     kTiny,      0.0,  -1.0};
  for (const char* text : kSound) {
    const std::string description = text;
    for (const double number : numbers) {
      for (std::size_t at = 0; at < 40; ++at) {
        Owned broken = Make(description);
        if (!Replace(*broken.get(), at, number)) break;
        for (const char* other : kSound) {
          const Owned sound = Make(other);
          Globals g;
          const Answer got = at % 2 == 0 ? Intersect(*broken, *sound, at % 4 < 2 ? 3 : 0, g)
                                         : Intersect(*sound, *broken, at % 4 < 2 ? 3 : 0, g);
          EXPECT_TRUE(got.result == KURVO_FOUND || got.result == KURVO_OVERLAP ||
                      got.result == KURVO_NOTHING)
              << text << " number " << at << " is " << number;
          for (const Hit& hit : got.hits)
            EXPECT_TRUE(std::isfinite(hit.a) && std::isfinite(hit.b))
                << text << " number " << at << " is " << number;
        }
      }
    }
  }
}

TEST(IntersectSurvives, AnyKnots) {
  const char* const knots[] = {"2 2 2 5 4 4 3 5 5", "5 5 5 4 4 3 2 2 2", "2 2 2 2 2 2 2 2 2",
                               "0 0 0 1 1 1 2 2 2", "1 2 3 3 3 3 3 4 5"};
  for (const char* list : knots) {
    const Owned a = Make(std::string("B 0 1 1 0 2 2 0 2 -1 0 1 1 | ") + list);
    const Owned b = Make(std::string("R 0 1 1 1 0 2 2 2 .5 0 2 1 -1 0 3 1 1 1 | ") + list);
    for (const char* other : kSound) {
      Globals g;
      Intersect(*a, *Make(other), 3, g);
      Intersect(*Make(other), *b, 3, g);
    }
  }
}

// Two curves of 1e15 and more, and what is far larger than the tolerance can tell apart.
TEST(IntersectSurvives, AnySize) {
  for (const double size : {1e-300, 1e-12, 1e-7, 1e9, 1e15, 1e100, 1e300}) {
    for (const char* text : kSound) {
      for (const char* other : kSound) {
        Owned a = Make(text), b = Make(other);
        Apply({0, 0, 0, size}, *a.get());
        Apply({0, 0, 0, size}, *b.get());
        Globals g;
        for (const Hit& hit : Intersect(*a, *b, 3, g).hits)
          EXPECT_TRUE(std::isfinite(hit.a) && std::isfinite(hit.b)) << text << '\n'
                                                                    << other << '\n'
                                                                    << size;
      }
    }
  }
}

}  // namespace
}  // namespace kurvo_test
