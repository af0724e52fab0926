// Conversion between the seven types.
#include "support/curve_text.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

constexpr double kAnother = kInfinity;  // the result is known to be another curve
constexpr double kPi = M_PI;

// 0.70710678118654752 is the weight of a quarter circle.
const std::string kQuarter = "1 0 1 1 1 .70710678118654752 0 1 1";
const std::string kOtherQuarter = "0 1 1 -1 1 .70710678118654752 -1 0 1";
const std::string kHalf = kQuarter + " -1 1 .70710678118654752 -1 0 1";

// What each curve becomes: letters of kAllTypes in order, '.' for a refusal, and how far it may be
// off.
// clang-format off
const struct {
  const char* name;
  std::string curve;
  const char* allowed;
  double off = 1e-13;
} kRows[] = {
    {"line", "l 1 2 4 -3", "l.brBRc"},
    {"arc", "a 1 2 3 .4 1.3", ".a.r.Rc"},
    {"clockwise arc", "a 1 2 3 .4 -1.3", ".a.r.Rc"},
    {"Bezier", "b 0 0 1 2 3 2 4 0", "..brBRc"},
    {"straight Bezier", "b 0 0 1 2 3 6", "l.brBRc"},
    {"Bezier of degree 0", "b 3 4", "l.brBRc"},
    {"rational Bezier", "r 0 0 1 1 2 3 3 2 .5", "...r.Rc"},
    {"straight rational Bezier", "r 0 0 1 1 2 3 3 6 1", "l..r.Rc"},
    {"quarter circle", "r " + kQuarter, ".a.r.Rc"},
    {"clockwise quarter", "r 0 3 1 3 3 .70710678118654752 3 0 1", ".a.r.Rc"},
    {"half circle as a cubic", "r 3 0 3 3 6 1 -3 6 1 -3 0 3", ".a.r.Rc"},
    {"full circle", "R " + kHalf + " -1 -1 .70710678118654752 0 -1 1 1 -1 .70710678118654752 1 0 1 | 0 0 0 1 1 2 2 3 3 4 4 4", ".....Rc"},
    {"straight, points off it by rounding", "r .1 .2 1 .37 .74 2 .7 1.4 .5 1.3 2.6 1", "l..r.Rc"},
    {"weights 1", "r 0 0 1 1 2 1 3 2 1", "..brBRc"},
    {"weights 2", "r 0 0 2 1 2 2 3 2 2", "..br.Rc"},
    {"weights that round to 1", "r 0 0 1.0000004 1 2 .9999996 3 2 1", "...rBRc", 1e-6},
    {"a weight that does not", "r 0 0 1 1 2 1.0000006 3 2 1", "...r.Rc", 1e-6},
    {"B-spline", "B 0 0 1 2 3 2 5 0 | 0 0 0 .5 1 1 1", "....BRc"},
    {"B-spline of one span", "B 0 0 1 2 3 2 | 2 2 2 5 5 5", "..brBRc"},
    {"unclamped span", "B 0 0 1 2 3 2 | 0 1 2 5 6 7", "....BRc"},
    {"straight B-spline", "B 0 0 1 2 3 6 | 0 0 1 3 3", "l...BRc"},
    {"rational B-spline", "R 0 0 2 1 2 3 3 2 4 | 2 2 2 5 5 5", "...r.Rc"},
    {"rational B-spline, weights 2", "R 0 0 2 1 2 2 3 2 2 | 2 2 2 5 5 5", "..br.Rc"},
    {"rational B-spline of two spans", "R 0 0 2 1 2 2 3 2 2 5 1 2 | 0 0 0 .5 1 1 1", ".....Rc"},
    {"a knot too many at the end", "B 0 0 1 2 3 2 | 0 0 1 1 1", "....BRc", kAnother},
    {"half circle on [2, 5]", "R " + kHalf + " | 2 2 2 3 3 5 5 5", ".a...Rc"},
    {"first weights 1", "R 0 0 1 1 2 1 3 2 1 5 0 9 | 0 0 0 .5 1 1 1", "....BRc", kAnother},
    {"one Bezier", "c 2 (b 0 0 1 2 3 2)", "...rBRc"},
    {"one rational Bezier", "c 2 (r 0 0 2 1 2 2 3 2 2)", "..br.Rc"},
    {"one line", "c 1 (l 0 0 1 2)", "l.....c"},
    {"three Beziers", "c 1 2 5 (b 0 0 1 2 3 2)(b 3 2 4 2 4 4)(b 4 4 0 4 0 1)", "....BRc"},
    {"unequal weights at joints", "c 1 2 1 (r 0 0 2 1 2 1 3 2 3)(b 3 2 4 2 4 4)(r 4 4 -2 0 4 -5 0 1 -1)", ".....Rc"},
    {"weight 0 at a joint", "c 1 1 (r 0 0 1 1 2 0)(r 1 2 1 3 0 1)", "......c", kAnother},
    {"two degrees", "c 1 1 (b 0 0 1 2)(b 1 2 2 2 3 0)", "......c"},
    {"no width", "c 0 0 (b 0 0 1 2)(b 1 2 3 0)", "......c", kAnother},
    {"two quarters", "c .5 3 (r " + kQuarter + ")(r " + kOtherQuarter + ")", ".a...Rc"},
    {"two circles", "c 1 1 (r " + kQuarter + ")(r 0 1 1 -2 1 .70710678118654752 -2 -1 1)", ".....Rc"},
    {"a circle shifted in x", "c 1 1 (r " + kQuarter + ")(r .0002 1 1 -.9998 1 .70710678118654752 -.9998 0 1)", ".....Rc", kAnother},
    {"a circle shifted in y", "c 1 1 (r " + kQuarter + ")(r 0 .9998 1 -1 .9998 .70710678118654752 -1 -.0002 1)", ".....Rc", kAnother},
    {"a larger circle", "c 1 1 (r " + kQuarter + ")(r 0 1.0002 1 -1.0002 1.0002 .70710678118654752 -1.0002 0 1)", ".....Rc", kAnother},
    {"nearly the same circle", "c 1 1 (r " + kQuarter + ")(r 0 1.00009 1 -1.00009 1.00009 .70710678118654752 -1.00009 0 1)", ".a...Rc", kAnother},
    {"circle and straight", "c 1 1 (r " + kQuarter + ")(r 0 1 1 0 2 1 0 3 1)", ".....Rc"},
    {"Bezier and bent arc, taken for straight", "c 1 1 (b 0 0 1 2)(a 1 1 1 1.5 1)", "l.....c", kAnother},
    {"no pieces", "c", "......c", kAnother},
};
// clang-format on

// Equal at all fractions of the domains, of arcs and straight curves at other parameters.
void ExpectSamePoints(const Curve& source, const Curve& target, double off) {
  for (int i = 0; i <= 90; ++i) {
    const Point from = PointAt(source, i / 90.0), to = PointAt(target, i / 90.0);
    const bool moved = target.type == CV_LINE || target.type == CV_ARC;
    if (i % 90 == 0 || !(moved || source.type == CV_ARC)) {
      ASSERT_LE(KurvoclDistPoint(from, to), off) << "at " << i;
    }
    if (source.type != CV_ARC && !moved) continue;
    Globals g(1e-4);  // arcs are recognised that far off
    double t;
    ASSERT_EQ(source.type == CV_ARC ? KurvocvParameter(&source, to, &t, &g)
                                    : KurvocvParameter(&target, from, &t, &g),
              KURVO_ON_CURVE);
  }
}

// The result, of type 0 when it is refused.
Owned Converted(const Curve& source, int32_t type, double eps = 1e-6) {
  Owned target(type);
  Globals g(eps);
  g.error = KURVO_WARN_SHORT_VECTOR;
  const uint32_t done = KurvocvConvert(&source, target.get(), &g);
  EXPECT_EQ(target->type, done ? type : 0);
  EXPECT_EQ(target->data != nullptr, done == KURVO_CONVERTED);
  EXPECT_EQ(KurvoErrGet(&g), KURVO_WARN_SHORT_VECTOR);
  return target;
}

TEST(Convert, Table) {
  for (const auto& row : kRows) {
    const Owned source = Make(row.curve);
    std::string allowed;
    for (const int32_t type : kAllTypes) {
      SCOPED_TRACE(std::string(row.name) + " to " + std::to_string(type));
      const Owned target = Converted(*source, type);
      allowed += target->data ? "labrBRc"[allowed.size()] : '.';
      if (target->data && row.off != kAnother) ExpectSamePoints(*source, *target, row.off);
    }
    EXPECT_EQ(allowed, row.allowed) << row.name;
  }
}

TEST(Convert, ArcToRationalQuadratic) {
  for (const double sweep : {1e-9, 1e-4, kPi / 2, kPi - .1, kPi - 1e-5, kPi - 1e-8, kPi + 1e-5,
                             2 * kPi - 2e-4, -1.0, -4.0}) {
    for (const double r : {.01, 1.0, 1e6}) {
      SCOPED_TRACE("sweep " + std::to_string(sweep) + ", radius " + std::to_string(r));
      const Point centre = {r / 2, -r, 0};
      const Owned target = Converted(*Arc(centre[0], centre[1], r, -2.5, sweep), CV_RBEZIER);
      ASSERT_TRUE(target->data);
      EXPECT_NEAR(FreeForm(*target).points[7], std::fabs(std::cos(sweep / 2)), 1e-14);
      EXPECT_GE(FreeForm(*target).points[7], 0);
      for (int i = 0; i <= 20; ++i)
        EXPECT_NEAR(KurvoclDistPoint(PointAt(*target, i / 20.0), centre), r, 1e-14 * r);
      // The middle lies on the shorter way round, also for an arc that takes the longer one.
      const double middle = -2.5 + sweep / 2 + (std::fabs(sweep) > kPi ? kPi : 0);
      const Point p = {centre[0] + r * std::cos(middle), centre[1] + r * std::sin(middle), 0};
      EXPECT_LE(KurvoclDistPoint(PointAt(*target, .5), p), 1e-14 * r);
    }
  }
}

// Stored ends off the circle: the middle point is where their tangents cross.
TEST(Convert, TakesTheTangentsOfEndsOffTheCircle) {
  for (const double sweep : {.01, 1.0, 2.0}) {
    const Owned arc = Arc(0, 0, 1, 0, sweep);
    arc.block<KurvoArc>().start[0] = 1.1;
    const Owned target = Converted(*arc, CV_RBEZIER);
    ASSERT_TRUE(target->data);
    const double* middle = FreeForm(*target).point(1);
    EXPECT_NEAR(middle[0], 1.1, 1e-14 / sweep) << sweep;
    EXPECT_NEAR(middle[1], (1 - 1.1 * std::cos(sweep)) / std::sin(sweep), 1e-14 / sweep) << sweep;
    EXPECT_NEAR(middle[3], std::cos(sweep / 2), 1e-15) << sweep;
  }
}

// Half and full circles have tangents that do not cross; those of a determinant above 1e-12 radii
// squared do, however far away.
TEST(Convert, RefusesHalfAndFullCircles) {
  for (const double sweep : {kPi, -kPi, kPi - 5e-13, 2 * kPi, 2 * kPi - 5e-5, -5e-5})
    for (const double from : {0.0, 1.0, -2.5})
      EXPECT_FALSE(Converted(*Arc(3, 4, 5, from, sweep), CV_SEGCV)->data) << sweep;
  for (const double sweep : {kPi - 4e-12, -kPi + 4e-12})
    EXPECT_TRUE(Converted(*Arc(3, 4, 5, 1, sweep), CV_RBEZIER)->data) << sweep;
}

// A polygon whose corners are what is looked at: the tolerance does not grow with the radius.
TEST(Convert, RecognisesArcsWithinAnAbsoluteTolerance) {
  for (const double r : {1.0, 1000.0}) {
    for (const double off : {.99e-4, 1.01e-4, -.99e-4, -1.01e-4}) {
      Numbers points, knots = {2};
      for (int i = 0; i <= 10; ++i) {
        const double d = r + (i == 3 ? off : 0);
        points.insert(points.end(), {d * std::cos(.4 * i), d * std::sin(.4 * i), 1});
        knots.push_back(2 + .3 * i);
      }
      knots.push_back(5);
      const Owned target = Converted(*MakeFreeForm(CV_RBSPLINE, points, knots), CV_ARC, 1e-9);
      EXPECT_EQ(target->data != nullptr, std::fabs(off) < 1e-4) << off << " off a radius of " << r;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
