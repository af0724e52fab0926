/* kurvo_outline.h - whole outlines and regions, on curves of kurvo.h.
 *
 * People cut, sew, plot and print outlines: chains of mixed curves, closed ones with holes. This
 * library, libkurvo_outline, answers questions about such chains as wholes and makes new ones. It
 * stands on kurvo.h alone: records of the kernel go in and come out.
 *
 *   A chain is a `Cvseq`: curves of any types, each starting where the one before it ends. A region
 *   is closed chains, its loops, and a fill rule: `KurvoRegion`.
 *
 *   KurvoRegion region;
 *   KurvoRegionInit(&region);
 *   KurvoRegionAdd(&region, &chain, 0, &g);
 *   double point[3] = {1, 2, 0};
 *   int32_t where;
 *   if (KurvoRegionLocate(&region, point, 1, &where, NULL, &g) && where == KURVO_REGION_INSIDE) ...
 *   KurvoRegionFree(&region);
 *
 * Conventions are those of kurvo.h: `g` comes last and its code is sticky, outputs are overwritten
 * without being freed, inputs are never written, the caller frees, lengths are in the caller's
 * unit, y points up. Of `g` only epsilon is read and the code written. z is ignored and written as
 * 0.
 *
 * Results
 *   A function that can fail returns 1 when it did its work and 0 when it refused; then `g` holds
 *   the code. With an error pending it returns 0 at once. Records that are outputs are emptied on
 *   entry in any case, so that freeing them is always safe; arrays that are outputs stay as they
 *   were on refusal, and pointers to arrays that the library makes become null, their counts 0. An
 *   output that is one of the inputs or another output is KURVO_ERR_OPTION before anything is
 *   touched. n < 0, and a null array with n > 0, are KURVO_ERR_OPTION.
 *
 * Refusals that every function shares
 *   KURVO_ERR_CURVE       a null chain, a record that cannot be right, a curve of degree above 63,
 *                         a piece of a composite that does not run over [0, 1]
 *   KURVO_ERR_NOT_FINITE  a coordinate, weight, knot or argument that is not finite
 *   KURVO_ERR_WEIGHT      a rational curve that is not finite, or has an end whose weight is 0 or
 *                         2^-200 of another
 *   KURVO_ERR_CHAIN_ENDS  a joint wider than epsilon (where there are options: than `gap`)
 *   KURVO_ERR_MEMORY, KURVO_ERR_TOO_LARGE
 *
 * Chains
 *   Joints between neighbours may be as wide as epsilon. A chain is closed when its ends are no
 *   farther apart than epsilon and than 2^-10 of its size, the longer side of the box of its
 *   control points. A loop of a region is always closed: its last joint is like the others.
 *   An arc whose stored ends are equal bit for bit is a full circle in the sense of its normal; an
 *   end up to 1e-6 radians behind the start counts as equal to it. (The kernel takes such arcs for
 *   points.) Where a place names one, t goes once around over [0, 1].
 *   Weights of both signs are fine where the curve is finite.
 *
 * Memory comes from the kernel's functions. Inputs may be read by any number of threads.
 */
#ifndef KURVO_OUTLINE_H
#define KURVO_OUTLINE_H

#include <kurvo.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---------------------------------------------------------------------------------------------
 * Constants
 * ------------------------------------------------------------------------------------------- */

/* Which points are inside, by how often the loops go around them counter-clockwise. */
enum {
  KURVO_FILL_NONZERO = 0,  /* not 0 times */
  KURVO_FILL_EVENODD = 1,  /* an odd number of times */
  KURVO_FILL_POSITIVE = 2, /* more than 0 times */
  KURVO_FILL_NEGATIVE = 3  /* fewer than 0 times */
};

enum { KURVO_UNION = 0, KURVO_INTERSECTION = 1, KURVO_DIFFERENCE = 2, KURVO_XOR = 3 };
enum { KURVO_JOIN_ROUND = 0, KURVO_JOIN_MITER = 1, KURVO_JOIN_BEVEL = 2 };
enum { KURVO_CAP_BUTT = 0, KURVO_CAP_ROUND = 1, KURVO_CAP_SQUARE = 2 };

/* What two chains do where they meet. */
enum {
  KURVO_MEET_CROSS = 0,    /* one goes from one side of the other to the other side */
  KURVO_MEET_TOUCH = 1,    /* it stays on its side, or one of them ends there */
  KURVO_MEET_RUN_FROM = 2, /* a stretch that both share begins; its end is the next entry */
  KURVO_MEET_RUN_TO = 3    /* and ends */
};

/* What a chain is fitted with; lines stay lines in all. */
enum { KURVO_FIT_ARCS = 0, KURVO_FIT_QUADRATICS = 1, KURVO_FIT_CUBICS = 2 };

enum {
  KURVO_ORIGIN_PART = 0,
  KURVO_ORIGIN_OFFSET = 1,
  KURVO_ORIGIN_JOIN = 2,
  KURVO_ORIGIN_CAP = 3,
  KURVO_ORIGIN_BRIDGE = 4
};

/* Flags of KurvoOptions; other bits are refused. */
enum { KURVO_WITH_ORIGINS = 1 };

/* Error codes besides those of kurvo.h. */
enum {
  KURVO_ERR_OPTION = 0x40047A,     /* operation, rule, join, cap, form, flag, size or aliasing */
  KURVO_ERR_NOT_FINITE = 0x40087A, /* a coordinate, weight, knot or argument is not finite */
  KURVO_ERR_STOPPED = 0x400C7A,    /* the caller's `proceed` said no */
  KURVO_ERR_TOO_LARGE = 0x40107A   /* a count above 2^31 - 1 or a block above 4 GiB */
};

/* ---------------------------------------------------------------------------------------------
 * Records
 * ------------------------------------------------------------------------------------------- */

/* Where a curve of a result comes from. 32 bytes everywhere. */
typedef struct KurvoOrigin {
  int32_t region, loop, curve; /* of the input; -1: none */
  int32_t kind;                /* KURVO_ORIGIN_* */
  double from, to;             /* its parameters; from > to: it runs against its source */
} KurvoOrigin;

/* Closed loops and how they fill. Owns the array of loops, their curves and the origins. */
typedef struct KurvoRegion {
  int32_t count;
  int32_t rule;         /* KURVO_FILL_* */
  Cvseq *loops;         /* that many, or null when empty */
  KurvoOrigin *origins; /* null, or one for each curve, loop after loop; of an input never read */
} KurvoRegion;

/* What may be asked for besides. A null pointer, and a record that is all 0 but for `size`, mean
 * the defaults. */
typedef struct KurvoOptions {
  uint32_t size;        /* sizeof(KurvoOptions) of the caller */
  uint32_t flags;       /* KURVO_WITH_ORIGINS */
  double tol;           /* length; 0: 2^-30 of the size of the input */
  double gap;           /* widest joint that is closed; 0: epsilon; INFINITY: every one */
  double miter_limit;   /* 0: 4; else >= 1 */
  double phase;         /* of the dashes */
  int32_t join, cap;    /* KURVO_JOIN_*, KURVO_CAP_* */
  int32_t dash_count;   /* 0: no dashes */
  int32_t reserved;     /* 0 */
  const double *dashes; /* on, off, on ...; an odd count is taken twice */
  int (*proceed)(double done, void *user); /* null; asked now and then, `done` in 0 to 1 never
                                              falls; 0 stops the call. It must not throw. */
  void *user;                              /* handed to proceed */
  void *reserved_p;                        /* null */
} KurvoOptions;

/* What was done besides. 64 bytes everywhere. */
typedef struct KurvoReport {
  int32_t gaps;       /* joints bridged or moved */
  int32_t dropped;    /* loops no wider than tol, or curves given twice */
  int32_t unresolved; /* places where order was settled by bisection */
  int32_t capped;     /* pieces accepted at a limit of work */
  double moved;       /* length: the farthest that a point of a result was moved, as far as known */
  double dropped_area; /* of what was dropped */
  double reserved[4];  /* 0 */
} KurvoReport;

/* A place on a chain. 64 bytes everywhere. */
typedef struct KurvoPlace {
  int32_t index;    /* curve of the chain */
  int32_t reserved; /* 0 */
  double t;         /* in the domain of that curve */
  Coord point;
  Coord tangent; /* unit, in the sense of travel; of the later curve at a joint; 0 of a point */
} KurvoPlace;

/* A point that two chains share. 56 bytes everywhere. */
typedef struct KurvoMeeting {
  int32_t index_a, index_b; /* curves of the chains */
  int32_t kind;             /* KURVO_MEET_* */
  int32_t reserved;         /* 0 */
  double a, b;              /* in the domains of those curves */
  Coord point;
} KurvoMeeting;

/* 64 bytes everywhere. */
typedef struct KurvoMoments {
  double length;
  double area;       /* counter-clockwise positive */
  Coord centroid;    /* of the area; of the length where the area is 0 */
  double xx, xy, yy; /* second moments of the area about the centroid */
} KurvoMoments;

/* ---------------------------------------------------------------------------------------------
 * Regions
 * ------------------------------------------------------------------------------------------- */

/* Result: 10000 major + 100 minor + patch of the library. */
KURVO_API int32_t KurvoOutlineVersion(void) KURVO_NOEXCEPT;

/* Empties `region` (out; null allowed): no loops, KURVO_FILL_NONZERO. Frees nothing. */
KURVO_API void KurvoRegionInit(KurvoRegion *region) KURVO_NOEXCEPT;

/* Frees the loops of `region` (in/out; null allowed) and their origins, and empties it. The rule
 * becomes KURVO_FILL_NONZERO. Cost: linear in the curves. */
KURVO_API void KurvoRegionFree(KurvoRegion *region) KURVO_NOEXCEPT;

/* Makes `to` (out) a deep copy of `from` (in): loops, rule, origins and the attribute words of
 * every curve, also of pieces of composites. The caller frees it with KurvoRegionFree.
 * Errors: KURVO_ERR_OPTION for null or equal records and an unknown rule, KURVO_ERR_CURVE, memory.
 * Cost: linear in the size of the curves. */
KURVO_API int KurvoRegionCopy(const KurvoRegion *from, KurvoRegion *to,
                              GlobalVar *g) KURVO_NOEXCEPT;

/* Appends a copy of `loop` (in) to `region` (in/out), attribute words included. Joints, that from
 * the last curve to the first too, wider than epsilon and no wider than `gap` (in, length; 0:
 * epsilon; INFINITY: every one) are closed by lines in the copy, with attribute words 0. An empty
 * loop is a loop. `origins` of the region are freed and become null. On failure the region is as it
 * was.
 * Errors: KURVO_ERR_CHAIN_ENDS for a joint wider than gap, KURVO_ERR_TOLERANCE for a gap that is
 * negative or NaN, KURVO_ERR_OPTION for a null region, one that cannot be right and a loop that is
 * one of its own records. Cost: linear in the size of the loop and the number of loops. */
KURVO_API int KurvoRegionAdd(KurvoRegion *region, const Cvseq *loop, double gap,
                             GlobalVar *g) KURVO_NOEXCEPT;

/* Writes a region as two arrays of plain numbers, that of other languages and of files: bit for
 * bit, attribute words included, origins not. The caller frees both with KurvoFree.
 *   words    1, rule, loops; of each loop the number of its curves; of each curve type, two sizes,
 *            attr, attr_p1 and attr_p2 low word first; the pieces of a composite follow it.
 *            Sizes: degree and 0 of the Bezier kinds, order and count of the B-splines, count and 0
 *            of composites, 0 and 0 of lines and arcs.
 *   numbers  of each curve the fields of its record in order, then its arrays: lines 6, arcs 13,
 *            control points by 3 or 4, then knots; widths of a composite.
 * Errors: KURVO_ERR_OPTION for null arguments, a region that cannot be right and an unknown rule,
 * KURVO_ERR_CURVE, KURVO_ERR_TOO_LARGE. Cost: linear. */
KURVO_API int KurvoRegionPack(const KurvoRegion *region, int32_t **words, int32_t *word_count,
                              double **numbers, int32_t *number_count, GlobalVar *g) KURVO_NOEXCEPT;

/* Makes `out` (out) the region that KurvoRegionPack wrote. Both arrays must fit to the last entry.
 * Errors: KURVO_ERR_OPTION for null arguments, counts that do not fit, another version, an unknown
 * rule; KURVO_ERR_CURVE for a type or sizes that cannot be right, composites nested more than 64
 * deep. Whatever the words hold, nothing is read beyond the arrays. Cost: linear. */
KURVO_API int KurvoRegionUnpack(const int32_t *words, int32_t word_count, const double *numbers,
                                int32_t number_count, KurvoRegion *out,
                                GlobalVar *g) KURVO_NOEXCEPT;

/* Union, intersection, difference or symmetric difference (`operation`, KURVO_UNION ...) of two
 * regions (in), each by its own rule. Loops may run in any direction and order, cross and touch
 * themselves and each other, and lie on each other; joints wider than epsilon and no wider than
 * options' `gap` are bridged by lines. Curves stay curves: what nothing touches keeps its curves,
 * their types and where its loops start, and the others are cut.
 * out (out; the caller frees it): rule KURVO_FILL_NONZERO; outer loops counter-clockwise and holes
 * clockwise, each outer loop followed by its holes, in the order of the earliest curves that they
 * come from; neighbours share their ends bit for bit. No two loops cross; they may touch. Curves
 * carry the attribute words of those that they come from. With KURVO_WITH_ORIGINS out->origins is
 * filled: a curve whose `from` is above its `to` runs against its source, and a bridge has none.
 * report (out; null allowed): gaps closed, loops dropped that are no wider than tol, and how far
 * ends were moved at most. options: tol, gap, flags, proceed.
 * Features narrower than a few tol may go or be joined. Full circles leave as four quarters.
 * Errors: KURVO_ERR_OPTION, the shared ones, KURVO_ERR_CHAIN_ENDS for a wider joint,
 * KURVO_ERR_STOPPED. Finite input is never refused otherwise. Cost: O(n log n) for n curves that
 * meet at n places, some hundred nanoseconds a curve. */
KURVO_API int KurvoRegionCombine(int32_t operation, const KurvoRegion *a, const KurvoRegion *b,
                                 const KurvoOptions *options, KurvoRegion *out, KurvoReport *report,
                                 GlobalVar *g) KURVO_NOEXCEPT;

/* The same of n regions at once: the difference is the first minus all others, xor what an odd
 * number covers. None gives an empty region, one is simplified. */
KURVO_API int KurvoRegionCombineMany(int32_t operation, const KurvoRegion *const *regions,
                                     int32_t n, const KurvoOptions *options, KurvoRegion *out,
                                     KurvoReport *report, GlobalVar *g) KURVO_NOEXCEPT;

/* The same set of points by loops that do not cross: as KurvoRegionCombine of one region. */
KURVO_API int KurvoRegionSimplify(const KurvoRegion *region, const KurvoOptions *options,
                                  KurvoRegion *out, KurvoReport *report,
                                  GlobalVar *g) KURVO_NOEXCEPT;

/* All points no farther than `distance` (in, length) from the region (in), or where it is negative
 * all points of the region that are farther than its size from the outside: the region by its own
 * rule grows or shrinks whatever the directions of its loops, holes the other way round; loops
 * merge, split and vanish. 0 is KurvoRegionSimplify. Corners that come apart are joined as options'
 * `join` says: by arcs, by miters no longer than `miter_limit` distances from the vertex (else as
 * bevels), or by bevels. Lines stay lines and arcs arcs; of other curves cubics are made, within
 * tol (at best 2^-36 of the size) of where they belong. out, report as KurvoRegionCombine gives
 * them; report's `capped` also counts cubics that were taken at a limit of work, and `moved` how
 * far they may be off. Curves that run alongside one of the region's carry its attribute words,
 * those of joins 0. With KURVO_WITH_ORIGINS the former are KURVO_ORIGIN_OFFSET with the parameters
 * beside which they run, the latter KURVO_ORIGIN_JOIN, named after the curve that begins at the
 * vertex. options: tol, gap, flags, join, miter_limit, proceed. Errors: KURVO_ERR_NOT_FINITE for an
 * infinite distance or limit, KURVO_ERR_RANGE for a limit below 1, KURVO_ERR_OPTION for an unknown
 * join, and those of KurvoRegionCombine. Cost: twice that of KurvoRegionSimplify, and some
 * microseconds for each cubic that is made. */
KURVO_API int KurvoRegionOffset(const KurvoRegion *region, double distance,
                                const KurvoOptions *options, KurvoRegion *out, KurvoReport *report,
                                GlobalVar *g) KURVO_NOEXCEPT;

/* The parts of n chains (in) that lie inside of a region (in) by its rule, and those outside:
 * `inside` and `outside` (out) are records of chains, which do not close, with KURVO_FILL_NONZERO
 * for a rule. Chain after chain, along each of them; together the parts are the chains: an open
 * chain is cut where it goes from one side to the other and nowhere else, a closed one too, of
 * which the parts then begin and end at such places, one that is on one side stays whole.
 * Parts that meet in a cut share its bits. Curves keep their types, those that are cut too, but for
 * full circles, which become arcs, and carry their attribute words.
 * What lies on the border is inside: a stretch that runs along a loop (as KurvoChainMeetings tells
 * stretches) is when the region lies to either side of it, so not one along a loop there and back
 * with nothing in it. A chain that only touches stays on its side: no part is as short as 4 tol,
 * but a whole chain. Loops that do not close and joints of chains are bridged up to `gap`; lines
 * across joints of chains wider than epsilon become curves of the parts.
 * With KURVO_WITH_ORIGINS both name for each curve the chain as its loop, and region -1; the lines
 * are KURVO_ORIGIN_BRIDGE and name no curve. report: `gaps`; `unresolved`, the crossings that only
 * the sides of points beside them told of; `capped` 1 when a limit of work was reached and some
 * cuts may be missing or misplaced. options: tol, gap, flags, proceed. Errors: the shared ones,
 * KURVO_ERR_STOPPED, KURVO_ERR_OPTION and KURVO_ERR_TOLERANCE for options. Cost: n log n, some
 * microseconds for each pair of curves that come near each other, and three points a part as
 * KurvoRegionLocate tells them. */
KURVO_API int KurvoRegionClip(const KurvoRegion *region, const Cvseq *chains, int32_t n,
                              const KurvoOptions *options, KurvoRegion *inside,
                              KurvoRegion *outside, KurvoReport *report,
                              GlobalVar *g) KURVO_NOEXCEPT;

/* What a pen covers that runs along n chains (in), reaching `left` to their left and `right` to
 * their right (in, lengths, >= 0; both 0: nothing; one may be 0), all in one region. Corners are
 * joined on their outer side as KurvoRegionOffset joins them. An open chain ends in options' `cap`:
 * straight across, half a disc, or half a square; where the sides differ, it is that of a pen of
 * half the sum, on the middle of the end. A closed chain is a ring. A chain that is a point is a
 * dot: a disc under round caps, a square under square ones, nothing under butt ones. Where a chain
 * turns back exactly the wider side is the outer one. A side ends at the centres of curvature where
 * the chain bends tighter than it reaches.
 * options' `dashes` (`dash_count` lengths: on, off, on ...; an odd count is taken twice) begin anew
 * on each chain, `phase` into the pattern, and run on around corners; each dash has caps, and one
 * of length 0 is a dot in the direction of the chain. Joints wider than epsilon and no wider than
 * `gap` are bridged by lines, which count as `gaps` and are KURVO_ORIGIN_BRIDGE. out, report as
 * KurvoRegionOffset gives them, origins naming chains as loops; caps are KURVO_ORIGIN_CAP, named
 * after the curve that ends there. options: tol, gap, flags, join, miter_limit, cap, dashes,
 * dash_count, phase, proceed. Errors: KURVO_ERR_RANGE for widths and dashes that are negative,
 * dashes that sum to 0 and a limit below 1, KURVO_ERR_NOT_FINITE for an infinite width, dash, phase
 * or limit, KURVO_ERR_TOO_LARGE for more than 2^18 dashes on a chain, KURVO_ERR_OPTION for an
 * unknown join or cap, the shared ones, KURVO_ERR_STOPPED. Cost: linear in the curves and dashes,
 * and KurvoRegionSimplify of what they make. */
KURVO_API int KurvoChainStroke(const Cvseq *chains, int32_t n, double left, double right,
                               const KurvoOptions *options, KurvoRegion *out, KurvoReport *report,
                               GlobalVar *g) KURVO_NOEXCEPT;

/* Where n points lie. points (in): n triples x, y, z. where (out, n; null allowed):
 * KURVO_REGION_ON within max(epsilon, 2^-30 of the region's size) of a loop, else
 * KURVO_REGION_INSIDE or KURVO_REGION_OUTSIDE by the region's rule. turns (out, n; null allowed):
 * how often the loops go around the point, counter-clockwise positive; on a loop 0. A jump within
 * a curve, of a spline or between pieces of a composite, counts as a line.
 * Errors: the shared ones. Cost: the loops are prepared once a call, then O(log m) a point beyond
 * the spans that it is near to or level with. */
KURVO_API int KurvoRegionLocate(const KurvoRegion *region, const double *points, int32_t n,
                                int32_t *where, int32_t *turns, GlobalVar *g) KURVO_NOEXCEPT;

/* parents (out, region->count): for each loop the one directly around it, -1 for none. Loops may
 * touch. A loop is around another that surrounds a smaller area (that of KurvoChainMoments, without
 * its sign), or the same and comes later, when its box holds that of the other and it winds around
 * the middle of the first span of the other that does not run along it, or when all run along it:
 * so of equal loops the first is the outermost, and loops that cross get an answer too, always a
 * forest. Of several around a loop the one of the smallest area is named.
 * Errors: the shared ones. Cost: n log n, and O(log m) for each loop in the box of another. */
KURVO_API int KurvoRegionNesting(const KurvoRegion *region, int32_t *parents,
                                 GlobalVar *g) KURVO_NOEXCEPT;

/* moments (out): those of KurvoChainMoments for all loops together, each weighted as it winds,
 * whatever the rule: where loops go around a point twice it counts twice, where they go around it
 * clockwise it counts against. Of the results of combining, the moments of the set of points. */
KURVO_API int KurvoRegionMoments(const KurvoRegion *region, KurvoMoments *moments,
                                 GlobalVar *g) KURVO_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------
 * Chains
 *
 * An empty chain has length 0, no nearest point and a box of zeros; that is no error, the result is
 * 1 and places, distances and boxes are 0.
 * ------------------------------------------------------------------------------------------- */

/* length (out): the length of the chain, to 1e-12 of itself; joints do not count. Cost: linear in
 * the spans, more where the speed changes much within one. A limit of work, which degrees above 50
 * with weights from 1e-6 to 1e6 or dozens of cusps reach, costs them digits. */
KURVO_API int KurvoChainLength(const Cvseq *chain, double *length, GlobalVar *g) KURVO_NOEXCEPT;

/* places (out, n): where the chain has the lengths (in, n, any order) from its start. At a joint,
 * and within 1e-15 of the chain's length of it, the later curve is named. On a closed chain lengths
 * are taken modulo its length; on an open one those outside [0, length] by no more than epsilon are
 * the ends. Errors: KURVO_ERR_RANGE for others. Cost: that of KurvoChainLength, and a few
 * evaluations a place. */
KURVO_API int KurvoChainPlaces(const Cvseq *chain, const double *lengths, int32_t n,
                               KurvoPlace *places, GlobalVar *g) KURVO_NOEXCEPT;

/* lengths (out, n): the lengths from the start of the chain to places on it (in, n), of which only
 * `index` and `t` are read. Errors: KURVO_ERR_RANGE for a place that is not on the chain: a t
 * outside the domain by more than 1e-9 of it. Cost: as KurvoChainPlaces. */
KURVO_API int KurvoChainLengths(const Cvseq *chain, const KurvoPlace *places, int32_t n,
                                double *lengths, GlobalVar *g) KURVO_NOEXCEPT;

/* places (out, n; null allowed): the place of the chain nearest to each of n points (in, triples
 * x, y, z), the first along the chain of several; distances (out, n; null allowed): how far it is.
 * Cost: of one point linear in the chain, 2 ns for a piece that is passed over; of many the chain
 * is prepared once, then O(log m) a point and what it cannot rule out. */
KURVO_API int KurvoChainNearest(const Cvseq *chain, const double *points, int32_t n,
                                KurvoPlace *places, double *distances, GlobalVar *g) KURVO_NOEXCEPT;

/* moments (out): length, signed area, centroid and second moments; an open chain is closed by its
 * chord, which counts in no length. The area is 0 when it is below 2^-48 of length times size.
 * Exact to rounding for polynomial curves and arcs, to 1e-13 for rational ones. Cost: linear. */
KURVO_API int KurvoChainMoments(const Cvseq *chain, KurvoMoments *moments,
                                GlobalVar *g) KURVO_NOEXCEPT;

/* box (out): the narrowest box around the chain, to 1e-12 of its size; z is 0. Cost: linear. */
KURVO_API int KurvoChainTightBox(const Cvseq *chain, Box box, GlobalVar *g) KURVO_NOEXCEPT;

/* list (out), count (out): where two chains meet, ascending by (index_a, a, index_b); `b` null:
 * where one chain meets itself, each pair of places once, the joints of neighbours not. The caller
 * frees the list with KurvoFree; without meetings it is null.
 * Points no farther apart than tol meet. A place where curves of one chain join counts once, with
 * the later of them; whether two chains cross there is told by where both come from and go to. A
 * chain that ends at a meeting touches. A stretch that both share (curves that are the same but for
 * rounding, or stay within tol over 1/32 of the size or a whole curve) is two entries, RUN_FROM and
 * RUN_TO, between which `b` may fall; at joints its ends name the curves on which it lies, so that
 * all of a closed chain is from the start of its first curve to the end of its last. Stretches go
 * on over joints; one that passes the start of a closed chain ends at a lower index. options: tol,
 * gap (joints up to it are passed over, their gaps meet nothing), proceed. Errors: the shared ones,
 * KURVO_ERR_STOPPED, KURVO_ERR_OPTION and KURVO_ERR_TOLERANCE for options. Cost: n log n, and some
 * microseconds for each pair of curves that come near each other. */
KURVO_API int KurvoChainMeetings(const Cvseq *a, const Cvseq *b, const KurvoOptions *options,
                                 KurvoMeeting **list, int32_t *count, GlobalVar *g) KURVO_NOEXCEPT;

/* points (out; null allowed), places (out; null allowed), count (out): vertices of a polyline that
 * keeps within `deviation` (in, length, > 0) of the chain and is about as sparse as that allows.
 * Every joint is a vertex, the joints within composites too; knots of B-splines are where the curve
 * turns a corner. A joint with a gap that is no rounding is two vertices. Ends of curves keep the
 * bits of their records. Of a closed chain the last is the first again, bit for bit. A deviation
 * below 2^-44 of the size of the chain counts as that. The caller frees both with KurvoFree.
 * Errors: KURVO_ERR_TOLERANCE for a deviation that is not positive, KURVO_ERR_TOO_LARGE for more
 * than 2^31 - 1 vertices. Cost: linear in the vertices. */
KURVO_API int KurvoChainFlatten(const Cvseq *chain, double deviation, Coord **points,
                                KurvoPlace **places, int32_t *count, GlobalVar *g) KURVO_NOEXCEPT;

/* out (out): a chain of arcs, quadratics or cubics (`form`, KURVO_FIT_*) within `deviation` (in,
 * length, > 0) of the chain, tangent-continuous where that is. Lines stay lines. Arcs below half a
 * turn stay in the form of arcs, longer ones are cut; Bezier curves of the form's degree stay,
 * those below it are raised, B-splines of no higher degree become one curve between two knots. Arcs
 * that are made are below half a turn, and straight stretches among them become lines. Curves of
 * composites become curves of the chain. Each carries the attribute words of the curve of the chain
 * that it replaces; ends of curves keep their bits, and neighbours share them. A deviation below
 * 2^-44 of the size of the chain counts as that. The caller frees it with KurvocvFreeCvseq. Errors:
 * KURVO_ERR_OPTION for another form, KURVO_ERR_TOLERANCE for a deviation that is not positive.
 * Cost: linear in the chain and in the curves made. */
KURVO_API int KurvoChainFit(const Cvseq *chain, int32_t form, double deviation, Cvseq *out,
                            GlobalVar *g) KURVO_NOEXCEPT;

/* out (out): the chain from one place to another, of which `index` and `t` are read. Whole curves
 * are copied, parts cut; they carry the attribute words of theirs and keep their types. A part runs
 * over [0, 1], a composite too; what is left of a full circle is one or two arcs, a whole one four
 * quarters. On a closed chain `to` may lie before `from`, and the same place twice is the whole
 * loop begun there; on an open one that is an empty chain. A joint has two names, the end of a
 * curve and the start of the next: from the former to the latter is empty too. The caller frees it
 * with KurvocvFreeCvseq. Errors: KURVO_ERR_RANGE for a place that is not on the chain and, on an
 * open one, for `to` before `from`. */
KURVO_API int KurvoChainTrim(const Cvseq *chain, const KurvoPlace *from, const KurvoPlace *to,
                             Cvseq *out, GlobalVar *g) KURVO_NOEXCEPT;

/* Makes chains of n loose curves (in) in any order and direction: `closed` (out) the loops, `open`
 * (out) the others; ends no farther apart than options' `gap` (0: epsilon) are joined. Nothing is
 * lost: a curve given twice, within tol, comes once and is counted as dropped. Curves keep their
 * attribute words; some run backwards. report (out; null allowed): gaps, dropped, moved.
 * options: tol, gap, proceed. Cost: n log n. */
KURVO_API int KurvoChainJoin(const Curve *curves, int32_t n, const KurvoOptions *options,
                             KurvoRegion *closed, KurvoRegion *open, KurvoReport *report,
                             GlobalVar *g) KURVO_NOEXCEPT;

#ifdef __cplusplus
}
#endif

#endif
