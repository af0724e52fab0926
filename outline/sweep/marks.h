// Which crossing a strand has at the beam that is being looked at.
#pragma once

#include "base/memory.h"
#include "sweep/beams.h"

namespace kurvo::outline {

class Marks {
 public:
  Marks(std::size_t strands, const Array<Crossing>& crossings)
      : crossings_(crossings), marks_(strands, {-1, -1}) {}

  // At each beam once: the first crossing of each strand counts.
  void Set(const Beams& beams, int32_t k) {
    for (const int32_t i : beams.crossings()[k]) {
      const Crossing& crossing = crossings_[static_cast<std::size_t>(i)];
      for (const int32_t strand : {crossing.a, crossing.b}) {
        Mark& mark = marks_[static_cast<std::size_t>(strand)];
        if (mark.beam != k) mark = {k, i};
      }
    }
  }
  // Null: none.
  const Crossing* Of(int32_t strand, int32_t k) const {
    const Mark& mark = marks_[static_cast<std::size_t>(strand)];
    return mark.beam == k ? &crossings_[static_cast<std::size_t>(mark.crossing)] : nullptr;
  }

 private:
  struct Mark {
    int32_t beam, crossing;
  };
  const Array<Crossing>& crossings_;
  Array<Mark> marks_;
};

}  // namespace kurvo::outline
