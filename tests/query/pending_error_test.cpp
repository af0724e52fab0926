// Which functions return at once while an error is pending, and which run: one table.
#include <gtest/gtest.h>

#include <cstring>
#include <functional>

#include "build/curves.h"

namespace kurvo_test {
namespace {

// What the calls work on, fresh for each row.
struct Fixture {
  Globals g;
  Owned line = Make("l 0 0 4 0"), bezier = Make("b 0 0 1 2 4 0");
  Owned composite = Make("c 1 (b 0 0 1 2 4 0)");
  Owned out;
  Cvseq chain{}, copy{};
  Point p{1, 1, 0};
  double number = -77;
  Box box = {-77, -77, -77, -77, -77, -77};

  Fixture() { KurvocvCvseqInsert(line.get(), &chain, 0, &g); }
  Fixture(const Fixture&) = delete;
  Fixture& operator=(const Fixture&) = delete;
  ~Fixture() {
    KurvocvFreeCvseq(&chain);
    KurvocvFreeCvseq(&copy);
  }
};

struct Row {
  const char* name;
  bool stops;
  std::function<bool(Fixture&)> ran;  // calls the function and tells whether it did its work
};

const Row kRows[] = {
    {"KurvocvCopyCurve", true,
     [](Fixture& f) { return KurvocvCopyCurve(f.line.get(), f.out.get(), &f.g) != nullptr; }},
    {"KurvocvCopyCvseq", true,
     [](Fixture& f) { return KurvocvCopyCvseq(&f.chain, &f.copy, &f.g) != nullptr; }},
    {"KurvocvSegcvToCvseq", true,
     [](Fixture& f) {
       KurvocvSegcvToCvseq(f.composite.get(), &f.copy, &f.g);
       return f.copy.count == 1;
     }},
    {"KurvocvCvseqBoundBox", true,
     [](Fixture& f) {
       KurvocvCvseqBoundBox(&f.chain, f.box, &f.g);
       return f.box[3] == 4;
     }},
    {"KurvocvCvseqInsert", true,
     [](Fixture& f) {
       const Owned next = Make("l 4 0 5 0");
       KurvocvCvseqInsert(next.get(), &f.chain, 1, &f.g);
       return f.chain.count == 2;
     }},
    {"KurvocvIsLine", true,
     [](Fixture& f) { return KurvocvIsLine(f.line.get(), &f.g) == KURVO_SHAPE_LINE; }},
    {"KurvocvChgOrder", true,
     [](Fixture& f) {
       KurvocvChgOrder(f.line.get(), &f.g);
       return f.line.block<KurvoLine>().start[0] == 4;
     }},
    {"KurvocvPosition", true,
     [](Fixture& f) {
       KurvocvPosition(f.line.get(), .5, f.p, &f.g);
       return f.p[0] == 2;
     }},
    {"KurvocvParameter", true,
     [](Fixture& f) {
       KurvocvParameter(f.line.get(), f.p, &f.number, &f.g);
       return f.number == .25;
     }},
    {"KurvocvConvert", true,
     [](Fixture& f) {
       f.out.get()->type = CV_BEZIER;
       return KurvocvConvert(f.line.get(), f.out.get(), &f.g) == KURVO_CONVERTED;
     }},
    {"KurvocvDivide", true,
     [](Fixture& f) {
       Owned after;
       KurvocvDivide(f.line.get(), .5, f.out.get(), after.get(), &f.g);
       return f.out->data && after->data;
     }},
    {"KurvocvNDivide", true,
     [](Fixture& f) {
       const CvParam none{};
       KurvocvNDivide(f.line.get(), &none, &f.copy, &f.g);
       return f.copy.count == 1;
     }},
    {"KurvocvExtendCurve", true,
     [](Fixture& f) {
       KurvocvExtendCurve(f.line.get(), .5, .5, f.out.get(), &f.g);
       return f.out->data != nullptr;
     }},
    {"KurvocvBsplRemoveKnots", true,
     [](Fixture& f) {
       const Owned spline = Make("B 0 0 1 1 2 2 | 0 0 1 2 2");
       KurvocvBsplRemoveKnots(spline.get(), f.out.get(), &f.g);
       return f.out->data != nullptr;
     }},
    {"KurvocvCvseqToSegcv", true,
     [](Fixture& f) {
       const Owned back = Make("l 4 0 0 0");
       Curve curves[] = {*f.line, *back};
       const Cvseq there_and_back{2, curves};
       KurvocvCvseqToSegcv(&there_and_back, f.out.get(), &f.g);
       return f.out->data != nullptr;
     }},
    {"KurvocvCvseqNormal", true,
     [](Fixture& f) {
       Curve bent = *f.bezier;
       const Cvseq chain{1, &bent};
       KurvocvCvseqNormal(&chain, f.p, f.box, &f.g);
       return f.box[2] == -1;
     }},
    {"KurvocvOffsetCurve", true,
     [](Fixture& f) {
       KurvocvOffsetCurve(f.line.get(), Point{0, 0, 1}, 1, 0, &f.copy, &f.g);
       return f.copy.count == 1;
     }},
    {"KurvocvMatch", true,
     [](Fixture& f) { return KurvocvMatch(f.line.get(), f.line.get(), &f.g) == KURVO_MATCH_SAME; }},
    {"KurvocrCurveCurve", true,
     [](Fixture& f) {
       return KurvocrCurveCurve(f.line.get(), f.bezier.get(), nullptr, nullptr, 0, &f.g) ==
              KURVO_FOUND;
     }},
    {"KurvocvGenBspl", true,
     [](Fixture& f) {
       const double points[] = {0, 0, 0, 1, 1, 0};
       KurvocvGenBspl(points, 2, 2, f.out.get(), &f.g);
       return f.out->data != nullptr;
     }},
    {"KurvocvDeriv", true,
     [](Fixture& f) {
       KurvocvDeriv(f.line.get(), .5, f.p, &f.g);
       return f.p[0] == 4;
     }},
    {"KurvocvNDeriv", true,
     [](Fixture& f) {
       KurvocvNDeriv(f.line.get(), .5, f.p, 1, &f.g);
       return f.p[0] == 4;
     }},
    {"KurvocvCurvature", true,
     [](Fixture& f) {
       KurvocvCurvature(f.line.get(), .5, f.p, &f.g);
       return f.p[0] == 0;
     }},
    {"KurvocvCurveLen", true,
     [](Fixture& f) {
       KurvocvCurveLen(f.line.get(), 0, 1, &f.number, &f.g);
       return f.number == 4;
     }},
    {"KurvocvDistPoint", true,
     [](Fixture& f) { return KurvocvDistPoint(f.line.get(), f.p, &f.number, &f.g) == 1; }},
    {"KurvocvMvStartPoint", true,
     [](Fixture& f) {
       KurvocvMvStartPoint(f.line.get(), f.p, &f.g);
       return f.line.block<KurvoLine>().start[0] == 1;
     }},
    {"KurvocvMvEndPoint", true,
     [](Fixture& f) {
       KurvocvMvEndPoint(f.line.get(), f.p, &f.g);
       return f.line.block<KurvoLine>().end[0] == 5;
     }},
    {"KurvocvMove", false,
     [](Fixture& f) {
       KurvocvMove(f.line.get(), f.p, &f.g);
       return f.line.block<KurvoLine>().start[0] == 1;
     }},
    {"KurvocvRotate", false,
     [](Fixture& f) {
       KurvocvRotate(f.line.get(), f.p, Point{0, 0, 1}, M_PI, &f.g);
       return f.line.block<KurvoLine>().end[1] > 1;
     }},
    {"KurvocvMirror", false,
     [](Fixture& f) {
       KurvocvMirror(f.line.get(), f.p, Point{1, 0, 0}, &f.g);
       return f.line.block<KurvoLine>().start[0] == 2;
     }},
    {"KurvocvScale", false,
     [](Fixture& f) {
       KurvocvScale(f.line.get(), f.p, Point{0, 0, 0}, 2, &f.g);
       return f.line.block<KurvoLine>().start[0] == -1;
     }},
    {"KurvocvDistCurve", true,
     [](Fixture& f) {
       const Owned other = Make("l 1 2 3 2");
       return KurvocvDistCurve(f.line.get(), other.get(), &f.number, nullptr, &f.g) == 2;
     }},
    {"KurvofcPOntoCurve", false,
     [](Fixture& f) {
       KurvofcPOntoCurve(f.line.get(), f.p, &f.g);
       return f.p[1] == 0;
     }},
    {"KurvocvStartPoint", false,
     [](Fixture& f) {
       KurvocvStartPoint(f.line.get(), f.p, &f.g);
       return f.p[0] == 0;
     }},
    {"KurvocvEndPoint", false,
     [](Fixture& f) {
       KurvocvEndPoint(f.line.get(), f.p, &f.g);
       return f.p[0] == 4;
     }},
    {"KurvocvDegree", false, [](Fixture& f) { return KurvocvDegree(f.bezier.get(), &f.g) == 2; }},
    {"KurvocvDegenerate", false,
     [](Fixture& f) { return KurvocvDegenerate(Make("l 3 3 3 3").get(), f.p, &f.g) == 1; }},
    {"KurvocvBoundBox", false,
     [](Fixture& f) {
       KurvocvBoundBox(f.line.get(), f.box, &f.g);
       return f.box[3] == 4;
     }},
    {"KurvosfPntBoundForPlane", true,
     [](Fixture& f) {
       const Owned back = Make("b 4 0 2 4 0 0");
       Curve curves[] = {*f.line.get(), *back.get()};
       const Cvseq closed{2, curves};
       uint32_t result = 0;
       KurvosfPntBoundForPlane(Point{0, 0, 1}, &closed, Point{2, 1, 0}, &result, &f.g);
       return result == KURVO_REGION_INSIDE;
     }},
    {"KurvoclSetEpsilon", false,
     [](Fixture& f) {
       KurvoclSetEpsilon(1e-3, 1e-3, &f.g);
       return GetEpsilon(&f.g) == 1e-3;
     }},
    {"KurvoclPushEpsilon0", false,
     [](Fixture& f) {
       KurvoclPushEpsilon0(1e-3, &f.g);
       return GetEpsilon0(&f.g) == 1e-3;
     }},
    {"KurvoclPopEpsilon", false,
     [](Fixture& f) {
       f.g.stack[0] = 5e-3;
       f.g.depth = 1;
       KurvoclPopEpsilon(&f.g);
       return GetEpsilon(&f.g) == 5e-3;
     }},
    {"KurvoclUnitVector", false,
     [](Fixture& f) {
       Point v{3, 4, 0};
       KurvoclUnitVector(v, &f.g);
       return v[1] == .8;
     }},
    {"KurvoclOnArc", false,
     [](Fixture& f) {
       const Owned arc = Arc(0, 0, 1, 0, 1);
       return KurvoclOnArc(Point{1, 0, 0}, &arc.block<KurvoArc>(), &f.number, &f.g) == 1;
     }},
    {"KurvofcRPPcirc", false,
     [](Fixture& f) {
       return KurvofcRPPcirc(5, Point{0, 0, 0}, Point{6, 0, 0}, f.p, 0, &f.g) == 1;
     }},
    {"KurvoMalloc", false,
     [](Fixture& f) {
       void* block = KurvoMalloc(8, &f.g);
       KurvoFree(block);
       return block != nullptr;
     }},
};

TEST(PendingError, StopsSomeFunctionsAndNotOthers) {
  struct Pending {
    int code;
    bool error;
  };
  for (const Row& row : kRows) {
    for (const Pending& pending :
         {Pending{KURVO_ERR_NONE, false}, Pending{KURVO_WARN_SHORT_VECTOR, false},
          Pending{KURVO_ERR_TOLERANCE, true}, Pending{KURVO_ERR_MEMORY, true}}) {
      Fixture f;
      f.g.error = pending.code;
      EXPECT_EQ(row.ran(f), !(pending.error && row.stops)) << row.name << ' ' << pending.code;
      EXPECT_EQ(KurvoErrGet(&f.g), pending.code) << row.name;  // success clears nothing
    }
  }
}

}  // namespace
}  // namespace kurvo_test
