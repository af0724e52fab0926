// What the files of the extension share. Everything stands on kurvo.hpp.
#pragma once

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cmath>
#include <kurvo.hpp>
#include <string_view>
#include <vector>

namespace kurvo::python {

namespace py = pybind11;

// ---- Calls ----

// The tolerances of this thread.
Context& ThreadContext();

// Ends in kurvo.Error.
[[noreturn]] void Fail(int code, const char* function);

// What ask(context) gives, asked while other threads of Python run.
template <class Ask>
auto Unlocked(const Ask& ask) {
  const py::gil_scoped_release unlocked;
  return ask(ThreadContext()).value();
}

// ---- Arrays that come in: numbers of any real type, finite, or an exception ----

using Doubles = py::array_t<double, py::array::c_style>;

Doubles Numbers(py::handle object, const char* name);
inline double Finite(double number, const char* name) {
  if (!std::isfinite(number)) Fail(KURVO_ERR_NOT_FINITE, name);
  return number;
}
inline std::span<const double> View(const Doubles& a) {
  return {a.data(), static_cast<std::size_t>(a.size())};
}

// Points of shape (..., 2) or (..., 3).
class PointList {
 public:
  PointList(py::handle object, const char* name);

  std::span<const Point> Points() const { return points_; }
  // Of the questions: that of the array but for its last side.
  const std::vector<py::ssize_t>& Shape() const { return shape_; }

 private:
  Doubles kept_;
  std::vector<Point> copied_;
  std::span<const Point> points_;
  std::vector<py::ssize_t> shape_;
};

// One point as it is common and short, read without making an array; else none.
std::optional<Point> PlainPoint(py::handle object, const char* name);
Point OnePoint(py::handle object, const char* name);
// Points (n, 2) and weights (n,).
std::vector<WeightedPoint> Weighted(py::handle points, py::handle weights);

// Where a word of one of a few stands; ValueError names them all.
int OneOf(std::string_view word, std::initializer_list<std::string_view> words, const char* name);

// ---- Arrays that go out ----

py::array Pair(double x, double y);
py::array Corners(const Box& box);  // ((min x, min y), (max x, max y))

// Rows of the given size in memory of `owner`, read-only. The first columns of rows `stride` wide.
py::array RowsOf(const double* first, std::size_t rows, int columns, int stride, py::handle owner);

// Takes a list of the library over: no entry is copied.
template <class T>
py::capsule Keep(Array<T>&& array) {
  auto* kept = new Array<T>(std::move(array));
  return py::capsule(kept, [](void* p) { delete static_cast<Array<T>*>(p); });
}
py::array FromPlaces(Array<Place>&& places, std::vector<py::ssize_t> shape);
py::array FromMeetings(Array<Meeting>&& meetings);
py::array FromPoints(Array<Point>&& points);  // (n, 2)
py::array FromOrigins(std::span<const Origin> origins, py::handle owner);
template <class T>
py::array FromNumbers(Array<T>&& numbers, std::vector<py::ssize_t> shape) {
  const T* first = numbers.Data();
  return py::array_t<T>(std::move(shape), first, Keep(std::move(numbers)));
}
// A scalar of an array without sides, else the array.
py::object Plain(py::array array);

// Places as they were given, or pairs (index, t).
std::vector<Place> PlacesFrom(py::handle object);

// ---- Options by name ----

class Asked {
 public:
  explicit Asked(const py::kwargs& named);
  Asked(const Asked&) = delete;  // `proceed` calls back
  Asked& operator=(const Asked&) = delete;

  const Options& Given() const { return options_; }

  // What ask(context, options, report) gives, asked while other threads of Python run. What
  // `proceed` raises is raised.
  template <class Ask>
  auto Run(const Ask& ask) {
    auto result = [&] {
      const py::gil_scoped_release unlocked;
      return ask(ThreadContext(), options_, report_);
    }();
    if (raised_) std::rethrow_exception(raised_);
    return std::move(result).value();
  }

 private:
  void Set(std::string_view name, py::handle value);
  void SetProceed(const py::object& function);

  Options options_;
  Report* report_ = nullptr;
  std::vector<double> dashes_;
  py::object proceed_;
  std::exception_ptr raised_;
};

// ---- Chains and curves as lists ----

// An object of the class T, or TypeError.
template <class T>
const T& As(py::handle object) {
  if (!py::isinstance<T>(object))
    throw py::type_error(py::str("a {} is needed, not {}")
                             .format(py::type::of<T>().attr("__name__"),
                                     py::type::handle_of(object).attr("__name__"))
                             .template cast<std::string>());
  return object.cast<const T&>();
}

std::vector<Curve> CurvesFrom(const py::iterable& curves);  // copies
Chain CopyOf(const Chain& chain);

// The library takes an array of records, which lie about in objects: their headers are lent to one.
// A single object is a list too.
template <class T>
class Lent {
 public:
  explicit Lent(const py::object& objects) {
    if (py::isinstance<T>(objects)) {
      kept_.push_back(objects);
    } else {
      for (const py::handle object : objects) {
        static_cast<void>(As<T>(object));  // or an exception, before any is lent
        kept_.push_back(py::reinterpret_borrow<py::object>(object));
      }
    }
    list_.reserve(kept_.size());
    for (const py::object& object : kept_) list_.push_back(T::Adopt(*As<T>(object).Get()));
  }
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;
  ~Lent() {
    for (T& item : list_) static_cast<void>(item.Release());
  }
  std::span<const T> List() const { return list_; }

 private:
  std::vector<py::object> kept_;
  std::vector<T> list_;
};

Result<Region> WithFittedLoops(const Region& region, Form form, double deviation, Context& c);

Fill RuleFrom(std::string_view word);
std::string_view NameOf(Fill rule);

// ---- The parts of the module ----

void BindContext(py::module_& module);
void BindOptions(py::module_& module);
void BindCurve(py::module_& module);
void BindCurveMakers(py::class_<Curve>& curve);
void BindCurveChanges(py::class_<Curve>& curve);
void BindChain(py::module_& module);
void BindRegion(py::module_& module);
void BindRegionWork(py::class_<Region>& region);
void BindBatch(py::module_& module);

// What all three classes show themselves by.
template <class Class>
void BindPictures(Class& shown) {
  shown
      .def("_repr_svg_",
           [](const py::object& self) {
             return py::module_::import("kurvo.picture").attr("svg")(self);
           })
      .def(
          "plot",
          [](const py::object& self, const py::args& args, const py::kwargs& named) {
            return py::module_::import("kurvo.plotting").attr("plot")(self, *args, **named);
          },
          "Draws on axes of matplotlib; see kurvo.plotting.plot.");
}

// States for pickle: words and numbers of Pack.
py::tuple PackedArrays(const Region& region);
py::tuple PackedChain(const Cvseq& chain);
Region RegionFromPacked(const py::tuple& state);
Chain ChainFromPacked(const py::tuple& state);

}  // namespace kurvo::python
