// Translation, rotation, mirroring and scaling of curves in place.
#include <gtest/gtest.h>

#include <functional>

#include "build/curves.h"

namespace kurvo_test {
namespace {

const char* const kStraightTypes[] = {
    "l 1 2 4 -3",
    "b 3 4",
    "b 0 0 1 2 3 2 7 8",
    "r 0 0 1 1 2 3 3 2 .5 4 9 8",
    "B 0 0 1 2 3 2 5 0 7 9 2 1 4 4 | 0 0 0 .1 .25 .25 .5 1 1 1",
    "B 0 0 1 2 3 2 5 0 7 9 | 0 1 2 3 4 5 6 7 8",
    "R 0 0 1 1 2 3 3 2 4 5 0 2 7 9 1 2 1 9 4 4 5 | 1 2 2 3 4 4 5 5 6 9 9",
    "c .2 .3 .5 (b 0 0 1 2 3 2)(r 0 0 1 1 2 3)(c .4 .6 (b 5 5 1 3)(l 1 2 3 4))",
};
const char* const kArcs[] = {
    "a 1 2 3 .4 1.3",
    "a 1 2 3 .4 -4",
    "c 1 2 (l 4 2 1 2)(a 1 2 3 .4 1.3)",
};
constexpr double kBound = 1e-11;  // coordinates of about 10, times 1e-12

struct LongPoint {
  long double x, y;
};

// A transform, and what it does to a point.
struct Row {
  const char* name;
  bool arcs;  // also turns arcs into arcs
  std::function<void(Curve*, GlobalVar*)> apply;
  std::function<LongPoint(LongPoint)> want;
};

constexpr Point kCentre = {2, -1, 5}, kDelta = {.3, -7, 2}, kAlong = {-3, 4, 0}, kAxis = {0, 0, 1};
constexpr Point kNowhere = {0, 0, 0};
constexpr double kAngle = 2.3, kFactor = .37;

// p moved along kAlong by `factor` times its distance from the line through kCentre across it.
LongPoint Along(LongPoint p, long double factor) {
  const long double k = factor * ((p.x - 2) * -3 + (p.y + 1) * 4) / 25;
  return {p.x - 3 * k, p.y + 4 * k};
}

const Row kRows[] = {
    {"move", true, [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kDelta, g); },
     [](LongPoint p) {
       return LongPoint{p.x + .3, p.y - 7};
     }},
    {"rotate", true, [](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, kAngle, g); },
     [](LongPoint p) {
       const long double c = std::cos(L(kAngle)), s = std::sin(L(kAngle));
       return LongPoint{2 + c * (p.x - 2) - s * (p.y + 1), -1 + s * (p.x - 2) + c * (p.y + 1)};
     }},
    {"mirror", true, [](Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, kAlong, g); },
     [](LongPoint p) { return Along(p, -2); }},
    {"scale", true,
     [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kNowhere, kFactor, g); },
     [](LongPoint p) {
       return LongPoint{2 + L(kFactor) * (p.x - 2), -1 + L(kFactor) * (p.y + 1)};
     }},
    {"scale along a direction", false,
     [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kAlong, kFactor, g); },
     [](LongPoint p) { return Along(p, L(kFactor) - 1); }},
};

void ExpectSamePoints(const Curve& cv, const Curve& source,
                      const std::function<LongPoint(LongPoint)>& want) {
  for (int i = 0; i <= 20; ++i) {
    const Point p = PointAt(source, i / 20.0), q = PointAt(cv, i / 20.0);
    const LongPoint r = want({p[0], p[1]});
    EXPECT_NEAR(q[0], static_cast<double>(r.x), kBound) << "at " << i;
    EXPECT_NEAR(q[1], static_cast<double>(r.y), kBound) << "at " << i;
  }
}

// T1
TEST(Transform, CommutesWithEvaluation) {
  for (const Row& row : kRows) {
    const auto check = [&](const char* text, bool unsigned_normal = false) {
      SCOPED_TRACE(std::string(row.name) + " of " + text);
      const Owned source = Make(text);
      Owned cv = Make(text);
      for (const Owned* arc : std::initializer_list<const Owned*>{&source, &cv}) {
        if (!unsigned_normal) continue;
        double& z = arc->block<KurvoArc>().normal[2];
        if (z > 0) z = 0;  // counter-clockwise all the same
      }
      Globals g;
      row.apply(cv.get(), &g);
      EXPECT_EQ(KurvoErrGet(&g), 0);
      ExpectSamePoints(*cv, *source, row.want);
    };
    for (const char* text : kStraightTypes) check(text);
    if (!row.arcs) continue;
    for (const char* text : kArcs)
      for (const bool unsigned_normal : {false, true}) check(text, unsigned_normal);
  }
}

// T2
TEST(Transform, GroupLaws) {
  using Apply = std::function<void(Curve*, GlobalVar*)>;
  const auto rotate = [](double angle) {
    return [=](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, angle, g); };
  };
  const auto mirror = [](Point normal) {
    return [=](Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, normal, g); };
  };
  const auto scale = [](double s) {
    return [=](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kNowhere, s, g); };
  };
  const Apply nothing = [](Curve*, GlobalVar*) {};
  const double across = 2 * (M_PI / 6 - std::atan2(4, -3));  // twice the angle of the normals
  const struct {
    const char* name;
    Apply first, second, both;
  } rows[] = {
      {"rotations add up", rotate(.7), rotate(1.9), rotate(2.6)},
      {"a turn and back", rotate(.7), rotate(-.7), nothing},
      {"mirrored twice", mirror(kAlong), mirror({-.3, .4, 0}), nothing},
      {"mirrored in two lines", mirror(kAlong), mirror({std::cos(M_PI / 6), .5, 0}),
       rotate(across)},
      {"scalings multiply", scale(.5), scale(3), scale(1.5)},
      {"scaled and back", scale(.3), scale(1 / .3), nothing},
  };
  for (const auto& row : rows) {
    const auto check = [&](const char* text) {
      SCOPED_TRACE(std::string(row.name) + ": " + text);
      Owned cv = Make(text), other = Make(text);
      Globals g;
      row.first(cv.get(), &g);
      row.second(cv.get(), &g);
      row.both(other.get(), &g);
      EXPECT_EQ(KurvoErrGet(&g), 0);
      ExpectSamePoints(*cv, *other, [](LongPoint p) { return p; });
    };
    for (const char* text : kStraightTypes) check(text);
    for (const char* text : kArcs) check(text);
  }
}

// All numbers that place a curve, weights, knots and widths among them.
void AppendNumbers(const Curve& cv, Numbers& to) {
  const auto append = [&](const double* from, int count) {
    to.insert(to.end(), from, from + count);
  };
  if (cv.type == CV_LINE) return append(static_cast<double*>(cv.data), 6);
  if (cv.type == CV_ARC) return append(static_cast<double*>(cv.data), 13);
  if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<KurvoSegcv*>(cv.data);
    for (int i = 0; i < block.count; ++i)
      if (block.curves[i].data) AppendNumbers(block.curves[i], to);
    return append(block.widths, block.count);
  }
  const FreeForm form(cv);
  const bool spline = cv.type == CV_BSPLINE || cv.type == CV_RBSPLINE;
  const int count = spline ? SplineCount(cv) : form.order;
  append(form.points, count * form.stride);
  if (spline) append(form.knots, count + form.order);
}
Numbers NumbersOf(const Curve& cv) {
  Numbers numbers;
  AppendNumbers(cv, numbers);
  return numbers;
}

TEST(Transform, ThereAndBackByPowersOfTwoIsExact) {
  const Point delta = {4, -.5, 8}, back = {-4, .5, -8}, origin = {0, 0, 0};
  const auto check = [&](const char* text) {
    const Owned source = Make(text);
    Owned cv = Make(text);
    Globals g;
    KurvocvMove(cv.get(), delta, &g);
    EXPECT_NE(NumbersOf(*cv), NumbersOf(*source)) << text;
    KurvocvMove(cv.get(), back, &g);
    EXPECT_EQ(NumbersOf(*cv), NumbersOf(*source)) << text;
    KurvocvScale(cv.get(), origin, origin, 4, &g);
    KurvocvScale(cv.get(), origin, origin, .25, &g);
    KurvocvMirror(cv.get(), origin, Point{0, 1, 0}, &g);
    KurvocvMirror(cv.get(), origin, Point{0, -3, 0}, &g);
    EXPECT_EQ(NumbersOf(*cv), NumbersOf(*source)) << text;
  };
  for (const char* text : kStraightTypes) check(text);
  check("c 1 (c 2 3 (a 1 2 3 0 0)(l 1 2 3 4))");
}

TEST(Transform, Arcs) {
  Owned arc = Make("a 0 0 1 0 1.5707963267948966");
  auto& block = arc.block<KurvoArc>();
  Globals g;
  KurvocvMove(arc.get(), Point{1, 2, 3}, &g);
  EXPECT_EQ(block.radius, 1);
  EXPECT_EQ(Point({block.centre[0], block.centre[1], block.centre[2]}), (Point{1, 2, 3}));
  EXPECT_EQ(Point({block.start[0], block.start[1], block.start[2]}), (Point{2, 2, 3}));

  KurvocvMirror(arc.get(), Point{0, 0, 0}, Point{0, 1, 0}, &g);
  EXPECT_EQ(block.normal[2], -1);
  EXPECT_EQ(block.end[1], -3);
  EXPECT_EQ(block.end[2], 0);

  block.radius = 17;  // measured again, not multiplied
  KurvocvScale(arc.get(), Point{0, 0, 0}, Point{0, 0, 0}, 2, &g);
  EXPECT_EQ(block.radius, 2);
  EXPECT_EQ(block.normal[2], -1);

  const Numbers before = NumbersOf(*arc);
  KurvocvScale(arc.get(), Point{0, 0, 0}, Point{1, 0, 0}, 2, &g);
  EXPECT_EQ(NumbersOf(*arc), before);

  KurvocvRotate(arc.get(), Point{0, 0, 0}, Point{1, 0, 0}, M_PI, &g);  // the plane turned over
  EXPECT_EQ(block.radius, 2);
  EXPECT_EQ(block.normal[2], -1);
  EXPECT_EQ(KurvoErrGet(&g), 0);
}

TEST(Transform, TheThirdCoordinate) {
  const struct {
    const char* name;
    std::function<void(Curve*, GlobalVar*)> apply;
    double z;
  } rows[] = {
      {"move",
       [](Curve* cv, GlobalVar* g) {
         KurvocvMove(cv, Point{0, 0, 2}, g);
       },
       7},
      {"rotate", [](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, 1, g); }, 5},
      {"mirror", [](Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, kAlong, g); }, 0},
      {"scale", [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kNowhere, 2, g); }, 0},
      {"along", [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kAlong, 2, g); }, 0},
  };
  for (const auto& row : rows) {
    for (const char* text : {"b 0 0 1 1 2 0", "R 1 2 3 4 5 6 | 0 0 1 1"}) {
      Owned cv = Make(text);
      const FreeForm form(*cv);
      form.points[form.stride + 2] = 5;
      const double weight = form.points[3];
      Globals g;
      row.apply(cv.get(), &g);
      EXPECT_NEAR(form.points[form.stride + 2], row.z, 1e-15) << row.name;
      EXPECT_TRUE(form.stride == 3 || form.points[3] == weight) << row.name;
    }
  }
}

using Transform = void (*)(Curve*, GlobalVar*);
const struct {
  const char* name;
  Transform apply;
  int unknown_type;
} kTransforms[] = {
    {"move", [](Curve* cv, GlobalVar* g) { KurvocvMove(cv, kDelta, g); }, KURVO_ERR_CURVE},
    {"rotate", [](Curve* cv, GlobalVar* g) { KurvocvRotate(cv, kCentre, kAxis, 1, g); },
     KURVO_ERR_ROTATED_TYPE},
    {"mirror", [](Curve* cv, GlobalVar* g) { KurvocvMirror(cv, kCentre, kAlong, g); },
     KURVO_ERR_CURVE},
    {"scale", [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kNowhere, 2, g); },
     KURVO_ERR_CURVE},
    {"along", [](Curve* cv, GlobalVar* g) { KurvocvScale(cv, kCentre, kAlong, 2, g); },
     KURVO_ERR_CURVE},
};

TEST(Transform, StopsAtTheFirstPieceThatFails) {
  for (const auto& row : kTransforms) {
    Owned cv = Make("c 1 1 1 1 (l 1 2 3 4)(e)(l 5 6 7 8)(l 9 8 7 6)");
    const auto& block = cv.block<KurvoSegcv>();
    const auto start = [&](int i) { return static_cast<KurvoLine*>(block.curves[i].data)->start; };
    block.curves[2].type = 112;
    Globals g;
    row.apply(cv.get(), &g);
    EXPECT_EQ(KurvoErrGet(&g), row.unknown_type) << row.name;
    EXPECT_NE(start(0)[1], 2) << row.name;
    EXPECT_EQ(start(2)[0], 5) << row.name;
    EXPECT_EQ(start(3)[0], 9) << row.name;
    EXPECT_EQ(block.curves[1].data, nullptr);
    block.curves[2].type = CV_LINE;
  }
}

TEST(Transform, TakesVectorsFromTheCurveItself) {
  void (*const transforms[])(Curve*, const double* v, GlobalVar*) = {
      [](Curve* cv, const double* v, GlobalVar* g) { KurvocvMove(cv, v, g); },
      [](Curve* cv, const double* v, GlobalVar* g) { KurvocvRotate(cv, v, v, 1, g); },
      [](Curve* cv, const double* v, GlobalVar* g) { KurvocvMirror(cv, v, v, g); },
      [](Curve* cv, const double* v, GlobalVar* g) { KurvocvScale(cv, v, v, 2, g); },
  };
  for (const auto transform : transforms) {
    for (int i = 0; i < 3; ++i) {
      Owned cv = Make("b 1 2 3 5 -2 4"), apart = Make("b 1 2 3 5 -2 4");
      const double* own = cv.block<KurvoBezier>().points[i];
      const Point v = {own[0], own[1], own[2]};
      Globals g;
      transform(cv.get(), own, &g);
      transform(apart.get(), v, &g);
      EXPECT_EQ(NumbersOf(*cv), NumbersOf(*apart)) << (&transform - transforms) << " " << i;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
