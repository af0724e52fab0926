// Composites taken apart between and inside their pieces.
#pragma once

#include <vector>

#include "foundation/high_order_work.h"
#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

// Pieces that are to become a composite, with their widths.
struct PieceList {
  std::vector<OwnedCurve> pieces;
  std::vector<double> widths;
  bool wanted = true;  // false: whole pieces that belong here are not copied

  void Add(OwnedCurve piece, double width);

  // The composite of the pieces, which it takes over, with the widths scaled to add up to exactly
  // 1; when they are all 0 the pieces share it evenly. Empty when there is no piece and when the
  // widths do not have a finite sum.
  OwnedCurve ToComposite();
};

// Splits a composite at ascending parameters inside its domain into one list more than there are
// parameters, in the widths of the composite. A cut within `param_tol` of the end of a piece, but
// for the last one, falls behind that piece; other cuts divide the piece, of whatever type. False
// when a piece cannot be cut, or `work` does not allow it. Throws std::bad_alloc.
bool SplitComposite(const CompositeView& composite, const std::vector<double>& cuts,
                    double param_tol, HighOrderWork& work, GlobalVar& g,
                    std::vector<PieceList>& lists);

}  // namespace kurvo
