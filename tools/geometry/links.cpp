#include "geometry/links.h"

#include <algorithm>
#include <cmath>

namespace kurvo::tools {
namespace {

// Curves begin .. end - 1 of the list.
OwnedCurve Joined(Library& library, const CurveList& list, std::size_t begin, std::size_t end) {
  std::vector<const OwnedCurve*> pieces;
  for (std::size_t i = begin; i < end; ++i) pieces.push_back(list.curves[i].curve);
  return OwnedCurve::Composite(library, pieces);
}

// The pieces of a composite that a parameter may belong to: two at a boundary.
std::vector<std::size_t> PiecesAt(double t, std::size_t count) {
  constexpr double kSameParameter = 1e-9;
  std::vector<std::size_t> pieces;
  const double nearest = std::round(t);
  const bool boundary = std::fabs(t - nearest) <= kSameParameter;
  const double after = boundary ? nearest : std::floor(t);
  if (boundary && after >= 1) pieces.push_back(static_cast<std::size_t>(after) - 1);
  if (after < static_cast<double>(count)) pieces.push_back(static_cast<std::size_t>(after));
  return pieces;
}

}  // namespace

std::vector<Link> FindLinks(Library& library, const CurveList& first, const CurveList& second) {
  std::vector<Link> links;
  if (second.curves.empty()) return links;
  const OwnedCurve all = Joined(library, second, 0, second.curves.size());
  for (std::size_t begin = 0, end; begin < first.curves.size(); begin = end) {
    end = begin + 1;
    while (end < first.curves.size() && first.curves[end].outline == first.curves[begin].outline) {
      ++end;
    }
    const Closest whole = ClosestOn(library, Joined(library, first, begin, end), all);
    Link link = {begin, 0, {HUGE_VAL, 0, 0}, {}, {}};
    for (const std::size_t i : PiecesAt(whole.first, end - begin)) {
      for (const std::size_t j : PiecesAt(whole.second, second.curves.size())) {
        const Closest at =
            ClosestOn(library, *first.curves[begin + i].curve, *second.curves[j].curve);
        if (at.distance < link.at.distance) link = {begin + i, j, at, {}, {}};
      }
    }
    link.from = PositionOf(library, *first.curves[link.first].curve, link.at.first);
    link.to = PositionOf(library, *second.curves[link.second].curve, link.at.second);
    links.push_back(link);
  }
  return links;
}

std::vector<OwnedCurve> LinesOf(const std::vector<Link>& links) {
  std::vector<OwnedCurve> lines;
  for (const Link& link : links) lines.push_back(OwnedCurve::Line(link.from, link.to));
  return lines;
}

const Link* Shortest(const std::vector<Link>& links) {
  const auto shortest =
      std::min_element(links.begin(), links.end(),
                       [](const Link& a, const Link& b) { return a.at.distance < b.at.distance; });
  return shortest == links.end() ? nullptr : &*shortest;
}

}  // namespace kurvo::tools
