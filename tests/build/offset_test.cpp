// Offsets: at the distance where it is below the radius of curvature; ends where there is no true
// offset.
#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {
namespace {

constexpr Point kUp{0, 0, 1}, kDown{0, 0, -1};

// An offset that frees itself; no error may come of it.
class Offset {
 public:
  Offset(const Curve& cv, double distance, double tolerance, const Point& normal = kUp) {
    Globals g;
    KurvocvOffsetCurve(&cv, normal, distance, tolerance, seq_.get(), &g);
    EXPECT_EQ(KurvoErrGet(&g) & ~KURVO_WARN_SHORT_VECTOR, 0);
  }
  int size() const { return seq_.count(); }
  const Curve& operator[](int i) const { return seq_[i]; }

 private:
  Chain seq_;
};

using Polyline = std::vector<XY>;

void AddSamples(const Curve& cv, int count, Polyline& line) {
  const Oracle exact(cv);
  for (int i = 0; i <= count; ++i) {
    const LongPoint p = exact.PointAt(std::lerp(exact.start(), exact.end(), L(i) / count));
    line.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  }
}

double Nearest(const Polyline& line, XY p) {
  double best = kInfinity;  // squared
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const XY a{line[i].x - p.x, line[i].y - p.y};
    const XY d{line[i + 1].x - line[i].x, line[i + 1].y - line[i].y};
    const double square = d.x * d.x + d.y * d.y;
    const double s = square > 0 ? std::clamp(-(a.x * d.x + a.y * d.y) / square, 0., 1.) : 0;
    const XY foot{a.x + s * d.x, a.y + s * d.y};
    best = std::min(best, foot.x * foot.x + foot.y * foot.y);
  }
  return std::sqrt(best);
}

// The points of all pieces.
Polyline Samples(const Offset& pieces) {
  Polyline line;
  for (int i = 0; i < pieces.size(); ++i)
    AddSamples(pieces[i], std::max(5, 600 / pieces.size()), line);
  return line;
}

double LargestJump(const Offset& pieces) {
  double jump = 0;
  for (int i = 0; i + 1 < pieces.size(); ++i)
    jump = std::max(jump, Distance(Oracle(pieces[i]).PointAt(1), Oracle(pieces[i + 1]).PointAt(0)));
  return jump;
}

constexpr int kChords = 1500;

// Every point of the pieces is at the distance, and every point at the distance, on the side that
// it calls for, is on the pieces.
void ExpectAtDistance(const Curve& cv, const Offset& pieces, double distance, double tolerance) {
  Polyline source;
  AddSamples(cv, kChords, source);
  const Polyline result = Samples(pieces);
  const double slack = 2 * tolerance + 2e-5;  // of the chords
  for (const XY& p : result) ASSERT_LE(std::fabs(Nearest(source, p) - std::fabs(distance)), slack);
  for (std::size_t i = 50; i + 1 < source.size(); i += 100) {
    const XY a = source[i - 1], b = source[i + 1];
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const XY p{source[i].x - distance * (b.y - a.y) / length,
               source[i].y + distance * (b.x - a.x) / length};
    ASSERT_LE(Nearest(result, p), slack + 1e-4) << "missing at chord " << i;
  }
}

TEST(OffsetCurve, IsAtTheDistance) {
  Numbers arch = {};
  for (int i = 0; i <= 38; ++i)
    arch.insert(arch.end(), {.3 * i, 6 * std::sin(static_cast<double>(kPiL) * i / 38)});
  // clang-format off
  const struct {
    const char* name;
    std::string curve;
    double distance;  // below the radius of curvature, to either side
    int32_t type = CV_BEZIER;
    int degree;
  } rows[] = {
      {"quadratic", "b 0 0 4 6 9 0", 1, CV_BEZIER, 3},
      {"cubic", "b 0 0 1 5 8 5 9 0", 1, CV_BEZIER, 4},
      {"S", "b 0 0 5 6 4 -6 9 0", .8, CV_BEZIER, 4},
      {"zero first handle", "b 0 0 0 0 6 5 9 0", .5, CV_BEZIER, 4},
      {"zero last handle", "b 0 0 3 5 9 0 9 0", .5, CV_BEZIER, 4},
      {"both handles zero", "b 0 0 0 0 9 3 9 3", 1, CV_BEZIER, 4},
      {"handle shorter than epsilon", "b 0 0 1e-7 -3e-7 6 5 9 0", .5, CV_BEZIER, 4},
      {"double inner point", "b 0 0 3 4 3 4 7 4 9 0", .5, CV_BEZIER, 5},
      {"degree 8", "b 0 0 1 3 2 5 3 6 4 6 5 6 6 5 7 3 9 0", 1, CV_BEZIER, 9},
      {"degree 38", Text("b", arch), 1, CV_BEZIER, 39},
      {"quarter circle", "r 5 0 1 5 5 .70710678118654752 0 5 1", 2, CV_RBEZIER, 3},
      {"rational cubic", "r 0 0 2 1 6 .5 7 6 .7 9 0 3", 1, CV_RBEZIER, 4},
      {"B-spline", "B 0 0 2 5 5 6 9 4 12 -1 15 0 | 0 0 0 0 .3 .5 1 1 1 1", 1, CV_BEZIER, 4},
      {"unclamped", "B 0 0 4 6 8 6 12 0 | -2 -1 0 1 3 4 5", 1, CV_BEZIER, 3},
      {"closed", "B 4 0 4 4 -4 4 -4 -4 4 -4 4 0 | 0 0 0 1 2 3 4 4 4", 1, CV_BEZIER, 3},
      {"rational B-spline", "R 0 0 1 3 6 .6 7 6 2 9 0 1 | 0 0 0 .4 1 1 1", .6, CV_RBEZIER, 3},
      {"composite", "c .2 .8 (b 0 0 1 5 8 5 9 0)(r 9 0 1 10 -5 .7 15 -6 1)", .5, 0, 0},
  };
  // clang-format on
  for (const auto& row : rows) {
    const Owned cv = Make(row.curve);
    for (const double tolerance : {1e-2, 1e-4}) {
      for (const double distance : {row.distance, -row.distance}) {
        SCOPED_TRACE(std::string(row.name) + ' ' + std::to_string(distance));
        const Offset pieces(*cv, distance, tolerance);
        ASSERT_GT(pieces.size(), 0);
        EXPECT_LT(pieces.size(), tolerance < 1e-3 ? 200 : 25);
        ExpectAtDistance(*cv, pieces, distance, tolerance);
        for (int i = 0; row.type != 0 && i < pieces.size(); ++i) {
          EXPECT_EQ(pieces[i].type, row.type);
          EXPECT_EQ(FreeForm(pieces[i]).order, row.degree + 1);
        }
        EXPECT_TRUE(row.type == 0 || LargestJump(pieces) <= 1e-9);
        const Offset mirrored(*cv, -distance, tolerance, {0, 0, -3});  // its length has no effect
        ASSERT_EQ(mirrored.size(), pieces.size());
        EXPECT_TRUE(IsCurve(mirrored[0], pieces[0]));
      }
    }
  }
}

// What the exact kinds become, and others with a tolerance that takes anything; empty for nothing.
TEST(OffsetCurve, OfLinesAndArcsIsExact) {
  const Point left = kUp, right = kDown, twice{0, 0, 2}, tilted{5e-7, -5e-7, 1};
  // clang-format off
  const struct {
    const char* curve;
    Point normal;
    double distance;
    const char* want;
    double tolerance = 0;
  } rows[] = {
      {"l 0 0 10 0", left, 2, "l 0 2 10 2"},
      {"l 0 0 10 0", right, 2, "l 0 -2 10 -2"},
      {"l 0 0 10 0", left, -2, "l 0 -2 10 -2"},
      {"l 1 1 4 5", twice, 5, "l -7 7 -4 11"},
      {"l 0 0 10 0", tilted, 2, "l 0 2 10 2"},
      {"l 3 3 3 3", left, 2, ""},
      {"a 1 2 5 .3 2", left, 2, "a 1 2 3 .3 2"},
      {"a 1 2 5 .3 2", left, -2, "a 1 2 7 .3 2"},
      {"a 1 2 5 .3 2", right, 2, "a 1 2 7 .3 2"},
      {"a 1 2 5 .3 -2", left, 2, "a 1 2 7 .3 -2"},
      {"a 1 2 5 .3 -2", right, 2, "a 1 2 3 .3 -2"},
      {"a 1 2 5 .3 -2", twice, 2, "a 1 2 7 .3 -2"},
      {"a 1 2 5 0 6.283185307179586", left, 4.5, "a 1 2 .5 0 6.283185307179586"},
      {"a 1 2 5 .3 2", left, 5, ""},
      {"a 1 2 5 .3 2", left, 6, ""},
      {"a 1 2 5 .3 -2", left, -6, ""},
      {"a 1 2 0 .3 2", left, -1, ""},
      {"b 3 3", left, 1, ""},
      {"b 3 3 3 3 3.0000005 3", left, 1, ""},
      {"b 0 0 3 4", left, 5, "b -4 3 -2.5 5 -1 7"},
      {"b 0 0 1 0 2 0 3 0", left, 5, "b 0 5 .75 5 1.5 5 2.25 5 3 5"},
      {"B 0 0 3 4 | 0 0 1 1", right, 5, "b 4 -3 5.5 -1 7 1"},
      {"r 0 0 2 3 4 2", left, 5, "r -4 3 2 -2.5 5 2 -1 7 2"},
      // inner points are where the moved legs of the raised polygon cross, as unbounded lines
      {"b 0 0 4 0 4 4", left, 1, "b 0 1 2.2524531042935715 1 3 1.7475468957064285 3 4", 1e9},
      {"b 0 0 4 0 4 4", right, 1, "b 0 -1 3.0808802290397617 -1 5 .91911977096023829 5 4", 1e9},
      // the leg between the repeated points has no direction of its own: it goes up, as the one behind it
      {"b 0 0 5 0 5 0 5 0 5 6 5 12", left, 1, "b 0 1 4.16666666666666667 1 4 1 4 0 4 2 4 7 4 12", 1e9},
  };
  // clang-format on
  for (const auto& row : rows) {
    SCOPED_TRACE(row.curve);
    const Offset pieces(*Make(row.curve), row.distance, row.tolerance, row.normal);
    ASSERT_EQ(pieces.size(), *row.want ? 1 : 0);
    EXPECT_TRUE(!*row.want || IsCurve(pieces[0], row.want, 1e-14 * 16));
  }
}

// Cusps and folds end at some depth, and what lies beyond the centre of curvature is no further
// from the curve than the distance.
TEST(OffsetCurve, EndsAtCuspsAndFolds) {
  // clang-format off
  const struct {
    const char *name, *curve;
    double distance, jump;  // to the other side of a cusp
    int most_pieces;
  } rows[] = {
      {"cusp", "b 0 0 10 10 0 10 10 0", 1, 2, 20},
      {"cusp, other side", "b 0 0 10 10 0 10 10 0", -1, 2, 20},
      {"cusp off the middle", "b 0 0 10 10 0 10 10 .1", 1, 0, 40},
      {"cusp off the middle, other side", "b 0 0 10 10 0 10 10 .1", -1, 0, 40},
      {"round cusp", "b 0 0 10 10 0 10 10 .01", -1, 0, 40},
      {"sharper", "b 0 0 10 10 0 10 10 .0001", -1, 0, 60},
      {"loop", "b 0 0 10 10 -4 10 6 0", 3, 0, 80},
      {"beyond the radius", "b 0 0 1 5 8 5 9 0", -6, 0, 80},
      {"straight fold", "b 0 0 10 0 -5 0 5 0", 1, 0, 60},
      {"fold in the middle", "b 0 0 10 0 0 0", 1, 2, 20},
      {"fold at the end", "b 0 0 10 0 9 0", 1, 0, 40},
      {"hairpin", "b 0 0 10 0 0 1e-5", 1, 0, 80},
  };
  // clang-format on
  constexpr double kTolerance = 1e-3;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Owned cv = Make(row.curve);
    const Offset pieces(*cv, row.distance, kTolerance);
    EXPECT_GT(pieces.size(), 1);
    EXPECT_LE(pieces.size(), row.most_pieces);
    EXPECT_NEAR(LargestJump(pieces), row.jump, 1e-6);
    Polyline source;
    AddSamples(*cv, kChords, source);
    for (const XY& p : Samples(pieces))
      ASSERT_LE(Nearest(source, p), std::fabs(row.distance) + 2 * kTolerance);
  }
}

// Whatever the polygon: the number of pieces is bounded, and none lies far off.
TEST(OffsetCurve, OfWildCurvesStaysNear) {
  Rounds(100, [&](Random& random, int round) {
    Numbers points = RandomPoints(random, 2 + round % 9, false);
    for (std::size_t i = 2; i < points.size(); ++i)  // repeated points, legs that turn back
      if (random.Uniform(0, 1) < .4) points[i] = points[i - 2] + random.Uniform(0, 1e-6);
    const Owned cv = MakeFreeForm(CV_BEZIER, points);
    const double d = random.Uniform(-3, 3);
    const Offset pieces(*cv, d, 1e-3);
    EXPECT_LE(pieces.size(), 800);
    Polyline source;
    AddSamples(*cv, kChords, source);
    for (const XY& p : Samples(pieces)) ASSERT_LE(Nearest(source, p), 1.16 * std::fabs(d));
  });
}

TEST(OffsetCurve, OfNoToleranceEnds) {
  const Owned arch = Make("b 0 0 1 5 8 5 9 0");
  const Offset pieces(*arch, 1, 0);
  EXPECT_EQ(pieces.size(), 4096);
  EXPECT_LE(LargestJump(pieces), 1e-9);
  ExpectAtDistance(*arch, pieces, 1, 1e-6);

  Random random;  // every span gets its share
  constexpr int kSpans = 100;
  Numbers knots = {0, 0, 0};
  for (int i = 0; i <= kSpans; ++i) knots.push_back(i);
  knots.insert(knots.end(), 3, kSpans);
  const Owned spline = MakeFreeForm(CV_BSPLINE, RandomPoints(random, kSpans + 3, false), knots);
  const Offset all(*spline, .1, 0);
  EXPECT_GT(all.size(), 32 * kSpans);
  EXPECT_LE(all.size(), 64 * kSpans);
  EXPECT_LE(KurvoclDistPoint(PointAt(all[all.size() - 1], 1), PointAt(*spline, 1)), .1 + 1e-9);
}

// Composites end at the first piece that is no Bezier curve, and keep what was made before it.
TEST(OffsetCurve, OfCompositesEndsAtOtherTypes) {
  const struct {
    const char* curve;
    int pieces;
  } rows[] = {{"c .5 .5 (b 0 0 9 0)(r 9 0 1 9 9 2)", 2},
              {"c .5 .3 .2 (b 0 0 9 0)(l 9 0 9 9)(b 9 9 0 9)", 1},
              {"c .5 .3 .2 (b 0 0 9 0)(r 9 0 1 9 9 1)(a 8 9 1 0 1)", 2},
              {"c 1 (B 0 0 9 0 | 0 0 1 1)", 0},
              {"c .5 .5 (c 1 (b 0 0 9 0))(b 9 0 9 9)", 0},
              {"c .5 .5 (b 0 0 9 0)(e)", 1},
              {"c", 0}};
  for (const auto& row : rows)
    EXPECT_EQ(Offset(*Make(row.curve), 1, 1e-3).size(), row.pieces) << row.curve;
  const Owned far = Make("B 0 0 4 6 8 6 12 0 | 0 0 0 1 2 2 2");
  FreeForm(*far).knots[6] = kInfinity;  // behind the domain: no span has it
  EXPECT_EQ(Offset(*far, 1, 1e-3).size(), 0);
}

}  // namespace
}  // namespace kurvo_test
