// What every test says just inside its tolerance, exactly on it and just outside.
#include <gtest/gtest.h>

#include "support/basics.h"

namespace kurvo_test {
namespace {

using G = GlobalVar*;

Point P(double x, double y, double z) { return {x, y, z}; }

// Powers of two, so that the thresholds are exact; small, so that an angle equals its tangent.
constexpr double kEpsilon = 0x1p-40;
constexpr double kEpsilon0 = 0x1p-38;

struct Answers {
  int inside;
  int on;
  int outside;
  double step = kUlp;  // relative, from the threshold to either side
};
constexpr Answers kClosed = {1, 1, 0};           // equality holds
constexpr Answers kCoarse = {1, 1, 0, 0x1p-10};  // for numbers near 1, which are further apart
constexpr Answers kOpen = {1, 0, 0};             // equality fails
constexpr Answers kBeyond = {0, 0, 1};           // holds for what is more than the tolerance

struct Row {
  const char* name;
  Answers want;
  int (*answer)(double d, G g);  // d: kEpsilon, or a step of it to either side
};

int UnitWarns(Point v, G g) {
  KurvoclUnitVector(v, g);
  return KurvoErrGet(g) == KURVO_WARN_SHORT_VECTOR;
}

int SameWeighted(double z, double w, G g) {
  const HCoord p = {1, 2, z, w}, q = {1, 2, 0, 0};
  return KurvoclSameHCoord(p, q, g);
}

int StaysNegative(double d, G g) { return KurvoclVectorAngle(P(1, 0, 0), P(1, -d, 0), g) == -d; }

int ProjectsToStart(double length, G g) {
  const double line[6] = {0, 0, 0, length, 0, 0};
  Point out;
  KurvoclProjLine(P(7, 0, 0), line, out, g);
  return out[0] == 0;
}

int ScalesUniformly(Point dir, G g) {
  Point out;
  KurvoclScalePoint(P(0, 0, 0), dir, 2, P(0, 1, 0), out, g);
  return out[1] == 2;
}

int OnSegment(Point p, double length, G g) {
  const double segment[6] = {0, 0, 0, length, 0, 0};
  double t;
  return length > 0 ? KurvoclOnLineSeg(p, segment, &t, g) : KurvoclOnLine(p, segment, g);
}

int IsLine(double x, double y, G g) { return KurvoclIsLine(P(0, 0, 0), P(x, y, 0), P(2, 0, 0), g); }

int OnHalfCircle(double x, double y, G g) {
  const KurvoArc arc = {1, {0, 0, 0}, {0, 0, 1}, {1, 0, 0}, {-1, 0, 0}};
  double t;
  return KurvoclOnArc(P(x, y, 0), &arc, &t, g);
}

int HasUnitCircle(double distance, bool diameter, G g) {
  Point centre;
  return KurvofcRPPcirc(1, P(0, 0, 0), P(distance, 0, 0), centre, 0, g) &&
         (!diameter || centre[1] == 0);
}

int InBox(double x, double y, G g) {
  const Box box = {0, 0, 0, 0, 0, 0}, other = {x, y, 0, x, y, 0};
  const int holds = KurvoclBoxPoint(box, P(x, y, 0), g);
  EXPECT_EQ(KurvoclBoxBox(box, other, g), holds);
  return holds;
}

// clang-format off
const Row kRows[] = {
    {"Compare above", kBeyond, [](double d, G g) { return KurvoclCompare(d, 0, g); }},
    {"Compare below", {0, 0, -1}, [](double d, G g) { return KurvoclCompare(0, d, g); }},
    {"Positive", kBeyond, [](double d, G g) { return KurvoclPositive(d, g); }},
    {"Negative", kBeyond, [](double d, G g) { return KurvoclNegative(-d, g); }},
    {"Same", kClosed, [](double d, G g) { return KurvoclSame(d, 0, g); }},
    {"Zero2", kClosed, [](double d, G g) { return KurvoclZero2(-d * kEpsilon, g); }},
    {"ZeroVector x", kClosed, [](double d, G g) { return KurvoclZeroVector(P(d, 0, 0), g); }},
    {"ZeroVector y", kClosed, [](double d, G g) { return KurvoclZeroVector(P(0, -d, 0), g); }},
    {"ZeroVector z", kClosed, [](double d, G g) { return KurvoclZeroVector(P(0, 0, d), g); }},
    {"ZeroVector2", kClosed, [](double d, G g) { return KurvoclZeroVector2(P(0, 0, d * kEpsilon), g); }},
    {"SameCoord x", kClosed, [](double d, G g) { return KurvoclSameCoord(P(d, 0, 0), P(0, 0, 0), g); }},
    {"SameCoord y", kClosed, [](double d, G g) { return KurvoclSameCoord(P(0, 0, 0), P(0, d, 0), g); }},
    {"SameCoord z", kClosed, [](double d, G g) { return KurvoclSameCoord(P(0, 0, 0), P(0, 0, d), g); }},
    {"SameCoord all", kClosed, [](double d, G g) { return KurvoclSameCoord(P(d, d, d), P(0, 0, 0), g); }},
    {"SameHCoord z", kClosed, [](double d, G g) { return SameWeighted(d, 0, g); }},
    {"SameHCoord w, epsilon0", kClosed, [](double d, G g) { return SameWeighted(0, 4 * d, g); }},
    {"UnitVector y", kClosed, [](double d, G g) { return UnitWarns(P(0, -d, 0), g); }},
    {"UnitVector all", kClosed, [](double d, G g) { return UnitWarns(P(d, d, d), g); }},
    {"SameVector x", kClosed, [](double d, G g) { return KurvoclSameVector(P(d, 0, 0), P(0, 0, 0), g); }},
    {"SameVector z", kClosed, [](double d, G g) { return KurvoclSameVector(P(0, 0, 0), P(0, 0, d), g); }},
    {"SameVector angle, epsilon0", kClosed, [](double d, G g) { return KurvoclSameVector(P(1, 0, 0), P(1, 4 * d, 0), g); }},
    {"SameVector across the cut", kCoarse, [](double d, G g) { return KurvoclSameVector(P(-1, 2 * d, 0), P(-1, -2 * d, 0), g); }},
    {"VectorAngle stays negative", kClosed, StaysNegative},
    {"ParaVector, epsilon", kClosed, [](double d, G g) { return KurvoclParaVector(P(1, 0, 0), P(1, d, 0), g); }},
    {"ParaVector clockwise", kClosed, [](double d, G g) { return KurvoclParaVector(P(1, 0, 0), P(1, -d, 0), g); }},
    {"ParaVector opposite", kCoarse, [](double d, G g) { return KurvoclParaVector(P(1, 0, 0), P(-1, d, 0), g); }},
    {"ProjLine, short line", kClosed, ProjectsToStart},
    {"ScalePoint, short direction", kClosed, [](double d, G g) { return ScalesUniformly(P(d, 0, d), g); }},
    {"OnLine", kClosed, [](double d, G g) { return OnSegment(P(9, d, 0), -1, g); }},
    {"OnLineSeg aside", kClosed, [](double d, G g) { return OnSegment(P(.5, d, 0), 1, g); }},
    {"OnLineSeg before", kClosed, [](double d, G g) { return OnSegment(P(-d, 0, 0), 1, g); }},
    {"OnLineSeg before, by parameter", kClosed, [](double d, G g) { return OnSegment(P(-8 * d, 0, 0), 8, g); }},
    {"OnLineSeg after", kCoarse, [](double d, G g) { return OnSegment(P(1 + d, 0, 0), 1, g); }},
    {"OnArc outside", kCoarse, [](double d, G g) { return OnHalfCircle(0, 1 + d, g); }},
    {"OnArc inside", kCoarse, [](double d, G g) { return OnHalfCircle(0, 1 - d, g); }},
    {"IsLine left", kOpen, [](double d, G g) { return IsLine(1, d, g); }},
    {"IsLine right", kOpen, [](double d, G g) { return IsLine(1, -d, g); }},
    {"IsLine angle, epsilon0", kClosed, [](double d, G g) { return IsLine(0x1p-6, 0x1p-4 * d, g); }},
    {"IsLine angle clockwise", kClosed, [](double d, G g) { return IsLine(0x1p-6, -0x1p-4 * d, g); }},
    {"RPPcirc too far", kCoarse, [](double d, G g) { return HasUnitCircle(2 + d, false, g); }},
    {"RPPcirc diameter", kCoarse, [](double d, G g) { return HasUnitCircle(2 - d, true, g); }},
    {"Boxes left", kClosed, [](double d, G g) { return InBox(-d, 0, g); }},
    {"Boxes right", kClosed, [](double d, G g) { return InBox(d, 0, g); }},
    {"Boxes below", kClosed, [](double d, G g) { return InBox(0, -d, g); }},
    {"Boxes above", kClosed, [](double d, G g) { return InBox(0, d, g); }},
};
// clang-format on

TEST(Thresholds, AreExact) {
  for (const Row& row : kRows) {
    const auto answer = [&row](double d) {
      Globals g(kEpsilon);
      KurvoclPushEpsilon0(kEpsilon0, &g);
      return row.answer(d, &g);
    };
    EXPECT_EQ(answer(kEpsilon * (1 - row.want.step)), row.want.inside) << row.name << ", inside";
    EXPECT_EQ(answer(kEpsilon), row.want.on) << row.name << ", on the threshold";
    EXPECT_EQ(answer(kEpsilon * (1 + row.want.step)), row.want.outside) << row.name << ", outside";
  }
}

}  // namespace
}  // namespace kurvo_test
