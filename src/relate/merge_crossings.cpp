// Each crossing once.
#include "relate/merge_crossings.h"

#include <algorithm>
#include <cmath>

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

  bool SamePoint(double s, double t) const {
    if (g_.epsilon >= std::fabs(s - t)) return true;
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

class Merger {
 public:
  Merger(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings)
      : on_a_(a, g), on_b_(b, g), tol_(g.epsilon), crossings_(crossings) {}

  // Requires ascending order.
  void Run() {
    for (const Crossing at : crossings_) {
      const std::size_t known = FindKnown(at);
      if (known == kept_) {
        crossings_[kept_++] = at;
      } else if (crossings_[known].touch && !at.touch) {
        const auto first = crossings_.begin() + static_cast<std::ptrdiff_t>(known);
        std::rotate(first, first + 1, crossings_.begin() + static_cast<std::ptrdiff_t>(kept_));
        crossings_[kept_ - 1] = at;
      }
    }
    crossings_.resize(kept_);
  }

 private:
  // The number of a kept crossing that is the same point: one of the last, or, where the first
  // curve closes, of the first. `kept_` when there is none.
  std::size_t FindKnown(const Crossing& at) const {
    for (std::size_t i = kept_; i > 0 && on_a_.reach() >= at.first - crossings_[i - 1].first; --i)
      if (Same(crossings_[i - 1], at)) return i - 1;
    if (!on_a_.NearEnd(at.first)) return kept_;
    for (std::size_t i = 0; i < kept_ && on_a_.NearStart(crossings_[i].first); ++i)
      if (Same(crossings_[i], at)) return i;
    return kept_;
  }

  bool Same(const Crossing& x, const Crossing& y) const {
    if (tol_ >= std::fabs(x.first - y.first) && tol_ >= std::fabs(x.second - y.second)) return true;
    return x.source != y.source && on_a_.Neighbours(x.first, y.first) &&
           on_b_.Neighbours(x.second, y.second) && on_a_.SamePoint(x.first, y.first) &&
           on_b_.SamePoint(x.second, y.second);
  }

  const PointsOf on_a_;
  const PointsOf on_b_;
  const double tol_;
  Crossings& crossings_;
  std::size_t kept_ = 0;
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
