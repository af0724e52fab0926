// Regions, chains and curves as plain numbers, and back.
#include "bind.hpp"

namespace kurvo::python {
namespace {

// A list of exactly this type, at any stride.
template <class T>
py::array_t<T, py::array::c_style> ListFrom(py::handle object, const char* name) {
  using Exact = py::array_t<T, py::array::c_style>;
  if (py::isinstance<py::array_t<T>>(object) && py::cast<py::array>(object).ndim() == 1)
    if (Exact list = Exact::ensure(object)) return list;
  throw py::type_error(std::string(name) + ": an array of " +
                       py::str(py::dtype::of<T>()).template cast<std::string>() +
                       " is needed, of shape (n,)");
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
  const auto words = ListFrom<int32_t>(state[0], "words");
  const auto numbers = ListFrom<double>(state[1], "numbers");
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
