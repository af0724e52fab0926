// The bit layout of an error code, and the one writer of codes.
#pragma once

#include <cstdint>

#include "kurvo.h"

namespace kurvo {

// Fields of a code: severity in bits 0-1, module in 2-9, group in 10-21, action in 22-25.
constexpr int kModuleShift = 2;
constexpr int kGroupShift = 10;
constexpr int kActionShift = 22;
constexpr int kSeverityMask = 0x3;
constexpr int kModuleMask = 0xFF;
constexpr int kGroupMask = 0xFFF;
constexpr int kActionMask = 0xF;

constexpr int32_t MakeCode(int severity, int module, int group, int action) {
  return severity | module << kModuleShift | group << kGroupShift | action << kActionShift;
}

static_assert(KURVO_ERR_MEMORY == MakeCode(3, 17, 2051, 3));
static_assert(KURVO_ERR_CURVE == MakeCode(2, 20, 3411, 1));
static_assert(KURVO_ERR_TOLERANCE == MakeCode(2, 20, 3415, 1));
static_assert(KURVO_ERR_STACK_EMPTY == MakeCode(2, 20, 3797, 1));
static_assert(KURVO_ERR_CHAIN_INDEX == MakeCode(2, 20, 3432, 1));
static_assert(KURVO_ERR_CHAIN_BREAK == MakeCode(2, 20, 3445, 1));
static_assert(KURVO_ERR_CHAIN_ENDS == MakeCode(2, 20, 2337, 1));
static_assert(KURVO_ERR_RANGE == MakeCode(2, 20, 3536, 1));
static_assert(KURVO_ERR_WEIGHT == MakeCode(2, 20, 3815, 1));
static_assert(KURVO_ERR_CHAIN_DEGENERATE == MakeCode(2, 20, 2212, 1));
static_assert(KURVO_ERR_CHAIN_CONVERT == MakeCode(2, 20, 3732, 1));
static_assert(KURVO_WARN_NO_ORIENTATION == MakeCode(1, 20, 3475, 1));
static_assert(KURVO_ERR_FIT_MISSING == MakeCode(2, 20, 3435, 1));
static_assert(KURVO_ERR_FIT_POINTS == MakeCode(2, 20, 3566, 1));
static_assert(KURVO_ERR_DERIVATIVE_ORDER == MakeCode(2, 20, 2214, 1));
static_assert(KURVO_ERR_SCALE == MakeCode(2, 20, 3569, 1));
// Fixed behaviour: the bare group of KURVO_ERR_CURVE. Do not unify.
static_assert(KURVO_ERR_ROTATED_TYPE == 3411);
static_assert(KURVO_ERR_ZERO_WEIGHT == MakeCode(2, 20, 3410, 1));
static_assert(KURVO_ERR_SHORT_TANGENT == MakeCode(2, 20, 3817, 1));
static_assert(KURVO_WARN_SHORT_VECTOR == MakeCode(1, 20, 3817, 1));
static_assert(KURVO_ERR_SAME_POINTS == MakeCode(2, 20, 2295, 1));
static_assert(KURVO_ERR_RADIUS_TOO_SMALL == MakeCode(2, 29, 2298, 2));

// Records `code`; the last one wins, a warning included.
inline void Fail(GlobalVar& g, int32_t code) { g.error = code; }

// The same as a value: `neutral`, or what the type begins as.
template <class Result>
Result Refuse(GlobalVar& g, int32_t code, Result neutral = {}) {
  Fail(g, code);
  return neutral;
}

// True while an error or fatal error (not a warning) waits to be reset.
inline bool ErrorPending(const GlobalVar& g) {
  return (g.error & kSeverityMask) >= KURVO_SEVERITY_ERROR;
}

}  // namespace kurvo
