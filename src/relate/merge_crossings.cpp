// Each crossing once.
#include "relate/merge_crossings.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "foundation/point.h"
#include "query/position.h"
#include "records/domain.h"

namespace kurvo {
namespace {

// Of the domain: parameters further apart are different points.
constexpr double kNeighbours = 0.01;

// Whether parameters of one curve stand for one point of it.
class PointsOf {
 public:
  PointsOf(const Curve& curve, GlobalVar& g)
      : curve_(curve), g_(g), domain_(DomainOf(curve)), reach_(kNeighbours * domain_.width()) {}

  // How far apart such parameters are at most, but across the closing joint.
  double reach() const { return std::max(reach_, g_.epsilon); }
  bool NearStart(double t) const { return domain_.start + reach_ >= t; }
  bool NearEnd(double t) const { return t >= domain_.end - reach_; }

  bool Neighbours(double s, double t) const {
    const double apart = std::fabs(s - t);
    return reach() >= apart || apart >= domain_.width() - reach_;
  }

  // A point of the curve, once it has been needed.
  using Known = std::optional<Vec2>;

  bool SamePoint(double s, Known& at_s, double t, Known& at_t) const {
    if (g_.epsilon >= std::fabs(s - t)) return true;
    const Vec2 gap = Point(s, at_s) - Point(t, at_t);
    return g_.epsilon >= std::fabs(gap.x) && g_.epsilon >= std::fabs(gap.y);
  }

 private:
  Vec2 Point(double t, Known& known) const {
    if (!known) known = Planar(PointOfCurve(curve_, t, 0, g_));
    return *known;
  }

  const Curve& curve_;
  GlobalVar& g_;
  const Domain domain_;
  const double reach_;
};

class Merger {
 public:
  Merger(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings)
      : on_a_(a, g), on_b_(b, g), tol_(g.epsilon), crossings_(crossings) {}

  // Requires ascending order.
  void Run() {
    points_.reserve(crossings_.size());
    for (const Crossing at : crossings_) {
      Points points;
      const std::size_t known = FindKnown(at, points);
      const std::size_t kept = points_.size();
      if (known == kept) {
        crossings_[kept] = at;
        points_.push_back(points);
      } else if (crossings_[known].touch && !at.touch) {
        const auto from = static_cast<std::ptrdiff_t>(known);
        const auto first = crossings_.begin() + from;
        std::rotate(first, first + 1, crossings_.begin() + static_cast<std::ptrdiff_t>(kept));
        std::rotate(points_.begin() + from, points_.begin() + from + 1, points_.end());
        crossings_[kept - 1] = at;
        points_.back() = points;
      }
    }
    crossings_.resize(points_.size());
  }

 private:
  // Of one crossing. On a composite each costs a walk over its pieces.
  struct Points {
    PointsOf::Known on_a;
    PointsOf::Known on_b;
  };

  // The number of a kept crossing that is the same point: one of the last, or, where the first
  // curve closes, of the first. The number of kept ones when there is none.
  std::size_t FindKnown(const Crossing& at, Points& points) {
    const std::size_t kept = points_.size();
    for (std::size_t i = kept; i > 0 && on_a_.reach() >= at.first - crossings_[i - 1].first; --i)
      if (Same(i - 1, at, points)) return i - 1;
    if (!on_a_.NearEnd(at.first)) return kept;
    for (std::size_t i = 0; i < kept && on_a_.NearStart(crossings_[i].first); ++i)
      if (Same(i, at, points)) return i;
    return kept;
  }

  bool Same(std::size_t i, const Crossing& y, Points& of_y) {
    const Crossing& x = crossings_[i];
    if (tol_ >= std::fabs(x.first - y.first) && tol_ >= std::fabs(x.second - y.second)) return true;
    return x.source != y.source && on_a_.Neighbours(x.first, y.first) &&
           on_b_.Neighbours(x.second, y.second) &&
           on_a_.SamePoint(x.first, points_[i].on_a, y.first, of_y.on_a) &&
           on_b_.SamePoint(x.second, points_[i].on_b, y.second, of_y.on_b);
  }

  const PointsOf on_a_;
  const PointsOf on_b_;
  const double tol_;
  Crossings& crossings_;
  std::vector<Points> points_;  // of those kept, which stand at the front
};

}  // namespace

void MergeCrossings(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings) {
  DropNotFinite(crossings);
  if (crossings.size() < 2) return;
  std::stable_sort(crossings.begin(), crossings.end(),
                   [](const Crossing& x, const Crossing& y) { return x.first < y.first; });
  Merger(a, b, g, crossings).Run();
}

}  // namespace kurvo
