// Columns in and out, and the threads between.
#include "columns.hpp"

#include <atomic>
#include <limits>
#include <new>
#include <thread>

namespace kurvo::python {
namespace {

constexpr std::size_t kTaken = 8;  // regions that a thread takes at a time
constexpr int kMostThreads = 1024;

template <class T>
std::span<const T> ColumnOf(py::handle object, const char* name, std::vector<py::array>& kept) {
  using Exact = py::array_t<T, py::array::c_style>;
  if (!Exact::check_(object) || py::reinterpret_borrow<py::array>(object).ndim() != 1)
    throw py::type_error(std::string(name) + ": a contiguous array of " +
                         py::str(py::dtype::of<T>()).cast<std::string>() +
                         " is needed, of one side");
  const auto array = py::reinterpret_borrow<Exact>(object);
  kept.push_back(array);
  return {array.data(), static_cast<std::size_t>(array.size())};
}

void CheckStarts(std::span<const int64_t> starts, std::size_t count, std::size_t size,
                 const char* name) {
  const bool fits = starts.size() == count + 1 && starts.front() >= 0 &&
                    std::is_sorted(starts.begin(), starts.end()) &&
                    starts.back() <= static_cast<int64_t>(size);
  if (!fits)
    throw py::value_error(std::string(name) +
                          ": ascending numbers are needed, one more than codes, within the column");
}

struct Made {
  Packed packed;
  int64_t words = 0, numbers = 0;
};

Packed EmptyRegion(Context& c) { return Region().Pack(c).value(); }

template <class T, class Of>
py::tuple Joined(const std::vector<Made>& made, const Of& of) {
  py::array_t<int64_t> starts = Column<int64_t>(made.size() + 1);
  int64_t* start = starts.mutable_data();
  *start = 0;
  for (const Made& one : made) {
    start[1] = start[0] + static_cast<int64_t>(of(one).size());
    ++start;
  }
  py::array_t<T> column = Column<T>(static_cast<std::size_t>(*start));
  T* to = column.mutable_data();
  const py::gil_scoped_release unlocked;
  for (const Made& one : made) to = std::copy(of(one).begin(), of(one).end(), to);
  return [&] {
    const py::gil_scoped_acquire locked;
    return py::make_tuple(column, starts);
  }();
}

}  // namespace

Columns::Columns(const py::tuple& arrays) {
  if (arrays.size() != 5) throw py::value_error("five columns are needed");
  words_ = ColumnOf<int32_t>(arrays[0], "words", kept_);
  word_starts_ = ColumnOf<int64_t>(arrays[1], "word_starts", kept_);
  numbers_ = ColumnOf<double>(arrays[2], "numbers", kept_);
  number_starts_ = ColumnOf<int64_t>(arrays[3], "number_starts", kept_);
  codes_ = ColumnOf<int32_t>(arrays[4], "codes", kept_);
  CheckStarts(word_starts_, size(), words_.size(), "word_starts");
  CheckStarts(number_starts_, size(), numbers_.size(), "number_starts");
}

Result<Region> Columns::At(std::size_t i, Context& c) const {
  if (codes_[i]) return Unexpected(Error{codes_[i], "OutlineBatch"});
  const auto part = [i](auto column, std::span<const int64_t> starts) {
    return column.subspan(static_cast<std::size_t>(starts[i]),
                          static_cast<std::size_t>(starts[i + 1] - starts[i]));
  };
  return Region::Unpack(part(words_, word_starts_), part(numbers_, number_starts_), c);
}

void ForEach(std::size_t count, int threads, std::span<int32_t> codes,
             const std::function<int(std::size_t, Context&)>& each) {
  if (threads < 1 || threads > kMostThreads)
    throw py::value_error("threads: a number from 1 to 1024 is needed");
  const GlobalVar tolerances = *ThreadContext().Get();
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    Context context;
    *context.Get() = tolerances;
    for (std::size_t from; (from = next.fetch_add(kTaken)) < count;) {
      for (std::size_t i = from; i < std::min(count, from + kTaken); ++i) {
        try {
          codes[i] = each(i, context);
        } catch (...) {
          codes[i] = KURVO_ERR_MEMORY;
        }
      }
    }
  };
  const py::gil_scoped_release unlocked;
  std::vector<std::thread> others;
  const std::size_t most =
      std::min<std::size_t>(static_cast<std::size_t>(threads), count / kTaken + 1);
  try {
    while (others.size() + 1 < most) others.emplace_back(work);
  } catch (const std::exception&) {
    // Fewer threads do the same.
  }
  work();
  for (std::thread& other : others) other.join();
}

py::tuple MadeColumns(std::size_t count, int threads,
                      const std::function<Result<Region>(std::size_t, Context&)>& make) {
  std::vector<Made> made(count);
  py::array_t<int32_t> codes = Column<int32_t>(count);
  ForEach(count, threads, {codes.mutable_data(), count}, [&](std::size_t i, Context& c) {
    const Result<Region> region = make(i, c);
    if (!region) {
      made[i].packed = EmptyRegion(c);
      return region.error().code;
    }
    auto packed = region->Pack(c);
    if (!packed) {
      made[i].packed = EmptyRegion(c);
      return packed.error().code;
    }
    made[i].packed = *std::move(packed);
    return int{KURVO_ERR_NONE};
  });
  const py::tuple words = Joined<int32_t>(
      made, [](const Made& one) -> const Array<int32_t>& { return one.packed.words; });
  const py::tuple numbers = Joined<double>(
      made, [](const Made& one) -> const Array<double>& { return one.packed.numbers; });
  return py::make_tuple(words[0], words[1], numbers[0], numbers[1], codes);
}

}  // namespace kurvo::python
