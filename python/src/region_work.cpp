// Region: new regions made of it.
#include "bind.hpp"

namespace kurvo::python {
Result<Region> WithFittedLoops(const Region& region, Form form, double deviation, Context& c) {
  std::vector<Chain> loops;
  for (const Chain& loop : region) {
    Result<Chain> fitted = loop.Fit(form, deviation, c);
    if (!fitted) return Unexpected(fitted.error());
    loops.push_back(*std::move(fitted));
  }
  return Region::Of(loops, region.Rule(), c);
}

namespace {

Operation OperationFrom(std::string_view word) {
  return static_cast<Operation>(
      OneOf(word, {"union", "intersection", "difference", "xor"}, "operation"));
}

template <Operation operation>
Region Operator(const Region& a, const Region& b) {
  return Unlocked([&](Context& c) { return Region::Combine(operation, a, b, c); });
}

Region Combined(std::string_view operation, const py::object& regions, const py::kwargs& named) {
  const Operation what = OperationFrom(operation);
  const Lent<Region> lent(regions);
  Asked asked(named);
  return asked.Run([&](Context& c, const Options& options, Report* report) {
    return Region::Combine(what, lent.List(), c, options, report);
  });
}

Region Simplified(const Region& self, const py::kwargs& named) {
  Asked asked(named);
  return asked.Run([&](Context& c, const Options& options, Report* report) {
    return self.Simplified(c, options, report);
  });
}

Region Grown(const Region& self, double distance, const py::kwargs& named) {
  Asked asked(named);
  return asked.Run([&](Context& c, const Options& options, Report* report) {
    return self.Offset(distance, c, options, report);
  });
}

Region Stroked(const py::object& chains, double left, std::optional<double> right,
               const py::kwargs& named) {
  const Lent<Chain> lent(chains);
  Asked asked(named);
  return asked.Run([&](Context& c, const Options& options, Report* report) {
    return Chain::Stroke(lent.List(), left, right.value_or(left), c, options, report);
  });
}

py::list Loops(Region&& region) {
  py::list out;
  for (Chain& chain : region) out.append(py::cast(std::move(chain)));
  return out;
}

py::tuple Clipped(const Region& self, const py::object& chains, const py::kwargs& named) {
  const Lent<Chain> lent(chains);
  Asked asked(named);
  kurvo::Clipped parts = asked.Run([&](Context& c, const Options& options, Report* report) {
    return self.Clip(lent.List(), c, options, report);
  });
  return py::make_tuple(Loops(std::move(parts.inside)), Loops(std::move(parts.outside)));
}

Region Fitted(const Region& self, std::string_view form, double deviation) {
  const auto as = static_cast<Form>(OneOf(form, {"arcs", "quadratics", "cubics"}, "form"));
  return Unlocked([&](Context& c) { return WithFittedLoops(self, as, deviation, c); });
}

}  // namespace

void BindRegionWork(py::class_<Region>& region) {
  region.def("__or__", &Operator<Operation::kUnion>, py::is_operator())
      .def("__and__", &Operator<Operation::kIntersection>, py::is_operator())
      .def("__sub__", &Operator<Operation::kDifference>, py::is_operator())
      .def("__xor__", &Operator<Operation::kXor>, py::is_operator())
      .def_static("combine", &Combined, py::arg("operation"), py::arg("regions"),
                  R"(The 'union', 'intersection', 'difference' or 'xor' of any number of regions.

The difference is the first minus all others, xor what an odd number covers. Options: tol, gap,
origins, proceed, report.

>>> import kurvo
>>> discs = [kurvo.Region.circle((x, 0), 1) for x in range(0, 30, 3)]
>>> len(kurvo.Region.combine("union", discs))
10
)")
      .def("simplify", &Simplified,
           "The same set of points by loops that do not cross. Options: those of combine.")
      .def("offset", &Grown, py::arg("distance"), R"(The region grown by a distance (length).

A negative one shrinks it. Options: tol, gap, join ('round', 'miter', 'bevel'), miter_limit,
origins, proceed, report.

>>> import kurvo
>>> kurvo.Region.rectangle((0, 0), (2, 2)).offset(1, join="miter").area
16.0
)")
      .def_static("stroke", &Stroked, py::arg("chains"), py::arg("left"),
                  py::arg("right") = py::none(),
                  "What a pen covers on all chains together; see Chain.stroke.")
      .def("clip", &Clipped, py::arg("chains"),
           "The parts of open chains inside and outside: two lists of Chain. Options: tol, gap, "
           "origins, proceed, report.")
      .def("fit", &Fitted, py::arg("form"), py::arg("deviation"), "Chain.fit of each loop.");
}

}  // namespace kurvo::python
