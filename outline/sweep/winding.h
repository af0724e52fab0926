// What is inside: how often the operands go around a place, and which rule and operation say so.
#pragma once

#include <kurvo_outline.h>

#include "base/memory.h"

namespace kurvo::outline {

// Which operands a place is inside of; all that an operation asks for.
struct Covered {
  bool first = false;
  int32_t others = 0;  // how many of the rest

  bool operator==(const Covered&) const = default;
};

class FillRule {
 public:
  FillRule(int32_t operation, int32_t operands) : operation_(operation), operands_(operands) {}

  bool IsInside(const Covered& covered) const {
    switch (operation_) {
      case KURVO_UNION:
        return covered.first || covered.others > 0;
      case KURVO_INTERSECTION:
        return covered.first && covered.others == operands_ - 1;
      case KURVO_DIFFERENCE:
        return covered.first && covered.others == 0;
      default:
        return ((covered.first ? 1 : 0) + covered.others) % 2 != 0;
    }
  }

  static bool Fills(int32_t rule, int32_t winding) {
    switch (rule) {
      case KURVO_FILL_NONZERO:
        return winding != 0;
      case KURVO_FILL_EVENODD:
        return winding % 2 != 0;
      case KURVO_FILL_POSITIVE:
        return winding > 0;
      default:
        return winding < 0;
    }
  }

 private:
  int32_t operation_, operands_;
};

}  // namespace kurvo::outline
