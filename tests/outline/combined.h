// What must hold of the results of combining, told in words where it does not.
#pragma once

#include <initializer_list>
#include <map>

#include "outline/random_chain.h"
#include "outline/winding.h"

namespace kurvo_test {

using Inputs = std::vector<const KurvoRegion*>;

constexpr double kPerTol = 0x1p30;  // tolerances in the size of the inputs

constexpr int32_t kOperations[] = {KURVO_UNION, KURVO_INTERSECTION, KURVO_DIFFERENCE, KURVO_XOR};
constexpr const char* kOperationNames[] = {"union", "intersection", "difference", "xor"};

inline bool IsWanted(int32_t operation, const std::vector<bool>& in) {
  const auto count = std::count(in.begin(), in.end(), true);
  switch (operation) {
    case KURVO_UNION:
      return count > 0;
    case KURVO_INTERSECTION:
      return count == std::ssize(in);
    case KURVO_DIFFERENCE:
      return !in.empty() && in[0] && count == 1;
    default:
      return count % 2 != 0;
  }
}

// Points in and out of regions, most of them `off` beside a boundary, none much nearer.
class Probes {
 public:
  Probes(Random& random, const Inputs& inputs, Wide off, int count) : inputs_(inputs) {
    for (const KurvoRegion* input : inputs) flattened_.emplace_back(*input, off / 8);
    std::vector<const Flattened*> with_edges;
    for (const Flattened& flat : flattened_)
      if (!flat.edges().empty()) with_edges.push_back(&flat);
    for (int i = 0; i < count && !with_edges.empty(); ++i) {
      const auto some = [&](const auto& list) -> const auto& {
        return list[static_cast<std::size_t>(RandomInt(random, 0, int(list.size()) - 1))];
      };
      const Flattened::Edge &e = some(some(with_edges)->edges()),
                            &other = some(some(with_edges)->edges());
      const LongPoint along = e.to - e.from;
      const Wide share = random.Uniform(0, 1), away = (i % 2 ? 1 : -1) * off / Gap(e.from, e.to);
      LongPoint q = {e.from.x + share * along.x - away * along.y,
                     e.from.y + share * along.y + away * along.x};
      if (i % 8 == 0) q = {(e.from.x + other.to.x) / 2, (e.from.y + other.to.y) / 2};
      if (std::none_of(flattened_.begin(), flattened_.end(),
                       [&](const Flattened& flat) { return flat.IsNear(q, off / 5); }))
        Add(q);
    }
  }

  // The first point at which the result goes around another number of times than once where it is
  // wanted and never elsewhere.
  std::string Wrong(int32_t operation, const KurvoRegion& result, Wide off) {
    const Flattened flat(result, off / 8);
    for (std::size_t i = 0; i < points_.size(); ++i) {
      ++asked;
      const int want = IsWanted(operation, in_[i]), got = flat.Turns(points_[i]);
      if (got == want) continue;
      return Text("at", {double(points_[i].x), double(points_[i].y)}) + ": " + std::to_string(got) +
             " turns, not " + std::to_string(want) + "; ";
    }
    return "";
  }

  static inline long asked = 0;

 private:
  void Add(LongPoint q) {
    points_.push_back(q);
    in_.emplace_back();
    for (std::size_t i = 0; i < inputs_.size(); ++i)
      in_.back().push_back(IsFilled(flattened_[i].Turns(q), inputs_[i]->rule));
  }

  const Inputs inputs_;
  std::vector<Flattened> flattened_;
  std::vector<LongPoint> points_;
  std::vector<std::vector<bool>> in_;
};

// The ends as the record holds them.
inline std::pair<XY, XY> EndsOf(const Curve& cv) {
  const auto xy = [](const double* p) { return XY{p[0], p[1]}; };
  if (cv.type == CV_LINE) {
    const auto& line = *static_cast<const KurvoLine*>(cv.data);
    return {xy(line.start), xy(line.end)};
  }
  if (cv.type == CV_ARC) {
    const auto& arc = *static_cast<const KurvoArc*>(cv.data);
    return {xy(arc.start), xy(arc.end)};
  }
  if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<const KurvoSegcv*>(cv.data);
    return {EndsOf(block.curves[0]).first, EndsOf(block.curves[block.count - 1]).second};
  }
  const FreeForm form(cv);
  const auto clamped = [&](int first) {
    return !form.knots || form.knots[first] == form.knots[first + form.order - 1];
  };
  return {clamped(0) ? xy(form.point(0)) : xy(PointAt(cv, 0)),
          clamped(form.count) ? xy(form.point(form.count - 1)) : xy(PointAt(cv, 1))};
}

inline bool operator<(XY a, XY b) { return a.x != b.x ? a.x < b.x : a.y < b.y; }
inline bool operator==(XY a, XY b) { return a.x == b.x && a.y == b.y; }

// Of the domain.
inline double ShareOf(const Curve& curve, double t) {
  const auto [from, size] = Domain(curve);
  return (t - from) / size;
}

// Whether the first of two curves keeps to the second between two places of both, in shares of
// their domains.
inline bool KeepsTo(const Curve& first, double a, double to_a, const Curve& second, double b,
                    double to_b, double near) {
  const auto at = [](const Curve& cv, double share) {
    const auto [from, size] = Domain(cv);
    return PointAt(cv, from + share * size);
  };
  constexpr int kLooks = 64;
  double farthest = 0;
  for (int i = 0; i <= 4; ++i) {
    const Point p = at(first, a + (to_a - a) * i / 4);
    Point before = at(second, b);
    double least = std::hypot(p[0] - before[0], p[1] - before[1]);
    for (int k = 1; k <= kLooks; ++k) {
      const Point q = at(second, b + (to_b - b) * k / kLooks);
      const double dx = q[0] - before[0], dy = q[1] - before[1], square = dx * dx + dy * dy;
      const double along = (p[0] - before[0]) * dx + (p[1] - before[1]) * dy;
      const double t = square > 0 ? std::clamp(along / square, 0., 1.) : 1;
      least = std::min(least, std::hypot(p[0] - before[0] - t * dx, p[1] - before[1] - t * dy));
      before = q;
    }
    farthest = std::max(farthest, least);
  }
  return farthest < near;
}

// Whether it does so from a meeting at a and b to an end: parts end at vertices that lie up to tol
// beside them, and where they leave one at a small angle they may cross.
inline bool KeepsTo(const Curve& first, double a, const Curve& second, double b, double near) {
  for (const double end_a : {0., 1.})
    for (const double end_b : {0., 1.})
      if (KeepsTo(first, ShareOf(first, a), end_a, second, ShareOf(second, b), end_b, near))
        return true;
  return false;
}

// Two curves that touch, and of which one ends up to tol beside its place, may cross twice there.
inline bool IsLens(const Curve& first, const KurvoMeeting& from, const Curve& second,
                   const KurvoMeeting& to, double near) {
  if (from.kind != KURVO_MEET_CROSS || to.kind != KURVO_MEET_CROSS || from.index_a != to.index_a ||
      from.index_b != to.index_b)
    return false;
  return KeepsTo(first, ShareOf(first, from.a), ShareOf(first, to.a), second,
                 ShareOf(second, from.b), ShareOf(second, to.b), near);
}

// Either of them may end beyond the other, by less than that.
inline bool IsNoise(const Curve& first, double a, const Curve& second, double b, double near) {
  return KeepsTo(first, a, second, b, near) || KeepsTo(second, b, first, a, near);
}

// Loops that close to the bit and pass no vertex twice, cross neither themselves nor each other,
// outer ones counter-clockwise and each followed by its holes, clockwise.
inline std::string Invalid(const KurvoRegion& region, double tol) {
  std::string wrong;
  if (region.rule != KURVO_FILL_NONZERO) wrong += "another rule; ";
  for (int i = 0; i < region.count; ++i) {
    const Cvseq& loop = region.loops[i];
    std::map<std::pair<double, double>, int> visits;
    if (loop.count < 1) wrong += "an empty loop; ";
    for (int k = 0; k < loop.count; ++k) {
      const XY end = EndsOf(loop.curves[k]).second;
      const XY next = EndsOf(loop.curves[(k + 1) % loop.count]).first;
      if (!(end == next))
        wrong += Text("open at", {end.x, end.y, next.x - end.x, next.y - end.y}) + "; ";
      if (++visits[{end.x, end.y}] == 2) wrong += Text("twice at", {end.x, end.y}) + "; ";
    }
  }
  Globals g(1e-300);
  std::vector<int32_t> parents(static_cast<std::size_t>(region.count));
  if (!KurvoRegionNesting(&region, parents.data(), &g)) return wrong + "no nesting; ";
  int outer = -1;
  for (int i = 0; i < region.count; ++i) {
    int depth = 0;
    for (int32_t p = parents[std::size_t(i)]; p >= 0; p = parents[std::size_t(p)]) ++depth;
    KurvoMoments moments;
    KurvoChainMoments(&region.loops[i], &moments, &g);
    if ((moments.area > 0) != (depth % 2 == 0))
      wrong += Text("turned loop", {double(i), double(depth), moments.area}) + "; ";
    if (depth % 2 == 0)
      outer = i;
    else if (parents[std::size_t(i)] != outer)
      wrong += Text("hole out of order", {double(i)}) + "; ";
  }
  KurvoOptions options = {};
  options.size = sizeof options;
  options.tol = tol / 1024;
  const auto boxes = [&] {
    std::vector<std::array<double, 6>> list(static_cast<std::size_t>(region.count));
    for (int i = 0; i < region.count; ++i)
      KurvoChainTightBox(&region.loops[i], list[std::size_t(i)].data(), &g);
    return list;
  }();
  for (std::size_t i = 0; i < boxes.size(); ++i)
    for (std::size_t k = i; k < boxes.size(); ++k) {
      const auto &a = boxes[i], &b = boxes[k];
      // Loops farther from each other in the forest cross others first.
      const bool is_near = i == k || parents[i] == parents[k] || parents[i] == int32_t(k) ||
                           parents[k] == int32_t(i);
      if (!is_near) continue;
      if (a[0] > b[3] || b[0] > a[3] || a[1] > b[4] || b[1] > a[4]) continue;
      KurvoMeeting* list;
      int32_t count;
      if (!KurvoChainMeetings(&region.loops[i], i == k ? nullptr : &region.loops[k], &options,
                              &list, &count, &g))
        return wrong + Text("meetings refuse", {double(i), double(k), double(KurvoErrGet(&g))});
      for (int m = 0; m < count; ++m) {
        const KurvoMeeting& found = list[m];
        if (found.kind == KURVO_MEET_TOUCH) continue;
        const Curve& first = region.loops[i].curves[found.index_a];
        const Curve& second = region.loops[k].curves[found.index_b];
        if (std::any_of(list, list + count, [&](const KurvoMeeting& other) {
              return &other != &found && IsLens(first, found, second, other, tol);
            }))
          continue;
        const bool is_run = found.kind == KURVO_MEET_RUN_FROM && m + 1 < count;
        const KurvoMeeting& last = is_run ? list[++m] : found;
        const double extent =
            std::hypot(last.point[0] - found.point[0], last.point[1] - found.point[1]);
        // A point where several curves end, or a touch of high order.
        if (is_run && extent < 0x1p-9 * kPerTol * tol) continue;
        if (!is_run && IsNoise(first, found.a, second, found.b, 8 * tol)) continue;
        wrong += Text(found.kind == KURVO_MEET_CROSS ? "cross" : "run along",
                      {double(i), double(found.index_a), double(k), double(found.index_b),
                       found.point[0], found.point[1]}) +
                 "; ";
      }
      KurvoFree(list);
    }
  return wrong;
}

// Parts lie on their sources, at nine parameters, and carry their attributes.
inline std::string Strays(const KurvoRegion& region, const Inputs& inputs, double tol) {
  std::string wrong;
  const KurvoOrigin* origin = region.origins;
  if (!origin && region.count > 0) return "no origins; ";
  ForEachCurve(region, [&](const Curve& part) {
    const KurvoOrigin& from = *origin++;
    const std::string name =
        Text("part", {double(origin - region.origins - 1), double(from.region), double(from.loop),
                      double(from.curve), from.from, from.to});
    if (from.kind == KURVO_ORIGIN_BRIDGE) {
      if (part.attr != 0 || part.type != CV_LINE) wrong += name + " is no bridge; ";
      return;
    }
    if (from.kind != KURVO_ORIGIN_PART || from.region < 0 || from.region >= std::ssize(inputs) ||
        from.loop < 0 || from.loop >= inputs[std::size_t(from.region)]->count || from.curve < 0 ||
        from.curve >= inputs[std::size_t(from.region)]->loops[from.loop].count) {
      wrong += name + " comes from nowhere; ";
      return;
    }
    const Curve& source = inputs[std::size_t(from.region)]->loops[from.loop].curves[from.curve];
    if (part.attr != source.attr || part.attr_p1 != source.attr_p1 ||
        part.attr_p2 != source.attr_p2)
      wrong += name + " has other attributes; ";
    const Oracle oracle(source), own(part);
    for (int k = 0; k <= 8; ++k) {
      const LongPoint at = own.PointAt(own.start() + (own.end() - own.start()) * k / 8);
      const LongPoint on = oracle.PointAt(from.from + (L(from.to) - from.from) * k / 8);
      if (tol >= Distance(at, on)) continue;
      wrong += name + Text(" strays", {k / 8., Distance(at, on)}) + "; ";
      break;
    }
  });
  return wrong;
}

}  // namespace kurvo_test
