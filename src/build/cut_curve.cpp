// Curves of any type cut into pieces.
#include "build/cut_curve.h"

#include <algorithm>
#include <vector>

#include "build/divide_composite.h"
#include "build/divide_spline.h"
#include "build/point_curve.h"
#include "control/casteljau_split.h"
#include "eval/parc2d.h"
#include "foundation/work_area.h"
#include "records/copied_curve.h"
#include "records/domain.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

constexpr std::size_t kStackCuts = 4;

struct Cuts {
  const double* t;
  int32_t n;
  double param_tol;
  OwnedCurve* pieces;
  HighOrderWork& work;
};

bool Cut(const Curve& curve, const KurvoLine& line, const Cuts& cuts, GlobalVar& g) {
  const Vec3 start = Spatial(line.start);
  const Vec3 along = Spatial(line.end) - start;
  Vec3 from = start;
  for (int32_t i = 0; i <= cuts.n; ++i) {
    const Vec3 to = i < cuts.n ? start + cuts.t[i] * along : Spatial(line.end);
    cuts.pieces[i] = CopyOf(curve, g);
    auto& piece = cuts.pieces[i].block<KurvoLine>();
    Store(from, piece.start);
    Store(to, piece.end);
    from = to;
  }
  return true;
}

bool Cut(const Curve& curve, const KurvoArc& arc, const Cuts& cuts, GlobalVar& g) {
  const PArc2D evaluator(arc, g);
  Vec3 from = Spatial(arc.start);
  for (int32_t i = 0; i <= cuts.n; ++i) {
    const Vec3 to = i < cuts.n ? evaluator.Position(cuts.t[i]) : Spatial(arc.end);
    cuts.pieces[i] = CopyOf(curve, g);
    auto& piece = cuts.pieces[i].block<KurvoArc>();
    Store(from, piece.start);
    Store(to, piece.end);
    from = to;
  }
  return true;
}

// What remains of the curve after each cut is cut by the next one, over its own [0, 1].
template <std::size_t kDim>
bool Cut(const Curve& curve, const BezierView<kDim>& bezier, const Cuts& cuts, GlobalVar& g) {
  const int32_t degree = bezier.degree;
  if (degree > kMaxSplitDegree || !cuts.work.Allows(degree + 1, cuts.n)) return false;
  OwnedCurve rest = CopiedBezier<kDim>(bezier.points, degree);
  const auto& points = rest.block<BezierBlock<kDim>>().points;
  double from = 0.0;
  for (int32_t i = 0; i < cuts.n; ++i) {
    const double to = cuts.t[i];
    if (!(from < to)) {
      cuts.pieces[i] = PointCurve(curve, to, g);
    } else if (!(to < 1.0)) {
      cuts.pieces[i] = std::exchange(rest, PointCurve(curve, 1.0, g));
    } else {
      const double local = (to - from) / (1.0 - from);
      cuts.pieces[i] = NewBezier<kDim>(
          degree, [&](double(*before)[kDim]) { SplitBezier(points, degree, local, before); });
    }
    from = to;
  }
  cuts.pieces[cuts.n] = std::move(rest);
  return true;
}

template <std::size_t kDim>
bool Cut(const Curve& curve, const SplineView<kDim>& spline, const Cuts& cuts, GlobalVar& g) {
  if (!cuts.work.Allows(spline.order, cuts.n)) return false;
  const Domain domain = DomainOf(spline);
  WorkArea<CutPlace, kStackCuts> places(static_cast<std::size_t>(cuts.n));
  for (int32_t i = 0; i < cuts.n; ++i) {
    const double t = cuts.t[i];
    CutPlace place{t, t};
    if (domain.start < t && t < domain.end) {
      const auto found = DivisionPlace(spline, t, g);
      if (!found) return false;
      place = *found;
    }
    places[static_cast<std::size_t>(i)] = place;
  }
  return CutSpline(curve, spline, places.data(), cuts.n, cuts.pieces, g);
}

// Parameters that repeat, or lie on an end, part nothing: the composite is split at the others.
bool Cut(const Curve& curve, const CompositeView& composite, const Cuts& cuts, GlobalVar& g) {
  const Domain domain = DomainOf(composite);
  std::vector<double> splits;
  for (int32_t i = 0; i < cuts.n; ++i) {
    const double t = cuts.t[i];
    const double before = splits.empty() ? domain.start : splits.back();
    if (before < t && t < domain.end) splits.push_back(t);
  }
  std::vector<PieceList> lists(splits.size() + 1);
  if (!SplitComposite(composite, splits, cuts.param_tol, cuts.work, g, lists)) return false;
  auto list = lists.begin();
  double from = domain.start;
  for (int32_t i = 0; i <= cuts.n; ++i) {
    const double to = i < cuts.n ? cuts.t[i] : domain.end;
    if (from < to) {
      cuts.pieces[i] = (list++)->ToComposite();
      if (!cuts.pieces[i].curve().data) return false;
    } else {
      cuts.pieces[i] = PointCurve(curve, to, g);
    }
    from = to;
  }
  return true;
}

bool Cut(const Curve&, Refused, const Cuts&, GlobalVar&) { return false; }

}  // namespace

bool CutCurve(const Curve& curve, const double* t, int32_t n, double param_tol, OwnedCurve* pieces,
              HighOrderWork& work, GlobalVar& g) {
  const Cuts cuts{t, n, param_tol, pieces, work};
  return VisitCurve(curve, [&](const auto& view) {
    const Domain domain = DomainOf(view);
    const auto inside = [&](double s) { return domain.start <= s && s <= domain.end; };
    return std::all_of(t, t + n, inside) && Cut(curve, view, cuts, g);
  });
}

}  // namespace kurvo
