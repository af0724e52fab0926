// What comes in from numpy, checked.
#include <array>
#include <cmath>

#include "bind.hpp"

namespace kurvo::python {
namespace {

[[noreturn]] void BadShape(const char* name, const char* wanted, const py::array& array) {
  throw py::value_error(std::string(name) + ": the shape is to be " + wanted + ", not " +
                        py::str(array.attr("shape")).cast<std::string>());
}

}  // namespace

Doubles Numbers(py::handle object, const char* name) {
  const py::array array = py::array::ensure(object);
  if (!array || std::string_view("fiu").find(array.dtype().kind()) == std::string_view::npos) {
    PyErr_Clear();
    throw py::type_error(std::string(name) + ": real numbers are needed, not " +
                         py::repr(py::type::handle_of(object)).cast<std::string>() +
                         (array ? " of " + py::str(array.dtype()).cast<std::string>() : ""));
  }
  Doubles doubles = Doubles::ensure(array);
  if (!doubles) throw std::bad_alloc();
  for (const double x : View(doubles)) Finite(x, name);
  return doubles;
}

PointList::PointList(py::handle object, const char* name) : kept_(Numbers(object, name)) {
  const py::ssize_t sides = kept_.ndim();
  const py::ssize_t width = sides ? kept_.shape(sides - 1) : 0;
  if (width != 2 && width != 3) BadShape(name, "(..., 2) or (..., 3)", kept_);
  shape_.assign(kept_.shape(), kept_.shape() + sides - 1);
  const auto count = static_cast<std::size_t>(kept_.size() / width);
  const double* from = kept_.data();
  if (width == 3) {
    points_ = {reinterpret_cast<const Point*>(from), count};
    return;
  }
  copied_.resize(count);
  for (Point& p : copied_) {
    p = {from[0], from[1], 0};
    from += 2;
  }
  points_ = copied_;
}

namespace {

// Coordinates of a pair or triple of Python's, or of an array of doubles of that length; else none.
std::optional<std::array<double, 3>> ShortList(PyObject* object) {
  std::array<double, 3> out{};
  if (PyTuple_CheckExact(object)) {
    const Py_ssize_t size = PyTuple_GET_SIZE(object);
    if (size != 2 && size != 3) return std::nullopt;
    for (Py_ssize_t i = 0; i < size; ++i) {
      PyObject* item = PyTuple_GET_ITEM(object, i);
      if (!PyFloat_Check(item)) return std::nullopt;
      out[static_cast<std::size_t>(i)] = PyFloat_AS_DOUBLE(item);
    }
    return out;
  }
  const auto& numpy = py::detail::npy_api::get();
  if (!numpy.PyArray_Check_(object)) return std::nullopt;
  const auto* array = py::detail::array_proxy(object);
  if (array->nd != 1 || (array->dimensions[0] != 2 && array->dimensions[0] != 3) ||
      !(array->flags & py::detail::npy_api::NPY_ARRAY_ALIGNED_))
    return std::nullopt;
  // Descriptors of plain types in the machine's byte order stand once.
  static PyObject* const doubles = numpy.PyArray_DescrFromType_(py::detail::npy_api::NPY_DOUBLE_);
  if (array->descr != doubles) return std::nullopt;
  for (Py_ssize_t i = 0; i < array->dimensions[0]; ++i)
    out[static_cast<std::size_t>(i)] =
        *reinterpret_cast<const double*>(array->data + i * array->strides[0]);
  return out;
}

}  // namespace

std::optional<Point> PlainPoint(py::handle object, const char* name) {
  const auto list = ShortList(object.ptr());
  if (!list) return std::nullopt;
  for (const double number : *list) Finite(number, name);
  return Point{(*list)[0], (*list)[1], (*list)[2]};
}

Point OnePoint(py::handle object, const char* name) {
  if (const auto point = PlainPoint(object, name)) return *point;
  const PointList list(object, name);
  if (!list.Shape().empty())
    throw py::value_error(std::string(name) + ": one point is needed, of shape (2,) or (3,)");
  return list.Points()[0];
}

std::vector<WeightedPoint> Weighted(py::handle points, py::handle weights) {
  const PointList list(points, "points");
  const Doubles w = Numbers(weights, "weights");
  if (w.ndim() != 1 || list.Shape().size() != 1 || w.shape(0) != list.Shape()[0])
    BadShape("weights", "(n,) for n points", w);
  std::vector<WeightedPoint> out;
  for (const Point& p : list.Points()) out.push_back({p.x, p.y, p.z, w.data()[out.size()]});
  return out;
}

int OneOf(std::string_view word, std::initializer_list<std::string_view> words, const char* name) {
  int number = 0;
  std::string known;
  for (const std::string_view candidate : words) {
    if (word == candidate) return number;
    known += (number++ ? ", '" : "'") + std::string(candidate) + "'";
  }
  throw py::value_error(std::string(name) + ": one of " + known + " is needed, not '" +
                        std::string(word) + "'");
}

std::vector<Place> PlacesFrom(py::handle object) {
  const auto add = [](std::vector<Place>& out, py::handle index, py::handle t) {
    Place place;
    place.index = py::cast<int32_t>(index);
    place.t = py::cast<double>(t);
    out.push_back(place);
  };
  std::vector<Place> out;
  const py::array array = py::array::ensure(object);
  if (array && array.dtype().has_fields()) {
    const py::object index = array["index"], t = array["t"];
    const py::list indices = index.attr("ravel")().attr("tolist")();
    const py::list parameters = t.attr("ravel")().attr("tolist")();
    for (std::size_t i = 0; i < indices.size(); ++i) add(out, indices[i], parameters[i]);
    return out;
  }
  const Doubles pairs = Numbers(object, "places");
  if (pairs.ndim() < 1 || pairs.shape(pairs.ndim() - 1) != 2)
    BadShape("places", "(..., 2), pairs (index, t)", pairs);
  const auto values = View(pairs);
  for (std::size_t i = 0; i + 1 < values.size(); i += 2) {
    if (!(std::fabs(values[i]) < 2147483648.0) || values[i] != std::floor(values[i]))
      throw py::value_error("places: an index is a whole number below 2^31");
    Place place;
    place.index = static_cast<int32_t>(values[i]);
    place.t = values[i + 1];
    out.push_back(place);
  }
  return out;
}

std::vector<Curve> CurvesFrom(const py::iterable& curves) {
  std::vector<Curve> out;
  for (const py::handle curve : curves)
    out.push_back(As<Curve>(curve).Copy(ThreadContext()).value());
  return out;
}

Chain CopyOf(const Chain& chain) { return chain.Copy(ThreadContext()).value(); }

}  // namespace kurvo::python
