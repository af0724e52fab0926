// What the caller asks for besides, checked.
#pragma once

#include <kurvo_outline.h>

namespace kurvo::outline {

// Asks the caller, now and then, whether to go on.
class Progress {
 public:
  Progress() = default;
  Progress(int (*proceed)(double, void*), void* user) : proceed_(proceed), user_(user) {}

  // `done` in [0, 1]. Throws Refusal KURVO_ERR_STOPPED when the caller says no.
  void Tell(double done);

 private:
  int (*proceed_)(double, void*) = nullptr;
  void* user_ = nullptr;
  double told_ = 0;
};

struct Settings {
  double tol;  // length
  double gap;  // length, at least epsilon
  uint32_t flags;
  Progress progress;
};

// The lengths and flags of the options (null: the defaults) for input of this size, the longer side
// of its box. Throws Refusal: KURVO_ERR_OPTION for a size or reserved fields or flags that are not
// known, KURVO_ERR_TOLERANCE for a tol or gap that is negative or NaN, KURVO_ERR_NOT_FINITE for an
// infinite tol.
Settings ReadOptions(const KurvoOptions* options, double size, double epsilon);

// How corners and ends are drawn.
struct PenOptions {
  int32_t join, cap;     // KURVO_JOIN_*, KURVO_CAP_*
  double miter_limit;    // at least 1
  double phase;          // length, of the dashes
  int32_t dash_count;    // 0: none
  const double* dashes;  // the caller's
};

// Throws Refusal: KURVO_ERR_OPTION for an unknown join or cap, a count of dashes that is negative
// or has no array; KURVO_ERR_NOT_FINITE for a limit, phase or dash that is not finite;
// KURVO_ERR_RANGE for a limit below 1 and for dashes that are negative or sum to 0.
PenOptions ReadPenOptions(const KurvoOptions* options);

}  // namespace kurvo::outline
