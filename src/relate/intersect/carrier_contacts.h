// Where one Bezier piece meets a carrier.
#pragma once

#include <array>

#include "relate/intersect/carriers.h"

namespace kurvo {

// A parameter in [0, 1] of the piece at which it lies on the carrier.
struct CarrierContact {
  double t;
  double dist;      // from the carrier, not negative
  bool crosses;     // at more than a shallow angle; else it touches or ends within the tolerance
  bool from_start;  // everything from the start of the piece up to t is within the tolerance
  bool to_end;      // everything from t to the end of the piece is
  double low;       // the approach that it is part of lies between these parameters
  double high;
};

class CarrierContacts {
 public:
  void Add(const CarrierContact& contact) {
    if (count_ < contacts_.size()) contacts_[count_++] = contact;
  }
  const CarrierContact* begin() const { return contacts_.data(); }
  const CarrierContact* end() const { return contacts_.data() + count_; }

  bool along = false;  // the whole piece is within the tolerance, and goes somewhere

 private:
  std::size_t count_ = 0;
  std::array<CarrierContact, 2 * Polynomial::kCapacity> contacts_;
};

// Ascending. A crossing counts by itself; where the piece only comes within `tol`, at a turning
// point of the distance or at an end, the nearest place of that approach counts, and none next to a
// crossing, but for an end of the piece that lies on the carrier itself. Requires degree <=
// Carrier::kMaxDegree and finite points.
template <class Carrier>
CarrierContacts FindContacts(const Carrier& carrier, const BezierPiece& piece, double tol);

}  // namespace kurvo
