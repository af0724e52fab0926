// The strands that a sweep has reached, from the left: bundles in order, of which only those that a
// beam touches are made anew.
#pragma once

#include "base/memory.h"
#include "sweep/slab.h"

namespace kurvo::outline {

class Status {
 public:
  explicit Status(std::size_t strands) : bundle_of_(strands, -1), next_(strands, -1) {}

  int32_t size() const { return static_cast<int32_t>(order_.size()); }
  const Bundle& operator[](int32_t position) const { return bundle(At(position)); }
  // Where the bundle of a strand stands; -1: in none.
  int32_t PositionOf(int32_t strand) const {
    const int32_t id = bundle_of_[static_cast<std::size_t>(strand)];
    return id < 0 ? -1 : position_[static_cast<std::size_t>(id)];
  }
  // The outermost members of a bundle.
  int32_t LeftMember(int32_t position) const { return (*this)[position].first; }
  int32_t RightMember(int32_t position) const {
    return last_[static_cast<std::size_t>(At(position))];
  }
  // Calls f(strand) from the left.
  template <class F>
  void ForEachMember(int32_t position, const F& f) const {
    for (int32_t s = LeftMember(position); s >= 0; s = next_[static_cast<std::size_t>(s)]) f(s);
  }

  // Makes a row of the bundles from one position to before another.
  void Copy(int32_t from, int32_t to, Row& row) const;
  // Puts the bundles of a row in their place.
  void Replace(int32_t from, int32_t to, const Row& row);

 private:
  // Here `first` of a bundle is a strand, and the others follow by next_.
  int32_t At(int32_t position) const { return order_[static_cast<std::size_t>(position)]; }
  const Bundle& bundle(int32_t id) const { return bundles_[static_cast<std::size_t>(id)]; }
  int32_t Store(const Row& row, const Bundle& from);

  Array<int32_t> order_;  // bundles by number
  Array<Bundle> bundles_;
  Array<int32_t> last_, position_, unused_;  // by bundle
  Array<int32_t> bundle_of_, next_;          // by strand
};

}  // namespace kurvo::outline
