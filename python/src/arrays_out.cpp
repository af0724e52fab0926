// What goes out to numpy: views, or lists that numpy takes over.
#include <cstddef>

#include "bind.hpp"

namespace kurvo::python {
namespace {

constexpr py::ssize_t kDouble = sizeof(double);

py::array ReadOnly(py::array array) {
  array.attr("setflags")(py::arg("write") = false);
  return array;
}

// Named fields of a record: (name, format, offset) ... as numpy wants them.
py::dtype Fields(std::initializer_list<std::pair<const char*, const char*>> fields) {
  py::list list;
  for (const auto& [name, format] : fields) list.append(py::make_tuple(name, format));
  return py::dtype::from_args(list);
}

// Made once: a look at each field is more than some calls take. Kept for ever, since there is no
// interpreter any more when statics end.
const py::dtype& PlaceType() {
  static const py::dtype& type = *new py::dtype(Fields(
      {{"index", "i4"}, {"reserved", "i4"}, {"t", "f8"}, {"point", "3f8"}, {"tangent", "3f8"}}));
  return type;
}
const py::dtype& MeetingType() {
  static const py::dtype& type = *new py::dtype(Fields({{"index_a", "i4"},
                                                        {"index_b", "i4"},
                                                        {"kind", "i4"},
                                                        {"reserved", "i4"},
                                                        {"a", "f8"},
                                                        {"b", "f8"},
                                                        {"point", "3f8"}}));
  return type;
}
const py::dtype& OriginType() {
  static const py::dtype& type = *new py::dtype(Fields({{"region", "i4"},
                                                        {"loop", "i4"},
                                                        {"curve", "i4"},
                                                        {"kind", "i4"},
                                                        {"from", "f8"},
                                                        {"to", "f8"}}));
  return type;
}

}  // namespace

// What py::array_t makes of lists of sides and strides, without the lists: calls for one point are
// many.
py::array Pair(double x, double y) {
  const auto& numpy = py::detail::npy_api::get();
  const Py_intptr_t side = 2;
  PyObject* made = numpy.PyArray_NewFromDescr_(
      numpy.PyArray_Type_, numpy.PyArray_DescrFromType_(py::detail::npy_api::NPY_DOUBLE_), 1, &side,
      nullptr, nullptr, 0, nullptr);
  if (!made) throw py::error_already_set();
  auto out = py::reinterpret_steal<py::array>(made);
  auto* to = static_cast<double*>(out.mutable_data());
  to[0] = x;
  to[1] = y;
  return out;
}

py::array Corners(const Box& box) {
  py::array_t<double> out({2, 2});
  double* to = out.mutable_data();
  to[0] = box.min.x;
  to[1] = box.min.y;
  to[2] = box.max.x;
  to[3] = box.max.y;
  return out;
}

py::array RowsOf(const double* first, std::size_t rows, int columns, int stride, py::handle owner) {
  const auto count = static_cast<py::ssize_t>(rows);
  if (columns == 1) return ReadOnly(py::array_t<double>({count}, {stride * kDouble}, first, owner));
  return ReadOnly(py::array_t<double>({count, py::ssize_t{columns}}, {stride * kDouble, kDouble},
                                      first, owner));
}

py::array FromPlaces(Array<Place>&& places, std::vector<py::ssize_t> shape) {
  const Place* first = places.Data();
  return py::array(PlaceType(), std::move(shape), {}, first, Keep(std::move(places)));
}

py::array FromMeetings(Array<Meeting>&& meetings) {
  const Meeting* first = meetings.Data();
  const auto count = static_cast<py::ssize_t>(meetings.size());
  return py::array(MeetingType(), {count}, {}, first, Keep(std::move(meetings)));
}

py::array FromPoints(Array<Point>&& points) {
  const double* first = points.Data() ? points.Data()->Data() : nullptr;
  const auto count = static_cast<py::ssize_t>(points.size());
  return py::array_t<double>({count, py::ssize_t{2}}, {3 * kDouble, kDouble}, first,
                             Keep(std::move(points)));
}

py::array FromOrigins(std::span<const Origin> origins, py::handle owner) {
  return ReadOnly(py::array(OriginType(), {static_cast<py::ssize_t>(origins.size())}, {},
                            origins.data(), owner));
}

py::object Plain(py::array array) {
  return array.ndim() ? py::object(std::move(array)) : py::object(array[py::tuple()]);
}

}  // namespace kurvo::python
