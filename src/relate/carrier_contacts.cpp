// Where one Bezier piece meets a carrier.
#include "relate/carrier_contacts.h"

#include "eval/bernstein.h"
#include "eval/turning_points.h"

namespace kurvo {
namespace {

constexpr int kPolishSteps = 3;

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
  bool crosses;
};

template <class Carrier>
class ContactSearch {
 public:
  ContactSearch(const Carrier& carrier, const BezierPiece& piece, double tol)
      : carrier_(carrier), piece_(piece), tol_(tol), f_(carrier.Substitute(ToSegment(piece))) {}

  CarrierContacts Run() {
    const RootList turning = TurningPoints(f_);
    contacts_.along = AlongCarrier(turning);
    const Polynomial derivative = Derivative(f_);
    Place left = PlaceAt(0.0);
    Visit(left);
    for (std::size_t i = 0; i <= turning.size(); ++i) {
      const Place right = PlaceAt(i < turning.size() ? turning[i] : 1.0);
      if ((left.dist < 0.0 && right.dist > 0.0) || (left.dist > 0.0 && right.dist < 0.0)) {
        const double root = BracketedRoot(f_, derivative, left.t, right.t);
        Place crossing = PlaceAt(Polished(root, left.t, right.t));
        crossing.crosses = true;
        Visit(crossing);
      }
      Visit(right);
      left = right;
    }
    CloseGroup(true);
    return contacts_;
  }

 private:
  Place PlaceAt(double t) const { return {t, carrier_.Distance(PointAt(piece_, t)), false}; }

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

  // Newton's method on the distance itself, which the power basis knows less exactly.
  double Polished(double t, double low, double high) const {
    for (int step = 0; step < kPolishSteps; ++step) {
      const Jet jet = JetAt(piece_, t);
      const double next = t - carrier_.Distance(jet.p) / carrier_.DistanceSlope(jet);
      if (!(next >= low && high >= next)) break;
      t = next;
    }
    return t;
  }

  // Places come in ascending order. Those within the tolerance that follow each other without
  // leaving it form one group; between two of them the distance is monotone.
  void Visit(const Place& place) {
    if (!(tol_ >= std::fabs(place.dist))) return CloseGroup(false);
    if (!open_) {
      open_ = true;
      from_start_ = place.t == 0.0;
      crossings_ = 0;
      best_ = place;
    }
    if (place.crosses) {
      if (crossings_ < places_.size()) places_[crossings_++] = place.t;
    } else if (std::fabs(place.dist) < std::fabs(best_.dist)) {
      best_ = place;
    }
  }

  void CloseGroup(bool at_end) {
    if (!open_) return;
    open_ = false;
    for (std::size_t i = 0; i < crossings_; ++i) {
      contacts_.Add({places_[i], 0.0, true, from_start_ && i == 0, at_end && i + 1 == crossings_});
    }
    if (crossings_ == 0)
      contacts_.Add({best_.t, std::fabs(best_.dist), false, from_start_, at_end});
  }

  const Carrier& carrier_;
  const BezierPiece& piece_;
  const double tol_;
  const Polynomial f_;
  CarrierContacts contacts_;

  bool open_ = false;
  bool from_start_ = false;
  Place best_{};
  std::size_t crossings_ = 0;
  std::array<double, Polynomial::kCapacity> places_;
};

}  // namespace

template <class Carrier>
CarrierContacts FindContacts(const Carrier& carrier, const BezierPiece& piece, double tol) {
  if (carrier.Misses(piece, tol)) return {};
  return ContactSearch<Carrier>(carrier, piece, tol).Run();
}

template CarrierContacts FindContacts(const LineCarrier&, const BezierPiece&, double);
template CarrierContacts FindContacts(const CircleCarrier&, const BezierPiece&, double);

}  // namespace kurvo
