// Where one Bezier piece meets a carrier.
//
// The carrier's equation with the piece put in is a polynomial f of the parameter, of the same sign
// as the signed distance d. Between two neighbouring turning points of f both are monotone, so that
// a change of sign is one crossing, found from f and polished on d itself, and where d keeps its
// sign the nearest place is a turning point or an end. Visited in ascending order, ends, crossings
// and turning points within the tolerance that follow each other are one approach.
#include "relate/intersect/carrier_contacts.h"

#include <algorithm>
#include <type_traits>

#include "control/blossom.h"
#include "eval/bracketed_newton.h"
#include "eval/turning_points.h"
#include "foundation/with_constant.h"
#include "relate/intersect/crossing.h"

namespace kurvo {
namespace {

Segment ToSegment(const BezierPiece& piece) {
  const auto degree = static_cast<std::size_t>(piece.degree);
  const WeightedPoint* points = piece.points;
  Segment segment;
  segment.rational = piece.rational;
  if (piece.rational) {
    const auto load = [points](int32_t i, std::array<double, 3>& p) {
      p = {points[i].w * points[i].x, points[i].w * points[i].y, points[i].w};
    };
    SetPowerBasis<3>(degree, load, {&segment.x, &segment.y, &segment.w});
  } else {
    const auto load = [points](int32_t i, std::array<double, 2>& p) {
      p = {points[i].x, points[i].y};
    };
    SetPowerBasis<2>(degree, load, {&segment.x, &segment.y});
  }
  return segment;
}

// One place where the piece may be on the carrier: an end, a turning point, or a root in between.
struct Place {
  double t;
  double dist;  // signed
};

// The signed distance of the points of a piece, in the way that suits the piece: At(t), where it
// turns, and its root between two places of opposite signs.

template <class Carrier>
class AnyDistance {
 public:
  AnyDistance(const Carrier& carrier, const BezierPiece& piece)
      : carrier_(carrier),
        piece_(piece),
        f_(carrier.Substitute(ToSegment(piece))),
        derivative_(Derivative(f_)) {}

  double At(double t) const { return carrier_.Distance(PointAt(piece_, t)); }
  RootList Turning() const { return SignChanges(derivative_); }
  // The guess is the root of the polynomial, which rounding of the power basis has moved a little.
  double RootBetween(const Place& left, const Place& right) const {
    const double guess = BracketedRoot(f_, derivative_, left.t, right.t);
    return BracketedNewton(left.t, right.t, guess, left.dist < 0.0, [&](double t) {
      const Jet jet = JetAt(piece_, t);
      return ValueAndSlope{carrier_.Distance(jet.p), carrier_.DistanceSlope(jet)};
    });
  }

 private:
  const Carrier& carrier_;
  const BezierPiece& piece_;
  const Polynomial f_;
  const Polynomial derivative_;
};

// Of a plain piece from a line: a Bezier function whose control values are the distances of the
// control points.
template <std::size_t kDegree>
class LineDistance {
 public:
  LineDistance(const LineCarrier& line, const BezierPiece& piece) {
    for (std::size_t i = 0; i <= kDegree; ++i) d_[i] = line.Distance(Planar(piece.points[i]));
  }

  double At(double t) const { return ValueAt(t).value; }
  RootList Turning() const {
    // The powers of the derivative, but for a factor: its control values are the differences.
    if constexpr (kDegree == 2) {
      Polynomial slope(2);
      slope[0] = d_[1] - d_[0];
      slope[1] = d_[2] - d_[1] - slope[0];
      return SignChanges(slope);
    } else {
      const double first = d_[1] - d_[0], second = d_[2] - d_[1], third = d_[3] - d_[2];
      Polynomial slope(3);
      slope[0] = first;
      slope[1] = 2.0 * (second - first);
      slope[2] = (third - second) - (second - first);
      return SignChanges(slope);
    }
  }
  double RootBetween(const Place& left, const Place& right) const {
    const double secant =
        left.t + (right.t - left.t) * std::fabs(left.dist / (right.dist - left.dist));
    return BracketedNewton(left.t, right.t, secant, left.dist < 0.0,
                           [&](double t) { return ValueAt(t); });
  }

 private:
  ValueAndSlope ValueAt(double t) const {  // de Casteljau's algorithm
    double w[kDegree + 1];
    std::copy_n(d_, kDegree + 1, w);
    for (std::size_t level = kDegree; level > 1; --level)
      for (std::size_t i = 0; i < level; ++i) MixInto(w[i], w[i + 1], t, w[i]);
    return {Mix(w[0], w[1], t), static_cast<double>(kDegree) * (w[1] - w[0])};
  }

  double d_[kDegree + 1];
};

template <class Carrier, class Distance>
class ContactSearch {
 public:
  ContactSearch(const Carrier& carrier, const BezierPiece& piece, double tol,
                CarrierContacts& contacts)
      : carrier_(carrier),
        piece_(piece),
        tol_(tol),
        distance_(carrier, piece),
        contacts_(contacts) {}

  void Run() {
    const RootList turning = distance_.Turning();
    contacts_.along = AlongCarrier(turning);
    Place left = PlaceAt(0.0);
    Visit(left);
    for (std::size_t i = 0; i <= turning.size(); ++i) {
      const Place right = PlaceAt(i < turning.size() ? turning[i] : 1.0);
      if ((left.dist < 0.0 && right.dist > 0.0) || (left.dist > 0.0 && right.dist < 0.0))
        VisitCrossing(distance_.RootBetween(left, right));
      Visit(right);
      left = right;
    }
    CloseGroup(true, 1.0);
  }

 private:
  Place PlaceAt(double t) const { return {t, distance_.At(t)}; }

  // Every turning point of the distance, and both ends, within the tolerance, and some length
  // between.
  bool AlongCarrier(const RootList& turning) const {
    if (!(tol_ >= std::fabs(PlaceAt(0.0).dist)) || !(tol_ >= std::fabs(PlaceAt(1.0).dist)))
      return false;
    for (const double t : turning)
      if (!(tol_ >= std::fabs(PlaceAt(t).dist))) return false;
    const Vec2 start = Planar(piece_.points[0]);
    for (int32_t i = 1; i <= piece_.degree; ++i)
      if (Length(Planar(piece_.points[i]) - start) > tol_) return true;
    return false;
  }

  // Places come in ascending order. Those within the tolerance that follow each other without
  // leaving it form one group; between two of them the distance is monotone.
  void Visit(const Place& place) {
    if (!(tol_ >= std::fabs(place.dist))) {
      CloseGroup(false, place.t);
      before_ = place.t;
      return;
    }
    if (!group_.open) group_ = {true, place.t == 0.0, before_, place};
    if (std::fabs(place.dist) < std::fabs(group_.nearest.dist)) group_.nearest = place;
  }

  void VisitCrossing(double t) {
    const Jet jet = JetAt(piece_, t);
    Visit({t, carrier_.Distance(jet.p)});
    if (!group_.open) return;
    if (Shallow(jet)) {
      if (group_.shallow++ == 0) group_.first_shallow = t;
      group_.last_shallow = t;
    } else if (group_.steep < steep_.size()) {
      steep_[group_.steep++] = t;
    }
  }

  bool Shallow(const Jet& jet) const {
    return kShallowCrossing * Length(jet.d1) >= std::fabs(carrier_.DistanceSlope(jet));
  }

  // The crossings of the group; shallow ones, which may be one contact and its rounding, count as
  // their middle, and only by themselves.
  void CloseGroup(bool at_end, double high) {
    if (!group_.open) return;
    group_.open = false;
    const auto add = [&](double t, double dist, bool crosses, bool first, bool last) {
      contacts_.Add(
          {t, dist, crosses, group_.from_start && first, at_end && last, group_.low, high});
    };
    if (group_.steep > 0) {
      const bool start = group_.from_start && EndCrosses(0.0, steep_[0]);
      const bool end = at_end && EndCrosses(1.0, steep_[group_.steep - 1]);
      if (start) add(0.0, 0.0, true, true, false);
      for (std::size_t i = 0; i < group_.steep; ++i)
        add(steep_[i], 0.0, true, !start && i == 0, !end && i + 1 == group_.steep);
      if (end) add(1.0, 0.0, true, false, true);
      return;
    }
    if (group_.shallow > 0)
      group_.nearest = PlaceAt(0.5 * (group_.first_shallow + group_.last_shallow));
    add(group_.nearest.t, std::fabs(group_.nearest.dist), false, true, true);
  }

  // Whether an end of the piece is a crossing of its own beside the nearest one of its group.
  bool EndCrosses(double end, double crossing) const {
    const Jet jet = JetAt(piece_, end);
    const double reach = std::max(std::fabs(jet.p.x), std::fabs(jet.p.y)) + carrier_.Reach();
    return kCoordinateRounding * reach >= std::fabs(carrier_.Distance(jet.p)) && !Shallow(jet) &&
           Length(PointAt(piece_, crossing) - jet.p) > tol_;
  }

  const Carrier& carrier_;
  const BezierPiece& piece_;
  const double tol_;
  const Distance distance_;
  CarrierContacts& contacts_;
  double before_ = 0.0;  // the last place that is not within the tolerance

  struct Group {
    bool open = false;
    bool from_start = false;
    double low = 0.0;
    Place nearest{};
    std::size_t steep = 0;
    std::size_t shallow = 0;
    double first_shallow = 0.0;
    double last_shallow = 0.0;
  };
  Group group_;
  std::array<double, Polynomial::kCapacity> steep_;
};

}  // namespace

template <class Carrier>
CarrierContacts FindContacts(const Carrier& carrier, const BezierPiece& piece, double tol) {
  CarrierContacts contacts;
  if (carrier.Misses(piece, tol)) return contacts;
  if constexpr (std::is_same_v<Carrier, LineCarrier>) {
    if (!piece.rational && (piece.degree == 2 || piece.degree == 3)) {
      WithConstant<2, 3>(static_cast<std::size_t>(piece.degree), [&]<class Degree>(Degree) {
        if constexpr (!std::is_same_v<Degree, std::size_t>)
          ContactSearch<LineCarrier, LineDistance<Degree::value>>(carrier, piece, tol, contacts)
              .Run();
      });
      return contacts;
    }
  }
  ContactSearch<Carrier, AnyDistance<Carrier>>(carrier, piece, tol, contacts).Run();
  return contacts;
}

template CarrierContacts FindContacts(const LineCarrier&, const BezierPiece&, double);
template CarrierContacts FindContacts(const CircleCarrier&, const BezierPiece&, double);

}  // namespace kurvo
