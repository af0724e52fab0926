// Each crossing once.
#include "relate/merge_crossings.h"

#include <algorithm>
#include <cmath>

#include "foundation/point.h"
#include "query/position.h"
#include "records/domain.h"
#include "relate/end_filter.h"

namespace kurvo {
namespace {

constexpr double kNeighbours =
    0.01;  // of the domain: parameters further apart are different points

// Whether parameters of one curve stand for one point of it.
class SamePointOn {
 public:
  SamePointOn(const Curve& curve, GlobalVar& g)
      : curve_(curve), g_(g), domain_(DomainOf(curve)), reach_(kNeighbours * domain_.width()) {}

  bool operator()(double s, double t) const {
    const double apart = std::fabs(s - t);
    if (g_.epsilon >= apart) return true;
    if (apart > reach_ && !(apart >= domain_.width() - reach_)) return false;
    const Vec2 gap =
        Planar(PointOfCurve(curve_, s, 0, g_)) - Planar(PointOfCurve(curve_, t, 0, g_));
    return g_.epsilon >= std::fabs(gap.x) && g_.epsilon >= std::fabs(gap.y);
  }

 private:
  const Curve& curve_;
  GlobalVar& g_;
  const Domain domain_;
  const double reach_;
};

void SortByFirst(Crossings& crossings) {
  std::stable_sort(crossings.begin(), crossings.end(),
                   [](const Crossing& x, const Crossing& y) { return x.first < y.first; });
}

}  // namespace

void MergeCrossings(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings) {
  std::erase_if(crossings, [](const Crossing& at) {
    return !std::isfinite(at.first) || !std::isfinite(at.second);
  });
  if (crossings.size() < 2) return;
  SortByFirst(crossings);
  const SamePointOn same_on_a(a, g), same_on_b(b, g);
  std::size_t kept = 1;
  bool replaced = false;
  for (std::size_t i = 1; i < crossings.size(); ++i) {
    const Crossing& at = crossings[i];
    const auto end = crossings.begin() + static_cast<std::ptrdiff_t>(kept);
    const auto known = std::find_if(crossings.begin(), end, [&](const Crossing& k) {
      const bool same_parameters = g.epsilon >= std::fabs(k.first - at.first) &&
                                   g.epsilon >= std::fabs(k.second - at.second);
      return same_parameters || (k.source != at.source && same_on_a(k.first, at.first) &&
                                 same_on_b(k.second, at.second));
    });
    if (known == end) {
      crossings[kept++] = at;
    } else if (known->touch && !at.touch) {
      *known = at;
      replaced = true;
    }
  }
  crossings.resize(kept);
  if (replaced) SortByFirst(crossings);
}

}  // namespace kurvo
