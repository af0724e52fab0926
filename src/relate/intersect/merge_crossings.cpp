// Each crossing once.
#include "relate/intersect/merge_crossings.h"

#include <algorithm>
#include <cmath>

#include "foundation/point.h"
#include "query/position.h"
#include "records/domain.h"
#include "relate/intersect/one_point.h"

namespace kurvo {
namespace {

constexpr int kMaxLooks = 4;  // at curves between one crossing and others at the same place
// Of the domain: parameters further apart are different points.
constexpr double kNeighbours = 0.1;
constexpr double kNearby = 4.0;  // epsilons between the places of one crossing, at most

// Whether parameters of one curve stand for one point of it.
class PointsOf {
 public:
  PointsOf(const Curve& curve, GlobalVar& g)
      : curve_(curve), g_(g), domain_(DomainOf(curve)), reach_(kNeighbours * domain_.width()) {}

  bool MayBeSame(double s, double t) const {
    return std::max(reach_, g_.epsilon) >= std::fabs(s - t) || AcrossJoint(s, t);
  }

  bool SamePoint(double s, double t) const {
    if (g_.epsilon >= std::fabs(s - t)) return true;
    const Vec2 p = PointAt(s), q = PointAt(t);
    if (!Within(OnPlane(p - q), g_.epsilon)) return false;
    const auto stays = [&](double from, double to) {
      return StaysAtPoint([&](double at) { return PointAt(at); }, from, to, p, q, g_.epsilon);
    };
    return stays(s, t) || (AcrossJoint(s, t) && stays(domain_.start, std::min(s, t)) &&
                           stays(std::max(s, t), domain_.end));
  }

  // Next to both ends, which are one point where the curve closes.
  bool AcrossJoint(double s, double t) const {
    return domain_.start + reach_ >= std::min(s, t) && std::max(s, t) >= domain_.end - reach_;
  }

 private:
  Vec2 PointAt(double t) const { return Planar(PointOfCurve(curve_, t, 0, g_)); }

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
      } else if (IsBetter(at, crossings_[known])) {
        Crossing* first = crossings_.begin() + known;
        std::rotate(first, first + 1, crossings_.begin() + kept_);
        crossings_[kept_ - 1] = at;
      }
    }
    crossings_.shrink(kept_);
  }

 private:
  // Crossings come before touches. At the closing joint of the second curve its start comes first,
  // as that of the first curve does by the order.
  bool IsBetter(const Crossing& at, const Crossing& known) const {
    if (at.touch != known.touch) return known.touch;
    return at.second < known.second && on_b_.AcrossJoint(at.second, known.second);
  }

  // The number of a kept crossing that is the same point: one of the last, or, where the first
  // curve closes, of the first. The number of kept ones when there is none. The first curve stays
  // at a point between two crossings there, so that others between them are there too.
  std::size_t FindKnown(const Crossing& at) const {
    int looks = 0;
    for (std::size_t i = kept_; i > 0 && MayBeSame(crossings_[i - 1], at); --i)
      if (Same(crossings_[i - 1], at, looks)) return i - 1;
    for (std::size_t i = 0; i < kept_ && MayBeSame(crossings_[i], at); ++i)
      if (Same(crossings_[i], at, looks)) return i;
    return kept_;
  }

  bool MayBeSame(const Crossing& x, const Crossing& y) const {
    return tol_ >= std::fabs(x.first - y.first) ||
           Within(OnPlane(x.place - y.place), kNearby * tol_);
  }

  bool Same(const Crossing& x, const Crossing& y, int& looks) const {
    if (SameParameters(x, y, tol_)) return true;
    if (!on_a_.MayBeSame(x.first, y.first) || !on_b_.MayBeSame(x.second, y.second) ||
        !Within(OnPlane(x.place - y.place), kNearby * tol_) || ++looks > kMaxLooks)
      return false;
    return on_a_.SamePoint(x.first, y.first) && on_b_.SamePoint(x.second, y.second);
  }

  const PointsOf on_a_;
  const PointsOf on_b_;
  const double tol_;
  Crossings& crossings_;
  std::size_t kept_ = 0;  // which stand at the front
};

}  // namespace

void MergeCrossings(const Curve& a, const Curve& b, GlobalVar& g, Crossings& crossings) {
  DropNotFinite(crossings);
  if (crossings.size() < 2) return;
  SortByFirst(crossings);
  Merger(a, b, g, crossings).Run();
}

}  // namespace kurvo
