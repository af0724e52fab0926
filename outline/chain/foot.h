// The nearest points of spans.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/vec2.h"
#include "strand/span.h"

namespace kurvo::outline {

// The point of a span nearest to a given one, in the coordinates of a frame.
struct Foot {
  double distance;
  int32_t curve;
  double t, from;    // parameters of that curve: of the point, and where its span starts
  std::size_t span;  // as the caller numbers them
  double u;
};

// The nearest points found so far; the first along the chain of those that doubles cannot tell
// apart. What comes out does not hang on the order of the search.
class Feet {
 public:
  void Consider(const Span& span, std::size_t number, double u, double squared_distance) {
    if (squared_distance <= limit_) Add(span, number, u, squared_distance);
  }
  // Nothing farther than this counts: some point of the chain is so near.
  void Assume(double squared_distance);

  // The squared distance, and some more for rounding, that what still matters is not beyond.
  double limit() const { return limit_; }
  bool IsEmpty() const { return count_ == 0; }
  const Foot& First() const;

 private:
  static constexpr int kMost = 8;

  void Add(const Span& span, std::size_t number, double u, double squared_distance);

  Foot feet_[kMost];  // none of them both earlier and nearer than another
  int count_ = 0;
  double least_ = std::numeric_limits<double>::infinity();
  double limit_ = std::numeric_limits<double>::infinity();
};

// Considers the points of a span that may be nearest to q. `number` names the span.
void SearchSpan(const Span& span, std::size_t number, Vec2 q, Feet& feet);

}  // namespace kurvo::outline
