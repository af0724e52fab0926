// Extension of composites.
#include <algorithm>
#include <utility>

#include "build/divide_composite.h"
#include "build/extend_rules.h"
#include "foundation/error_codes.h"
#include "foundation/high_order_work.h"
#include "foundation/rounded_compare.h"
#include "records/domain.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

bool IsClosed(const Curve& curve, GlobalVar& g) {
  Coord start, end;
  KurvocvStartPoint(&curve, start, &g);
  KurvocvEndPoint(&curve, end, &g);
  return KurvoclSameCoord(start, end, &g) != 0;
}

// Amounts that are 0 at six decimals count as 0.
double Amount(double by) { return CompareRounded(by, 0.0) == 0 ? 0.0 : by; }

// Extends the piece by amounts of the composite's parameter. False when its own rule refuses.
bool ExtendPiece(PieceList& list, std::size_t i, Extension by, GlobalVar& g) {
  const double width = list.widths[i];
  const auto share = [width](double amount) { return amount != 0.0 ? amount / width : 0.0; };
  OwnedCurve piece = Extended(list.pieces[i].curve(), {share(by.start), share(by.end)}, g);
  if (ErrorPending(g)) return false;
  list.pieces[i] = std::move(piece);
  list.widths[i] = by.start + width + by.end;
  return true;
}

// A range beyond the end (before the start) lies on the continuation of the last (first) piece.
OwnedCurve PieceOver(const Curve& piece, const Domain& stretch, const Domain& range, GlobalVar& g) {
  const Extension by{(stretch.start - range.start) / stretch.width(),
                     (range.end - stretch.end) / stretch.width()};
  OwnedCurve result = Extended(piece, by, g);
  if (ErrorPending(g)) return {};
  return NewComposite(std::move(result));
}

// What is left when an end is cut back; an end that is not stays.
bool Trim(const CompositeView& composite, const Domain& range, const Domain& domain, GlobalVar& g,
          PieceList& kept) {
  const double param_tol = g.epsilon;
  std::vector<double> cuts;
  std::size_t list = 0;
  if (range.start > param_tol) {
    cuts.push_back(range.start);
    list = 1;
  }
  if (domain.end - param_tol > range.end) cuts.push_back(range.end);
  HighOrderWork work;
  std::vector<PieceList> lists(cuts.size() + 1);
  for (std::size_t i = 0; i < lists.size(); ++i) lists[i].wanted = i == list;
  if (!SplitComposite(composite, cuts, param_tol, work, g, lists)) return false;
  kept = std::move(lists[list]);
  return !kept.pieces.empty();
}

bool Grow(PieceList& list, Extension by, GlobalVar& g) {
  const std::size_t last = list.pieces.size() - 1;
  if (last == 0) return ExtendPiece(list, 0, by, g);  // both ends at once
  if (by.start > 0.0 && !ExtendPiece(list, 0, {by.start, 0.0}, g)) return false;
  return !(by.end > 0.0) || ExtendPiece(list, last, {0.0, by.end}, g);
}

}  // namespace

OwnedCurve ExtendComposite(const Curve& curve, const CompositeView& composite, Extension by,
                           GlobalVar& g) {
  if (composite.count == 0) return Refuse<OwnedCurve>(g, KURVO_ERR_RANGE);
  by = {Amount(by.start), Amount(by.end)};
  const bool grows = by.start > 0.0 || by.end > 0.0;
  // Fixed behaviour: only a first piece that is a plain Bezier curve keeps a closed composite from
  // being extended past its own start.
  if (grows && composite.curves[0].type == CV_BEZIER && IsClosed(curve, g))
    return Refuse<OwnedCurve>(g, KURVO_ERR_CHAIN_ENDS);

  const Domain domain = DomainOf(composite);
  const Domain range{-by.start, domain.end + by.end};
  const int32_t last = composite.count - 1;
  if (by.start < 0.0 && range.start >= domain.end - g.epsilon)
    return PieceOver(composite.curves[last], {domain.end - composite.widths[last], domain.end},
                     range, g);
  if (by.end < 0.0 && g.epsilon >= range.end)
    return PieceOver(composite.curves[0], {0.0, composite.widths[0]}, range, g);

  PieceList list;
  if (!Trim(composite, range, domain, g, list)) return Refuse<OwnedCurve>(g, KURVO_ERR_CURVE);
  const Extension growth{std::max(by.start, 0.0), std::max(by.end, 0.0)};
  if (grows && !Grow(list, growth, g)) return {};
  OwnedCurve result = list.ToComposite();
  if (!result.curve().data) return Refuse<OwnedCurve>(g, KURVO_ERR_CURVE);
  return result;
}

}  // namespace kurvo
