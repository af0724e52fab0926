// The seam between code that may throw and the C interface.
#pragma once

#include <kurvo_outline.h>

#include <cmath>
#include <utility>

namespace kurvo::outline {

// Why a call is refused: thrown inside, the code of the caller's record outside.
struct Refusal {
  int code;
};

// Throws the code unless the condition holds.
inline void Require(bool condition, int code) {
  if (!condition) throw Refusal{code};
}

// A number from the caller that must be finite.
inline void RequireFinite(double number) { Require(std::isfinite(number), KURVO_ERR_NOT_FINITE); }

// Runs `body` unless an error is pending. Result: 1 when it was done; 0 when it was refused, and
// the record says why.
template <class Body>
int Answer(GlobalVar* g, Body&& body) noexcept {
  if (!KurvoOk(g)) return 0;
  try {
    std::forward<Body>(body)();
    return 1;
  } catch (const Refusal& refusal) {
    g->error = refusal.code;
  } catch (...) {
    g->error = KURVO_ERR_MEMORY;
  }
  return 0;
}

}  // namespace kurvo::outline
