/* The layout that programs compiled against the header rely on: sizes and offsets of the records,
 * and where the arrays of a data block lie. */
#include <kurvo_outline.h>
#include <stddef.h>
#include <stdio.h>
#include <string.h>

typedef struct Row {
  const char *what;
  size_t got;
  size_t want;
} Row;

#define SIZE(type, want) \
  { "sizeof " #type, sizeof(type), want }
#define FIELD(type, field, want) \
  { #type "." #field, offsetof(type, field), want }

/* clang-format off */
static const Row kRecords[] = {
    SIZE(Coord, 24), SIZE(HCoord, 32), SIZE(Box, 48),
    SIZE(GlobalVar, 1056), FIELD(GlobalVar, epsilon, 0), FIELD(GlobalVar, epsilon_1, 8), FIELD(GlobalVar, epsilon2, 16), FIELD(GlobalVar, epsilon0, 24),
    FIELD(GlobalVar, error, 32), FIELD(GlobalVar, depth, 36), FIELD(GlobalVar, stack, 40), FIELD(GlobalVar, depth0, 544), FIELD(GlobalVar, stack0, 552),
    SIZE(Curve, 40), FIELD(Curve, type, 0), FIELD(Curve, data, 8), FIELD(Curve, attr, 16), FIELD(Curve, attr_p1, 24), FIELD(Curve, attr_p2, 32),
    SIZE(KurvoLine, 104), FIELD(KurvoLine, start, 0), FIELD(KurvoLine, end, 24),
    SIZE(KurvoArc, 104), FIELD(KurvoArc, radius, 0), FIELD(KurvoArc, centre, 8), FIELD(KurvoArc, normal, 32), FIELD(KurvoArc, start, 56), FIELD(KurvoArc, end, 80),
    SIZE(KurvoBezier, 104), FIELD(KurvoBezier, degree, 0), FIELD(KurvoBezier, points, 8),
    SIZE(KurvoRBezier, 104), FIELD(KurvoRBezier, degree, 0), FIELD(KurvoRBezier, points, 8),
    SIZE(KurvoBSpline, 104), FIELD(KurvoBSpline, order, 0), FIELD(KurvoBSpline, count, 4), FIELD(KurvoBSpline, points, 8), FIELD(KurvoBSpline, knots, 16),
    SIZE(KurvoRBSpline, 104), FIELD(KurvoRBSpline, order, 0), FIELD(KurvoRBSpline, count, 4), FIELD(KurvoRBSpline, points, 8), FIELD(KurvoRBSpline, knots, 16),
    SIZE(KurvoSegcv, 104), FIELD(KurvoSegcv, count, 0), FIELD(KurvoSegcv, curves, 8), FIELD(KurvoSegcv, widths, 16),
    SIZE(Cvseq, 16), FIELD(Cvseq, count, 0), FIELD(Cvseq, curves, 8),
    SIZE(CvParam, 16), FIELD(CvParam, count, 0), FIELD(CvParam, values, 8),
    SIZE(KurvoOrigin, 32), FIELD(KurvoOrigin, region, 0), FIELD(KurvoOrigin, loop, 4), FIELD(KurvoOrigin, curve, 8), FIELD(KurvoOrigin, kind, 12), FIELD(KurvoOrigin, from, 16), FIELD(KurvoOrigin, to, 24),
    SIZE(KurvoRegion, 24), FIELD(KurvoRegion, count, 0), FIELD(KurvoRegion, rule, 4), FIELD(KurvoRegion, loops, 8), FIELD(KurvoRegion, origins, 16),
    SIZE(KurvoOptions, 88), FIELD(KurvoOptions, size, 0), FIELD(KurvoOptions, flags, 4), FIELD(KurvoOptions, tol, 8), FIELD(KurvoOptions, gap, 16), FIELD(KurvoOptions, miter_limit, 24), FIELD(KurvoOptions, phase, 32), FIELD(KurvoOptions, join, 40), FIELD(KurvoOptions, cap, 44), FIELD(KurvoOptions, dash_count, 48), FIELD(KurvoOptions, reserved, 52), FIELD(KurvoOptions, dashes, 56), FIELD(KurvoOptions, proceed, 64), FIELD(KurvoOptions, user, 72), FIELD(KurvoOptions, reserved_p, 80),
    SIZE(KurvoReport, 64), FIELD(KurvoReport, gaps, 0), FIELD(KurvoReport, dropped, 4), FIELD(KurvoReport, unresolved, 8), FIELD(KurvoReport, capped, 12), FIELD(KurvoReport, moved, 16), FIELD(KurvoReport, dropped_area, 24), FIELD(KurvoReport, reserved, 32),
    SIZE(KurvoPlace, 64), FIELD(KurvoPlace, index, 0), FIELD(KurvoPlace, t, 8), FIELD(KurvoPlace, point, 16), FIELD(KurvoPlace, tangent, 40),
    SIZE(KurvoMeeting, 56), FIELD(KurvoMeeting, index_a, 0), FIELD(KurvoMeeting, index_b, 4), FIELD(KurvoMeeting, kind, 8), FIELD(KurvoMeeting, a, 16), FIELD(KurvoMeeting, b, 24), FIELD(KurvoMeeting, point, 32),
    SIZE(KurvoMoments, 64), FIELD(KurvoMoments, length, 0), FIELD(KurvoMoments, area, 8), FIELD(KurvoMoments, centroid, 16), FIELD(KurvoMoments, xx, 40), FIELD(KurvoMoments, xy, 48), FIELD(KurvoMoments, yy, 56),
};
/* clang-format on */

static int failures = 0;

static void Check(const char *what, size_t got, size_t want) {
  if (got == want) return;
  printf("%s: is %lu, must be %lu\n", what, (unsigned long)got, (unsigned long)want);
  ++failures;
}

/* Sizes and arrays lie alike in all free-form blocks and composites. */
static void CheckBlock(const char *what, int type, int first, int second, size_t points,
                       size_t knots) {
  Curve cv;
  const char *data = KurvocvMallocCurve(&cv, type, first, second);
  KurvoBSpline block;
  memcpy(&block, data, sizeof block);
  Check(what, (size_t)block.order, (size_t)first);
  Check(what, (size_t)((const char *)block.points - data), points);
  if (knots > 0) Check(what, (size_t)((const char *)block.knots - data), knots);
  if (second > 0) Check(what, (size_t)block.count, (size_t)second);
  KurvocvFreeCurve(&cv);
  Check(what, cv.data != NULL || cv.type != 0, 0);
}

int main(void) {
  for (size_t i = 0; i < sizeof kRecords / sizeof kRecords[0]; ++i) {
    Check(kRecords[i].what, kRecords[i].got, kRecords[i].want);
  }
  CheckBlock("Bezier", CV_BEZIER, 3, 0, 104, 0);
  CheckBlock("rational Bezier", CV_RBEZIER, 2, 0, 104, 0);
  CheckBlock("B-spline", CV_BSPLINE, 4, 7, 104, 104 + 7 * 24);
  CheckBlock("rational B-spline", CV_RBSPLINE, 3, 5, 104, 104 + 5 * 32);
  CheckBlock("composite", CV_SEGCV, 2, 0, 104, 104 + 2 * 40);
  Check("no sequence", KurvocvMallocCvseq(NULL, 3) != NULL, 0);
  return failures != 0;
}
