#include "geometry/links.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "geometry/box_tree.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

// Box distances may exceed those of the curves by what boxes are rounded by.
constexpr double kRounding = 1e-12;

// Distances that differ by less are the same; relative to the coordinates.
constexpr double kTie = 1e-15;

// The curves of one outline are those from `begin` to `end` - 1 of the list.
struct Range {
  std::size_t begin;
  std::size_t end;
};

std::vector<Range> OutlineRanges(const CurveList& list) {
  std::vector<Range> ranges;
  for (std::size_t begin = 0, end; begin < list.curves.size(); begin = end) {
    end = begin + 1;
    while (end < list.curves.size() && list.curves[end].outline == list.curves[begin].outline)
      ++end;
    ranges.push_back({begin, end});
  }
  return ranges;
}

std::vector<Bounds> BoxesOf(const CurveList& list) {
  std::vector<Bounds> boxes;
  for (const ListedCurve& curve : list.curves) boxes.push_back(curve.box);
  return boxes;
}

class LinkFinder {
 public:
  LinkFinder(const CurveList& first, const CurveList& second)
      : first_(first), second_(second), tree_(BoxesOf(second)) {}

  Link ShortestOf(Context& context, const Range& outline, const CurveDone& done) const {
    Link link = {outline.begin, 0, {HUGE_VAL}, {}, {}};
    double bound = FirstBound(context, outline);
    for (std::size_t i = outline.begin; i < outline.end; ++i) {
      if (link.at.distance > 0) Improve(context, i, bound, link);
      done();
    }
    link.from = PositionOf(context, *first_.curves[link.first].curve, link.at.a);
    link.to = PositionOf(context, *second_.curves[link.second].curve, link.at.b);
    return link;
  }

 private:
  Closest Between(Context& context, std::size_t i, std::size_t j) const {
    return first_.curves[i].curve->ClosestTo(*second_.curves[j].curve, context).value();
  }

  // The distance of a pair that is likely to be near.
  double FirstBound(Context& context, const Range& outline) const {
    Bounds box;
    for (std::size_t i = outline.begin; i < outline.end; ++i) box.Add(first_.curves[i].box);
    const std::size_t near = tree_.Nearest(box);
    std::size_t nearest = outline.begin;
    for (std::size_t i = outline.begin; i < outline.end; ++i) {
      if (BoxDistance(i, near) < BoxDistance(nearest, near)) nearest = i;
    }
    return Between(context, nearest, near).distance;
  }

  double BoxDistance(std::size_t i, std::size_t j) const {
    return Distance(first_.curves[i].box, second_.curves[j].box);
  }

  // Looks at the curves that are as near to curve number i as the bound, those with near boxes
  // first.
  void Improve(Context& context, std::size_t i, double& bound, Link& link) const {
    Bounds around = first_.curves[i].box;
    around.Grow(bound + kRounding * (bound + Size(around.Min()) + Size(around.Max())));
    std::vector<std::pair<double, std::size_t>> candidates;
    for (const std::size_t j : tree_.Meeting(around)) candidates.emplace_back(BoxDistance(i, j), j);
    std::sort(candidates.begin(), candidates.end());
    for (const auto& [least, j] : candidates) {
      if (least > bound + kRounding * (bound + Size(around.Max())) || link.at.distance == 0) break;
      const Closest at = Between(context, i, j);
      const double tie = kTie * (at.distance + Size(around.Max()));
      const bool is_better = at.distance < link.at.distance - tie;
      const bool is_before =
          at.distance <= link.at.distance + tie && link.first == i && j < link.second;
      if (is_better || is_before) link = {i, j, at, {}, {}};
      bound = std::min(bound, at.distance);
    }
  }

  const CurveList& first_;
  const CurveList& second_;
  const BoxTree tree_;
};

}  // namespace

std::vector<Link> FindLinks(const CurveList& first, const CurveList& second, const CurveDone& done,
                            std::size_t threads) {
  if (second.curves.empty()) return {};
  const LinkFinder finder(first, second);
  const std::vector<Range> outlines = OutlineRanges(first);
  std::vector<Link> links(outlines.size());
  ParallelFor(
      outlines.size(),
      [&](std::size_t i, Context& context) {
        links[i] = finder.ShortestOf(context, outlines[i], done);
      },
      threads);
  return links;
}

std::vector<Curve> LinesOf(const std::vector<Link>& links) {
  std::vector<Curve> lines;
  for (const Link& link : links) lines.push_back(Curve::Line(link.from, link.to).value());
  return lines;
}

const Link* Shortest(const std::vector<Link>& links) {
  const auto shortest =
      std::min_element(links.begin(), links.end(),
                       [](const Link& a, const Link& b) { return a.at.distance < b.at.distance; });
  return shortest == links.end() ? nullptr : &*shortest;
}

}  // namespace kurvo::tools
