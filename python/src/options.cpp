// Options by name, and the report.
#include "bind.hpp"

namespace kurvo::python {

Asked::Asked(const py::kwargs& named) {
  for (const auto& [name, value] : named) Set(name.cast<std::string>(), value);
}

void Asked::Set(std::string_view name, py::handle value) {
  if (name == "tol") {
    options_.tol = value.cast<double>();
  } else if (name == "gap") {
    options_.gap = value.cast<double>();
  } else if (name == "join") {
    options_.join =
        static_cast<Join>(OneOf(value.cast<std::string>(), {"round", "miter", "bevel"}, "join"));
  } else if (name == "miter_limit") {
    options_.miter_limit = value.cast<double>();
  } else if (name == "cap") {
    options_.cap =
        static_cast<Cap>(OneOf(value.cast<std::string>(), {"butt", "round", "square"}, "cap"));
  } else if (name == "dashes") {
    const Doubles lengths = Numbers(value, "dashes");
    dashes_.assign(lengths.data(), lengths.data() + lengths.size());
    options_.dashes = dashes_;
  } else if (name == "phase") {
    options_.phase = value.cast<double>();
  } else if (name == "origins") {
    options_.with_origins = value.cast<bool>();
  } else if (name == "proceed") {
    if (!value.is_none()) SetProceed(py::reinterpret_borrow<py::object>(value));
  } else if (name == "report") {
    if (!value.is_none()) report_ = &value.cast<Report&>();
  } else {
    throw py::type_error("there is no option '" + std::string(name) + "'");
  }
}

void Asked::SetProceed(const py::object& function) {
  if (!PyCallable_Check(function.ptr())) throw py::type_error("proceed: a function is needed");
  proceed_ = function;
  options_.proceed = [this](double done) {
    const py::gil_scoped_acquire locked;
    try {
      return proceed_(done).cast<bool>();
    } catch (...) {
      raised_ = std::current_exception();
      return false;
    }
  };
}

Fill RuleFrom(std::string_view word) {
  return static_cast<Fill>(OneOf(word, {"nonzero", "evenodd", "positive", "negative"}, "rule"));
}

std::string_view NameOf(Fill rule) {
  static constexpr std::string_view kNames[] = {"nonzero", "evenodd", "positive", "negative"};
  const auto number = static_cast<std::size_t>(rule);
  return number < 4 ? kNames[number] : "unknown";
}

void BindOptions(py::module_& module) {
  py::class_<Report>(module, "Report", R"(What was done besides; given as report=.

>>> import kurvo
>>> report = kurvo.Report()
>>> square = kurvo.Region.rectangle((0, 0), (1, 1))
>>> shrunk = square.offset(-0.25, report=report)
>>> report.dropped
0
)")
      .def(py::init<>())
      .def_readonly("gaps", &Report::gaps, "joints bridged or moved")
      .def_readonly("dropped", &Report::dropped, "loops no wider than tol, or curves given twice")
      .def_readonly("unresolved", &Report::unresolved, "places settled by bisection")
      .def_readonly("capped", &Report::capped, "pieces accepted at a limit of work")
      .def_readonly("moved", &Report::moved, "length: the farthest that a point was moved")
      .def_readonly("dropped_area", &Report::dropped_area)
      .def("__repr__", [](const Report& r) {
        return py::str(
                   "Report(gaps={}, dropped={}, unresolved={}, capped={}, moved={}, "
                   "dropped_area={})")
            .format(r.gaps, r.dropped, r.unresolved, r.capped, r.moved, r.dropped_area);
      });
}

}  // namespace kurvo::python
