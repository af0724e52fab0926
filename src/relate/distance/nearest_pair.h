// The nearest pair of points found so far, and which pairs can still matter.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

namespace kurvo {

// A point of each curve by its parameter, and their distance.
struct NearPair {
  double ta;
  double tb;
  double dist;
};

class NearestPair {
 public:
  // `length_tol`: closer points are the same, distance 0. `size`: of the largest coordinate.
  // `domain_a`, `domain_b`: the lengths of the parameter ranges.
  NearestPair(double length_tol, double size, double domain_a, double domain_b)
      : length_tol_(length_tol),
        rounding_(kDistanceRounding * size),
        tie_(kTieRounding * size),
        slack_(std::max(0.5 * length_tol, kBoundRounding * size)),
        domain_a_(std::fabs(domain_a)),
        domain_b_(std::fabs(domain_b)) {}

  // Keeps the nearest pair; of ties the one with the smallest ta, then tb. A NaN never wins.
  void Consider(const NearPair& pair) {
    if (!(Reach() >= pair.dist) || !(kInfinity > pair.dist)) return;
    const bool better = !found() || !(Rank(best_) <= Rank(pair) + tie_) || Precedes(pair);
    least_ = std::min(least_, Rank(pair));
    if (better) best_ = pair;
  }

  // Whether a search among pairs that are no nearer than `bound`, with parameters of the first
  // curve from `ta` on, can give another result.
  bool CanImprove(double bound) const { return !(bound >= least_ - slack_) || !found(); }
  bool CanTie(double bound, double ta) const {
    return !(bound > Reach()) && best_.ta - kSameParameter * domain_a_ > ta;  // not for NaN
  }

  bool found() const { return best_.dist < kInfinity; }
  const NearPair& best() const { return best_; }
  double distance() const { return Rank(best_); }
  // Distances below it are rounding.
  double rounding() const { return rounding_; }

 private:
  static constexpr double kInfinity = std::numeric_limits<double>::infinity();
  static constexpr double kDistanceRounding = 1e-16;  // of the size
  static constexpr double kTieRounding = 1e-13;       // of the size: distances that are the same
  static constexpr double kBoundRounding = 1e-14;     // of the size: what bounds are good for
  static constexpr double kSameParameter = 1e-9;      // of the domain
  static constexpr double kOneContact = 1e-3;         // of the domain: how far one contact extends

  // Distances by which pairs are compared: those of touching curves are all the same.
  double Rank(const NearPair& pair) const { return length_tol_ >= pair.dist ? 0.0 : pair.dist; }
  // What still ties.
  double Reach() const { return std::max(least_ + tie_, length_tol_); }

  // Of two pairs that tie.
  bool Precedes(const NearPair& pair) const {
    const double da = pair.ta - best_.ta, db = pair.tb - best_.tb;
    const bool one_contact =
        kOneContact * domain_a_ >= std::fabs(da) && kOneContact * domain_b_ >= std::fabs(db);
    // Along a contact the curves stay within the tolerance: the point counts where they are
    // closest.
    if (one_contact && std::fabs(pair.dist - best_.dist) > tie_) return pair.dist < best_.dist;
    if (std::fabs(da) > kSameParameter * domain_a_) return da < 0.0;
    if (std::fabs(db) > kSameParameter * domain_b_) return db < 0.0;
    return pair.dist < best_.dist;
  }

  const double length_tol_;
  const double rounding_;
  const double tie_;
  const double slack_;
  const double domain_a_;
  const double domain_b_;
  double least_ = kInfinity;
  NearPair best_{kInfinity, kInfinity, kInfinity};
};

}  // namespace kurvo
