// What stands side by side in a slab, from the left.
#pragma once

#include <span>

#include "base/memory.h"
#include "sweep/winding.h"

namespace kurvo::outline {

// Strands that run together count as one: each of them together with the first. (Together is no
// equivalence: a ladder of copies, each near the next, is several bundles.)
struct Bundle {
  int32_t first, count;  // members: in the row's strands, from the left
  int32_t lead;          // the member that results are made of
  int32_t edge;          // of the result, where it is kept; else -1
  bool is_kept;          // one side of it is inside, the other is not
  Covered left, right;   // what covers both sides
  double middle;         // the height at which its members were put in order
  // At a beam: where it may pass, where it should, and where it does.
  double low, high, preferred, place;
};

struct Row {
  Array<int32_t> strands;
  Array<Bundle> bundles;

  void Clear() {
    strands.clear();
    bundles.clear();
  }
  std::span<const int32_t> MembersOf(const Bundle& bundle) const {
    return {strands.data() + bundle.first, static_cast<std::size_t>(bundle.count)};
  }
};

}  // namespace kurvo::outline
