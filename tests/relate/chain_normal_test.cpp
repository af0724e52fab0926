// Centre and sense of chains.
#include <gtest/gtest.h>

#include <string>

#include "relate/chain.h"

namespace kurvo_test {
namespace {

struct Orientation {
  Point centre, normal;
  int error;
};

Orientation OrientationOf(const Cvseq* seq) {
  Globals g;
  Orientation o{{-77, -77, -77}, {-77, -77, -77}, 0};
  KurvocvCvseqNormal(seq, o.centre, o.normal, &g);
  o.error = KurvoErrGet(&g);
  return o;
}

#define PI "3.14159265358979323846"

TEST(CvseqNormal, Table) {
  const struct {
    const char* name;
    const char* chain;
    double z, x, y;
  } rows[] = {
      {"square", "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)(l 0 4 0 0)", 1, 2, 2},
      {"square, clockwise", "(l 0 0 0 4)(l 0 4 4 4)(l 4 4 4 0)(l 4 0 0 0)", -1, 2, 2},
      {"open: closing vertex counted", "(l 0 0 4 0)(l 4 0 4 4)(l 4 4 0 4)", 1, 2, 2},
      {"open angle", "(l 0 0 3 0)(l 3 0 3 3)", 1, 2, 1},
      {"points at every corner",
       "(l 0 0 0 0)(l 0 0 4 0)(b 4 0 4 0)(l 4 0 4 4)(l 4 4 4 4)(l 4 4 0 4)(a 0 4 0 0 1)(l 0 4 0 0)",
       1, 2, 2},
      {"two half circles", "(a 0 0 2 0 " PI ")(a 0 0 2 " PI " " PI ")", 1, 0, 0},
      {"two half circles, clockwise", "(a 0 0 2 0 -" PI ")(a 0 0 2 -" PI " -" PI ")", -1, 0, 0},
      {"half circle first, mean on the line", "(a 0 0 2 0 " PI ")(l -2 0 2 0)", 1, 0, 0},
      {"line first", "(l -2 0 2 0)(a 0 0 2 0 " PI ")", 1, 0, 0},
      {"three quarters of a circle, mean outside its circle's centre",
       "(a 0 0 2 0 4.71238898038468985769)(l 0 -2 2 0)", 1, 1, -1},
      {"crescent, mean outside",
       "(a 0 0 1 -1.57079632679489661923 " PI
       ")(a -.75 0 1.25 .92729521800161223 -1.85459043600322446)",
       1, 0, 0},
      {"crescent, clockwise",
       "(a -.75 0 1.25 -.92729521800161223 1.85459043600322446)(a 0 0 1 1.57079632679489661923 -" PI
       ")",
       -1, 0, 0},
      {"open arc", "(a 0 0 2 0 1)", 1, 1 + .5403023058681397174, .84147098480789650665},
      {"open arc, clockwise", "(a 0 0 2 0 -1)", -1, 1 + .5403023058681397174,
       -.84147098480789650665},
      {"drop of one curve, mean on it", "(b 0 0 3 0 0 3 0 0)", 1, 0, 0},
      {"drop of one rational curve, clockwise", "(r 0 0 1 0 3 2 3 0 3 0 0 1)", -1, 0, 0},
      {"composite of arcs only", "(c 1 1 (a 0 0 2 0 " PI ")(a 0 0 2 " PI " " PI "))", 1, 2, 0},
      {"composite of lines only", "(c 1 1 (l 0 0 3 0)(l 3 0 3 3))", 1, 1.5, 1.5},
      {"an empty composite in between", "(l 0 0 3 0)(c)(l 3 0 3 3)", 1, 2.25, .75},
  };
  for (const auto& row : rows) {
    Chain chain(row.chain);
    const Orientation o = OrientationOf(chain.get());
    EXPECT_EQ(o.error, 0) << row.name;
    EXPECT_EQ(o.normal, (Point{0, 0, row.z})) << row.name;
    EXPECT_NEAR(o.centre[0], row.x, 1e-14) << row.name;
    EXPECT_NEAR(o.centre[1], row.y, 1e-14) << row.name;
  }
}

// A chain that runs ten times around its centre and once, the other way, around a larger area.
TEST(CvseqNormal, DecisiveWindingBeatsTheArea) {
  std::string chain;
  for (int i = 0; i < 10; ++i) chain += "(l 1 -1 1 1)(l 1 1 -1 1)(l -1 1 -1 -1)(l -1 -1 1 -1)";
  Chain both(chain + "(l 1 -1 11 -11)(l 11 -11 -9 -11)(l -9 -11 1 -1)");
  EXPECT_EQ(OrientationOf(both.get()).normal[2], 1);
}

// ---- Random simple closed outlines, counter-clockwise ----

class Outlines {
 public:
  explicit Outlines(Random& random) : random_(random) {}

  std::vector<Owned> Next() {
    curves_.clear();
    if (Chance(.5))
      AddStar();
    else
      AddCrescent();
    if (Chance(.3)) Gather();
    std::rotate(curves_.begin(), curves_.begin() + Int(0, static_cast<int>(curves_.size()) - 1),
                curves_.end());
    return std::move(curves_);
  }

 private:
  bool Chance(double p) { return random_.Uniform(0, 1) < p; }
  int Int(int low, int high) { return low + static_cast<int>(random_.Uniform(0, high - low + 1)); }

  // Around the origin; control points in the order of their directions keep a curve in that order.
  void AddStar() {
    const int n = Int(3, 9);
    const double first = random_.Uniform(-4, 4);
    Point p = Radial(first), start = p;
    for (int i = 1; i <= n; ++i) {
      const double from = first + 2 * M_PI * (i - 1) / n, to = first + 2 * M_PI * i / n;
      const Point q = i == n ? start : Radial(to);
      AddBulge(p, from, to, q);
      p = q;
    }
  }
  Point Radial(double angle) {
    const double r = random_.Uniform(.3, 3);
    return {r * std::cos(angle), r * std::sin(angle), 0};
  }
  void AddBulge(const Point& p, double from, double to, const Point& q) {
    const int inner = Int(0, 4);
    const bool rational = Chance(.3), spline = Chance(.3);
    Numbers points;
    const auto add = [&](const Point& x) {
      points.insert(points.end(), {x[0], x[1]});
      if (rational) points.push_back(random_.Uniform(.2, 5));
    };
    add(p);
    for (int i = 1; i <= inner; ++i) add(Radial(from + (to - from) * i / (inner + 1)));
    add(q);
    if (inner == 0 && !rational) return AddStraight(p, q);
    if (!spline) {
      curves_.push_back(MakeFreeForm(rational ? CV_RBEZIER : CV_BEZIER, points));
      return;
    }
    Numbers knots;
    for (int i = 0; i < inner + 4; ++i) knots.push_back(std::clamp(i - 1, 0, inner + 1));
    curves_.push_back(MakeFreeForm(rational ? CV_RBSPLINE : CV_BSPLINE, points, knots));
  }

  // Two arcs about one centre and their ends; thin or nearly closed ones have the mean outside.
  void AddCrescent() {
    const double outer = random_.Uniform(1, 5), inner = outer * random_.Uniform(.2, .999);
    const double from = random_.Uniform(-4, 4), sweep = random_.Uniform(.3, 6.2);
    const auto at = [](double r, double angle) -> Point {
      return {r * std::cos(angle), r * std::sin(angle), 0};
    };
    AddArcs(outer, from, sweep);
    AddStraight(at(outer, from + sweep), at(inner, from + sweep));
    AddArcs(inner, from + sweep, -sweep);
    AddStraight(at(inner, from), at(outer, from));
  }
  void AddArcs(double r, double from, double sweep) {
    const int n = Int(1, 3);
    for (int i = 0; i < n; ++i) {
      Owned arc = Arc(0, 0, r, from + sweep * i / n, sweep / n);
      Owned other(Chance(.5) ? CV_RBEZIER : CV_RBSPLINE);
      Globals g;
      if (std::fabs(sweep / n) < 3 && Chance(.4) &&
          KurvocvConvert(arc.get(), other.get(), &g) == KURVO_CONVERTED)
        arc = std::move(other);
      curves_.push_back(std::move(arc));
    }
  }

  // A line, a straight Bezier curve or B-spline, or many lines, which pull the mean to them.
  void AddStraight(const Point& p, const Point& q) {
    const auto mix = [&](double s, std::size_t c) { return (1 - s) * p[c] + s * q[c]; };
    const int parts = Chance(.3) ? Int(2, 40) : 1, degree = Int(1, 5);
    for (int i = 0; i < parts; ++i) {
      Numbers points;
      for (int j = 0; j <= degree; ++j) {
        const double s = (i + j * 1.0 / degree) / parts;
        points.insert(points.end(), {mix(s, 0), mix(s, 1)});
      }
      if (degree > 1) {
        curves_.push_back(MakeFreeForm(CV_BEZIER, points));
        continue;
      }
      Owned line;
      auto* block = static_cast<KurvoLine*>(KurvocvMallocCurve(line.get(), CV_LINE));
      KurvoclSetCoord(block->start, points[0], points[1], 0);
      KurvoclSetCoord(block->end, points[2], points[3], 0);
      curves_.push_back(std::move(line));
    }
  }

  // Some curves that follow each other, or all, become one composite.
  void Gather() {
    const int n = static_cast<int>(curves_.size()), from = Chance(.3) ? 0 : Int(0, n - 1);
    const int to = from == 0 && Chance(.5) ? n : Int(from + 1, n);
    std::vector<Owned> pieces;
    for (int i = from; i < to; ++i)
      pieces.push_back(std::move(curves_[static_cast<std::size_t>(i)]));
    Owned composite = MakeComposite(Numbers(pieces.size(), 1), std::move(pieces));
    curves_.erase(curves_.begin() + from, curves_.begin() + to);
    curves_.insert(curves_.begin() + from, std::move(composite));
  }

  Random& random_;
  std::vector<Owned> curves_;
};

void Reverse(std::vector<Owned>& curves) {
  std::reverse(curves.begin(), curves.end());
  Globals g;
  for (Owned& cv : curves) KurvocvChgOrder(cv.get(), &g);
}

TEST(CvseqNormal, OfSimpleClosedChainsIsTheirSense) {
  Random random;
  SCOPED_TRACE(random.Trace());
  Outlines outlines(random);
  for (int round = 0; round < 4000; ++round) {
    std::vector<Owned> curves = outlines.Next();
    const bool clockwise = random.Uniform(0, 1) < .5;
    if (clockwise) Reverse(curves);
    Chain chain(std::move(curves));
    const Orientation o = OrientationOf(chain.get());
    EXPECT_EQ(o.error, 0) << round;
    EXPECT_EQ(o.normal[2], clockwise ? -1 : 1) << "round " << round << ", " << chain.count();
  }
}

}  // namespace
}  // namespace kurvo_test
