// Composites taken apart between and inside their pieces.
#pragma once

#include <vector>

#include "records/owned_curve.h"
#include "records/views.h"

namespace kurvo {

// Pieces that are to become a composite, with their widths.
struct PieceList {
  std::vector<OwnedCurve> pieces;
  std::vector<double> widths;

  void Add(OwnedCurve piece, double width);

  // The composite of the pieces, which it takes over, with the widths scaled to add up to exactly
  // 1. Empty when the widths do not have a positive, finite sum.
  OwnedCurve ToComposite();
};

// Splits a composite at ascending parameters inside its domain into one list more than there are
// parameters, in the widths of the composite. A cut within `param_tol` of the end of a piece falls
// behind that piece; other cuts divide the piece, of whatever type. Lists other than those from
// `first` to `last` are left empty at little cost. False when a piece cannot be cut. Throws
// std::bad_alloc.
bool SplitComposite(const CompositeView& composite, const std::vector<double>& cuts,
                    double param_tol, GlobalVar& g, std::vector<PieceList>& lists);

}  // namespace kurvo
