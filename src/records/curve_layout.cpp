// Pins the layout of the records of the interface: callers fill them in place.
#include <cstddef>

#include "kurvo.h"

static_assert(sizeof(Coord) == 24 && sizeof(HCoord) == 32 && sizeof(Box) == 48);

static_assert(sizeof(Curve) == 40);
static_assert(offsetof(Curve, type) == 0 && offsetof(Curve, data) == 8);
static_assert(offsetof(Curve, attr) == 16 && offsetof(Curve, attr_p1) == 24);
static_assert(offsetof(Curve, attr_p2) == 32);

static_assert(sizeof(KurvoLine) == 104);
static_assert(offsetof(KurvoLine, start) == 0 && offsetof(KurvoLine, end) == 24);

static_assert(sizeof(KurvoArc) == 104);
static_assert(offsetof(KurvoArc, radius) == 0 && offsetof(KurvoArc, centre) == 8);
static_assert(offsetof(KurvoArc, normal) == 32 && offsetof(KurvoArc, start) == 56);
static_assert(offsetof(KurvoArc, end) == 80);

static_assert(sizeof(KurvoBezier) == 104 && sizeof(KurvoRBezier) == 104);
static_assert(offsetof(KurvoBezier, degree) == 0 && offsetof(KurvoBezier, points) == 8);
static_assert(offsetof(KurvoRBezier, degree) == 0 && offsetof(KurvoRBezier, points) == 8);

static_assert(sizeof(KurvoBSpline) == 104 && sizeof(KurvoRBSpline) == 104);
static_assert(offsetof(KurvoBSpline, order) == 0 && offsetof(KurvoBSpline, count) == 4);
static_assert(offsetof(KurvoBSpline, points) == 8 && offsetof(KurvoBSpline, knots) == 16);
static_assert(offsetof(KurvoRBSpline, order) == 0 && offsetof(KurvoRBSpline, count) == 4);
static_assert(offsetof(KurvoRBSpline, points) == 8 && offsetof(KurvoRBSpline, knots) == 16);

static_assert(sizeof(KurvoSegcv) == 104);
static_assert(offsetof(KurvoSegcv, count) == 0 && offsetof(KurvoSegcv, curves) == 8);
static_assert(offsetof(KurvoSegcv, widths) == 16);

static_assert(sizeof(Cvseq) == 16);
static_assert(offsetof(Cvseq, count) == 0 && offsetof(Cvseq, curves) == 8);

static_assert(sizeof(CvParam) == 16);
static_assert(offsetof(CvParam, count) == 0 && offsetof(CvParam, values) == 8);
