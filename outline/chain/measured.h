// A chain whose spans are measured, for questions about lengths along it.
#pragma once

#include <kurvo.h>

#include "base/memory.h"
#include "chain/speed.h"
#include "strand/spans.h"

namespace kurvo::outline {

struct MeasuredChain {
  SpanList list;
  Array<double> before;  // the length before each span, and that of the chain; in the frame's unit
  bool is_closed = false;

  double length() const { return before.back(); }
};

// Checks the chain, its joints against epsilon too. Throws Refusal.
void Measure(const Cvseq* chain, double epsilon, MeasuredChain& measured);

// Finds parameters at lengths along one span, in ascending order.
class SpanWalk {
 public:
  SpanWalk(const Span& span, double length) : speed_(span), length_(length) {}

  // u at this length from the span's start, no smaller than the one before.
  double At(double length);

 private:
  struct Stop {
    double u, length;
  };
  Speed speed_;
  double length_;
  Stop last_ = {0, 0};
};

}  // namespace kurvo::outline
