// Regions, chains and curves as plain numbers, and back.
#include "bind.hpp"

namespace kurvo::python {
namespace {

py::array_t<int32_t, py::array::c_style> WordsFrom(py::handle object) {
  const py::array array = py::array::ensure(object);
  if (!array || !py::isinstance<py::array_t<int32_t>>(array) || array.ndim() != 1)
    throw py::type_error("words: an array of int32 is needed, of shape (n,)");
  return py::array_t<int32_t, py::array::c_style>::ensure(array);
}

}  // namespace

py::tuple PackedArrays(const Region& region) {
  Packed packed = region.Pack(ThreadContext()).value();
  const auto words = static_cast<py::ssize_t>(packed.words.size());
  const auto numbers = static_cast<py::ssize_t>(packed.numbers.size());
  return py::make_tuple(FromNumbers(std::move(packed.words), {words}),
                        FromNumbers(std::move(packed.numbers), {numbers}));
}

py::tuple PackedChain(const Cvseq& chain) {
  Cvseq loop = chain;
  Region view = Region::Adopt({1, KURVO_FILL_NONZERO, &loop, nullptr});
  struct Borrowed {  // the loop is not the view's to free
    Region& view;
    ~Borrowed() { static_cast<void>(view.Release()); }
  } const borrowed{view};
  return PackedArrays(view);
}

Region RegionFromPacked(const py::tuple& state) {
  if (state.size() != 2) Fail(KURVO_ERR_OPTION, "KurvoRegionUnpack");
  const auto words = WordsFrom(state[0]);
  const Doubles numbers = Doubles::ensure(state[1]);
  if (!numbers) throw py::error_already_set();
  return Region::Unpack({words.data(), static_cast<std::size_t>(words.size())}, View(numbers),
                        ThreadContext())
      .value();
}

Chain ChainFromPacked(const py::tuple& state) {
  Region region = RegionFromPacked(state);
  if (region.size() != 1) Fail(KURVO_ERR_OPTION, "KurvoRegionUnpack");
  return std::move(region[0]);
}

}  // namespace kurvo::python
