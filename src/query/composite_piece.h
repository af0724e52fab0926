// The piece of a composite that a parameter falls on.
#pragma once

#include <algorithm>

#include "records/views.h"

namespace kurvo {

// Which piece a boundary between two of them belongs to.
enum class Boundary { kEarlierPiece, kLaterPiece };

// A piece and the parameter on it; no piece beyond the end.
struct PieceParameter {
  const Curve* piece = nullptr;
  double t = 0.0;
};

// The first piece whose running sum of widths reaches t, or exceeds it when boundaries belong to
// the later piece. A piece without width is evaluated at its start. Rounding must not carry the
// parameter beyond the end of the piece, where a composite has no point.
inline PieceParameter PieceAt(const CompositeView& composite, double t, Boundary boundary) {
  double before = 0.0;
  for (int32_t i = 0; i < composite.count; ++i) {
    const double width = composite.widths[i];
    const double after = before + width;
    if (boundary == Boundary::kEarlierPiece ? after >= t : after > t)
      return {composite.curves + i, width > 0.0 ? std::min((t - before) / width, 1.0) : 0.0};
    before = after;
  }
  return {};
}

}  // namespace kurvo
