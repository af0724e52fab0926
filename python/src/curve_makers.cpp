// Curve: makers for all seven types.
#include "bind.hpp"

namespace kurvo::python {
namespace {

// Of one list of points, (n, 2) or (n, 3).
PointList Listed(py::handle points) {
  PointList list(points, "points");
  if (list.Shape().size() != 1)
    throw py::value_error("points: a list of points is needed, of shape (n, 2)");
  return list;
}

Curve Composite(const py::iterable& curves, const py::object& widths) {
  std::vector<Curve> pieces = CurvesFrom(curves);
  if (widths.is_none()) return Curve::Composite(pieces).value();
  const Doubles list = Numbers(widths, "widths");
  for (const double width : View(list))
    if (!(width > 0)) Fail(KURVO_ERR_RANGE, "widths");
  return Curve::Composite(pieces, View(list)).value();
}

Doubles KnotsFrom(py::handle knots) {
  Doubles list = Numbers(knots, "knots");
  const auto values = View(list);
  if (!std::is_sorted(values.begin(), values.end())) Fail(KURVO_ERR_CURVE, "knots");
  return list;
}

}  // namespace

void BindCurveMakers(py::class_<Curve>& curve) {
  curve
      .def_static(
          "line",
          [](py::handle start, py::handle end) {
            return Curve::Line(OnePoint(start, "start"), OnePoint(end, "end")).value();
          },
          py::arg("start"), py::arg("end"), "The line segment from start to end.")
      .def_static(
          "arc",
          [](py::handle centre, double radius, double angle, double sweep) {
            return Curve::Arc(OnePoint(centre, "centre"), Finite(radius, "radius"),
                              Finite(angle, "angle"), Finite(sweep, "sweep"))
                .value();
          },
          py::arg("centre"), py::arg("radius"), py::arg("angle"), py::arg("sweep"),
          R"(A circular arc from an angle over a sweep, both in radians.

A negative sweep is clockwise. A whole turn is a composite of four quarters.

>>> import kurvo
>>> from math import pi
>>> quarter = kurvo.Curve.arc((0, 0), 2, 0, pi / 2)
>>> quarter.type, round(quarter.length() / pi, 12)
('arc', 1.0)
)")
      .def_static(
          "arc_between",
          [](py::handle centre, py::handle start, py::handle end, bool counter_clockwise) {
            return Curve::Arc(OnePoint(centre, "centre"), OnePoint(start, "start"),
                              OnePoint(end, "end"), counter_clockwise)
                .value();
          },
          py::arg("centre"), py::arg("start"), py::arg("end"), py::arg("counter_clockwise") = true,
          "A circular arc by its ends; a full circle, of four quarters, where they are the same.")
      .def_static(
          "circle",
          [](py::handle centre, double radius) {
            return Curve::Arc(OnePoint(centre, "centre"), Finite(radius, "radius"), 0,
                              detail::kTurn)
                .value();
          },
          py::arg("centre"), py::arg("radius"), "A composite of four quarters, counter-clockwise.")
      .def_static(
          "bezier",
          [](py::handle points) { return Curve::Bezier(Listed(points).Points()).value(); },
          py::arg("points"), R"(The Bezier curve of the control points, (n, 2): degree n - 1.

>>> import kurvo
>>> kurvo.Curve.bezier([(0, 0), (1, 2), (3, 2), (4, 0)]).position(0.5)
array([2. , 1.5])
)")
      .def_static(
          "rational_bezier",
          [](py::handle points, py::handle weights) {
            return Curve::RationalBezier(Weighted(points, weights)).value();
          },
          py::arg("points"), py::arg("weights"),
          "The same with weights, (n,). Points are not multiplied by them.")
      .def_static(
          "bspline",
          [](int order, py::handle points, py::handle knots) {
            return Curve::BSpline(order, Listed(points).Points(), View(KnotsFrom(knots))).value();
          },
          py::arg("order"), py::arg("points"), py::arg("knots"),
          R"(The B-spline of an order (degree + 1), points (n, 2) and ascending knots, (n + order,).

Raises kurvo.Error where the counts do not fit or knots descend.

>>> import kurvo
>>> spline = kurvo.Curve.bspline(3, [(0, 0), (1, 2), (3, 2), (4, 0)], [0, 0, 0, 1, 2, 2, 2])
>>> spline.domain
(0.0, 2.0)
)")
      .def_static(
          "nurbs",
          [](int order, py::handle points, py::handle weights, py::handle knots) {
            return Curve::Nurbs(order, Weighted(points, weights), View(KnotsFrom(knots))).value();
          },
          py::arg("order"), py::arg("points"), py::arg("weights"), py::arg("knots"),
          "The same with weights, (n,).")
      .def_static("composite", &Composite, py::arg("curves"), py::arg("widths") = py::none(),
                  "Copies of curves as one; each takes a width of the domain, 1 where none is "
                  "given.")
      .def_static(
          "through",
          [](py::handle points, int order) {
            const PointList list = Listed(points);
            return Unlocked([&](Context& c) { return Curve::Through(list.Points(), order, c); });
          },
          py::arg("points"), py::arg("order") = 4,
          "The B-spline of an order through points, (n, 2).");
}

}  // namespace kurvo::python
