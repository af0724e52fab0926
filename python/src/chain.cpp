// Chain: curves that run end to start, asked and changed as wholes.
#include "bind.hpp"

namespace kurvo::python {
namespace {

py::object PieceAt(const py::object& self, py::ssize_t index) {
  const auto& chain = self.cast<const Chain&>();
  const auto size = static_cast<py::ssize_t>(chain.size());
  if (index < 0) index += size;
  if (index < 0 || index >= size) throw py::index_error("a chain has no such curve");
  return py::cast(&chain[static_cast<std::size_t>(index)],
                  py::return_value_policy::reference_internal, self);
}

Chain FromCurves(const py::iterable& curves) {
  std::vector<Curve> list = CurvesFrom(curves);
  return Chain::Of(list).value();
}

Chain ThroughCorners(py::handle points, bool closed) {
  const PointList list(points, "points");
  if (list.Shape().size() != 1 || list.Points().empty())
    throw py::value_error("points: a list of points is needed, of shape (n, 2)");
  const auto corners = list.Points();
  std::vector<Curve> lines;
  for (std::size_t i = 0; i + (closed ? 0 : 1) < corners.size(); ++i)
    lines.push_back(Curve::Line(corners[i], corners[(i + 1) % corners.size()]).value());
  return Chain::Of(lines).value();
}

py::object PlacesAt(const Chain& self, py::handle lengths) {
  if (PyFloat_CheckExact(lengths.ptr())) {
    const double length = Finite(PyFloat_AS_DOUBLE(lengths.ptr()), "lengths");
    auto one = Unlocked([&](Context& c) { return self.Places({&length, 1}, c); });
    return Plain(FromPlaces(std::move(one), {}));
  }
  const Doubles list = Numbers(lengths, "lengths");
  std::vector<py::ssize_t> shape(list.shape(), list.shape() + list.ndim());
  auto places = Unlocked([&](Context& c) { return self.Places(View(list), c); });
  return Plain(FromPlaces(std::move(places), std::move(shape)));
}

py::array LengthsAt(const Chain& self, py::handle places) {
  const std::vector<Place> list = PlacesFrom(places);
  auto lengths = Unlocked([&](Context& c) { return self.Lengths(list, c); });
  return FromNumbers(std::move(lengths), {static_cast<py::ssize_t>(list.size())});
}

py::tuple NearestTo(const Chain& self, py::handle points) {
  if (const auto one = PlainPoint(points, "points")) {
    NearestPlaces found = Unlocked([&](Context& c) { return self.NearestTo({&*one, 1}, c); });
    const double distance = found.distances[0];
    return py::make_tuple(Plain(FromPlaces(std::move(found.places), {})), distance);
  }
  const PointList list(points, "points");
  NearestPlaces found = Unlocked([&](Context& c) { return self.NearestTo(list.Points(), c); });
  return py::make_tuple(Plain(FromPlaces(std::move(found.places), list.Shape())),
                        Plain(FromNumbers(std::move(found.distances), list.Shape())));
}

py::object Flattened(const Chain& self, double deviation, bool with_places) {
  Polyline line = Unlocked([&](Context& c) { return self.Flatten(deviation, c); });
  const auto count = static_cast<py::ssize_t>(line.places.size());
  py::array points = FromPoints(std::move(line.points));
  if (!with_places) return points;
  return py::make_tuple(points, FromPlaces(std::move(line.places), {count}));
}

py::array MeetingsOf(const Chain& self, const Chain* other, const py::kwargs& named) {
  Asked asked(named);
  return FromMeetings(asked.Run([&](Context& c, const Options& options, Report*) {
    return other ? self.Meetings(*other, c, options) : self.Meetings(c, options);
  }));
}

Chain Trimmed(const Chain& self, py::handle from, py::handle to) {
  const auto one = [](py::handle place) {
    const std::vector<Place> list = PlacesFrom(place);
    if (list.size() != 1) throw py::value_error("one place is needed");
    return list[0];
  };
  const Place first = one(from), last = one(to);
  return Unlocked([&](Context& c) { return self.Trim(first, last, c); });
}

py::tuple Joined(const py::object& curves, const py::kwargs& named) {
  const Lent<Curve> lent(curves);
  Asked asked(named);
  JoinedChains joined = asked.Run([&](Context& c, const Options& options, Report* report) {
    return Chain::Join(lent.List(), c, options, report);
  });
  py::list open;
  for (Chain& chain : joined.open) open.append(py::cast(std::move(chain)));
  return py::make_tuple(std::move(joined.closed), open);
}

template <class Change>
Chain Changed(const Chain& chain, const Change& change) {
  Chain copy = CopyOf(chain);
  for (Curve& curve : copy) {
    const ::Curve words = *curve.Get();
    change(curve).value();
    curve.Get()->attr = words.attr;
    curve.Get()->attr_p1 = words.attr_p1;
    curve.Get()->attr_p2 = words.attr_p2;
  }
  return copy;
}

void BindMakers(py::class_<Chain>& chain) {
  chain
      .def(py::init(&FromCurves), py::arg("curves") = py::tuple(),
           "Of copies of curves. Whether they meet is looked at when the chain is asked.")
      .def_static("polyline", &ThroughCorners, py::arg("points"), py::kw_only(),
                  py::arg("closed") = false, "Lines through points, (n, 2).")
      .def_static("join", &Joined, py::arg("curves"),
                  R"(Chains of loose curves in any order and direction.

Result: a Region of the closed ones and a list of the open ones. Options: tol, gap, proceed, report.

>>> import kurvo
>>> line = kurvo.Curve.line
>>> closed, rest = kurvo.Chain.join([line((0, 0), (1, 0)), line((0, 0), (1, 1)),
...                                  line((1, 0), (1, 1)), line((5, 5), (6, 6))])
>>> len(closed), len(rest)
(1, 1)
)")
      .def("reversed",
           [](const Chain& self) {
             Chain copy =
                 Changed(self, [](Curve& curve) { return curve.Reverse(ThreadContext()); });
             std::reverse(copy.begin(), copy.end());
             return copy;
           })
      .def(
          "moved",
          [](const Chain& self, py::handle by) {
            const Point delta = OnePoint(by, "by");
            return Changed(self, [&](Curve& curve) { return curve.Move(delta, ThreadContext()); });
          },
          py::arg("by"));
}

void BindMeasures(py::class_<Chain>& chain) {
  chain
      .def_property_readonly(
          "length",
          [](const Chain& self) { return Unlocked([&](Context& c) { return self.Length(c); }); },
          "To 1e-12 of itself; joints do not count.")
      .def_property_readonly(
          "box",
          [](const Chain& self) {
            return Corners(Unlocked([&](Context& c) { return self.TightBox(c); }));
          },
          "The narrowest box, (2, 2): the lower and the upper corner.")
      .def_property_readonly(
          "moments",
          [](const Chain& self) { return Unlocked([&](Context& c) { return self.Moments(c); }); },
          "Length, area, centroid, second moments; an open chain is closed by its chord.")
      .def_property_readonly(
          "area",
          [](const Chain& self) {
            return Unlocked([&](Context& c) { return self.Moments(c); }).area;
          },
          "Positive counter-clockwise.")
      .def("places", &PlacesAt, py::arg("lengths"), R"(Where the chain has lengths from its start.

lengths: shape S. Result: places of shape S, records with index, t, point and tangent. Raises
kurvo.Error for lengths that an open chain does not have; on a closed one they go around.

>>> import kurvo
>>> chain = kurvo.Chain.polyline([(0, 0), (3, 0), (3, 4)])
>>> chain.places([1, 5])["point"][:, :2].tolist()
[[1.0, 0.0], [3.0, 2.0]]
)")
      .def("lengths", &LengthsAt, py::arg("places"),
           "Lengths from the start to places, or to pairs (index, t).")
      .def("nearest", &NearestTo, py::arg("points"), R"(Nearest places to points of shape S + (2,).

Result: places and distances, both of shape S.

>>> import kurvo
>>> places, distances = kurvo.Chain.polyline([(0, 0), (3, 0), (3, 4)]).nearest([(1, 1), (4, 2)])
>>> places["index"].tolist(), distances.tolist()
([0, 1], [1.0, 1.0])
)");
}

void BindWork(py::class_<Chain>& chain) {
  chain
      .def("meetings", &MeetingsOf, py::arg("other") = nullptr,
           R"(Where two chains meet, or one with itself.

Result: records with index_a, a, index_b, b, point and kind: 0 cross, 1 touch, 2 a shared stretch
begins and 3 ends. Options: tol, gap, proceed.

>>> import kurvo
>>> a = kurvo.Chain.polyline([(0, 0), (4, 0)])
>>> b = kurvo.Chain.polyline([(1, -1), (1, 1), (2, 0), (3, 1)])
>>> a.meetings(b)["kind"].tolist()
[0, 1]
)")
      .def("flatten", &Flattened, py::arg("deviation"), py::kw_only(), py::arg("places") = false,
           R"(Vertices of a polyline within a deviation (length): (n, 2).

places=True gives their places besides.

>>> import kurvo
>>> circle = kurvo.Chain([kurvo.Curve.circle((0, 0), 1)])
>>> len(circle.flatten(0.01))
25
)")
      .def(
          "fit",
          [](const Chain& self, std::string_view form, double deviation) {
            const auto as =
                static_cast<Form>(OneOf(form, {"arcs", "quadratics", "cubics"}, "form"));
            return Unlocked([&](Context& c) { return self.Fit(as, deviation, c); });
          },
          py::arg("form"), py::arg("deviation"),
          "Lines and 'arcs', 'quadratics' or 'cubics' within a deviation (length).")
      .def("trim", &Trimmed, py::arg("start"), py::arg("end"),
           "The chain from one place to another, each a place or a pair (index, t).")
      .def(
          "stroke",
          [](const Chain& self, double left, std::optional<double> right, const py::kwargs& named) {
            Asked asked(named);
            return asked.Run([&](Context& c, const Options& options, Report* report) {
              return self.Stroke(left, right.value_or(left), c, options, report);
            });
          },
          py::arg("left"), py::arg("right") = py::none(),
          R"(What a pen covers that reaches so far to the left and the right, both lengths.

Options: tol, gap, join, miter_limit, cap, dashes, phase, origins, proceed, report.

>>> import kurvo
>>> kurvo.Chain.polyline([(0, 0), (4, 0)]).stroke(1, cap="square").area
12.0
)");
}

void BindMoments(py::module_& module) {
  py::class_<Moments>(module, "Moments", "What `moments` gives.")
      .def_readonly("length", &Moments::length)
      .def_readonly("area", &Moments::area, "counter-clockwise positive")
      .def_property_readonly("centroid",
                             [](const Moments& m) { return Pair(m.centroid.x, m.centroid.y); })
      .def_readonly("xx", &Moments::xx, "second moment of the area about the centroid")
      .def_readonly("xy", &Moments::xy)
      .def_readonly("yy", &Moments::yy)
      .def("__repr__", [](const Moments& m) {
        return py::str("Moments(length={}, area={}, centroid=({}, {}), xx={}, xy={}, yy={})")
            .format(m.length, m.area, m.centroid.x, m.centroid.y, m.xx, m.xy, m.yy);
      });
}

}  // namespace

void BindChain(py::module_& module) {
  BindMoments(module);
  py::class_<Chain> chain(module, "Chain",
                          "Curves of any types, each starting where the one before it ends: a "
                          "sequence of Curve. Never changed once made.");
  BindMakers(chain);
  BindMeasures(chain);
  BindWork(chain);
  BindPictures(chain);
  chain.def("__len__", &Chain::size)
      .def("__getitem__", &PieceAt)
      .def("__repr__",
           [](const Chain& self) { return py::str("<Chain of {}>").format(self.size()); })
      .def(
          py::pickle([](const Chain& self) { return PackedChain(*self.Get()); }, &ChainFromPacked));
}

}  // namespace kurvo::python
