// Numbers in rows of different lengths, in one flat array.
#pragma once

#include <cstdint>
#include <span>

#include "base/memory.h"

namespace kurvo::outline {

// Filled in two passes: entries with their rows in any order, then sorted into rows by counting;
// within a row they stay in the order in which they came.
class Rows {
 public:
  void Clear() { entries_.clear(); }
  void Reserve(std::size_t entries) { entries_.reserve(entries); }
  void Add(int32_t row, int32_t number) { entries_.push_back({row, number}); }
  void Sort(std::size_t rows) {
    begin_.assign(rows + 1, 0);
    for (const Entry& entry : entries_) ++begin_[static_cast<std::size_t>(entry.row) + 1];
    for (std::size_t i = 0; i < rows; ++i) begin_[i + 1] += begin_[i];
    next_.assign(begin_.begin(), begin_.end() - 1);
    numbers_.resize(entries_.size());
    for (const Entry& entry : entries_)
      numbers_[next_[static_cast<std::size_t>(entry.row)]++] = entry.number;
  }

  // Of all rows.
  std::size_t size() const { return entries_.size(); }
  std::span<const int32_t> operator[](int32_t row) const {
    const auto i = static_cast<std::size_t>(row);
    return {numbers_.data() + begin_[i], begin_[i + 1] - begin_[i]};
  }

 private:
  struct Entry {
    int32_t row, number;
  };
  Array<Entry> entries_;
  Array<std::size_t> begin_, next_;
  Array<int32_t> numbers_;
};

}  // namespace kurvo::outline
