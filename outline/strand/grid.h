// Points that lie near each other, by the cells of a grid.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>

#include "base/memory.h"
#include "base/vec2.h"

namespace kurvo::outline {

// Points by number in square cells as wide as the reach, so that those within reach lie in the same
// or a neighbouring cell. Sorted, not hashed: the order of what it finds hangs on the points alone.
class Grid {
 public:
  Grid(const Array<Vec2>& points, const Array<int32_t>& numbers, double reach)
      : points_(points), reach_(reach) {
    entries_.reserve(numbers.size());
    for (const int32_t number : numbers)
      entries_.push_back({CellOf(points[static_cast<std::size_t>(number)]), number});
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
      return std::tuple(a.cell.x, a.cell.y, a.number) < std::tuple(b.cell.x, b.cell.y, b.number);
    });
  }

  // Calls f(i, k, distance) for pairs i < k of numbers within reach, for each i of no more than
  // `most` in each cell.
  template <class F>
  void ForEachPair(int most, const F& f) const {
    for (const Entry& entry : entries_) {
      const Vec2 p = points_[static_cast<std::size_t>(entry.number)];
      for (double dx = -1; dx <= 1; ++dx)
        for (double dy = -1; dy <= 1; ++dy) {
          const Cell cell = {entry.cell.x + dx, entry.cell.y + dy};
          auto other = std::lower_bound(entries_.begin(), entries_.end(),
                                        std::tuple(cell.x, cell.y, entry.number + 1),
                                        [](const Entry& e, const auto& key) {
                                          return std::tuple(e.cell.x, e.cell.y, e.number) < key;
                                        });
          for (int left = most; left > 0 && other != entries_.end(); ++other, --left) {
            if (other->cell.x != cell.x || other->cell.y != cell.y) break;
            const double distance = Length(points_[static_cast<std::size_t>(other->number)] - p);
            if (distance <= reach_) f(entry.number, other->number, distance);
          }
        }
    }
  }

 private:
  struct Cell {
    double x, y;  // whole numbers
  };
  struct Entry {
    Cell cell;
    int32_t number;
  };
  Cell CellOf(Vec2 p) const { return {std::floor(p.x / reach_), std::floor(p.y / reach_)}; }

  const Array<Vec2>& points_;
  const double reach_;
  Array<Entry> entries_;
};

}  // namespace kurvo::outline
