// Removal of knots.
#include <gtest/gtest.h>

#include "build/division.h"

namespace kurvo_test {
namespace {

struct Homogeneous {
  long double x, y, w;
};

Homogeneous Mix(const Homogeneous& a, const Homogeneous& b, long double t) {
  return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y, (1 - t) * a.w + t * b.w};
}

// A B-spline in long double, with homogeneous points.
struct LongSpline {
  int order;
  std::vector<long double> knots;
  std::vector<Homogeneous> points;

  explicit LongSpline(const Curve& cv) : order(FreeForm(cv).order) {
    for (const double u : Knots(cv)) knots.push_back(u);
    const FreeForm form(cv);
    for (int i = 0; i < SplineCount(cv); ++i) {
      const double* p = form.points + i * form.stride;
      const long double w = form.stride == 4 ? p[3] : 1;
      points.push_back({w * p[0], w * p[1], w});
    }
  }

  // Boehm's insertion as in textbooks: Q_i = a P_i + (1 - a) P_(i-1) for every i.
  void Insert(long double u) {
    const int p = order - 1;
    const auto at = [&](int i) { return knots[static_cast<std::size_t>(i)]; };
    const auto span =
        static_cast<int>(std::upper_bound(knots.begin(), knots.end(), u) - knots.begin()) - 1;
    std::vector<Homogeneous> inserted;
    for (int i = 0; i <= static_cast<int>(points.size()); ++i) {
      const auto here = points.begin() + std::min(i, static_cast<int>(points.size()) - 1);
      if (i <= span - p)
        inserted.push_back(*here);
      else if (i > span)
        inserted.push_back(points[static_cast<std::size_t>(i - 1)]);
      else
        inserted.push_back(
            Mix(points[static_cast<std::size_t>(i - 1)], *here, (u - at(i)) / (at(i + p) - at(i))));
    }
    points = inserted;
    knots.insert(knots.begin() + span + 1, u);
  }

  Owned Get(bool rational) const {
    Numbers flat, u;
    for (const Homogeneous& p : points) {
      flat.insert(flat.end(), {static_cast<double>(p.x / p.w), static_cast<double>(p.y / p.w)});
      if (rational) flat.push_back(static_cast<double>(p.w));
    }
    for (const long double knot : knots) u.push_back(static_cast<double>(knot));
    return MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, flat, u);
  }
};

Owned Removed(const Curve& cv, GlobalVar& g) {
  Owned result(CV_ARC);
  KurvocvBsplRemoveKnots(&cv, result.get(), &g);
  return result;
}

void ExpectSameBits(const Curve& a, const Curve& b) {
  ASSERT_EQ(a.type, b.type);
  EXPECT_EQ(Knots(a), Knots(b));
  EXPECT_EQ(ControlPoints(a), ControlPoints(b));
}

// What has been inserted goes, what was there before stays. The tolerance is tight: next to another
// knot a knot that matters may hardly show at a fifth of the short interval.
TEST(BsplRemoveKnots, UndoesInsertions) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 300; ++round) {
    const bool rational = round % 2 == 1;
    const int order = 2 + round % 6;
    const bool unit = round % 3 == 0;
    const Owned source = RandomSplineOver(random, rational, order, unit ? 0 : -2, unit ? 1 : 7,
                                          std::min(2, order - 1));
    LongSpline refined(*source);
    const auto [start, length] = Domain(*source);
    for (int i = 0; i < 6; ++i) {
      const double u = start + length * std::round(random.Uniform(1, 15)) / 16;
      const auto there = std::count(refined.knots.begin(), refined.knots.end(), L(u));
      // Next to a knot that carries a change, the two points a fifth away would not see that
      // change.
      const Numbers own = Knots(*source);
      const double span = length;
      const bool crowded = std::any_of(
          own.begin(), own.end(), [=](double knot) { return std::fabs(knot - u) < span / 17; });
      if (there < order - 1 && !crowded) refined.Insert(u);
    }
    for (int i = order - 1; i < SplineCount(*source); ++i) {  // and at knots that carry a change
      const double u = Knots(*source)[static_cast<std::size_t>(i)];
      if (i % 2 == 0 && u > start &&
          std::count(refined.knots.begin(), refined.knots.end(), L(u)) < order - 1)
        refined.Insert(u);
    }
    const Owned dense = refined.Get(rational);
    Globals g(1e-9);
    const Owned result = Removed(*dense, g);
    SCOPED_TRACE(testing::Message() << "round " << round << ", order " << order);
    EXPECT_EQ(Knots(*result), Knots(*source));
    EXPECT_LE(LargestGap(ControlPoints(*result), ControlPoints(*source)), 1e-9);
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }
}

TEST(BsplRemoveKnots, Table) {
  const struct {
    const char* name;
    const char* curve;
    const char* want;
  } rows[] = {
      {"one span cut in the middle", "B 0 0 0 2 1 3 2 3 3 3 4 2 4 0 | 0 0 0 0 .5 .5 .5 1 1 1 1",
       "B 0 0 0 4 4 4 4 0 | 0 0 0 0 1 1 1 1"},
      {"no inner knot", "B 0 0 1 5 2 0 | 0 0 0 1 1 1", "B 0 0 1 5 2 0 | 0 0 0 1 1 1"},
      {"a corner", "B 0 0 1 1 2 0 | 0 0 .5 1 1", "B 0 0 1 1 2 0 | 0 0 .5 1 1"},
      {"a straight corner", "B 0 0 1 1 2 2 | 0 0 .5 1 1", "B 0 0 2 2 | 0 0 1 1"},
      {"one of two", "B 0 0 1 1 2 2 3 0 | 0 0 1 2 3 3", "B 0 0 2 2 3 0 | 0 0 2 3 3"},
      {"a closed jump", "B 0 0 1 1 1 1 2 2 | 0 0 1 1 2 2", "B 0 0 2 2 | 0 0 2 2"},
      {"an open jump", "B 0 0 1 1 5 1 2 2 | 0 0 1 1 2 2", "B 0 0 1 1 5 1 2 2 | 0 0 1 1 2 2"},
      {"points that act nowhere", "B 0 0 1 1 9 9 8 8 5 1 2 2 | 0 0 1 1 1 1 2 2",
       "B 0 0 1 1 5 1 2 2 | 0 0 1 1 2 2"},
      {"order 1", "B 0 0 0 0 1 1 | 0 1 2 3", "B 0 0 1 1 | 0 2 3"},
      {"knots beyond the domain", "B 0 0 1 1 2 2 3 3 | -1 0 1 2 3 4", "B 0 0 3 3 | -1 0 3 4"},
      {"descending", "B 0 0 1 1 2 2 | 1 1 .5 0 0", "B 0 0 1 1 2 2 | 1 1 .5 0 0"},
      {"out of order", "B 1 1 1 1 1 1 1 1 | 0 0 .5 .2 1 1", "B 1 1 1 1 1 1 1 1 | 0 0 .5 .2 1 1"},
      {"a jump within epsilon closes in the middle", "B 0 0 1 1 1 1.0000008 2 0 | 0 0 1 1 2 2",
       "B 0 0 1 1.0000004 2 0 | 0 0 1 2 2"},
      {"so does the middle point", "B 0 0 1 2.0000001 3 2 4 0 | 0 0 0 1 2 2 2",
       "B 0 0 2 4.0000001 4 0 | 0 0 0 2 2 2"},
      {"no length", "B 0 0 1 1 2 2 | 1 1 1 1 1", "B 0 0 1 1 2 2 | 1 1 1 1 1"},
  };
  for (const auto& row : rows) {
    Globals g;
    const Owned result = Removed(*Make(row.curve), g);
    SCOPED_TRACE(row.name);
    const Owned want = Make(row.want);
    ASSERT_EQ(result->type, want->type);
    EXPECT_EQ(Knots(*result), Knots(*want));
    EXPECT_LE(LargestGap(ControlPoints(*result), ControlPoints(*want)), 1e-14);
  }
}

// At the two test points of the knot 1, .8 and 1.2, removal moves the curve by .8 of the corner's
// height: the tolerance decides there and nowhere else.
TEST(BsplRemoveKnots, LooksAtAFifthOfTheIntervals) {
  for (const double height : {1e-4 / .8 * .999, 1e-4 / .8 * 1.001}) {
    const Owned source = MakeFreeForm(CV_BSPLINE, {0, 0, 1, height, 2, 0}, {0, 0, 1, 2, 2});
    Globals g(1e-4);
    EXPECT_EQ(SplineCount(*Removed(*source, g)), height < 1e-4 / .8 ? 2 : 3);
  }
}

TEST(BsplRemoveKnots, AnswersAsForTheNormalisedCurve) {
  Random random;
  SCOPED_TRACE(random.Trace());
  int removed = 0;
  for (int round = 0; round < 300; ++round) {
    const Owned unit = RandomSplineOver(random, round % 2 == 1, 3, 0, 1, 2);
    Owned wide(unit->type), narrow(unit->type);
    Globals g(.01);
    for (double* p = FreeForm(*unit).points; p < FreeForm(*unit).knots; p += FreeForm(*unit).stride)
      p[0] *= .004, p[1] *= .004;
    KurvocvCopyCurve(unit.get(), wide.get(), &g);
    KurvocvCopyCurve(unit.get(), narrow.get(), &g);
    for (std::size_t i = 0; i < Knots(*unit).size(); ++i) {
      FreeForm(*wide).knots[i] = FreeForm(*wide).knots[i] * 4096 - 1024;
      FreeForm(*narrow).knots[i] *= 0x1p-20;
    }
    const Owned want = Removed(*unit, g);
    const Numbers points = ControlPoints(*want);
    EXPECT_LE(LargestGap(ControlPoints(*Removed(*wide, g)), points), 1e-12) << round;
    EXPECT_EQ(ControlPoints(*Removed(*narrow, g)), points) << round;
    removed += SplineCount(*want) < SplineCount(*unit);
  }
  EXPECT_GT(removed, 30);
  EXPECT_LT(removed, 270);
}

TEST(BsplRemoveKnots, LeavesAnIrreducibleCurveExactly) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < 50; ++round) {
    const int order = 1 + round % 7;
    const Owned source = RandomSplineOver(random, round % 2 == 1, order, -1, 3, std::min(order, 3));
    Globals g;
    ExpectSameBits(*Removed(*source, g), *source);
  }
}

TEST(BsplRemoveKnots, CopiesWhereAKnotIsNotANumber) {
  const Owned source = MakeFreeForm(CV_BSPLINE, {0, 0, 1, 1, 2, 2, 3, 3}, {0, 0, 1, kNaN, 2, 2});
  Globals g;
  EXPECT_EQ(SplineCount(*Removed(*source, g)), 4);
}

}  // namespace
}  // namespace kurvo_test
