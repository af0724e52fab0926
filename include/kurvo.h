/* kurvo.h - the public interface of Kurvo, a planar curve geometry kernel.
 *
 * Kurvo answers questions about flat outlines made of line segments, circular arcs, Bezier curves,
 * rational Bezier curves, B-splines, rational B-splines and composites of these: where is the curve
 * at a parameter, which parameter has a point, how far does it reach, where does it start and end.
 *
 * First steps, in C and in C++
 *   GlobalVar g;  // tolerances and error state, one record a thread
 *   KurvoInitGlobalVar(&g);
 *   Curve curve;
 *   KurvoBezier *b = (KurvoBezier *)KurvocvMallocCurve(&curve, CV_BEZIER, 3);
 *   if (!b) return 1;
 *   for (int i = 0; i <= 3; ++i) KurvoclSetCoord(b->points[i], i, i % 2, 0);
 *   Coord p;
 *   KurvocvPosition(&curve, 0.5, p, &g);
 *   KurvocvFreeCurve(&curve);
 *
 * Ownership
 *   The caller owns every header (`GlobalVar`, `Curve`) and every output array. Data blocks come
 *   from the process heap (malloc) and belong to the one header that points at them;
 *   KurvocvFreeCurve gives them back. Copies are deep and never share a block. A function that
 *   makes a curve overwrites the header it is given without freeing what that header held: free
 *   first what is to be dropped. Input records are never written to. Outputs lie apart from each
 *   other and from every input, unless a comment allows more; inputs may be the same.
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
 *   composites nested more than 64 deep) is refused with KURVO_ERR_CURVE before it is read further;
 *   so is a null curve or sequence, unless the comment of a function says what that does instead.
 *   A failed allocation is KURVO_ERR_MEMORY. `g`, points and outputs must not be null unless a
 *   comment allows it.
 *
 * Threads
 *   There is no process-wide state and no lock. A `GlobalVar` must not be used by two threads at
 *   once; curves may be read by any number of threads. A library built with KURVO_PARALLEL runs the
 *   long loops of KurvocvGenBspl and KurvocvDistCurve on several threads and returns when all have
 *   ended, with the same bits.
 *
 * Units and parameters
 *   Lengths are in the caller's unit, angles in radians. Geometry is planar: z is carried, written
 *   as 0 by constructions, and normals lie along z. Lines, arcs and Bezier kinds run over [0, 1],
 *   B-spline kinds over [knots[order - 1], knots[count]], composites over [0, sum of widths].
 *   Where no tolerance is named, parameters, knots and weights count as equal when they round to
 *   the same multiple of 1e-6 (not when they differ by less): one then rounds to the other.
 *
 * Tolerances
 *   epsilon    length: two points are the same when every coordinate agrees within epsilon
 *   epsilon2   epsilon squared, for squared lengths
 *   epsilon_1  a second length tolerance, kept for the caller
 *   epsilon0   dimensionless: angles in radians (KurvoclSameVector, KurvoclIsLine) and weights
 *              (KurvoclSameHCoord, KurvocvMatch, KurvocvDivide)
 *   epsilon is also, as the number that it is,
 *     radians     in KurvoclParaVector, KurvoclVectorAngle, for lines that are parallel to
 *                 KurvocrCurveCurve, and for the sweep of an arc, which stays that little below 0
 *     parameters  in KurvoclOnLineSeg, KurvocvParameter, division, KurvocvCurveLen and
 *                 KurvocrCurveCurve: on a line of length L a length of L epsilon; knots and widths
 *                 in KurvocvMatch
 *     weights     near 1 where curves are evaluated, near 0 in KurvocvNDeriv
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

/* The parameter goes with the angle. Equal ends make the arc a point and no full circle: write a
 * circle as two arcs. */
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

/* Piece i covers the parameters from the sum of the widths before it over widths[i], a positive
 * number; [0, 1] of its own parameter is scaled to that stretch. Added up in order, in doubles, the
 * widths must reach every parameter asked for: .7 + .2 + .1 < 1. Pieces may be composites, up to 64
 * levels. A piece must run over [0, 1]. Of one that does not, such as a B-spline over [0, 2] or a
 * composite of widths 1, 1, just [0, 1] has positions and a length; ends, boxes, distances and
 * intersections take all of it, with parameters that run on into the next piece. */
typedef struct KurvoSegcv {
  int32_t count; /* c >= 0 pieces */
  int32_t reserved;
  Curve *curves;  /* c headers; each piece owns its own block */
  double *widths; /* c parameter widths */
  double unused[10];
} KurvoSegcv;

/* A chain of curves of any types, each starting where the one before it ends. 16 bytes. The record
 * belongs to the caller; the array (one block of the process heap) and the curves' blocks belong to
 * the sequence. */
typedef struct Cvseq {
  int32_t count; /* curves; 0 when empty */
  Curve *curves; /* that many headers, or null when empty */
} Cvseq;

/* A list of curve parameters. 16 bytes. The record belongs to the caller, the array to the record.
 */
typedef struct CvParam {
  int32_t count;  /* parameters; 0 when empty */
  double *values; /* that many, or null when empty */
} CvParam;

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
  KURVO_ERR_CHAIN_INDEX = 0x75A052, /* insertion outside the sequence */
  KURVO_ERR_CHAIN_BREAK = 0x75D452, /* insertion that would break the chain */
  KURVO_ERR_CHAIN_ENDS = 0x648452,  /* ends of a chain that must meet, or must not */
  KURVO_ERR_RANGE = 0x774052,  /* parameters of a division, or range of an extension, refused */
  KURVO_ERR_WEIGHT = 0x7B9C52, /* extension to where weights are not positive */
  KURVO_ERR_CHAIN_DEGENERATE = 0x629052, /* chain of fewer than two curves, or of points */
  KURVO_ERR_CHAIN_CONVERT = 0x7A5052,    /* curve of a chain that no composite can represent */
  KURVO_WARN_NO_ORIENTATION = 0x764C51,  /* warning: empty or straight chain has no orientation */
  KURVO_ERR_DERIVATIVE_ORDER = 0x629852, /* order of a derivative out of range */
  KURVO_ERR_SCALE = 0x77C452,            /* scale factor that is not positive */
  KURVO_ERR_ROTATED_TYPE = 0xD53,        /* fatal: curve type that KurvocvRotate does not know */
  KURVO_ERR_FIT_MISSING = 0x75AC52,      /* spline through points: no points, or fewer than two */
  KURVO_ERR_FIT_POINTS = 0x77B852,       /* spline through points: order or points refused */
  KURVO_ERR_ZERO_WEIGHT = 0x754852,      /* a weight that is 0 within epsilon */
  KURVO_ERR_SHORT_TANGENT = 0x7BA452,    /* tangent too short to have a curvature */
  KURVO_WARN_SHORT_VECTOR = 0x7BA451,    /* warning: vector too short to have a direction */
  KURVO_ERR_SAME_POINTS = 0x63DC52,      /* circle through two points that are the same */
  KURVO_ERR_RADIUS_TOO_SMALL = 0xA3E876  /* circle through two points further apart than 2 r */
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

/* Results of KurvocvConvert. */
enum {
  KURVO_NOT_CONVERTED = 0, /* the type cannot represent the curve exactly */
  KURVO_CONVERTED = 1
};

/* Results of KurvocvMatch. */
enum {
  KURVO_MATCH_NONE = 0,      /* different curves, or not to be compared */
  KURVO_MATCH_CONVERTED = 1, /* the same curve in records of different types */
  KURVO_MATCH_SAME = 2       /* the same curve in records of one type */
};

/* Result of functions that did nothing: an argument is missing or an error is pending. */
#define KURVO_REFUSED UINT32_C(0xFFFFFFFF)

/* Results of KurvosfPntBoundForPlane. */
enum {
  KURVO_REGION_ON = 2,     /* the point lies on the boundary within epsilon */
  KURVO_REGION_INSIDE = 3, /* inside the region */
  KURVO_REGION_OUTSIDE = 4 /* outside, or the question could not be decided */
};

/* Results of KurvocrCurveCurve; KURVO_REFUSED too. */
enum {
  KURVO_FOUND = 1,   /* at least one common point */
  KURVO_OVERLAP = 2, /* the curves share a stretch: infinitely many points, none listed */
  KURVO_NOTHING = 7  /* no common point, or a curve that cannot be intersected */
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
 * These functions run whatever error is pending. Cost: constant, but for what the heap takes.
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

/* Empties the header `cv` (out; null allowed): all five fields 0. Frees nothing. Cost: constant. */
KURVO_API void KurvocvInitCurve(Curve *cv) KURVO_NOEXCEPT;

/* Makes `cv` (out) a curve of the given type with a new data block; what it held is not freed.
 * type (in): a type code, followed by its int32_t sizes:
 *   CV_LINE, CV_ARC            none
 *   CV_BEZIER, CV_RBEZIER      degree >= 0
 *   CV_BSPLINE, CV_RBSPLINE    order >= 1, number of control points >= 0
 *   CV_SEGCV                   number of pieces >= 0; the piece headers are emptied
 * Points, knots, weights and widths have no values yet: fill them before use.
 * Result: the data block (KurvoLine ... KurvoSegcv); null for a null header, an unknown type or an
 * impossible size (then `cv` is untouched) and when memory fails (then `cv` is empty).
 * Writes no error: there is no record to write it to. The caller frees with KurvocvFreeCurve.
 * Cost: one allocation; the pieces of a composite cost what the system takes for empty memory. */
KURVO_API void *KurvocvMallocCurve(Curve *cv, int32_t type, ...) KURVO_NOEXCEPT;

/* Frees the block of `cv` (in/out; null allowed) and, for a composite, those of all its pieces,
 * however deep they nest; then type 0 and data null. The attribute words stay. A typed header
 * without data is fine. Cost: linear in the number of pieces; constant stack. */
KURVO_API void KurvocvFreeCurve(Curve *cv) KURVO_NOEXCEPT;

/* Makes `dst` (out) a deep copy of `src` (in). `dst` is emptied first, without freeing what it
 * held, also when the call is refused; the attribute words of the copy are 0. Result: the new data
 * block; null when either header is null, when `src` has no data (`dst` is then typed but empty)
 * and on failure. The caller frees `dst` with KurvocvFreeCurve. Errors: KURVO_ERR_CURVE for an
 * unknown type or impossible sizes (`dst` keeps the type, without data); for such a piece of a
 * composite too, but then the block is returned: the piece has its type and no data, those after it
 * are empty, the rest is copied. KURVO_ERR_MEMORY (`dst` is empty). Error pending: returns null at
 * once. Cost: linear in the size of the curve. */
KURVO_API void *KurvocvCopyCurve(const Curve *src, Curve *dst, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Curve sequences and parameter lists
 *
 * Copies are deep. A sequence record must be initialised before its first use as an input; the
 * functions that make a sequence overwrite the record without freeing what it held.
 * ------------------------------------------------------------------------------------------- */

/* Empties `seq` (out; null allowed): count 0, curves null. Frees nothing. Cost: constant. */
KURVO_API void KurvocvInitCvseq(Cvseq *seq) KURVO_NOEXCEPT;

/* Gives `seq` (out) a new array of `n` empty headers; what it held is not freed. For n <= 0, and
 * when memory fails, `seq` is empty. Result: the array, or null; the caller frees with
 * KurvocvFreeCvseq. Writes no error: there is no record to write it to. Cost: linear in n. */
KURVO_API Curve *KurvocvMallocCvseq(Cvseq *seq, int32_t n) KURVO_NOEXCEPT;

/* Frees every curve of `seq` (in/out; null allowed) and the array, and empties it. A count <= 0
 * owns nothing: then nothing is done. Cost: linear in the number of curves and pieces. */
KURVO_API void KurvocvFreeCvseq(Cvseq *seq) KURVO_NOEXCEPT;

/* Makes `dst` (out) a deep copy of `src` (in). `dst` is emptied first, without freeing what it
 * held, also when the call is refused. Headers without data are copied as they are. Result: the new
 * array, which the caller frees with KurvocvFreeCvseq; null when either record is null, when `src`
 * is empty and on failure; `dst` is empty then. Errors: KURVO_ERR_CURVE for a curve that
 * KurvocvCopyCurve refuses; KURVO_ERR_MEMORY. Error pending: returns null at once. Cost: linear in
 * the size of the curves. */
KURVO_API Curve *KurvocvCopyCvseq(const Cvseq *src, Cvseq *dst, GlobalVar *g) KURVO_NOEXCEPT;

/* Makes `out` (out; null allowed) the sequence of deep copies of the pieces of `composite` (in);
 * the widths are dropped. `out` is emptied first, without freeing what it held, and is empty on
 * failure and for a null curve or one without data (no error). The caller frees it with
 * KurvocvFreeCvseq. Errors: KURVO_ERR_CURVE for a type other than CV_SEGCV, a record that cannot be
 * right and a piece that KurvocvCopyCurve refuses; KURVO_ERR_MEMORY. Error pending: returns at
 * once, `out` untouched. Cost: linear in the size of the pieces. */
KURVO_API void KurvocvSegcvToCvseq(const Curve *composite, Cvseq *out, GlobalVar *g) KURVO_NOEXCEPT;

/* Inserts a deep copy of `cv` (in; it may be a curve of `seq`) into `seq` (in/out) before position
 * `index` (in, 0 to count; count appends). The ends that come together must be the same point
 * within epsilon; the chain's other joints are not looked at. In the middle the joint after the new
 * curve is tested first, that before it only when the first one holds. On failure `seq` is exactly
 * as it was. On success its array may have moved; its curves keep their blocks.
 * Errors: KURVO_ERR_CHAIN_INDEX for an index out of range; KURVO_ERR_CURVE for a curve that is null
 * or without data or that KurvocvCopyCurve refuses, and for a sequence that cannot be right;
 * KURVO_ERR_CHAIN_BREAK when the ends do not meet; KURVO_ERR_MEMORY. Error pending: returns at
 * once. Cost: linear in the size of `cv` and, with a small factor, in the curves after `index`; the
 * array grows by one header, which the allocator mostly does in place. */
KURVO_API void KurvocvCvseqInsert(const Curve *cv, Cvseq *seq, int32_t index,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* box (out): the box around the boxes of all curves of `seq` (in), as KurvocvBoundBox gives them; a
 * composite of one piece counts as that piece, one without pieces is left out. z is that of the
 * first curve that has a box. All zeros for an empty sequence, when any curve has no data, and on
 * failure. Errors: KURVO_ERR_CURVE for an unknown type (0 without data is an empty curve) and for a
 * record that cannot be right. Error pending: returns at once, box untouched. No allocation. Cost:
 * linear in the control points. */
KURVO_API void KurvocvCvseqBoundBox(const Cvseq *seq, Box box, GlobalVar *g) KURVO_NOEXCEPT;

/* Empties `list` (out; null allowed): count 0, values null. Frees nothing. Cost: constant. */
KURVO_API void KurvocrInitCvParam(CvParam *list) KURVO_NOEXCEPT;

/* Gives `list` (in/out; null allowed) a new array of list->count values, uninitialised; what it
 * held is not freed. A count <= 0 changes nothing; when memory fails the list is empty. The caller
 * frees with KurvocrFreeCvParam. Writes no error: there is no record to write it to. Cost: one
 * allocation. */
KURVO_API void KurvocrMallocCvParam(CvParam *list) KURVO_NOEXCEPT;

/* Frees the values of `list` (in/out; null allowed) and empties it. With a count <= 0 the values
 * are not the list's: they are let go without being freed. Cost: constant. */
KURVO_API void KurvocrFreeCvParam(CvParam *list) KURVO_NOEXCEPT;

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
 * z (the head of a KurvoLine). Arguments are in unless named out. An out array may be the same as
 * an input unless stated. Cost: constant.
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
 * t (out): the parameter of p, as from KurvocvParameter, when it lies on the circle, else 0. */
KURVO_API int KurvoclOnArc(const Coord p, const KurvoArc *arc, double *t,
                           GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when p1 lies on the ray from p0 through p2 (it may lie beyond p2): less than epsilon
 * beside it, and seen from p0 within epsilon0 radians of its direction, both in the plane; also
 * when two of the three are the same point; else 0. */
KURVO_API int KurvoclIsLine(const Coord p0, const Coord p1, const Coord p2,
                            GlobalVar *g) KURVO_NOEXCEPT;

/* The centre (out, z = 0) of a circle of radius r (length) through p1 and p2.
 * side: 0 puts the centre to the left of the direction from p1 to p2, anything else to the right.
 * Result: 1; 0 on failure, with `centre` untouched.
 * Errors: KURVO_ERR_SAME_POINTS; KURVO_ERR_RADIUS_TOO_SMALL when the points are further apart than
 * 2 r + epsilon, and for NaN; KURVO_WARN_SHORT_VECTOR, with the point between them for the centre,
 * when half their distance is within epsilon of 0 in x and in y. */
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
 * unknown type or a record that cannot be right. No allocation, but for the ends of B-splines of
 * order above 64 that are not clamped.
 * ------------------------------------------------------------------------------------------- */

/* out = the start point of the curve, z as stored; untouched on failure and for a composite without
 * pieces. A stored arc end off its circle by more than epsilon is moved onto it radially (z = 0).
 * An unclamped B-spline is evaluated at the start of its domain (z = 0 when rational); that needs
 * an order of at most 4096 (KURVO_ERR_CURVE), and above 64 memory (KURVO_ERR_MEMORY). Cost:
 * constant; for a B-spline O(order), O(order^2) when unclamped. */
KURVO_API void KurvocvStartPoint(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* out = the end point of the curve, by the same rules and at the same cost. */
KURVO_API void KurvocvEndPoint(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* Result: the degree: 1 for a line, 2 for an arc, order - 1 for B-splines, the largest of the
 * pieces for a composite (0 without pieces), 0 on failure; a piece that
 * cannot be right is an error, and the others count. Cost: constant; linear in the pieces. */
KURVO_API int KurvocvDegree(const Curve *cv, GlobalVar *g) KURVO_NOEXCEPT;

/* Tells whether the control points of the curve run along one ray from the first, each further on
 * or between the first and the one before it, as KurvoclIsLine tells of these three. Weights are
 * ignored, except in a composite, where the points of all Bezier and rational Bezier pieces are
 * tested together, the latter multiplied by their weights. Other pieces are skipped, also those
 * that cannot be right, without an error; fewer than three points are straight.
 * Result: KURVO_SHAPE_LINE, _STRAIGHT, _BENT, or _UNKNOWN for a null curve or one without data.
 * Error pending: KURVO_SHAPE_UNKNOWN at once. Cost: linear in the control points. */
KURVO_API int KurvocvIsLine(const Curve *cv, GlobalVar *g) KURVO_NOEXCEPT;

/* Result: 1 when the curve is a single point within epsilon, else 0. An arc whose ends are the same
 * point counts (there is no full circle in one arc). A composite counts when each piece does. 0
 * without an error for a null curve and for one without data.
 * out: that point; (0, 0, 0) otherwise. Cost: linear in the control points. */
KURVO_API int KurvocvDegenerate(const Curve *cv, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* box (out): the box of a line or an arc, and of the control points of a free-form curve, which
 * contains the curve when its weights are positive. z comes from the first point (0 for rational
 * kinds). Untouched on failure, for a curve without data and for a composite of fewer than two
 * pieces: box a single piece by itself. Inside a composite one of one piece has the box of that,
 * and pieces without a box are left out; one that cannot be right is an error, and the box is that
 * of the others. Cost: linear in the control points. */
KURVO_API void KurvocvBoundBox(const Curve *cv, Box box, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Position and parameter
 * ------------------------------------------------------------------------------------------- */

/* out = the point of the curve at parameter t; (0, 0, 0) on failure.
 * t (in): in the curve's own domain. Outside it lines, Bezier and B-spline kinds are continued by
 * their end polynomial, arcs along their circle and a composite before its start along its first
 * piece; beyond the sum of its widths it gives (0, 0, 0). A boundary between two pieces belongs to
 * the earlier one, a t that rounds to an interior knot to the span on its right. Where t rounds to
 * an end of a B-spline's domain it gives that end point.
 * z is that of the centre for arcs, of KurvocvStartPoint or KurvocvEndPoint at the ends of
 * B-splines and otherwise 0. A rational curve is divided by its sum of weights, unless all weights
 * are within epsilon of 1 (of a B-spline, only outside its domain). A sum of 0 gives values that
 * are not finite; a B-spline is then left undivided. Errors: KURVO_ERR_CURVE for an unknown type, a
 * record that cannot be right and an order above 4096; KURVO_ERR_MEMORY for B-splines of order
 * above 64, which need a work area. Error pending: out = (0, 0, 0). No allocation otherwise. Cost:
 * O(degree^2), for a B-spline O(log count + order^2), linear in the pieces of a composite. */
KURVO_API void KurvocvPosition(const Curve *curve, double t, Coord out,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* The parameter of a point on (or near) the curve.
 * point (in): its z counts on arcs. t (out): by the curve's own parameter, not clamped to the
 * domain. On a composite the first piece that contains the point wins; off it the nearest
 * candidate.
 * Result: KURVO_ON_CURVE when the point lies on the curve within epsilon, else KURVO_OFF_CURVE.
 *   lines         on it t within epsilon of [0, 1]; off it any t, of the foot on the unbounded line
 *   arcs          on it t up to 1e-6 over the sweep (radians) outside [0, 1]; beyond the sweep the
 *                 angle the shorter way round from the start (when clockwise, from the end), as a
 *                 share of the sweep; without a sweep infinite or NaN
 *   Bezier kinds  on it t within epsilon of [0, 1], and x and y may be reached at parameters that
 *                 differ by epsilon; off it t of a foot point or of the nearer end
 *   B-splines     the same on each span, for epsilon times its width
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right and a degree above 20
 * (13 when rational); KURVO_WARN_SHORT_VECTOR for a line without length (t = 0, KURVO_ON_CURVE). On
 * an error the result is KURVO_ON_CURVE, with t unwritten, or the start of the refused piece of a
 * composite. Error pending: KURVO_ON_CURVE at once, t unwritten. No allocation. Cost: that of
 * finding the roots of polynomials of at most 40 coefficients, for each span of a B-spline whose
 * box holds the point. */
KURVO_API int KurvocvParameter(const Curve *curve, const Coord point, double *t,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Projection and distance
 *
 * The projection goes to the carrier, the unbounded line or the full circle; the distance is that
 * from the bounded curve. On a Bezier curve of either kind both take the first foot point, the one
 * of the smallest parameter, and look at no other, also where another one or an end is nearer; a
 * point without a foot point, or whose first one lies beyond an end by more than epsilon (of the
 * parameter; up to 0.001 beyond are looked at), goes to the nearer end, on a tie to the last. On a
 * B-spline both take the nearest of all foot points, corners and ends. A foot that is not a number
 * never wins. Errors of both: KURVO_ERR_CURVE for an unknown type, a record that cannot be right
 * and a degree above 20 (13 when rational); KURVO_WARN_SHORT_VECTOR for a line without length and,
 * projecting onto an arc, for its centre. No allocation. Cost: that of finding the roots of one
 * polynomial of at most 40 coefficients, for a B-spline for each span whose box comes nearer than
 * the nearest point, and a few operations for every other span.
 * ------------------------------------------------------------------------------------------- */

/* Replaces p (in/out) by its projection onto the carrier of the curve, with z = 0; untouched on
 * failure. The centre of an arc and any point for a line without length have no direction to go:
 * they become the centre, resp. the line's start. Of a composite only Bezier and rational Bezier
 * pieces take part; p becomes the nearest of their projections, the earlier one on a tie, and stays
 * when there is none. An error of one piece does not keep the others from winning.
 * Runs whatever error is pending. */
KURVO_API void KurvofcPOntoCurve(const Curve *curve, Coord p, GlobalVar *g) KURVO_NOEXCEPT;

/* The planar distance of p (in) from the curve. Result: the distance; 0.0 on failure and for a
 * composite without pieces, with t unwritten.
 * t (out): the parameter of the nearest point, in the curve's own domain; on an arc up to 1e-6 over
 * the sweep outside it, infinite or NaN at the point that an arc without sweep is. At the centre of
 * an arc it is 0; beyond its sweep that of the nearer end, on a tie of the last. On a composite,
 * whose pieces of all types and levels take part, a tie goes to the earlier piece.
 * Error pending: 0.0 at once, t unwritten. */
KURVO_API double KurvocvDistPoint(const Curve *curve, const Coord p, double *t,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Derivatives, curvature and length
 *
 * t (in) is in the curve's own domain and must be finite; outside the domain the curve is continued
 * as KurvocvPosition does. Derivatives are by the curve's own parameter, with z = 0; at an interior
 * knot they are those of the span on its right. On a composite they are those of the Bezier or
 * rational Bezier piece that t lies on, by that piece's own parameter, its width left out of
 * account; a boundary between two pieces belongs to the later one. No allocation up to order 40 and
 * degree 39. Cost: O(degree^2) up to degree 39, else linear in the degree; for a B-spline O(log
 * count + order^2); linear in the pieces of a composite.
 * ------------------------------------------------------------------------------------------- */

/* out = the first derivative at t; (0, 0, 0) on an error. On a composite `out` is left untouched
 * where t lies on a piece of any other kind, and at and beyond its end.
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right, an order above 4096
 * and a t that is not finite; KURVO_ERR_MEMORY. Error pending: returns at once, `out` untouched. */
KURVO_API void KurvocvDeriv(const Curve *curve, double t, Coord out, GlobalVar *g) KURVO_NOEXCEPT;

/* out = the derivative of order n at t; (0, 0, 0) on an error, for a null curve or one without data
 * (no error), and where KurvocvDeriv leaves it untouched.
 * n (in): 1 to 1000, without allocation up to 39; for B-spline kinds 1 or 2; times the degree of a
 * Bezier curve 2^25 at most.
 * Errors: those of KurvocvDeriv, KURVO_ERR_CURVE also for B-spline kinds of n > 2;
 * KURVO_ERR_DERIVATIVE_ORDER for every other n out of range; KURVO_ERR_ZERO_WEIGHT when any weight
 * of a rational curve (not of the pieces of a composite) is 0 within epsilon. Error pending: (0, 0,
 * 0) at once. Cost: n times that of the first derivative, plus O(n^2) for a rational curve; linear
 * in the number of weights. */
KURVO_API void KurvocvNDeriv(const Curve *curve, double t, Coord out, int n,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* out = the curvature vector at t: 1 / radius of curvature towards the centre of curvature, (0, 0,
 * 0) where the curve is straight; (0, 0, 0) on an error. Left untouched where KurvocvDeriv does so,
 * and for a null curve or one without data (no error).
 * Errors: those of KurvocvDeriv; KURVO_ERR_SHORT_TANGENT when the first derivative is shorter than
 * epsilon. Error pending: returns at once, `out` untouched. */
KURVO_API void KurvocvCurvature(const Curve *curve, double t, Coord out,
                                GlobalVar *g) KURVO_NOEXCEPT;

/* length (out) = the length of the curve from t0 to t1 (in); negative when t0 > t1, 0 on an error.
 * t0, t1 (in): parameters of the curve's own domain, which must be finite; beyond its ends the
 * curve goes on by its own equation. Within epsilon of each other they give 0, however long the
 * curve is. Lines and arcs are exact. Other curves are halved until the length of their control
 * polygons changes by 0.001 or less, in the unit of length, or there are 1024 pieces, fewer for
 * degrees above 180; the pieces of a B-spline and of a composite are divided into 16 parts first,
 * and each part is measured so, with fewer than 1024 pieces for degrees above 24.
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right, also as a piece, a
 * degree above 1023 and a parameter that is not finite; for a stretch of a free-form curve, not the
 * whole, what KurvocvExtendCurve reports of it, such as KURVO_ERR_WEIGHT; KURVO_ERR_MEMORY, also
 * for a knot that is not a number (of a B-spline within a composite the spans beside it are left
 * out). Error pending: 0 at once. Nothing is allocated up to degree 4, except for a rational
 * B-spline whose weights are all 1, and for a stretch beyond the ends of a curve other than a plain
 * Bezier curve or of one whose weights are not all positive.
 * Cost: constant for lines and arcs, otherwise O(degree^2) for each piece. */
KURVO_API void KurvocvCurveLen(const Curve *curve, double t0, double t1, double *length,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Conversion and reversal
 * ------------------------------------------------------------------------------------------- */

/* Makes a curve of another type that runs along exactly the same points; never approximates.
 * source (in); target (in/out): its `type` names the wanted type, and it becomes the new curve;
 * what it held is not freed. What can be made, besides a copy:
 *   a line               from every curve for which KurvocvIsLine is true: between its ends
 *   an arc               from rational curves, and composites of rational Bezier curves, whose
 *                        points at every tenth of the domain lie on one circle within 0.0001
 *   a Bezier curve       from a line (cubic); a B-spline of one span; if all weights are equal,
 *                        from the rational kinds and a composite of one rational Bezier curve
 *   a rational Bezier    from a line, an arc (both quadratic), a Bezier curve, a B-spline of one
 *   curve                span of either kind, a composite of one piece of the Bezier kinds
 *   a B-spline           from a line (cubic); a Bezier curve; the rational kinds if the weights
 *                        are 1 (of a rational B-spline the first `order` weights stand for all);
 *                        a composite of Bezier curves of one degree, joined
 *   a rational B-spline  from a line, an arc, a Bezier curve of either kind, a B-spline; a
 *                        composite of these Bezier kinds of one degree, joined, weights rescaled
 *                        where they differ at a joint
 *   a composite          from all others: a piece for each span of a B-spline, else one piece
 * An arc of more than half a turn becomes the shorter arc between its ends. Not converted are a
 * half circle (tangents parallel within 1e-12) and an arc whose end lies less than 0.0001 radians
 * clockwise of its start: nearly a full circle, or a clockwise arc as short as that. New widths add
 * up to exactly 1; joining divides widths by their sum. z is 0 where the kind of control point
 * changes. Of a composite, KurvocvIsLine sees only Bezier pieces: one of arcs alone becomes the
 * line between its ends.
 * Result: KURVO_CONVERTED; KURVO_NOT_CONVERTED when there is no exact result or the source cannot
 * be right (`target` is then empty); KURVO_REFUSED, with `target` untouched, for a null header, a
 * source without data, an unknown wanted type, and while an error is pending.
 * The caller frees `target` with KurvocvFreeCurve. Errors: KURVO_ERR_MEMORY only (`target` is
 * empty). Cost: linear in the control points; O(order^2) for each span taken out of a B-spline. */
KURVO_API uint32_t KurvocvConvert(const Curve *source, Curve *target, GlobalVar *g) KURVO_NOEXCEPT;

/* Reverses the direction of travel of a curve in place: what was at parameter s is then at 1 - s,
 * on a composite at the sum of widths minus s. The domain of a B-spline becomes [0, 1]; an arc
 * whose normal has z = 0 gets z = -1.
 * curve (in/out). Twice restores it to the bit, but for the rounding of a B-spline's knots.
 * Result: 0; the severity of the pending error otherwise.
 * Errors: KURVO_ERR_CURVE for a null curve, an unknown type or a record that cannot be right, also
 * as a piece; the curve is then untouched. Error pending: returns at once. No allocation.
 * Cost: linear in the control points. */
KURVO_API int64_t KurvocvChgOrder(Curve *curve, GlobalVar *g) KURVO_NOEXCEPT;

/* Maps the domain [a, b] = [knots[order - 1], knots[count - order]] of a knot vector onto [0, 1]:
 * every knot u becomes (u - a) / (b - a).
 * knots (in/out): `count` of them, the number of control points plus the order.
 * Left as it is when a = b, when the domain is [0, 1] already, when count < 2 order, and when the
 * array is null or order < 1. Runs whatever error is pending. Cost: linear. */
KURVO_API void KurvoclNormalizeKnot(double *knots, int32_t count, int32_t order) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Division, extension and knot removal
 *
 * Exact: what is cut or continued lies on the same polynomials as before, each piece over [0, 1].
 * Results are emptied on entry, also when the call is refused, without freeing what they held; the
 * caller frees them. In this section a point curve at parameter s is a curve of the same type all
 * of whose control points are the point at s, with weight 1: an arc keeps its circle, a Bezier
 * kind its degree, a B-spline its order and no more points than that; for a composite it is a
 * Bezier curve of the kind of the piece that s falls on and one degree higher, and empty when that
 * piece is of another type. Degrees of Bezier kinds up to 4095, orders of B-splines up to 4096 are
 * worked on. Composites come with widths that add up to exactly 1.
 *
 * Parameters, for a B-spline over [u, v] and a composite of widths that add up to S
 *   KurvocvDivide       the curve's own: in [u, v], in [0, S]
 *   KurvocvNDivide      the same, but in [0, 1] too: the rest of the curve cannot be cut
 *   KurvocvExtendCurve  of a B-spline shares of v - u, as if it ran over [0, 1]; else its own
 *   KurvocvCurveLen     the curve's own, as for KurvocvPosition
 *
 * Identities, for curves over [0, 1]
 *   D1  the point of `first` at s is that of the curve at s t, over [0, 1]; that of `second` at s
 *       is that of the curve at t + s (1 - t); all of it where the curve does not stand still at t
 *   D2  the last point of one piece is the first one of the next, to the bit, for Bezier kinds and
 *       for B-splines that do not jump there
 *   D3  the point of an extension at s is that of the curve at -a + s (1 + a + b)
 * ------------------------------------------------------------------------------------------- */

/* Cuts a curve in two at t.
 * curve (in); t (in): in the curve's own domain. first, second (out): the part before t and the
 * part after it, of the curve's type. Where t is an end within epsilon one of them is a point
 * curve, the other a copy of the curve as it is.
 * A B-spline is cut at the stored knot when t rounds to one. Where all control points that act at
 * t are the same within epsilon (weights: epsilon0), the span of t is left to neither part, or, in
 * between, to the first: the cut falls on the knot behind it. A part that is one point has just
 * `order` control points. Ends that are not cut keep their knots, mapped with the others.
 * In a composite a cut within epsilon of the end of a piece falls between the pieces; any other
 * divides a piece, of whatever type and degree.
 * Refused, with both parts empty and no error: a null or unknown curve, a record that cannot be
 * right, t beyond an end by more than epsilon or NaN, and a Bezier curve, plain or rational, of
 * more than 5 control points (composites and KurvocvNDivide have no such limit).
 * Errors: KURVO_ERR_MEMORY only. Error pending: both are empty.
 * Cost: O(degree^2); for a B-spline O(count + order^2), for a composite linear in its size. */
KURVO_API void KurvocvDivide(const Curve *curve, double t, Curve *first, Curve *second,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* Cuts a curve at all parameters of a list.
 * curve (in). params (in): ascending, no two the same, in [0, 1] and in the curve's own domain;
 * may be empty. pieces (out): always one more than there are parameters, in order; free with
 * KurvocvFreeCvseq. An empty list gives one copy of the curve.
 * A B-spline is rid of knots it does not need first, as KurvocvBsplRemoveKnots does it, and cut at
 * the nearest knot within epsilon instead of at a parameter. Where a cut is within epsilon of an
 * end or of the cut before it the piece between them is a point curve; the distance is a share of
 * what remains of the curve, except for B-splines.
 * Errors: KURVO_ERR_RANGE for a list that is null, not ascending or out of range, NaN included;
 * KURVO_ERR_CURVE for an unknown type, a record that cannot be right, more cuts of a degree above
 * 39 than n order^2 = 2^28 allows, and more knots than KurvocvBsplRemoveKnots tries;
 * KURVO_ERR_MEMORY. A null curve or one without data: empty, no error. Error pending: empty. Cost:
 * for m control points and n parameters O(m order^2 + n order^2); n degree^2 for Bezier kinds;
 * linear in the size of a composite. */
KURVO_API void KurvocvNDivide(const Curve *curve, const CvParam *params, Cvseq *pieces,
                              GlobalVar *g) KURVO_NOEXCEPT;

/* Extends a curve, or trims it, at both ends: the same curve over the parameters from -a to 1 + b.
 * curve (in). a, b (in): how far it goes on before its start and behind its end; negative amounts
 * trim. result (out): a curve of the same type; a copy when both amounts round to 0.
 * A line and free-form curves are continued along their polynomials, arcs along their circle as
 * long as less than half a turn comes out. B-splines continue those of their end span, at whose
 * knot they are cut when a trimmed end rounds to it. A composite continues its end pieces, each by
 * the rule of its type and with the amount divided by its width, and is divided to be trimmed.
 * Errors: KURVO_ERR_RANGE for a range without length, amounts that are not finite and an arc of
 * half a turn or more; where the range is one point within 1e-6, `result` is the point curve there
 * all the same. KURVO_ERR_WEIGHT when a weight of the result is 0 or negative at six decimals, of
 * a rational B-spline one of the first `order`. KURVO_ERR_CHAIN_ENDS for a closed composite that
 * starts with a plain Bezier curve and is to grow. KURVO_ERR_CURVE for an unknown type or a record
 * that cannot be right; KURVO_ERR_MEMORY. A null curve or one without data: empty, no error. Error
 * pending: empty.
 * Cost: O(degree^2); for a B-spline O(count + order^2), for a composite linear in its size. */
KURVO_API void KurvocvExtendCurve(const Curve *curve, double a, double b, Curve *result,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* Removes the inner knots that a B-spline or rational B-spline does not need.
 * curve (in). result (out): a curve of the same type, order and domain. From the first inner knot
 * to the last, occurrences of it are removed as long as the curve stays within epsilon, in x and
 * in y, at two points: one fifth of the way to the neighbouring knots. No other bound holds. A
 * knot that can go without a change goes without a change but rounding. Where nothing is removed,
 * and for knots that do not ascend, the result is an exact copy.
 * Errors: KURVO_ERR_CURVE for any other type, a record that cannot be right, and more knots of an
 * order above 40 than 4 count order^2 = 2^28 allows; KURVO_ERR_MEMORY. A null curve or one without
 * data: empty, no error. Error pending: empty.
 * Cost: O(count order^2). */
KURVO_API void KurvocvBsplRemoveKnots(const Curve *curve, Curve *result,
                                      GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Transforms and end-point moves
 *
 * In place: curve (in/out). The defining points move: ends of a line, centre and ends of an arc,
 * control points, and those of all pieces of a composite; weights, knots and widths never change.
 * The vectors may be points of the curve itself.
 * A null curve, and a curve or piece without data, is left alone, without an error.
 * Errors: KURVO_ERR_CURVE for an unknown type and a record that cannot be right. The curve is then
 * untouched, but for the pieces of a composite that come before the one at fault. The transforms
 * run whatever error is pending. Cost: linear in the control points.
 *
 * Identities
 *   T1  the point of the transformed curve at t is the transform of its point at t
 *   T2  rotating by a and then by b about one centre is rotating by a + b; mirroring twice, and
 *       moving or scaling by the inverse, restores the curve (but for z, where it becomes 0)
 * ------------------------------------------------------------------------------------------- */

/* Moves a curve by `delta` (in, length; x, y and z). Errors: as above. */
KURVO_API void KurvocvMove(Curve *curve, const Coord delta, GlobalVar *g) KURVO_NOEXCEPT;

/* Turns a curve by `angle` (in, radians) about the unit `axis` (in) through `centre` (in), (0, 0,
 * 1) for a counter-clockwise turn in the plane; the points as by KurvoclRotatePoint. Radius and
 * normal of an arc stay, whatever the axis.
 * Errors: as above, but for an unknown type KURVO_ERR_ROTATED_TYPE. */
KURVO_API void KurvocvRotate(Curve *curve, const Coord centre, const Coord axis, double angle,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* Mirrors a curve in the line through `base` (in) whose normal is `normal` (in, any length); the
 * points as by KurvoclMirrorPoint, so that z = 0. An arc changes its sense; a normal of z = 0 gets
 * z = -1.
 * Errors: as above; KURVO_WARN_SHORT_VECTOR for a zero normal, and the curve stays as it is. */
KURVO_API void KurvocvMirror(Curve *curve, const Coord base, const Coord normal,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* Scales a curve by s > 0 (in) about `centre` (in): uniformly when `dir` (in) is within epsilon of
 * zero in every component, otherwise along `dir` only (any length). The points as by
 * KurvoclScalePoint, so that z = 0. The radius of an arc becomes the distance of its start from its
 * centre; scaled in one direction it could not stay an arc and is left as it is, silently.
 * Errors: as above; KURVO_ERR_SCALE for s <= 0 or NaN. */
KURVO_API void KurvocvScale(Curve *curve, const Coord centre, const Coord dir, double s,
                            GlobalVar *g) KURVO_NOEXCEPT;

/* Moves the start of a curve by `delta` (in, length; x, y and z): what KurvocvStartPoint gives has
 * then moved by delta, z of rational B-splines apart that give 0. Of a line the start point moves,
 * of a free-form curve the first control point. A B-spline that does not begin with its first
 * control point has those moved that act on its start, in proportion to their share in it, so that
 * the sum of the squared displacements is least. Of a composite the first piece is changed.
 * Errors: as above; KURVO_ERR_CURVE also for an arc, which would not stay one, an empty composite
 * and a B-spline of order above 4096; KURVO_ERR_MEMORY. Error pending: returns at once.
 * Cost: constant; O(order^2) for a B-spline. */
KURVO_API void KurvocvMvStartPoint(Curve *curve, const Coord delta, GlobalVar *g) KURVO_NOEXCEPT;

/* As KurvocvMvStartPoint, for the end: end point, last control point, last piece. */
KURVO_API void KurvocvMvEndPoint(Curve *curve, const Coord delta, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Interpolation
 * ------------------------------------------------------------------------------------------- */

/* Makes a B-spline of the given order that passes through points.
 * points (in): `count` triples x, y, z; z is not used. count (in): at least 2. order (in): 2 to
 * count, at most 40. result (out): a CV_BSPLINE with a control point for each point, z = 0;
 * emptied first, without freeing what it held, and empty on failure. The caller frees it with
 * KurvocvFreeCurve.
 * The curve starts at the first point, ends at the last one and is at point i at the parameter that
 * is the length of the polygon through the points up to there, as a share of the whole; its domain
 * is [0, 1], its inner knots are the means of order - 1 neighbouring parameters. Order 2 is the
 * polygon. Points on a line give a straight curve.
 * Where the shortest leg is less than 6e-14 of the polygon, and where the control points would be
 * more than 1e8 times as large as the points, so that rounding would carry the curve off them, the
 * parameters are spread evenly. Where that is no better, as for most points of orders above 30, no
 * curve in doubles passes through the points, and they are refused. Points nearer than 1e-6 in
 * parameter are passed all the same, but are one to KurvocvPosition.
 * Errors: KURVO_ERR_FIT_MISSING for null points or result and count < 2; KURVO_ERR_FIT_POINTS for
 * order < 2, order > count, order > 40, a coordinate (z too) that is not finite, two consecutive
 * points that are the same within epsilon in x and y, and points that no curve can pass;
 * KURVO_ERR_MEMORY. Error pending: `result` is empty.
 * Cost: O(count order^2), O(count order) memory; 100000 points of order 4 take a few milliseconds.
 */
KURVO_API void KurvocvGenBspl(const double *points, int32_t count, int32_t order, Curve *result,
                              GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Offset
 * ------------------------------------------------------------------------------------------- */

/* The curve at a constant distance from a curve, on one side of it: one piece after the other.
 * curve (in).
 * normal (in): of the plane, along z: x and y within epsilon of 0, z not.
 * distance (in, length): a positive one goes to the side of normal x tangent, the left of travel
 * for (0, 0, 1), a negative one to the other side.
 * tolerance (in, length, >= 0): how far a piece that is not exact may be from the distance at equal
 * parameters. Its distance from the curve is then right within twice that, where the distance is
 * below the radius of curvature; beyond it the result turns back on itself, as true offsets do.
 * result (out): free with KurvocvFreeCvseq. Emptied on entry without freeing what it held. Pieces
 * follow the direction of the curve. Of a smooth curve each ends where the next one begins; at
 * corners they part, and nothing is put in or cut off there.
 *   of a line        a line, moved by the normal as it is given: one of length 2 moves it twice as
 *                    far
 *   of an arc        the concentric arc; nothing when its radius would be 0 or less
 *   of Bezier kinds  pieces of the same type, one degree higher: one for a straight curve and
 *                    otherwise about angle turned / 4 times sqrt(|distance| / tolerance), the angle
 *                    in radians; 20 to 30 at a cusp
 *   of B-splines     such pieces, Bezier or rational Bezier curves, of every span
 *   of a composite   such pieces of its Bezier and rational Bezier pieces up to the first piece of
 *                    any other type, where it ends
 * A Bezier curve is cut in halves down to 1/16384 of its parameters, or until it lies within
 * epsilon of one point; where that made more than 5000 pieces of all the result, less deep, but
 * into 64 of every span if need be. What is left then is taken as it is. At a cusp the result
 * changes sides. A handle that is not longer than epsilon has the direction of the one behind it; a
 * curve that is a point gives nothing, a line with KURVO_WARN_SHORT_VECTOR. Empty without an error:
 * a null or empty curve, another normal, a tolerance that is negative, values that are not finite
 * in any argument or in the result. Errors: KURVO_ERR_CURVE for an unknown type, a record that
 * cannot be right and a degree above 38; KURVO_ERR_MEMORY. Error pending: empty. Cost: for each
 * piece O(degree^2). */
KURVO_API void KurvocvOffsetCurve(const Curve *curve, const Coord normal, double distance,
                                  double tolerance, Cvseq *result, GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Relations
 * ------------------------------------------------------------------------------------------- */

/* Tells whether two curves are the same, by comparing their records and not the points they run
 * through: ends, control points, knots and widths within epsilon, weights within epsilon0. The
 * direction of travel matters. Of two Bezier curves the lower degree is raised first (up to 4096);
 * B-splines of different order are compared as composites; of different types the greater code is
 * converted to the smaller as by KurvocvConvert. The last knot of a B-spline, which has no effect
 * on the curve, is not compared.
 * a, b (in). Result: KURVO_MATCH_SAME, KURVO_MATCH_CONVERTED or KURVO_MATCH_NONE.
 * Errors: KURVO_ERR_CURVE for an unknown type or a record that cannot be right; KURVO_ERR_MEMORY.
 * A null curve or one without data: KURVO_MATCH_NONE, no error. Error pending: KURVO_MATCH_NONE
 * at once. Cost: linear in the control points; quadratic in the degree when degrees differ. */
KURVO_API uint32_t KurvocvMatch(const Curve *a, const Curve *b, GlobalVar *g) KURVO_NOEXCEPT;

/* The common points of two curves of any types.
 * a, b (in).
 * pa, pb (out, either may be null): one parameter of `a` and of `b` for each point, in each curve's
 * own domain; entry i of both lists is the same point. Emptied on entry without freeing what they
 * held; the caller frees them with KurvocrFreeCvParam.
 * mode (in): which curves end at their end points: 1 the first, 2 the second, 3 both, any other
 * value neither. The others go on along their line or circle; free-form curves never do. A point
 * beyond an end is kept when it is that end within epsilon; its parameter is not clamped.
 * Result: KURVO_FOUND; KURVO_OVERLAP when the curves run together along a stretch; KURVO_NOTHING,
 * also when both curves are points; KURVO_REFUSED for a missing curve or one without data.
 * Each point is listed once: a crossing, a contact within epsilon, a shared end. Points are one
 * when they agree within epsilon on both curves and neither curve leaves them in between, or across
 * the joint of a closed curve, whose start is given then; a place that is passed twice is listed
 * twice. Lists ascend along `a`; between two arcs they have the order of the construction.
 * Of a composite, lines and arcs meet the Bezier and rational Bezier pieces only, free-form curves
 * also the B-splines and composites in it. Its line and arc pieces meet nothing but a curve that is
 * a point: leave such curves in a chain, or have KurvocvCvseqToSegcv make Bezier pieces of them.
 * On one line or circle two curves that both end overlap along a stretch, meet in a shared end, and
 * have nothing in common across a gap; when one goes on they overlap wherever they lie.
 * Weights that are not positive may carry a curve out of the box and hull of its control points:
 * common points out there are missed.
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right, a degree above 39
 * against a line, 19 against an arc and 63 otherwise; KURVO_ERR_MEMORY. The result is then
 * KURVO_NOTHING. Error pending: KURVO_REFUSED at once.
 * Cost: closed formulas for lines and arcs; linear in the pieces of a free-form curve against
 * these; between free-form curves a sweep over the boxes of their Bezier pieces, then subdivision
 * of the pairs that meet. */
KURVO_API uint32_t KurvocrCurveCurve(const Curve *a, const Curve *b, CvParam *pa, CvParam *pb,
                                     int32_t mode, GlobalVar *g) KURVO_NOEXCEPT;

/* The least distance between two bounded curves of any types, in the plane.
 * a, b (in). ta, tb (out, either may be null): the parameters, in each curve's own domain, of the
 * points where it is reached; of several the one of the smallest ta, of these that of the smallest
 * tb. Along one contact of touching curves it is where they are closest.
 * Result: the distance; 0.0 for curves that cross or come within epsilon of each other. Exact but
 * for rounding between lines and arcs, otherwise right to epsilon. 0.0 with nothing written on
 * failure, for a null curve, one without data and one without points: a composite without pieces,
 * or coordinates that are all not finite. Bezier pieces with a number that is not finite take no
 * part. Where curves are so nearly parallel, or so many pieces lie within each other's reach, that
 * the search does not end in some hundredths of a second, or some tenths for curves of thousands of
 * pieces, the nearest pair found by then counts.
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right and a degree above
 * 63; KURVO_ERR_MEMORY. Error pending: 0.0 at once.
 * Cost: closed formulas for lines and arcs; otherwise branch and bound over the Bezier pieces,
 * linear in their number for collecting them, O(log n) for each that is near. */
KURVO_API double KurvocvDistCurve(const Curve *a, const Curve *b, double *ta, double *tb,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* Joins a chain of at least two curves into one composite of Bezier and rational Bezier pieces that
 * runs over [0, 1] in proportion to arc length: each curve takes the share of its length, divided
 * among its pieces as in its own composite form. Lines become Bezier curves of degree 1; everything
 * else becomes what KurvocvConvert makes of it, so that an arc of more than half a turn becomes the
 * shorter one and the pieces of a composite stay as they are.
 * seq (in); out (out): the composite, which the caller frees with KurvocvFreeCurve. Emptied first,
 * without freeing what it held, and empty on failure and for a null or empty sequence (no error).
 * Errors: KURVO_ERR_CHAIN_DEGENERATE for one curve, for a chain whose curves after the first are
 * all points, and for one without a length; KURVO_ERR_CHAIN_ENDS when one curve does not end within
 * epsilon of the start of the next; KURVO_ERR_CHAIN_CONVERT for an arc or a B-spline that cannot be
 * converted, while another type that cannot be leaves `out` empty without an error;
 * KURVO_ERR_CURVE for a record that cannot be right; KURVO_ERR_MEMORY. Error pending: returns at
 * once, `out` empty. Cost: that of the lengths; the pieces are handed over, not copied. */
KURVO_API void KurvocvCvseqToSegcv(const Cvseq *seq, Curve *out, GlobalVar *g) KURVO_NOEXCEPT;

/* centre (out): the mean of the start point of the chain and the end points of its curves, the last
 * one left out when it is the first within epsilon.
 * normal (out): (0, 0, 1) when the chain runs counter-clockwise around the centre, else (0, 0, -1).
 * A simple closed chain gets its true sense wherever the centre lies; of a chain that does not wind
 * around the centre by at least half a turn, closed by the line between its ends, the sign of the
 * area counts. Both are (0, 0, 0) on failure.
 * Errors: KURVO_WARN_NO_ORIENTATION for an empty sequence and for a straight chain, which has no
 * sense; KURVO_ERR_CURVE for a null sequence and a record that cannot be right. Error pending: (0,
 * 0, 0) at once. No allocation up to degree 39. Cost: linear in the curves and their pieces. */
KURVO_API void KurvocvCvseqNormal(const Cvseq *seq, Coord centre, Coord normal,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* Tells whether a point lies on, inside or outside the region that a closed chain of curves bounds:
 * inside is where the chain winds around the point, in either sense. The chain may run either way
 * and start anywhere; the line between the end of a curve and the start of the next counts as
 * boundary, however long it is. A point outside the box of the chain (KurvocvCvseqBoundBox) by more
 * than epsilon is outside.
 * normal (in): of the plane, exactly (0, 0, 1); otherwise KURVO_REGION_OUTSIDE.
 * seq (in): the chain; an open one, whose ends are further apart than epsilon, has points on it and
 * outside. p (in): z counts for the vertices only.
 * result (out): KURVO_REGION_ON, _INSIDE or _OUTSIDE; _OUTSIDE for a null or empty chain and a NaN.
 * Errors: KURVO_ERR_CURVE for an unknown type, a record that cannot be right and a degree above
 * 4095; KURVO_WARN_NO_ORIENTATION for a point off a straight closed chain, but in its box;
 * KURVO_ERR_MEMORY; the result is then KURVO_REGION_OUTSIDE. KURVO_ERR_STACK_EMPTY for a point
 * inside when the stack of epsilon is full; the result is right all the same. Error pending: a
 * point on a vertex is KURVO_REGION_ON, every other KURVO_REGION_OUTSIDE. No allocation up to
 * degree 39; neither the chain nor the tolerances are touched. Cost: one look at every control
 * point; only curves whose box holds the point are subdivided. */
KURVO_API void KurvosfPntBoundForPlane(const Coord normal, const Cvseq *seq, const Coord p,
                                       uint32_t *result, GlobalVar *g) KURVO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif /* KURVO_H */
