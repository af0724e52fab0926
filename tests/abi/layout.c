/* The layout that programs compiled against the header rely on: sizes and offsets of the records,
 * and where the arrays of a data block lie. */
#include <kurvo_outline.h>
#include <stddef.h>
#include <stdio.h>

typedef struct Row {
  const char *what;
  size_t got;
  size_t want;
} Row;

#define SIZE(type, want) \
  { "sizeof " #type, sizeof(type), want }
#define FIELD(type, field, want) \
  { #type "." #field, offsetof(type, field), want }

static const Row kRecords[] = {
    SIZE(Coord, 24),
    SIZE(HCoord, 32),
    SIZE(Box, 48),

    SIZE(GlobalVar, 1056),
    FIELD(GlobalVar, epsilon, 0),
    FIELD(GlobalVar, epsilon_1, 8),
    FIELD(GlobalVar, epsilon2, 16),
    FIELD(GlobalVar, epsilon0, 24),
    FIELD(GlobalVar, error, 32),
    FIELD(GlobalVar, depth, 36),
    FIELD(GlobalVar, stack, 40),
    FIELD(GlobalVar, depth0, 544),
    FIELD(GlobalVar, stack0, 552),

    SIZE(Curve, 40),
    FIELD(Curve, type, 0),
    FIELD(Curve, data, 8),
    FIELD(Curve, attr, 16),
    FIELD(Curve, attr_p1, 24),
    FIELD(Curve, attr_p2, 32),

    SIZE(KurvoLine, 104),
    FIELD(KurvoLine, start, 0),
    FIELD(KurvoLine, end, 24),

    SIZE(KurvoArc, 104),
    FIELD(KurvoArc, radius, 0),
    FIELD(KurvoArc, centre, 8),
    FIELD(KurvoArc, normal, 32),
    FIELD(KurvoArc, start, 56),
    FIELD(KurvoArc, end, 80),

    SIZE(KurvoBezier, 104),
    FIELD(KurvoBezier, degree, 0),
    FIELD(KurvoBezier, points, 8),

    SIZE(KurvoRBezier, 104),
    FIELD(KurvoRBezier, degree, 0),
    FIELD(KurvoRBezier, points, 8),

    SIZE(KurvoBSpline, 104),
    FIELD(KurvoBSpline, order, 0),
    FIELD(KurvoBSpline, count, 4),
    FIELD(KurvoBSpline, points, 8),
    FIELD(KurvoBSpline, knots, 16),

    SIZE(KurvoRBSpline, 104),
    FIELD(KurvoRBSpline, order, 0),
    FIELD(KurvoRBSpline, count, 4),
    FIELD(KurvoRBSpline, points, 8),
    FIELD(KurvoRBSpline, knots, 16),

    SIZE(KurvoSegcv, 104),
    FIELD(KurvoSegcv, count, 0),
    FIELD(KurvoSegcv, curves, 8),
    FIELD(KurvoSegcv, widths, 16),

    SIZE(Cvseq, 16),
    FIELD(Cvseq, count, 0),
    FIELD(Cvseq, curves, 8),

    SIZE(CvParam, 16),
    FIELD(CvParam, count, 0),
    FIELD(CvParam, values, 8),

    SIZE(KurvoOrigin, 32),
    FIELD(KurvoOrigin, region, 0),
    FIELD(KurvoOrigin, loop, 4),
    FIELD(KurvoOrigin, curve, 8),
    FIELD(KurvoOrigin, kind, 12),
    FIELD(KurvoOrigin, from, 16),
    FIELD(KurvoOrigin, to, 24),

    SIZE(KurvoRegion, 24),
    FIELD(KurvoRegion, count, 0),
    FIELD(KurvoRegion, rule, 4),
    FIELD(KurvoRegion, loops, 8),
    FIELD(KurvoRegion, origins, 16),

    SIZE(KurvoOptions, 88),
    FIELD(KurvoOptions, size, 0),
    FIELD(KurvoOptions, flags, 4),
    FIELD(KurvoOptions, tol, 8),
    FIELD(KurvoOptions, gap, 16),
    FIELD(KurvoOptions, miter_limit, 24),
    FIELD(KurvoOptions, phase, 32),
    FIELD(KurvoOptions, join, 40),
    FIELD(KurvoOptions, cap, 44),
    FIELD(KurvoOptions, dash_count, 48),
    FIELD(KurvoOptions, reserved, 52),
    FIELD(KurvoOptions, dashes, 56),
    FIELD(KurvoOptions, proceed, 64),
    FIELD(KurvoOptions, user, 72),
    FIELD(KurvoOptions, reserved_p, 80),

    SIZE(KurvoReport, 64),
    FIELD(KurvoReport, gaps, 0),
    FIELD(KurvoReport, dropped, 4),
    FIELD(KurvoReport, unresolved, 8),
    FIELD(KurvoReport, capped, 12),
    FIELD(KurvoReport, moved, 16),
    FIELD(KurvoReport, dropped_area, 24),
    FIELD(KurvoReport, reserved, 32),

    SIZE(KurvoPlace, 64),
    FIELD(KurvoPlace, index, 0),
    FIELD(KurvoPlace, t, 8),
    FIELD(KurvoPlace, point, 16),
    FIELD(KurvoPlace, tangent, 40),

    SIZE(KurvoMeeting, 56),
    FIELD(KurvoMeeting, index_a, 0),
    FIELD(KurvoMeeting, index_b, 4),
    FIELD(KurvoMeeting, kind, 8),
    FIELD(KurvoMeeting, a, 16),
    FIELD(KurvoMeeting, b, 24),
    FIELD(KurvoMeeting, point, 32),

    SIZE(KurvoMoments, 64),
    FIELD(KurvoMoments, length, 0),
    FIELD(KurvoMoments, area, 8),
    FIELD(KurvoMoments, centroid, 16),
    FIELD(KurvoMoments, xx, 40),
    FIELD(KurvoMoments, xy, 48),
    FIELD(KurvoMoments, yy, 56),
};

static int failures = 0;

static void Check(const char *what, size_t got, size_t want) {
  if (got == want) return;
  printf("%s: is %lu, must be %lu\n", what, (unsigned long)got, (unsigned long)want);
  ++failures;
}

static void CheckArray(const char *what, const void *block, const void *array, size_t want) {
  Check(what, (size_t)((const char *)array - (const char *)block), want);
}

static void CheckBlocks(void) {
  Curve cv;

  const KurvoBezier *bezier = KurvocvMallocCurve(&cv, CV_BEZIER, 3);
  Check("Bezier degree", (size_t)bezier->degree, 3);
  CheckArray("Bezier points", bezier, bezier->points, 104);
  KurvocvFreeCurve(&cv);

  const KurvoRBezier *rbezier = KurvocvMallocCurve(&cv, CV_RBEZIER, 2);
  Check("rational Bezier degree", (size_t)rbezier->degree, 2);
  CheckArray("rational Bezier points", rbezier, rbezier->points, 104);
  KurvocvFreeCurve(&cv);

  const KurvoBSpline *spline = KurvocvMallocCurve(&cv, CV_BSPLINE, 4, 7);
  Check("B-spline order", (size_t)spline->order, 4);
  Check("B-spline count", (size_t)spline->count, 7);
  CheckArray("B-spline points", spline, spline->points, 104);
  CheckArray("B-spline knots", spline, spline->knots, 104 + 7 * 24);
  KurvocvFreeCurve(&cv);

  const KurvoRBSpline *rspline = KurvocvMallocCurve(&cv, CV_RBSPLINE, 3, 5);
  Check("rational B-spline order", (size_t)rspline->order, 3);
  Check("rational B-spline count", (size_t)rspline->count, 5);
  CheckArray("rational B-spline points", rspline, rspline->points, 104);
  CheckArray("rational B-spline knots", rspline, rspline->knots, 104 + 5 * 32);
  KurvocvFreeCurve(&cv);

  const KurvoSegcv *segcv = KurvocvMallocCurve(&cv, CV_SEGCV, 2);
  Check("composite count", (size_t)segcv->count, 2);
  CheckArray("composite curves", segcv, segcv->curves, 104);
  CheckArray("composite widths", segcv, segcv->widths, 104 + 2 * 40);
  KurvocvFreeCurve(&cv);
}

int main(void) {
  for (size_t i = 0; i < sizeof kRecords / sizeof kRecords[0]; ++i) {
    Check(kRecords[i].what, kRecords[i].got, kRecords[i].want);
  }
  CheckBlocks();
  return failures != 0;
}
