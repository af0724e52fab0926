// Bezier curves at a constant distance from Bezier curves.
#pragma once

#include <cstddef>
#include <cstdint>

#include "records/owned_sequence.h"

namespace kurvo {

struct OffsetTask {
  double distance;          // to the left of travel
  double tolerance;         // of the distance, length
  double epsilon;           // the length tolerance in force
  std::size_t most_pieces;  // that one Bezier curve may become, at least kLeastOffsetPieces
};

// Tolerance 0 would go on to 2^14 pieces of every curve. One result has about this many at most, or
// the least number times the Bezier curves that it is made of.
constexpr std::size_t kMaxOffsetPieces = 5000;
constexpr std::size_t kLeastOffsetPieces = 64;

// Appends Bezier curves of one degree more whose control polygon is that of the curve, moved: the
// curve is halved until their distance from it is right (Tiller and Hanson, IEEE Computer Graphics
// and Applications 4, 1984, on the control polygon of the raised degree). Weights stay. Appends
// nothing for a curve that is a point. Degrees up to kMaxOffsetDegree. Throws std::bad_alloc.
template <std::size_t kDim>
void OffsetBezier(const double (*points)[kDim], int32_t degree, const OffsetTask& task,
                  OwnedSequence& pieces);

}  // namespace kurvo
