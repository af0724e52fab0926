// Room for elements whose number is known in parts.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace kurvo {

// Makes room for `more` elements behind those of `v`. Unlike reserve(), which may take just what is
// asked for, it at least doubles what has to grow: many small parts cost no more than one large.
template <class T>
void ReserveMore(std::vector<T>& v, std::size_t more) {
  const std::size_t needed = v.size() + more;
  if (needed > v.capacity()) v.reserve(std::max(needed, 2 * v.capacity()));
}

}  // namespace kurvo
