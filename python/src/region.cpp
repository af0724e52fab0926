// Region: makers, views and questions.
#include "bind.hpp"

namespace kurvo::python {
namespace {

Region FromLoops(const py::object& loops, std::string_view rule, double gap) {
  const Lent<Chain> lent(loops);
  return Region::Of(lent.List(), RuleFrom(rule), ThreadContext(), gap).value();
}

py::object LoopAt(const py::object& self, py::ssize_t index) {
  const auto& region = self.cast<const Region&>();
  const auto size = static_cast<py::ssize_t>(region.size());
  if (index < 0) index += size;
  if (index < 0 || index >= size) throw py::index_error("a region has no such loop");
  return py::cast(&region[static_cast<std::size_t>(index)],
                  py::return_value_policy::reference_internal, self);
}

Locations Located(const Region& self, std::span<const Point> points) {
  return Unlocked([&](Context& c) { return self.Locate(points, c); });
}

py::object Where(const Region& self, py::handle points) {
  if (const auto one = PlainPoint(points, "points"))
    return py::int_(static_cast<int>(Located(self, {&*one, 1}).where[0]));
  const PointList list(points, "points");
  Array<kurvo::Where> where = Located(self, list.Points()).where;
  const auto* first = reinterpret_cast<const int32_t*>(where.Data());
  return Plain(py::array_t<int32_t>(list.Shape(), first, Keep(std::move(where))));
}

py::object Turns(const Region& self, py::handle points) {
  if (const auto one = PlainPoint(points, "points"))
    return py::int_(Located(self, {&*one, 1}).turns[0]);
  const PointList list(points, "points");
  return Plain(FromNumbers(Located(self, list.Points()).turns, list.Shape()));
}

void BindMakers(py::class_<Region>& region) {
  region
      .def(py::init(&FromLoops), py::arg("loops") = py::tuple(), py::kw_only(),
           py::arg("rule") = "nonzero", py::arg("gap") = 0.0,
           R"(Of copies of closed chains, or of one.

rule: 'nonzero', 'evenodd', 'positive' or 'negative'. Joints as wide as gap (length; 0: the
tolerance; inf: every one) are closed by lines. Raises kurvo.Error for wider ones.)")
      .def_static(
          "polygon",
          [](py::handle corners) {
            const PointList list(corners, "corners");
            if (list.Shape().size() != 1)
              throw py::value_error("corners: a list of points is needed, of shape (n, 2)");
            return Region::Polygon(list.Points(), ThreadContext()).value();
          },
          py::arg("corners"), "Of corners, (n, 2).")
      .def_static(
          "rectangle",
          [](py::handle a, py::handle b) {
            const Point p = OnePoint(a, "a"), q = OnePoint(b, "b");
            return Region::Rectangle({p, q}, ThreadContext()).value();
          },
          py::arg("a"), py::arg("b"), "Of two opposite corners.")
      .def_static(
          "circle",
          [](py::handle centre, double radius) {
            return Region::Circle(OnePoint(centre, "centre"), Finite(radius, "radius"),
                                  ThreadContext())
                .value();
          },
          py::arg("centre"), py::arg("radius"))
      .def_static(
          "unpack",
          [](const py::object& words, const py::object& numbers) {
            return RegionFromPacked(py::make_tuple(words, numbers));
          },
          py::arg("words"), py::arg("numbers"), "The region that pack wrote.")
      .def("pack", &PackedArrays,
           R"(The region in plain numbers: words (int32) and numbers (float64).

Bit for bit, attribute words included, origins not.

>>> import kurvo
>>> words, numbers = kurvo.Region.circle((0, 0), 1).pack()
>>> kurvo.Region.unpack(words, numbers).area == kurvo.Region.circle((0, 0), 1).area
True
)");
}

void BindQuestions(py::class_<Region>& region) {
  region.def_property_readonly("rule", [](const Region& self) { return NameOf(self.Rule()); })
      .def_property_readonly(
          "origins",
          [](const py::object& self) -> py::object {
            const auto origins = self.cast<const Region&>().Origins();
            if (origins.empty()) return py::none();
            return FromOrigins(origins, self);
          },
          "Where each curve comes from, of results made with origins=True: a read-only view.")
      .def_property_readonly(
          "moments",
          [](const Region& self) { return Unlocked([&](Context& c) { return self.Moments(c); }); },
          "Those of all loops, each as it winds.")
      .def_property_readonly(
          "area",
          [](const Region& self) {
            return Unlocked([&](Context& c) { return self.Moments(c); }).area;
          },
          "Each loop as it winds: of results of combining, offset and stroke the area.")
      .def_property_readonly(
          "length",
          [](const Region& self) {
            return Unlocked([&](Context& c) { return self.Moments(c); }).length;
          },
          "Of all loops.")
      .def_property_readonly(
          "nesting",
          [](const Region& self) {
            return FromNumbers(Unlocked([&](Context& c) { return self.Nesting(c); }),
                               {static_cast<py::ssize_t>(self.size())});
          },
          "For each loop the number of the one directly around it, -1 for none.")
      .def("locate", &Where, py::arg("points"), R"(Where points of shape S + (2,) lie: shape S.

kurvo.ON, kurvo.INSIDE or kurvo.OUTSIDE, by the rule.

>>> import kurvo
>>> disc = kurvo.Region.circle((0, 0), 1)
>>> (disc.locate([(0, 0), (1, 0), (2, 0)]) == [kurvo.INSIDE, kurvo.ON, kurvo.OUTSIDE]).all()
True
)")
      .def("turns", &Turns, py::arg("points"),
           "How often the loops go around points, counter-clockwise; 0 on a loop.");
}

}  // namespace

void BindRegion(py::module_& module) {
  py::class_<Region> region(module, "Region",
                            R"(Closed chains and how they fill: a sequence of Chain.

Never changed once made. a | b is the union, a & b the intersection, a - b the difference and
a ^ b what one of both covers.

>>> import kurvo
>>> plate = kurvo.Region.rectangle((0, 0), (9, 4)) - kurvo.Region.circle((4, 2), 1)
>>> len(plate), round(plate.area, 6)
(2, 32.858407)
)");
  BindMakers(region);
  BindQuestions(region);
  BindRegionWork(region);
  BindPictures(region);
  region.def("__len__", &Region::size)
      .def("__getitem__", &LoopAt)
      .def("__repr__",
           [](const Region& self) {
             return py::str("<Region of {}, {}>").format(self.size(), NameOf(self.Rule()));
           })
      .def(py::pickle(&PackedArrays, &RegionFromPacked));
}

}  // namespace kurvo::python
