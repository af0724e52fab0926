/* kurvo.h - the public interface of Kurvo, a planar curve geometry kernel.
 *
 * Kurvo answers questions about flat outlines made of line segments, circular arcs, Bezier curves,
 * rational Bezier curves, B-splines, rational B-splines and composites of these: where is the curve
 * at a parameter, which parameter has a point, how far does it reach, where does it start and end.
 *
 * First steps
 *   GlobalVar g;
 *   KurvoInitGlobalVar(&g);                     one record of tolerances and error state a thread
 *   Curve curve;
 *   KurvocvInitCurve(&curve);
 *   KurvoBezier *b = KurvocvMallocCurve(&curve, CV_BEZIER, 3);
 *   ... fill b->points[0 .. 3] ...
 *   Coord p;
 *   KurvocvPosition(&curve, 0.5, p, &g);
 *   KurvocvFreeCurve(&curve);
 *
 * Ownership
 *   The caller owns every header (`GlobalVar`, `Curve`) and every output array. Data blocks come
 * from the process heap (malloc) and belong to the one header that points at them; KurvocvFreeCurve
 * gives them back. Copies are deep and never share a block. A function that makes a curve
 * overwrites the header it is given without freeing what that header held: free first what is to be
 * dropped. Input records are never written to.
 *
 * Errors: a sticky code
 *   A function that fails writes one code into g->error and returns normally with a neutral result.
 *   The code stays until KurvoErrReset or KurvoInitGlobalVar; success never clears it; the last
 *   failure wins. Most curve functions return at once while an error (severity 2 or 3) is pending,
 *   and the comment of each says so. So call, check once, reset:
 *
 *     KurvocvPosition(&a, t, p, &g);
 *     KurvocvPosition(&b, t, q, &g);
 *     if (!KurvoOk(&g)) {
 *       report(KurvoErrGet(&g));
 *       KurvoErrReset(&g);
 *     }
 *
 *   A warning (severity 1) leaves KurvoOk true: the result stands, with a caveat.
 *   No exception leaves the library, nothing is printed, nothing aborts. A record that cannot be
 *   right (no data, a null array, a negative count, order < 1, fewer control points than the order,
 *   composites nested more than 64 deep) is refused with KURVO_ERR_CURVE before it is read further.
 *   A failed allocation is KURVO_ERR_MEMORY.
 *
 * Threads
 *   There is no process-wide state and no lock. A `GlobalVar` must not be used by two threads at
 *   once; curves may be read by any number of threads.
 *
 * Units and parameters
 *   Lengths are in the caller's unit, angles in radians. Geometry is planar: z is carried, written
 * as 0 by constructions, and normals lie along z. Lines, arcs and Bezier kinds run over [0, 1],
 *   B-spline kinds over [knots[order - 1], knots[count]], composites over [0, sum of widths].
 *   Parameters, knots and weights count as equal when they round to the same multiple of 1e-6.
 *
 * Tolerances
 *   epsilon    length: two points are the same when every coordinate agrees within epsilon
 *   epsilon2   epsilon squared, for squared lengths
 *   epsilon_1  a second length tolerance, kept for the caller
 *   epsilon0   dimensionless: angles of KurvoclSameVector, weights of KurvoclSameHCoord
 *   Every test has the form "tolerance >= |difference|", so a NaN fails it.
 */
#ifndef KURVO_H
#define KURVO_H

#include <stdint.h>

#if defined(_WIN32)
#define KURVO_API
#else
#define KURVO_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
#define KURVO_NOEXCEPT noexcept
extern "C" {
#else
#define KURVO_NOEXCEPT
#endif

/* ---------------------------------------------------------------------------------------------
 * Records
 * ------------------------------------------------------------------------------------------- */

typedef double Coord[3];  /* point or vector: x, y, z */
typedef double HCoord[4]; /* weighted point: Cartesian x, y, z (not multiplied) and the weight w */
typedef double Box[6];    /* minimum x, y, z, then maximum x, y, z */

#define KURVO_STACK_SIZE 63 /* saved values that each tolerance stack holds */

/* Tolerances and error state. 1056 bytes; unusable before KurvoInitGlobalVar. */
typedef struct GlobalVar {
  double epsilon;                  /* length tolerance */
  double epsilon_1;                /* second length tolerance */
  double epsilon2;                 /* epsilon squared */
  double epsilon0;                 /* dimensionless tolerance */
  int32_t error;                   /* pending code, 0 for none */
  int32_t depth;                   /* saved values in stack */
  double stack[KURVO_STACK_SIZE];  /* saved epsilon, oldest first */
  int32_t depth0;                  /* saved values in stack0 */
  int32_t reserved;                /* alignment */
  double stack0[KURVO_STACK_SIZE]; /* saved epsilon0, oldest first */
} GlobalVar;

/* Type codes of a curve. */
enum {
  CV_LINE = 16,     /* line segment:         KurvoLine */
  CV_ARC = 32,      /* circular arc:         KurvoArc */
  CV_BEZIER = 48,   /* Bezier curve:         KurvoBezier */
  CV_RBEZIER = 64,  /* rational Bezier:      KurvoRBezier */
  CV_BSPLINE = 80,  /* B-spline:             KurvoBSpline */
  CV_RBSPLINE = 96, /* rational B-spline:    KurvoRBSpline */
  CV_SEGCV = 1008   /* composite of curves:  KurvoSegcv */
};

/* Header of a curve, 40 bytes, owned by the caller. The attribute words belong to the caller too:
 * the library sets them to 0 when it makes a curve and never reads them. */
typedef struct Curve {
  int32_t type; /* a type code; 0 when empty */
  void *data;   /* the data block, or null when empty */
  int32_t attr;
  uint64_t attr_p1;
  uint64_t attr_p2;
} Curve;

/* Data blocks. Each begins with a header of 104 bytes; arrays follow it inside the same block. */

typedef struct KurvoLine {
  Coord start;
  Coord end;
  double unused[7];
} KurvoLine;

typedef struct KurvoArc {
  double radius;
  Coord centre;
  Coord normal; /* z < 0: clockwise from start to end; otherwise counter-clockwise */
  Coord start;
  Coord end;
} KurvoArc;

typedef struct KurvoBezier {
  int32_t degree; /* n >= 0 */
  int32_t reserved;
  Coord *points; /* n + 1 control points */
  double unused[11];
} KurvoBezier;

typedef struct KurvoRBezier {
  int32_t degree; /* n >= 0 */
  int32_t reserved;
  HCoord *points; /* n + 1 weighted control points */
  double unused[11];
} KurvoRBezier;

typedef struct KurvoBSpline {
  int32_t order; /* k = degree + 1 >= 1 */
  int32_t count; /* m >= k control points */
  Coord *points; /* m control points */
  double *knots; /* k + m knots, ascending */
  double unused[10];
} KurvoBSpline;

typedef struct KurvoRBSpline {
  int32_t order;  /* k = degree + 1 >= 1 */
  int32_t count;  /* m >= k control points */
  HCoord *points; /* m weighted control points */
  double *knots;  /* k + m knots, ascending */
  double unused[10];
} KurvoRBSpline;

/* Piece i covers the parameters from the sum of the widths before it over widths[i]; its own
 * parameter is scaled to that stretch. Pieces may be composites, up to 64 levels. */
typedef struct KurvoSegcv {
  int32_t count; /* c >= 0 pieces */
  int32_t reserved;
  Curve *curves;  /* c headers; each piece owns its own block */
  double *widths; /* c parameter widths */
  double unused[10];
} KurvoSegcv;

/* ---------------------------------------------------------------------------------------------
 * Codes
 * ------------------------------------------------------------------------------------------- */

/* Error codes, in bits: severity 0-1, module 2-9, group 10-21, action 22-25. */
enum {
  KURVO_ERR_NONE = 0,
  KURVO_ERR_MEMORY = 0xE00C47,      /* fatal: memory could not be obtained */
  KURVO_ERR_CURVE = 0x754C52,       /* curve type not supported, or a record that cannot be right */
  KURVO_ERR_TOLERANCE = 0x755C52,   /* tolerance argument out of range */
  KURVO_ERR_STACK_EMPTY = 0x7B5452, /* pop from an empty tolerance stack */
  KURVO_WARN_SHORT_VECTOR = 0x7BA451,   /* warning: vector too short to have a direction */
  KURVO_ERR_SAME_POINTS = 0x63DC52,     /* circle through two points that are the same */
  KURVO_ERR_RADIUS_TOO_SMALL = 0xA3E876 /* circle through two points further apart than 2 r */
};

/* Severity of a code. */
enum {
  KURVO_SEVERITY_NONE = 0,
  KURVO_SEVERITY_WARNING,
  KURVO_SEVERITY_ERROR,
  KURVO_SEVERITY_FATAL
};

/* Results of KurvocvParameter. */
enum {
  KURVO_ON_CURVE = 2, /* the point lies on the curve within epsilon */
  KURVO_OFF_CURVE = 4 /* it does not; the parameter is that of the best candidate */
};

/* Results of KurvocvIsLine. */
enum {
  KURVO_SHAPE_UNKNOWN = -1, /* no data, or an error is pending */
  KURVO_SHAPE_BENT = 0,     /* not straight */
  KURVO_SHAPE_STRAIGHT = 1, /* another type whose control points run straight ahead */
  KURVO_SHAPE_LINE = 2      /* a line record */
};

/* ---------------------------------------------------------------------------------------------
 * Tolerances
 *
 * These functions run whatever error is pending. None checks `g` for null. Cost: constant.
 * ------------------------------------------------------------------------------------------- */

/* Writes every field of `g` (out): all four tolerances to their defaults (1e-6, 1e-6, 1e-12, 1e-6),
 * both stacks empty, no error. May be called again at any time. Result: always 0. */
KURVO_API int KurvoInitGlobalVar(GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the length tolerance in force (length). */
KURVO_API double GetEpsilon(const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the second length tolerance (length), as KurvoclSetEpsilon left it. */
KURVO_API double GetEpsilon_1(const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the length tolerance squared (length squared). */
KURVO_API double GetEpsilon2(const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the dimensionless tolerance in force. */
KURVO_API double GetEpsilon0(const GlobalVar *g) KURVO_NOEXCEPT;

/* Sets `epsilon` (and `epsilon2`) to `eps` and `epsilon_1` to `eps1`; the stacks stay.
 * eps, eps1 (in, length): each in [1e-6, 0.01].
 * Errors: KURVO_ERR_TOLERANCE when either is outside or NaN; then nothing else changes. */
KURVO_API void KurvoclSetEpsilon(double eps, double eps1, GlobalVar *g) KURVO_NOEXCEPT;

/* Sets `epsilon0` to `eps0` (in, dimensionless, in [1e-6, 0.01]).
 * Errors: KURVO_ERR_TOLERANCE when it is outside or NaN; then nothing else changes. */
KURVO_API void KurvoclSetEpsilon0(double eps0, GlobalVar *g) KURVO_NOEXCEPT;

/* Saves `epsilon` on its stack and sets it to `eps`; `epsilon2` follows.
 * eps (in, length): any positive value, also one below 1e-6; above 0.01, and NaN, it becomes 0.01.
 * A full stack (63 saved values) ignores the call silently.
 * Errors: KURVO_ERR_TOLERANCE when eps <= 0; then nothing else changes. */
KURVO_API void KurvoclPushEpsilon(double eps, GlobalVar *g) KURVO_NOEXCEPT;

/* Restores the `epsilon` saved last; `epsilon2` follows.
 * Result: the tolerance that was in force before the call.
 * Errors: KURVO_ERR_STACK_EMPTY when nothing is saved; then nothing else changes. */
KURVO_API double KurvoclPopEpsilon(GlobalVar *g) KURVO_NOEXCEPT;

/* As KurvoclPushEpsilon, on `epsilon0` and its own stack. */
KURVO_API void KurvoclPushEpsilon0(double eps, GlobalVar *g) KURVO_NOEXCEPT;

/* As KurvoclPopEpsilon, on `epsilon0` and its own stack. */
KURVO_API double KurvoclPopEpsilon0(GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Error state and memory
 *
 * These functions run whatever error is pending. Cost: constant.
 * ------------------------------------------------------------------------------------------- */

/* Result: the pending code, KURVO_ERR_NONE when there is none. */
KURVO_API int KurvoErrGet(const GlobalVar *g) KURVO_NOEXCEPT;

/* Clears the pending code. */
KURVO_API void KurvoErrReset(GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 while the pending code is none or a warning, else 0. */
KURVO_API int KurvoOk(const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the severity of `code` (in), 0 to 3: KURVO_SEVERITY_*. */
KURVO_API int KurvoErrSeverity(int code) KURVO_NOEXCEPT;

/* Result: the module of `code` (in), 0 to 255: the part of the library that raised it. */
KURVO_API int KurvoErrModule(int code) KURVO_NOEXCEPT;

/* Result: the group of `code` (in), 0 to 4095: the condition. */
KURVO_API int KurvoErrGroup(int code) KURVO_NOEXCEPT;

/* Result: the action of `code` (in), 0 to 15: the class of remedy. */
KURVO_API int KurvoErrAction(int code) KURVO_NOEXCEPT;

/* Allocates `size` (in, bytes) from the process heap, uninitialised.
 * Result: the block, which the caller frees with KurvoFree; null for size 0 (no error) or failure.
 * Errors: KURVO_ERR_MEMORY. */
KURVO_API void *KurvoMalloc(uint32_t size, GlobalVar *g) KURVO_NOEXCEPT;

/* Resizes the block `p` (in; null allowed: as KurvoMalloc) to `size` (in, bytes), keeping its
 * content up to the smaller size. Size 0 frees a block that is not null, reports KURVO_ERR_MEMORY
 * and returns null. On failure `p` is still allocated. Result: the new block, which replaces `p`;
 * or null. Errors: KURVO_ERR_MEMORY. */
KURVO_API void *KurvoRealloc(void *p, uint32_t size, GlobalVar *g) KURVO_NOEXCEPT;

/* Frees a block (in; null allowed) that came from this library. */
KURVO_API void KurvoFree(void *p) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Curve records
 * ------------------------------------------------------------------------------------------- */

/* Empties the header `cv` (out; null allowed): all five fields 0. Frees nothing. */
KURVO_API void KurvocvInitCurve(Curve *cv) KURVO_NOEXCEPT;

/* Makes `cv` (out) a curve of the given type with a new data block; what it held is not freed.
 * type (in): a type code, followed by its int32_t sizes:
 *   CV_LINE, CV_ARC            none
 *   CV_BEZIER, CV_RBEZIER      degree >= 0
 *   CV_BSPLINE, CV_RBSPLINE    order >= 1, number of control points >= 0
 *   CV_SEGCV                   number of pieces >= 0; the piece headers are emptied
 * Points, knots, weights and widths are uninitialised: fill them before use.
 * Result: the data block (KurvoLine ... KurvoSegcv); null for a null header, an unknown type or an
 * impossible size (then `cv` is untouched) and when memory fails (then `cv` is empty).
 * Writes no error: there is no record to write it to. The caller frees with KurvocvFreeCurve.
 * Cost: one allocation; linear in the number of pieces for composites. */
KURVO_API void *KurvocvMallocCurve(Curve *cv, int32_t type, ...) KURVO_NOEXCEPT;

/* Frees the block of `cv` (in/out; null allowed) and, for a composite, those of all its pieces,
 * however deep they nest; then type 0 and data null. The attribute words stay. A typed header
 * without data is fine. Cost: linear in the number of pieces; constant stack. */
KURVO_API void KurvocvFreeCurve(Curve *cv) KURVO_NOEXCEPT;

/* Makes `dst` (out) a deep copy of `src` (in). `dst` is emptied first, without freeing what it
 * held, also when the call is refused; the attribute words of the copy are 0. Result: the new data
 * block; null when either header is null, when `src` has no data (`dst` is then typed but empty)
 * and on failure. The caller frees `dst` with KurvocvFreeCurve. Errors: KURVO_ERR_CURVE for an
 * unknown type or impossible sizes (`dst` keeps the type, without data; in a composite the pieces
 * after such a piece stay empty, and the rest of the copy stands); KURVO_ERR_MEMORY (`dst` is
 * empty). Error pending: returns null at once. Cost: linear in the size of the curve. */
KURVO_API void *KurvocvCopyCurve(const Curve *src, Curve *dst, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Numbers, vectors and coordinates
 *
 * These functions run whatever error is pending; only KurvoclUnitVector writes one. Arguments are
 * in unless named out. An out array may be the same as an input unless stated. Cost: constant.
 * ------------------------------------------------------------------------------------------- */

/* Result: 1 when a > b + epsilon, -1 when b - epsilon > a, else 0 (lengths). */
KURVO_API int KurvoclCompare(double a, double b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when a > epsilon, else 0. */
KURVO_API int KurvoclPositive(double a, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when a < -epsilon, else 0. */
KURVO_API int KurvoclNegative(double a, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when |a - b| <= epsilon, else 0. */
KURVO_API int KurvoclSame(double a, double b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the squared length |a| <= epsilon2, else 0. */
KURVO_API int KurvoclZero2(double a, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: |a|, by clearing the sign bit: -0.0 gives 0.0, a NaN keeps its payload. */
KURVO_API double KurvoclFabs(double a) KURVO_NOEXCEPT;

/* dst (out) = src. */
KURVO_API void KurvoclCopyVector(const Coord src, Coord dst) KURVO_NOEXCEPT;

/* out = a - b. */
KURVO_API void KurvoclSubVector(const Coord a, const Coord b, Coord out) KURVO_NOEXCEPT;

/* out = s v. */
KURVO_API void KurvoclSclVector(double s, const Coord v, Coord out) KURVO_NOEXCEPT;

/* Result: the scalar product of a and b over x, y and z. */
KURVO_API double KurvoclInnerProduct(const Coord a, const Coord b) KURVO_NOEXCEPT;

/* out = a x b, the vector product. `out` must be neither a nor b. */
KURVO_API void KurvoclOuterProduct(const Coord a, const Coord b, Coord out) KURVO_NOEXCEPT;

/* Result: the length of v over x, y and z. */
KURVO_API double KurvoclVectorSize(const Coord v) KURVO_NOEXCEPT;

/* Result: the planar distance of p and q; z is ignored. */
KURVO_API double KurvoclDistPoint(const Coord p, const Coord q) KURVO_NOEXCEPT;

/* out = (x, y, z). */
KURVO_API void KurvoclSetCoord(Coord out, double x, double y, double z) KURVO_NOEXCEPT;

/* out = (x, y, z) with weight w. */
KURVO_API void KurvoclSetHCoord(HCoord out, double x, double y, double z, double w) KURVO_NOEXCEPT;

/* out = v turned by `angle` (radians) about `axis`, which must be of unit length (not checked):
 * Rodrigues' rotation. `out` must not be v. */
KURVO_API void KurvoclRotateVector(const Coord axis, double angle, const Coord v,
                                   Coord out) KURVO_NOEXCEPT;

/* out = v turned by `angle` (radians) in the plane, counter-clockwise. `out` must not be v. */
KURVO_API void KurvofcRotateVector(const Coord v, double angle, Coord out) KURVO_NOEXCEPT;

/* Result: 1 when |x|, |y| and |z| are all <= epsilon, else 0. */
KURVO_API int KurvoclZeroVector(const Coord v, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when |x|, |y| and |z| are all <= epsilon2, else 0. */
KURVO_API int KurvoclZeroVector2(const Coord v, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when a and b agree within epsilon in each of x, y and z, else 0. */
KURVO_API int KurvoclSameCoord(const Coord a, const Coord b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when x, y, z agree within epsilon and the weights within epsilon0, else 0. */
KURVO_API int KurvoclSameHCoord(const HCoord a, const HCoord b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Scales v (in/out) to unit length. A vector whose components are all within epsilon of 0 becomes
 * the zero vector. Errors: KURVO_WARN_SHORT_VECTOR in that case. */
KURVO_API void KurvoclUnitVector(Coord v, GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when a and b have the same length within epsilon (over x, y, z) and the same planar
 * direction within epsilon0 radians, else 0. */
KURVO_API int KurvoclSameVector(const Coord a, const Coord b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the planar angle between a and b in [0, pi] radians; an angle within epsilon below 0
 * comes out as the small negative number that it is. */
KURVO_API double KurvoclVectorAngle(const Coord a, const Coord b,
                                    const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the planar directions of a and b are the same or opposite within epsilon radians,
 * else 0. */
KURVO_API int KurvoclParaVector(const Coord a, const Coord b, const GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Points, lines, circles and boxes
 *
 * These functions run whatever error is pending. A line is six doubles, start x, y, z and end x, y,
 * z (the head of a KurvoLine). Arguments are in unless named out. Cost: constant.
 * ------------------------------------------------------------------------------------------- */

/* out = the first three rows of the 4 by 4 matrix (stored by columns) times (p, 1). The fourth row
 * is never read. `out` must not be p. */
KURVO_API void KurvoclTransPoint(const double matrix[16], const Coord p, Coord out) KURVO_NOEXCEPT;

/* out = p turned by `angle` (radians) about the unit `axis` through `centre`. `out` must not be p.
 * Result: out. */
KURVO_API double *KurvoclRotatePoint(const Coord centre, const Coord axis, double angle,
                                     const Coord p, Coord out) KURVO_NOEXCEPT;

/* out = p scaled by s about `centre`: uniformly when `dir` is within epsilon of zero in every
 * component, otherwise along `dir` only (of unit length, not checked). z = 0. Result: out. */
KURVO_API double *KurvoclScalePoint(const Coord centre, const Coord dir, double s, const Coord p,
                                    Coord out, const GlobalVar *g) KURVO_NOEXCEPT;

/* out = p mirrored in the line through `base` whose normal is `normal` (any length). z = 0.
 * Errors: KURVO_WARN_SHORT_VECTOR when the normal is zero; then out is p with z = 0. */
KURVO_API void KurvoclMirrorPoint(const Coord base, const Coord normal, const Coord p, Coord out,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* out = the foot of p on the unbounded line (three components); its start when the ends are the
 * same point. */
KURVO_API void KurvoclProjLine(const Coord p, const double line[6], Coord out,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p lies within epsilon (planar) of the unbounded line, else 0.
 * Errors: KURVO_WARN_SHORT_VECTOR when the ends are the same point, which then stands for the line.
 */
KURVO_API int KurvoclOnLine(const Coord p, const double line[6], GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p lies within epsilon (planar) of the segment's line and its parameter in
 * [-epsilon, 1 + epsilon], else 0.
 * t (out): the parameter of the foot of p, 0 at the start, 1 at the end; always written.
 * Errors: KURVO_WARN_SHORT_VECTOR when the ends are the same point; then t = 0. */
KURVO_API int KurvoclOnLineSeg(const Coord p, const double seg[6], double *t,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the planar distance of p from the centre is the radius within epsilon, else 0;
 * also 0 for a null arc. */
KURVO_API int KurvoclOnCirc(const Coord p, const KurvoArc *arc, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p lies on the arc within epsilon, else 0; also 0 for a null arc.
 * t (out): the parameter of p when it lies on the circle, else 0. */
KURVO_API int KurvoclOnArc(const Coord p, const KurvoArc *arc, double *t,
                           GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p1 and p2 lie on one ray from p0 within epsilon (p1 may lie beyond p2), or when
 * two of the three are the same point; else 0. */
KURVO_API int KurvoclIsLine(const Coord p0, const Coord p1, const Coord p2,
                            GlobalVar *g) KURVO_NOEXCEPT;

/* The centre (out, z = 0) of a circle of radius r (length) through p1 and p2.
 * side: 0 puts the centre to the left of the direction from p1 to p2, anything else to the right.
 * Result: 1; 0 on failure, with `centre` untouched.
 * Errors: KURVO_ERR_SAME_POINTS; KURVO_ERR_RADIUS_TOO_SMALL when the points are further apart than
 * 2 r + epsilon, and for NaN. */
KURVO_API int KurvofcRPPcirc(double r, const Coord p1, const Coord p2, Coord centre, int side,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p lies in the box b grown by epsilon (x and y only), else 0. */
KURVO_API int KurvoclBoxPoint(const Box b, const Coord p, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the boxes overlap or come within epsilon (x and y only), else 0. */
KURVO_API int KurvoclBoxBox(const Box a, const Box b, const GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the planar distance of p from the box b, 0 inside. */
KURVO_API double KurvoclDistBoxPoint(const Box b, const Coord p) KURVO_NOEXCEPT;

/* Result: the planar distance of the boxes, 0 when they overlap. */
KURVO_API double KurvoclDistBoxBox(const Box a, const Box b) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * End points and shape
 *
 * All but KurvocvIsLine run whatever error is pending. Error of all six: KURVO_ERR_CURVE for an
 * unknown type or a record that cannot be right. No allocation.
 * ------------------------------------------------------------------------------------------- */

/* out = the start point of the curve; untouched on failure and for a composite without pieces.
 * A stored arc end off its circle by more than epsilon is moved onto it radially (z = 0). An
 * unclamped B-spline is evaluated at the start of its domain. Cost: constant; O(order^2) for a
 * B-spline. */
KURVO_API void KurvocvStartPoint(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* out = the end point of the curve, by the same rules. */
KURVO_API void KurvocvEndPoint(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the degree: 1 for a line, 2 for an arc, order - 1 for B-splines, the largest of the
 * pieces for a composite (0 without pieces), 0 on failure. Cost: constant; linear in the pieces. */
KURVO_API int KurvocvDegree(const Curve *cv, GlobalVar *g) KURVO_NOEXCEPT;

/* Tells whether the control points of the curve run along one ray from the first, each further on
 * or between the first and the one before it. Weights are ignored, except in a composite, where the
 * Bezier and rational Bezier pieces are tested together and pieces of other types are skipped.
 * Result: KURVO_SHAPE_LINE, _STRAIGHT, _BENT, or _UNKNOWN for a null curve or one without data.
 * Error pending: KURVO_SHAPE_UNKNOWN at once. Cost: linear in the control points. */
KURVO_API int KurvocvIsLine(const Curve *cv, GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the curve is a single point within epsilon, else 0. An arc whose ends are the same
 * point counts, a full circle included. A composite counts when each piece does.
 * out: that point; (0, 0, 0) otherwise. Cost: linear in the control points. */
KURVO_API int KurvocvDegenerate(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* box (out): the box of a line or an arc, and of the control points of a free-form curve, which
 * contains the curve when its weights are positive. z comes from the first point (0 for rational
 * kinds). Untouched on failure, for a curve without data and for a composite of fewer than two
 * pieces: box a single piece by itself. Cost: linear in the control points. */
KURVO_API void KurvocvBoundBox(const Curve *cv, Box box, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Position and parameter
 * ------------------------------------------------------------------------------------------- */

/* out = the point of the curve at parameter t; (0, 0, 0) on failure.
 * t (in): in the curve's own domain. Outside it lines, Bezier and B-spline kinds are continued by
 * their end polynomial and arcs along their circle; a composite gives (0, 0, 0) beyond its end. A
 * boundary between two pieces belongs to the earlier one, an interior knot to the span on its
 * right. B-splines within 1e-6 of an end of the domain give that end point. Errors: KURVO_ERR_CURVE
 * for an unknown type or a record that cannot be right; KURVO_ERR_MEMORY for B-splines of order
 * above 64, which need a work area. Error pending: out = (0, 0, 0). No allocation otherwise. Cost:
 * O(degree^2), for a B-spline O(log count + order^2), linear in the pieces of a composite. */
KURVO_API void KurvocvPosition(const Curve *curve, double t, Coord out,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* The parameter of a point on (or near) the curve.
 * point (in); t (out): in the curve's own domain. On a composite the first piece that contains the
 * point wins; off it the nearest candidate.
 * Result: KURVO_ON_CURVE when the point lies on the curve within epsilon, else KURVO_OFF_CURVE, and
 * t is that of a foot point or of the nearer end. Errors: KURVO_ERR_CURVE for an unknown type, a
 * record that cannot be right and a degree above 20 (13 when rational); KURVO_WARN_SHORT_VECTOR for
 * a line without length (t = 0, KURVO_ON_CURVE). On an error the result is KURVO_ON_CURVE, with t
 * unwritten. Error pending: KURVO_ON_CURVE at once, t unwritten. No allocation. Cost: that of
 * finding the roots of polynomials of at most 40 coefficients, for each span of a B-spline whose
 * box holds the point. */
KURVO_API int KurvocvParameter(const Curve *curve, const Coord point, double *t,
                               GlobalVar *g) KURVO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* KURVO_H */
