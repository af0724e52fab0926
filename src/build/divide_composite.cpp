// Composites taken apart between and inside their pieces.
#include "build/divide_composite.h"

#include <algorithm>
#include <cmath>

#include "build/cut_curve.h"
#include "records/copied_curve.h"
#include "records/pieces.h"
#include "records/widths.h"

namespace kurvo {

void PieceList::Add(OwnedCurve piece, double width) {
  pieces.push_back(std::move(piece));
  widths.push_back(width);
}

OwnedCurve PieceList::ToComposite() {
  double total = 0.0;
  for (const double width : widths) total += width;
  if (pieces.empty() || !(total >= 0.0 && std::isfinite(total))) return {};
  const std::size_t count = pieces.size();
  OwnedCurve composite(CV_SEGCV, {.count = static_cast<int32_t>(count)});
  auto& block = composite.block<KurvoSegcv>();
  Widths scaled;
  double sum = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    sum += total > 0.0 ? widths[i] / total : 1.0 / static_cast<double>(count);
    block.curves[i] = pieces[i].Release();
    block.widths[i] = scaled.UpTo(i + 1 == count ? 1.0 : std::min(sum, 1.0));
  }
  return composite;
}

namespace {

// Divides the piece at n parameters of the composite and adds the parts to lists[0 .. n].
bool DividePiece(const Piece& piece, const double* cuts, std::size_t n, double param_tol,
                 HighOrderWork& work, GlobalVar& g, PieceList* lists) {
  std::vector<double> local(n);
  for (std::size_t i = 0; i < n; ++i) local[i] = (cuts[i] - piece.start) / piece.width;
  std::vector<OwnedCurve> parts(n + 1);
  if (!CutCurve(piece.curve, local.data(), static_cast<int32_t>(n), param_tol / piece.width,
                parts.data(), work, g))
    return false;
  double start = piece.start;
  for (std::size_t i = 0; i <= n; ++i) {
    const double end = i < n ? cuts[i] : piece.end();
    // Rounding may put a cut on the end of a nested composite, whose point is no curve.
    if (parts[i].curve().data) lists[i].Add(std::move(parts[i]), end - start);
    start = end;
  }
  return true;
}

}  // namespace

bool SplitComposite(const CompositeView& composite, const std::vector<double>& cuts,
                    double param_tol, HighOrderWork& work, GlobalVar& g,
                    std::vector<PieceList>& lists) {
  std::size_t list = 0;
  for (const Piece piece : PiecesOf(composite)) {
    const double end = piece.end();
    const double reach = piece.index + 1 < composite.count ? end - param_tol : end;
    std::size_t inside = 0;  // cuts in this piece
    while (list + inside < cuts.size() && cuts[list + inside] < reach) ++inside;
    if (inside == 0) {
      if (lists[list].wanted) lists[list].Add(CopyOf(piece.curve, g), piece.width);
    } else if (!DividePiece(piece, cuts.data() + list, inside, param_tol, work, g, &lists[list])) {
      return false;
    }
    list += inside;
    if (list < cuts.size() && param_tol >= std::fabs(end - cuts[list])) ++list;
  }
  return list == cuts.size();
}

}  // namespace kurvo
