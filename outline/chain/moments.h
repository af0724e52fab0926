// Length, area, centroid and second moments of chains together.
#pragma once

#include <kurvo_outline.h>

#include <span>

#include "base/sum.h"
#include "chain/fan.h"
#include "strand/frame.h"

namespace kurvo::outline {

// Adds the length of a checked chain and its fan, closed by its chord; both in the frame. Result:
// whether there is a curve.
bool AddMoments(const Cvseq& chain, const Frame& frame, Sum& length, Fans& fans);

// Of all of them, in the caller's unit. The area is 0 below kFlat of the length.
KurvoMoments MomentsOf(std::span<const Cvseq> chains, const Frame& frame);

}  // namespace kurvo::outline
