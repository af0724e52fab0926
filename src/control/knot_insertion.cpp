// Parts of a B-spline, cut out and continued by knot insertion.
#include "control/knot_insertion.h"

#include <algorithm>

#include "control/blossom.h"
#include "control/homogeneous.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

int32_t Index(const KnotVector& knots, const double* knot) {
  return static_cast<int32_t>(knot - knots.u);
}

}  // namespace

std::optional<KnotCut> FindCut(const KnotVector& knots, double c) {
  const double start = knots.Start();
  const double end = knots.End();
  if (!(start < end && c == c)) return std::nullopt;
  const double* first = knots.u + knots.order - 1;
  const double* last = knots.u + knots.count + 1;
  KnotCut cut{c, 0, 0};
  if (c <= start) {
    cut.right = Index(knots, std::upper_bound(first, last, start));
    cut.left = cut.right - 1;
  } else if (c >= end) {
    cut.right = Index(knots, std::lower_bound(first, last, end));
    cut.left = cut.right - 1;
  } else {
    cut.left = Index(knots, std::lower_bound(first, last, c)) - 1;
    cut.right = Index(knots, std::upper_bound(first, last, c));
  }
  const bool inside =
      cut.left >= knots.order - 1 && cut.right <= knots.count && cut.left < cut.right;
  return inside ? std::optional(cut) : std::nullopt;
}

namespace {

// The insertion of one parameter into a run of `levels` + 1 control points. A point of the run has
// the parameters lo[1 ..] before c and hi[0 ..] after it; each level trades one of them for c.
struct Insertion {
  double c;
  int32_t levels;
  const double* lo;
  const double* hi;

  double operator()(int32_t l, int32_t q) const { return (c - lo[q + l]) / (hi[q] - lo[q + l]); }
};

// Leaves what controls the curve after c; the last point of the run keeps its bits.
template <std::size_t kDim>
void InsertAtStart(double (*run)[kDim], const Insertion& insertion) {
  const int32_t n = insertion.levels;
  if (n == 0) return;
  double kept[kDim];
  std::copy_n(run[n], kDim, kept);
  ToHomogeneous(run, n + 1);
  ToRightEdge(run, n, insertion);
  ToCartesian(run, n);
  std::copy_n(kept, kDim, run[n]);
}

// Leaves what controls the curve before c; the first point of the run keeps its bits.
template <std::size_t kDim>
void InsertAtEnd(double (*run)[kDim], const Insertion& insertion) {
  const int32_t n = insertion.levels;
  if (n == 0) return;
  double kept[kDim];
  std::copy_n(run[0], kDim, kept);
  ToHomogeneous(run, n + 1);
  ToLeftEdge(run, n, insertion);
  ToCartesian(run + 1, n);
  std::copy_n(kept, kDim, run[0]);
}

// Fills the record of a part, whose point 0 is point `first` of the curve until knots are inserted.
template <std::size_t kDim>
class PartBuilder {
 public:
  PartBuilder(const SplineView<kDim>& spline, int32_t first, SplineBlock<kDim>& part)
      : degree_(spline.order - 1), u_(spline.knots), first_(first), part_(part) {
    CopyArray(spline.points + first, part.count, part.points);
    CopyArray(spline.knots + first, part.count + part.order, part.knots);
  }

  void SetStartKnots(double c) { std::fill_n(part_.knots, part_.order, c); }
  void SetEndKnots(double c) { std::fill_n(part_.knots + part_.count, part_.order, c); }

  // The start is cut while the knots after it are still the curve's, or once the end is cut.
  void CutStart(const KnotCut& cut, bool end_is_cut) {
    const double* hi = end_is_cut ? part_.knots + part_.order : u_ + cut.right;
    InsertAtStart(part_.points, {cut.c, Levels(cut), u_ + first_, hi});
  }
  void CutEnd(const KnotCut& cut, bool start_is_cut) {
    const int32_t levels = Levels(cut);
    const int32_t run = part_.count - 1 - levels;
    const double* lo = start_is_cut ? part_.knots + run : u_ + first_ + run;
    InsertAtEnd(part_.points + run, {cut.c, levels, lo, u_ + cut.right});
  }

 private:
  int32_t Levels(const KnotCut& cut) const { return std::max(degree_ - cut.multiplicity(), 0); }

  const int32_t degree_;
  const double* u_;
  const int32_t first_;
  SplineBlock<kDim>& part_;
};

}  // namespace

template <std::size_t kDim>
OwnedCurve SplinePart(const SplineView<kDim>& spline, const std::optional<KnotCut>& start,
                      const std::optional<KnotCut>& end) {
  const int32_t first = start ? start->right - spline.order : 0;
  const int32_t last = end ? end->left : spline.count - 1;
  if (last - first < spline.order - 1) return {};
  OwnedCurve part(kSplineType<kDim>, {.order = spline.order, .count = last - first + 1});
  PartBuilder<kDim> builder(spline, first, part.block<SplineBlock<kDim>>());
  if (start) builder.SetStartKnots(start->c);
  if (end) builder.SetEndKnots(end->c);

  // A continued end first: the other one may lie on the continuation.
  const bool end_first = end && end->c > KnotsOf(spline).End();
  if (end && end_first) builder.CutEnd(*end, false);
  if (start) builder.CutStart(*start, end_first);
  if (end && !end_first) builder.CutEnd(*end, start.has_value());
  return part;
}

template OwnedCurve SplinePart(const SplineView<3>&, const std::optional<KnotCut>&,
                               const std::optional<KnotCut>&);
template OwnedCurve SplinePart(const SplineView<4>&, const std::optional<KnotCut>&,
                               const std::optional<KnotCut>&);

}  // namespace kurvo
