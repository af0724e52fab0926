// The strips of one cubic.
#pragma once

#include "fit/cubic_cells.h"
#include "fit/offset_fit.h"

namespace kurvo::outline {

inline constexpr std::size_t kUsualPieces = 16;     // of a cubic
inline constexpr std::size_t kMostExtra = 1 << 11;  // pieces beyond that, of all cubics

// Appends those of a cell of a span; pieces are no farther than `tol` from where they belong.
void AppendStrips(const Span& span, const CubicCell& cell, double distance, double tol,
                  StripList& list);

}  // namespace kurvo::outline
