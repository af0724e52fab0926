// Every predicate fails on a NaN in an argument that it reads, and holds whatever stands in one
// that it ignores.
#include <gtest/gtest.h>

#include "support/basics.h"

namespace kurvo_test {
namespace {

using V = const double*;
using G = GlobalVar*;

struct Row {
  const char* name;
  std::vector<double> arguments;  // all of them in a row; for these the predicate holds
  const char* reads;              // 'x' for an argument that matters, '.' for another
  int (*holds)(V v, G g);
};

KurvoArc Arc(V v) {  // radius, centre, normal, start, end
  KurvoArc arc;
  std::copy_n(v, 13, &arc.radius);
  return arc;
}

int OnCircle(V v, G g) {
  const KurvoArc arc = Arc(v + 3);
  return KurvoclOnCirc(v, &arc, g);
}

int OnArc(V v, G g) {
  const KurvoArc arc = Arc(v + 3);
  double t;
  return KurvoclOnArc(v, &arc, &t, g);
}

int OnSegment(V v, G g) {
  double t;
  return KurvoclOnLineSeg(v, v + 3, &t, g);
}

int HasCircle(V v, G g) {
  Point centre;
  return KurvofcRPPcirc(v[0], v + 1, v + 4, centre, 0, g);
}

// A normal of no direction means counter-clockwise, as the NaN does.
const std::vector<double> kOnQuarter = {.6, .8, 0, 1, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 1, 0};

// clang-format off
const Row kRows[] = {
    {"Compare", {1, 0}, "xx", [](V v, G g) { return KurvoclCompare(v[0], v[1], g); }},
    {"Compare", {0, 1}, "xx", [](V v, G g) { return KurvoclCompare(v[0], v[1], g); }},
    {"Positive", {1}, "x", [](V v, G g) { return KurvoclPositive(v[0], g); }},
    {"Negative", {-1}, "x", [](V v, G g) { return KurvoclNegative(v[0], g); }},
    {"Same", {1, 1}, "xx", [](V v, G g) { return KurvoclSame(v[0], v[1], g); }},
    {"Zero2", {0}, "x", [](V v, G g) { return KurvoclZero2(v[0], g); }},
    {"ZeroVector", {0, 0, 0}, "xxx", [](V v, G g) { return KurvoclZeroVector(v, g); }},
    {"ZeroVector2", {0, 0, 0}, "xxx", [](V v, G g) { return KurvoclZeroVector2(v, g); }},
    {"SameCoord", {1, 2, 3, 1, 2, 3}, "xxxxxx", [](V v, G g) { return KurvoclSameCoord(v, v + 3, g); }},
    {"SameHCoord", {1, 2, 3, 4, 1, 2, 3, 4}, "xxxxxxxx", [](V v, G g) { return KurvoclSameHCoord(v, v + 4, g); }},
    {"SameVector", {1, 2, 3, 1, 2, 3}, "xxxxxx", [](V v, G g) { return KurvoclSameVector(v, v + 3, g); }},
    {"ParaVector", {1, 2, 3, -1, -2, 7}, "xx.xx.", [](V v, G g) { return KurvoclParaVector(v, v + 3, g); }},
    {"OnLine", {5, 5, 0, 1, 1, 0, 2, 2, 0}, "xxxxxxxxx", [](V v, G g) { return KurvoclOnLine(v, v + 3, g); }},
    {"OnLineSeg", {1, 1, 0, 0, 0, 0, 2, 2, 0}, "xxxxxxxxx", OnSegment},
    {"OnCirc", kOnQuarter, "xx.xxx..........", OnCircle},
    {"OnArc", kOnQuarter, "xxxxxxx...xx.xx.", OnArc},
    {"IsLine", {0, 0, 0, 1, 1, 0, 2, 2, 0}, "xx.xx.xx.", [](V v, G g) { return KurvoclIsLine(v, v + 3, v + 6, g); }},
    {"RPPcirc", {5, 0, 0, 0, 6, 0, 0}, "xxx.xx.", HasCircle},
    {"BoxPoint", {0, 0, 0, 1, 1, 0, .5, .5, 0}, "xx.xx.xx.", [](V v, G g) { return KurvoclBoxPoint(v, v + 6, g); }},
    {"BoxBox", {0, 0, 0, 1, 1, 0, .5, .5, 0, 2, 2, 0}, "xx.xx.xx.xx.", [](V v, G g) { return KurvoclBoxBox(v, v + 6, g); }},
};
// clang-format on

TEST(Predicates, FailOnNaNInWhatTheyRead) {
  for (const Row& row : kRows) {
    Globals g;
    EXPECT_NE(row.holds(row.arguments.data(), &g), 0) << row.name;
    ASSERT_EQ(std::string(row.reads).size(), row.arguments.size()) << row.name;
    for (size_t i = 0; i < row.arguments.size(); ++i) {
      std::vector<double> arguments = row.arguments;
      arguments[i] = kNaN;
      EXPECT_EQ(row.holds(arguments.data(), &g) == 0, row.reads[i] == 'x')
          << row.name << " with a NaN as argument " << i;
    }
  }
}

}  // namespace
}  // namespace kurvo_test
