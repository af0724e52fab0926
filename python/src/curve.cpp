// Curve: its views and what it is asked.
#include "bind.hpp"

namespace kurvo::python {
namespace {

// Positions and the like at parameters of shape S: an array of shape S + (2,).
template <class At>
py::array Vectors(py::handle t, const At& at) {
  if (PyFloat_CheckExact(t.ptr())) {
    const double number = Finite(PyFloat_AS_DOUBLE(t.ptr()), "t");
    const Point p = at(number, ThreadContext()).value();
    return Pair(p.x, p.y);
  }
  const Doubles numbers = Numbers(t, "t");
  std::vector<py::ssize_t> shape(numbers.shape(), numbers.shape() + numbers.ndim());
  shape.push_back(2);
  py::array_t<double> out(shape);
  double* to = out.mutable_data();
  const auto values = View(numbers);
  const py::gil_scoped_release unlocked;
  Context& c = ThreadContext();
  for (const double number : values) {
    const Point p = at(number, c).value();
    *to++ = p.x;
    *to++ = p.y;
  }
  return out;
}

py::tuple NearestTo(const Curve& curve, py::handle point) {
  if (const auto one = PlainPoint(point, "point")) {
    const Nearest nearest = curve.NearestTo(*one, ThreadContext()).value();
    return py::make_tuple(nearest.t, nearest.distance);
  }
  const PointList points(point, "point");
  py::array_t<double> t(points.Shape()), distance(points.Shape());
  {
    double *to = t.mutable_data(), *far = distance.mutable_data();
    const py::gil_scoped_release unlocked;
    for (const Point& p : points.Points()) {
      const Nearest nearest = curve.NearestTo(p, ThreadContext()).value();
      *to++ = nearest.t;
      *far++ = nearest.distance;
    }
  }
  return py::make_tuple(Plain(t), Plain(distance));
}

std::string_view TypeName(const Curve& curve) {
  switch (curve.Type()) {
    case CV_LINE:
      return "line";
    case CV_ARC:
      return "arc";
    case CV_BEZIER:
      return "bezier";
    case CV_RBEZIER:
      return "rational_bezier";
    case CV_BSPLINE:
      return "bspline";
    case CV_RBSPLINE:
      return "nurbs";
    case CV_SEGCV:
      return "composite";
    default:
      return "empty";
  }
}

py::array PointsOf(const py::object& self) {
  const auto& curve = self.cast<const Curve&>();
  if (const KurvoLine* line = curve.AsLine()) return RowsOf(line->start, 2, 2, 3, self);
  if (const KurvoArc* arc = curve.AsArc()) return RowsOf(arc->start, 2, 2, 3, self);
  if (const auto list = curve.WeightedPoints(); !list.empty())
    return RowsOf(list.data()->Data(), list.size(), 2, 4, self);
  const auto list = curve.ControlPoints();
  return RowsOf(list.empty() ? nullptr : list.data()->Data(), list.size(), 2, 3, self);
}

py::object WeightsOf(const py::object& self) {
  const auto list = self.cast<const Curve&>().WeightedPoints();
  if (list.empty()) return py::none();
  return RowsOf(&list[0].w, list.size(), 1, 4, self);
}

py::object ListOf(const py::object& self, std::span<const double> list) {
  if (list.empty()) return py::none();
  return RowsOf(list.data(), list.size(), 1, 1, self);
}

const KurvoArc& ArcOf(const Curve& curve) {
  const KurvoArc* arc = curve.AsArc();
  if (!arc) throw py::attribute_error("only arcs have this");
  return *arc;
}

void BindViews(py::class_<Curve>& curve) {
  curve
      .def_property_readonly("type", &TypeName,
                             "'line', 'arc', 'bezier', 'rational_bezier', 'bspline', 'nurbs' or "
                             "'composite'")
      .def_property_readonly("points", &PointsOf, R"(Control points, (n, 2): a read-only view.

Of a line and an arc both ends, of a composite none. It keeps the curve alive.

>>> import kurvo
>>> kurvo.Curve.bezier([(0, 0), (1, 2), (3, 0)]).points.tolist()
[[0.0, 0.0], [1.0, 2.0], [3.0, 0.0]]
)")
      .def_property_readonly("weights", &WeightsOf, "Weights, (n,): a read-only view; or None.")
      .def_property_readonly(
          "knots",
          [](const py::object& self) {
            return ListOf(self, self.cast<const Curve&>().KnotVector());
          },
          "Knots of a B-spline, (n + order,): a read-only view; or None.")
      .def_property_readonly(
          "widths",
          [](const py::object& self) {
            return ListOf(self, self.cast<const Curve&>().PieceWidths());
          },
          "How much of the domain each piece of a composite has: a read-only view; or None.")
      .def_property_readonly(
          "pieces",
          [](const py::object& self) {
            py::list pieces;
            for (const Curve& piece : self.cast<const Curve&>())
              pieces.append(py::cast(&piece, py::return_value_policy::reference_internal, self));
            return py::tuple(pieces);
          },
          "The pieces of a composite; of another curve itself.")
      .def_property_readonly(
          "domain", [](const Curve& c) { return std::pair(c.Domain().from, c.Domain().to); },
          "First and last parameter.")
      .def_property_readonly(
          "centre", [](const Curve& c) { return Pair(ArcOf(c).centre[0], ArcOf(c).centre[1]); },
          "Of an arc.")
      .def_property_readonly(
          "radius", [](const Curve& c) { return ArcOf(c).radius; }, "Of an arc; length.")
      .def_property_readonly(
          "counter_clockwise", [](const Curve& c) { return !(ArcOf(c).normal[2] < 0); },
          "Of an arc.")
      .def_property(
          "attributes",
          [](const Curve& c) {
            return py::make_tuple(c.Get()->attr, c.Get()->attr_p1, c.Get()->attr_p2);
          },
          [](Curve& c, std::tuple<int32_t, uint64_t, uint64_t> words) {
            std::tie(c.Get()->attr, c.Get()->attr_p1, c.Get()->attr_p2) = words;
          },
          "Three whole numbers of the caller, which go with the curve and its parts.");
}

void BindQuestions(py::class_<Curve>& curve) {
  curve
      .def_property_readonly(
          "degree", [](const Curve& c) { return c.Degree(ThreadContext()).value(); },
          "Polynomial degree.")
      .def_property_readonly("start",
                             [](const Curve& c) {
                               const Point p = c.Start(ThreadContext()).value();
                               return Pair(p.x, p.y);
                             })
      .def_property_readonly("end",
                             [](const Curve& c) {
                               const Point p = c.End(ThreadContext()).value();
                               return Pair(p.x, p.y);
                             })
      .def_property_readonly(
          "box", [](const Curve& c) { return Corners(c.Bounds(ThreadContext()).value()); },
          "Around the control points, (2, 2): the lower and the upper corner.")
      .def(
          "position",
          [](const Curve& self, py::handle t) {
            return Vectors(t, [&](double at, Context& c) { return self.Position(at, c); });
          },
          py::arg("t"), R"(Points at parameters of shape S: shape S + (2,).

Raises kurvo.Error for a parameter that is not finite.

>>> import kurvo
>>> line = kurvo.Curve.line((0, 0), (4, 2))
>>> line.position([0.25, 0.5]).tolist()
[[1.0, 0.5], [2.0, 1.0]]
)")
      .def(
          "derivative",
          [](const Curve& self, py::handle t, int n) {
            if (n == 1)
              return Vectors(t, [&](double at, Context& c) { return self.Derivative(at, c); });
            return Vectors(t, [&](double at, Context& c) { return self.Derivative(at, n, c); });
          },
          py::arg("t"), py::arg("n") = 1,
          "Derivatives of order n at parameters of shape S: shape S + (2,), length a parameter.")
      .def(
          "curvature",
          [](const Curve& self, py::handle t) {
            return Vectors(t, [&](double at, Context& c) { return self.Curvature(at, c); });
          },
          py::arg("t"),
          "Vectors of the length 1 / radius towards the centre, at parameters of shape S: shape "
          "S + (2,).")
      .def(
          "length",
          [](const Curve& self, std::optional<double> from, std::optional<double> to) {
            const Interval all = self.Domain();
            const double a = from.value_or(all.from), b = to.value_or(all.to);
            return self.Length(Finite(a, "start"), Finite(b, "end"), ThreadContext()).value();
          },
          py::arg("start") = py::none(), py::arg("end") = py::none(),
          "Arc length between two parameters, or of all.")
      .def(
          "parameter",
          [](const Curve& self, py::handle point) -> std::optional<double> {
            const Incidence at = self.Parameter(OnePoint(point, "point"), ThreadContext()).value();
            return at.on ? std::optional(at.t) : std::nullopt;
          },
          py::arg("point"), "The parameter of a point on the curve; None beside it.")
      .def("nearest", &NearestTo, py::arg("points"), R"(Parameters and distances of nearest points.

points: shape S + (2,). Result: two arrays of shape S.

>>> import kurvo
>>> t, distance = kurvo.Curve.line((0, 0), (4, 0)).nearest([(1, 2), (9, 0)])
>>> t.tolist(), distance.tolist()
([0.25, 1.0], [2.0, 5.0])
)")
      .def(
          "closest",
          [](const Curve& self, const Curve& other) {
            const Closest at = Unlocked([&](Context& c) { return self.ClosestTo(other, c); });
            return py::make_tuple(at.a, at.b, at.distance);
          },
          py::arg("other"), "Where two curves are closest: a parameter of each, the distance.")
      .def(
          "intersect",
          [](const Curve& self, const Curve& other) {
            const Meetings found = Unlocked([&](Context& c) { return self.Intersect(other, c); });
            py::array_t<double> out({static_cast<py::ssize_t>(found.a.size()), py::ssize_t{2}});
            double* to = out.mutable_data();
            for (std::size_t i = 0; i < found.a.size(); ++i) {
              *to++ = found.a[i];
              *to++ = found.b[i];
            }
            return py::make_tuple(out, found.overlap);
          },
          py::arg("other"), R"(Parameters of common points, (n, 2), and whether a stretch is shared.

Of curves that share a stretch no points are listed.

>>> import kurvo
>>> a = kurvo.Curve.line((0, 0), (2, 2))
>>> a.intersect(kurvo.Curve.line((0, 2), (2, 0)))
(array([[0.5, 0.5]]), False)
)")
      .def(
          "match",
          [](const Curve& self, const Curve& other) {
            return static_cast<int>(self.Match(other, ThreadContext()).value());
          },
          py::arg("other"), "2: the same curve; 1: in records of different types; 0: another.");
}

}  // namespace

void BindCurve(py::module_& module) {
  py::class_<Curve> curve(module, "Curve", R"(One curve; never changed once made.

Made by line, arc, arc_between, circle, bezier, rational_bezier, bspline, nurbs, composite and
through. A parameter runs over `domain`, which is (0, 1) but for B-splines and composites.)");
  BindCurveMakers(curve);
  BindViews(curve);
  BindQuestions(curve);
  BindCurveChanges(curve);
}

}  // namespace kurvo::python
