// Tolerances, and errors as exceptions.
#include "bind.hpp"

namespace kurvo::python {

Context& ThreadContext() {
  thread_local Context context;
  return context;
}

void Fail(int code, const char* function) { throw BadResult(Error{code, function}); }

namespace {

void Raise(const Error& error) {
  const py::module_ errors = py::module_::import("kurvo.errors");
  const py::object made =
      errors.attr("of")(error.code, error.Name(), error.function, error.Cause());
  PyErr_SetObject(py::type::handle_of(made).ptr(), made.ptr());
}

// `with tolerance(...)`: a length tolerance, an angle tolerance or both, on this thread.
class Tolerance {
 public:
  Tolerance(std::optional<double> length, std::optional<double> angle)
      : length_(length), angle_(angle) {
    for (const auto& value : {length, angle})
      if (value && !(*value > 0 && kLargest >= *value))
        Fail(KURVO_ERR_TOLERANCE, "kurvo.tolerance");
  }

  void Enter() {
    GlobalVar* g = ThreadContext().Get();
    if (g->depth == KURVO_STACK_SIZE || g->depth0 == KURVO_STACK_SIZE)
      Fail(KURVO_ERR_TOO_LARGE, "kurvo.tolerance");
    KurvoclPushEpsilon(length_.value_or(g->epsilon), g);
    KurvoclPushEpsilon0(angle_.value_or(g->epsilon0), g);
  }
  void Exit() {
    GlobalVar* g = ThreadContext().Get();
    if (g->depth) KurvoclPopEpsilon(g);
    if (g->depth0) KurvoclPopEpsilon0(g);
  }

 private:
  static constexpr double kLargest = 0.01;  // that the kernel takes

  std::optional<double> length_, angle_;
};

}  // namespace

void BindContext(py::module_& module) {
  py::register_exception_translator([](std::exception_ptr thrown) {
    try {
      if (thrown) std::rethrow_exception(thrown);
    } catch (const BadResult& bad) {
      Raise(bad.error());
    } catch (const py::cast_error&) {  // of an option or an attribute
      PyErr_SetString(PyExc_TypeError, "a value of another type is needed");
    }
  });

  py::class_<Tolerance>(module, "tolerance", R"(Other tolerances inside a with statement.

length is a length in the caller's unit: points no farther apart are the same. angle is in
radians. Each is above 0 and at most 0.01; None leaves it. They hold on this thread, and for the
threads of batch functions that it calls.

>>> import kurvo
>>> kurvo.tolerances()
(1e-06, 1e-06)
>>> with kurvo.tolerance(1e-4):
...     kurvo.tolerances()
(0.0001, 1e-06)
)")
      .def(py::init<std::optional<double>, std::optional<double>>(), py::arg("length") = py::none(),
           py::kw_only(), py::arg("angle") = py::none())
      .def("__enter__",
           [](py::object self) {
             self.cast<Tolerance&>().Enter();
             return self;
           })
      .def("__exit__", [](Tolerance& self, const py::args&) { self.Exit(); });

  module.def(
      "tolerances",
      [] {
        const Context& c = ThreadContext();
        return std::pair(c.Epsilon(), c.Epsilon0());
      },
      "Length and angle (radians) tolerance of this thread.");
}

}  // namespace kurvo::python
