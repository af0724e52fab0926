// Curve: new curves made of it, and pickling.
#include "bind.hpp"

namespace kurvo::python {
namespace {

// A copy, changed by change(copy, context).
template <class Change>
Curve Changed(const Curve& curve, const Change& change) {
  Context& c = ThreadContext();
  Curve copy = curve.Copy(c).value();
  const std::tuple words(copy.Get()->attr, copy.Get()->attr_p1, copy.Get()->attr_p2);
  change(copy, c).value();
  std::tie(copy.Get()->attr, copy.Get()->attr_p1, copy.Get()->attr_p2) = words;
  return copy;
}

Chain Split(const Curve& curve, py::handle t) {
  Doubles list = Numbers(t, "t");
  return Unlocked([&](Context& c) { return curve.Split(View(list), c); });
}

int TypeFrom(std::string_view word) {
  static constexpr int kTypes[] = {CV_LINE,    CV_ARC,      CV_BEZIER, CV_RBEZIER,
                                   CV_BSPLINE, CV_RBSPLINE, CV_SEGCV};
  return kTypes[OneOf(
      word, {"line", "arc", "bezier", "rational_bezier", "bspline", "nurbs", "composite"}, "type")];
}

}  // namespace

void BindCurveChanges(py::class_<Curve>& curve) {
  BindPictures(curve);
  curve
      .def(
          "reversed",
          [](const Curve& self) {
            return Changed(self, [](Curve& cv, Context& c) { return cv.Reverse(c); });
          },
          "The same points the other way.")
      .def(
          "moved",
          [](const Curve& self, py::handle by) {
            const Point delta = OnePoint(by, "by");
            return Changed(self, [&](Curve& cv, Context& c) { return cv.Move(delta, c); });
          },
          py::arg("by"))
      .def(
          "rotated",
          [](const Curve& self, double angle, py::handle centre) {
            const Point about = centre.is_none() ? Point() : OnePoint(centre, "centre");
            Finite(angle, "angle");
            return Changed(self, [&](Curve& cv, Context& c) { return cv.Rotate(about, angle, c); });
          },
          py::arg("angle"), py::arg("centre") = py::none(),
          "Turned by an angle in radians, counter-clockwise, about the origin or a centre.")
      .def(
          "scaled",
          [](const Curve& self, double factor, py::handle centre) {
            const Point about = centre.is_none() ? Point() : OnePoint(centre, "centre");
            Finite(factor, "factor");
            return Changed(self, [&](Curve& cv, Context& c) { return cv.Scale(about, factor, c); });
          },
          py::arg("factor"), py::arg("centre") = py::none(), "By a factor above 0.")
      .def(
          "mirrored",
          [](const Curve& self, py::handle base, py::handle normal) {
            const Point at = OnePoint(base, "base"), across = OnePoint(normal, "normal");
            return Changed(self, [&](Curve& cv, Context& c) { return cv.Mirror(at, across, c); });
          },
          py::arg("base"), py::arg("normal"), "In the line through base across a direction.")
      .def("split", &Split, py::arg("t"), R"(The parts between ascending parameters, as a chain.

>>> import kurvo
>>> len(kurvo.Curve.line((0, 0), (4, 0)).split([0.25, 0.5]))
3
)")
      .def(
          "converted",
          [](const Curve& self, std::string_view type) {
            return self.Converted(TypeFrom(type), ThreadContext()).value();
          },
          py::arg("type"),
          "The same points in a record of another type; raises kurvo.Error where there is none.")
      .def(
          "offset",
          [](const Curve& self, double distance, double deviation) {
            Finite(distance, "distance");
            Finite(deviation, "deviation");
            return Unlocked([&](Context& c) { return self.Offset(distance, deviation, c); });
          },
          py::arg("distance"), py::arg("deviation"),
          "The curve so far to the left of it, within a deviation, both lengths, as a chain.")
      .def(
          "extended",
          [](const Curve& self, double before, double behind) {
            Finite(before, "before");
            Finite(behind, "behind");
            return self.Extended(before, behind, ThreadContext()).value();
          },
          py::arg("before"), py::arg("behind"), "Longer at its ends, by parameters.")
      .def(
          "without_knots",
          [](const Curve& self) { return self.WithoutKnots(ThreadContext()).value(); },
          "A B-spline without the knots that it does not need.")
      .def("__repr__",
           [](const py::object& self) {
             return py::str("<Curve {} {} to {}>")
                 .format(self.attr("type"), self.attr("start").attr("tolist")(),
                         self.attr("end").attr("tolist")());
           })
      .def(py::pickle(
          [](const Curve& self) {
            return PackedChain({1, const_cast<::Curve*>(self.Get())});
          },
          [](const py::tuple& state) {
            Chain chain = ChainFromPacked(state);
            if (chain.size() != 1) Fail(KURVO_ERR_OPTION, "kurvo.Curve");
            return std::move(chain[0]);
          }));
}

}  // namespace kurvo::python
