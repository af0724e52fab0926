// Temporary chains of curves that free themselves.
#pragma once

#include <cstdint>
#include <new>
#include <vector>

#include "records/owned_curve.h"

namespace kurvo {

using OwnedSequence = std::vector<OwnedCurve>;

// Hands the curves over to a sequence, which is empty when there are none. Throws std::bad_alloc,
// and then frees them with their handles.
inline Cvseq ReleaseSequence(OwnedSequence& curves) {
  Cvseq sequence{};
  if (curves.empty()) return sequence;
  if (!KurvocvMallocCvseq(&sequence, static_cast<int32_t>(curves.size()))) throw std::bad_alloc();
  for (std::size_t i = 0; i < curves.size(); ++i) sequence.curves[i] = curves[i].Release();
  return sequence;
}

}  // namespace kurvo
