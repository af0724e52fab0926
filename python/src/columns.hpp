// Many regions as columns, what KurvoRegionPack writes of each, one after the other.
#pragma once

#include <functional>

#include "bind.hpp"

namespace kurvo::python {

// Columns of Python's, looked through before anything is read by them.
class Columns {
 public:
  // (words, word_starts, numbers, number_starts, codes): int32, int64 (n + 1,), float64, int64
  // (n + 1,) and int32 (n,), contiguous. Nothing is copied.
  explicit Columns(const py::tuple& arrays);

  std::size_t size() const { return codes_.size(); }
  Result<Region> At(std::size_t i, Context& c) const;

 private:
  std::vector<py::array> kept_;
  std::span<const int32_t> words_, codes_;
  std::span<const double> numbers_;
  std::span<const int64_t> word_starts_, number_starts_;
};

// Calls each(i, context) for i below `count`, on so many threads, each with the tolerances of this
// one. The GIL is released meanwhile. What is thrown becomes the code of a memory error.
void ForEach(std::size_t count, int threads, std::span<int32_t> codes,
             const std::function<int(std::size_t, Context&)>& each);

// The columns of the regions that make(i, context) gives: empty ones beside codes.
py::tuple MadeColumns(std::size_t count, int threads,
                      const std::function<Result<Region>(std::size_t, Context&)>& make);

// Room for one number for each of many regions.
template <class T>
py::array_t<T> Column(std::size_t count) {
  return py::array_t<T>(static_cast<py::ssize_t>(count));
}

}  // namespace kurvo::python
