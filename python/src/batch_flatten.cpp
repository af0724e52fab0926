// Many regions as polylines, in columns.
#include "columns.hpp"

namespace kurvo::python {

// (points (m, 2), point_starts of each loop, loop_starts of each region, codes). No loops beside
// codes.
py::tuple FlattenedColumns(const py::tuple& arrays, double deviation, int threads) {
  Finite(deviation, "deviation");
  const Columns columns(arrays);
  const std::size_t count = columns.size();
  std::vector<std::vector<Polyline>> lines(count);
  auto codes = Column<int32_t>(count);
  ForEach(count, threads, {codes.mutable_data(), count}, [&](std::size_t i, Context& c) {
    const Result<Region> region = columns.At(i, c);
    if (!region) return region.error().code;
    for (const Chain& loop : *region) {
      Result<Polyline> line = loop.Flatten(deviation, c);
      if (!line) {
        lines[i].clear();
        return line.error().code;
      }
      lines[i].push_back(*std::move(line));
    }
    return int{KURVO_ERR_NONE};
  });

  std::vector<int64_t> point_starts{0};
  auto loop_starts = Column<int64_t>(count + 1);
  int64_t* starts = loop_starts.mutable_data();
  *starts = 0;
  for (const std::vector<Polyline>& loops : lines) {
    for (const Polyline& line : loops)
      point_starts.push_back(point_starts.back() + static_cast<int64_t>(line.points.size()));
    *++starts = static_cast<int64_t>(point_starts.size()) - 1;
  }
  py::array_t<double> points({static_cast<py::ssize_t>(point_starts.back()), py::ssize_t{2}});
  double* to = points.mutable_data();
  for (const std::vector<Polyline>& loops : lines) {
    for (const Polyline& line : loops) {
      for (const Point& p : line.points) {
        *to++ = p.x;
        *to++ = p.y;
      }
    }
  }
  return py::make_tuple(
      points,
      py::array_t<int64_t>(static_cast<py::ssize_t>(point_starts.size()), point_starts.data()),
      loop_starts, codes);
}

}  // namespace kurvo::python
