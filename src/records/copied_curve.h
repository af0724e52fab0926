// Deep copies that free themselves.
#pragma once

#include <new>

#include "foundation/error_codes.h"
#include "records/owned_curve.h"

namespace kurvo {

// A copy of the curve; empty, with the error recorded, when it is refused. No error may be pending.
// Throws std::bad_alloc.
inline OwnedCurve CopyOf(const Curve& source, GlobalVar& g) {
  OwnedCurve copy;
  KurvocvCopyCurve(&source, &copy.curve(), &g);
  if (g.error == KURVO_ERR_MEMORY) throw std::bad_alloc();
  if (ErrorPending(g)) return {};
  return copy;
}

}  // namespace kurvo
