// The batch functions. Each region is worked on by itself, so that results are the same to the bit
// for any number of threads.
#include "columns.hpp"

namespace kurvo::python {
namespace {

// One number for each region, or one for all.
class PerRegion {
 public:
  PerRegion(py::handle object, const char* name, std::size_t count) : list_(Numbers(object, name)) {
    if (list_.ndim() != 0 && (list_.ndim() != 1 || View(list_).size() != count))
      throw py::value_error(std::string(name) + ": one number is needed, or one a region");
  }
  double operator[](std::size_t i) const { return list_.data()[list_.ndim() ? i : 0]; }

 private:
  Doubles list_;
};

// What a batch has no column for.
Asked Shared(const py::kwargs& named) {
  for (const char* name : {"proceed", "report", "origins"})
    if (named.contains(name))
      throw py::type_error(std::string("batches have no option '") + name + "'");
  return Asked(named);
}

py::tuple Combined(const py::tuple& a, int operation, const py::tuple& b, int threads,
                   const py::kwargs& named) {
  const Columns first(a), second(b);
  const std::size_t count = first.size();
  if (second.size() != count && second.size() != 1)
    throw py::value_error("the second batch is to be as long as the first, or of one region");
  const Asked asked = Shared(named);
  return MadeColumns(count, threads, [&](std::size_t i, Context& c) -> Result<Region> {
    const Result<Region> p = first.At(i, c), q = second.At(second.size() == 1 ? 0 : i, c);
    if (!p || !q) return Unexpected(p ? q.error() : p.error());
    return Region::Combine(static_cast<Operation>(operation), *p, *q, c, asked.Given());
  });
}

// The regions that change(region, i, context) makes.
template <class Change>
py::tuple Changed(const py::tuple& arrays, int threads, const Change& change) {
  const Columns columns(arrays);
  return MadeColumns(columns.size(), threads, [&](std::size_t i, Context& c) -> Result<Region> {
    const Result<Region> region = columns.At(i, c);
    return region ? change(*region, i, c) : Result<Region>(Unexpected(region.error()));
  });
}

py::tuple Simplified(const py::tuple& arrays, int threads, const py::kwargs& named) {
  const Asked asked = Shared(named);
  return Changed(arrays, threads, [&](const Region& region, std::size_t, Context& c) {
    return region.Simplified(c, asked.Given());
  });
}

py::tuple Grown(const py::tuple& arrays, py::handle distance, int threads,
                const py::kwargs& named) {
  const Asked asked = Shared(named);
  const PerRegion by(distance, "distance", Columns(arrays).size());
  return Changed(arrays, threads, [&](const Region& region, std::size_t i, Context& c) {
    return region.Offset(by[i], c, asked.Given());
  });
}

py::tuple Stroked(const py::tuple& arrays, py::handle left, py::handle right, int threads,
                  const py::kwargs& named) {
  const Asked asked = Shared(named);
  const std::size_t count = Columns(arrays).size();
  const PerRegion l(left, "left", count), r(right, "right", count);
  return Changed(arrays, threads, [&](const Region& region, std::size_t i, Context& c) {
    return Chain::Stroke({region.begin(), region.size()}, l[i], r[i], c, asked.Given());
  });
}

py::tuple Biarcs(const py::tuple& arrays, double deviation, int threads) {
  Finite(deviation, "deviation");
  return Changed(arrays, threads, [&](const Region& region, std::size_t, Context& c) {
    return WithFittedLoops(region, Form::kArcs, deviation, c);
  });
}

// (length, area), each (n,), NaN beside codes.
py::tuple Measured(const py::tuple& arrays, int threads) {
  const Columns columns(arrays);
  const std::size_t count = columns.size();
  auto length = Column<double>(count), area = Column<double>(count);
  auto codes = Column<int32_t>(count);
  double *lengths = length.mutable_data(), *areas = area.mutable_data();
  ForEach(count, threads, {codes.mutable_data(), count}, [&](std::size_t i, Context& c) {
    lengths[i] = areas[i] = std::numeric_limits<double>::quiet_NaN();
    const Result<Region> region = columns.At(i, c);
    if (!region) return region.error().code;
    const Result<Moments> moments = region->Moments(c);
    if (!moments) return moments.error().code;
    lengths[i] = moments->length;
    areas[i] = moments->area;
    return int{KURVO_ERR_NONE};
  });
  return py::make_tuple(length, area, codes);
}

// Of one point for each region: the loop (-1: none), the place on it and the distance.
py::tuple NearestTo(const py::tuple& arrays, py::handle points, int threads) {
  const Columns columns(arrays);
  const std::size_t count = columns.size();
  const PointList list(points, "points");
  if (list.Shape().size() != 1 || list.Points().size() != count)
    throw py::value_error("points: one point for each region is needed, of shape (n, 2)");
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  auto places = Array<Place>::Sized(count, &g);
  if (places.size() != count) Fail(KURVO_ERR_TOO_LARGE, "nearest");
  auto loop = Column<int32_t>(count), codes = Column<int32_t>(count);
  auto distance = Column<double>(count);
  int32_t* loops = loop.mutable_data();
  double* distances = distance.mutable_data();
  ForEach(count, threads, {codes.mutable_data(), count}, [&](std::size_t i, Context& c) {
    places[i] = Place();
    loops[i] = -1;
    distances[i] = std::numeric_limits<double>::quiet_NaN();
    const Result<Region> region = columns.At(i, c);
    if (!region) return region.error().code;
    for (std::size_t k = 0; k < region->size(); ++k) {
      if ((*region)[k].size() == 0) continue;
      const Result<NearestPlace> near = (*region)[k].NearestTo(list.Points()[i], c);
      if (!near) return near.error().code;
      if (distances[i] <= near->distance) continue;  // false of a NaN
      places[i] = near->place;
      loops[i] = static_cast<int32_t>(k);
      distances[i] = near->distance;
    }
    return int{KURVO_ERR_NONE};
  });
  return py::make_tuple(loop, FromPlaces(std::move(places), list.Shape()), distance, codes);
}

}  // namespace

// In batch_flatten.cpp.
py::tuple FlattenedColumns(const py::tuple& arrays, double deviation, int threads);

void BindBatch(py::module_& module) {
  module.def("batch_check", [](const py::tuple& arrays) { return Columns(arrays).size(); });
  module.def("batch_region", [](const py::tuple& arrays, std::size_t i) {
    const Columns columns(arrays);
    if (i >= columns.size()) throw py::index_error("a batch has no such region");
    return columns.At(i, ThreadContext()).value();
  });
  module.def("batch_pack", [](const py::object& regions) {
    const Lent<Region> lent(regions);
    return MadeColumns(lent.List().size(), 1,
                       [&](std::size_t i, Context& c) { return lent.List()[i].Copy(c); });
  });
  module.def("batch_combine", &Combined);
  module.def("batch_simplify", &Simplified);
  module.def("batch_offset", &Grown);
  module.def("batch_stroke", &Stroked);
  module.def("batch_biarcs", &Biarcs);
  module.def("batch_measure", &Measured);
  module.def("batch_nearest", &NearestTo);
  module.def("batch_flatten", &FlattenedColumns);
}

}  // namespace kurvo::python
