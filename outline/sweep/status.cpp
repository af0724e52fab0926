#include "sweep/status.h"

#include <algorithm>

namespace kurvo::outline {

void Status::Copy(int32_t from, int32_t to, Row& row) const {
  row.Clear();
  for (int32_t i = from; i < to; ++i) {
    Bundle copy = (*this)[i];
    copy.first = static_cast<int32_t>(row.strands.size());
    ForEachMember(i, [&row](int32_t s) { row.strands.push_back(s); });
    row.bundles.push_back(copy);
  }
}

void Status::Replace(int32_t from, int32_t to, const Row& row) {
  for (int32_t i = from; i < to; ++i) {
    ForEachMember(i, [this](int32_t s) { bundle_of_[static_cast<std::size_t>(s)] = -1; });
    unused_.push_back(At(i));
  }
  const auto had = static_cast<std::size_t>(to - from), has = row.bundles.size();
  const auto begin = order_.begin() + from;
  if (has > had) {
    order_.insert(begin, has - had, -1);
  } else {
    order_.erase(begin, begin + static_cast<std::ptrdiff_t>(had - has));
  }
  const auto first = static_cast<std::size_t>(from);
  for (std::size_t i = 0; i < has; ++i) order_[first + i] = Store(row, row.bundles[i]);
  const std::size_t end = has == had ? first + has : order_.size();
  for (std::size_t i = first; i < end; ++i)
    position_[static_cast<std::size_t>(order_[i])] = static_cast<int32_t>(i);
}

int32_t Status::Store(const Row& row, const Bundle& from) {
  int32_t id;
  if (unused_.empty()) {
    id = CountOf(bundles_.size());
    bundles_.push_back(from);
    last_.push_back(-1);
    position_.push_back(-1);
  } else {
    id = unused_.back();
    unused_.pop_back();
  }
  Bundle& bundle = bundles_[static_cast<std::size_t>(id)] = from;
  bundle.first = -1;
  int32_t before = -1;
  for (const int32_t s : row.MembersOf(from)) {
    (before < 0 ? bundle.first : next_[static_cast<std::size_t>(before)]) = s;
    bundle_of_[static_cast<std::size_t>(s)] = id;
    before = s;
  }
  next_[static_cast<std::size_t>(before)] = -1;
  last_[static_cast<std::size_t>(id)] = before;
  return id;
}

}  // namespace kurvo::outline
