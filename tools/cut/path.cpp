#include "cut/path.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr std::size_t kMostStarts = 8;  // of a closed path
constexpr double kShortestShare =
    0.25;  // of its longest segment: what one to begin on has at least

DxfSegment Reversed(DxfSegment segment) {
  std::swap(segment.from, segment.to);
  segment.sweep = -segment.sweep;
  return segment;
}

}  // namespace

double LengthOf(const DxfSegment& segment) {
  return segment.sweep == 0 ? Size(segment.to - segment.from)
                            : std::fabs(segment.sweep) * segment.radius;
}

Point PointOn(const DxfSegment& segment, double part) {
  if (segment.sweep == 0) return segment.from + part * (segment.to - segment.from);
  const Point u = segment.from - segment.centre;
  const double angle = part * segment.sweep;
  return segment.centre + std::cos(angle) * u + std::sin(angle) * Point{-u.y, u.x};
}

Point DirectionAtStart(const DxfSegment& segment) {
  const Point u = segment.from - segment.centre;
  const Point along = segment.sweep == 0  ? segment.to - segment.from
                      : segment.sweep > 0 ? Point{-u.y, u.x}
                                          : Point{u.y, -u.x};
  return (1 / Size(along)) * along;
}

std::vector<DxfSegment> Divided(const DxfSegment& segment, int count) {
  std::vector<DxfSegment> parts(static_cast<std::size_t>(count), segment);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    const Point p = PointOn(segment, static_cast<double>(i) / count);
    parts[i - 1].to = parts[i].from = p;
  }
  for (DxfSegment& part : parts) part.sweep /= count;
  return parts;
}

std::vector<CutStart> StartsOf(const CutPath& path) {
  if (!path.closed) {
    const Point first = path.segments.front().from, last = path.segments.back().to;
    return {{0, false, first, last}, {0, true, last, first}};
  }
  std::vector<std::size_t> order(path.segments.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
    return LengthOf(path.segments[a]) > LengthOf(path.segments[b]);
  });
  order.resize(std::min(order.size(), kMostStarts));
  const double shortest = kShortestShare * LengthOf(path.segments[order.front()]);
  std::vector<CutStart> starts;
  for (const std::size_t i : order) {
    if (LengthOf(path.segments[i]) < shortest) break;
    const Point middle = PointOn(path.segments[i], 0.5);
    starts.push_back({i, false, middle, middle});
  }
  return starts;
}

std::vector<DxfSegment> SegmentsFrom(const CutPath& path, const CutStart& start) {
  std::vector<DxfSegment> segments = path.segments;
  if (path.closed) {
    const auto first = segments.begin() + static_cast<std::ptrdiff_t>(start.segment);
    std::rotate(segments.begin(), first, segments.end());
    const std::vector<DxfSegment> halves = Divided(segments.front(), 2);
    segments.front() = halves[1];
    segments.push_back(halves[0]);
  } else if (start.reversed) {
    std::reverse(segments.begin(), segments.end());
    for (DxfSegment& segment : segments) segment = Reversed(segment);
  }
  return segments;
}

}  // namespace kurvo::tools
