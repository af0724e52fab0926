// Where one Bezier piece meets a carrier: the unbounded line of a segment, or the whole circle of
// an arc, as a polynomial of the piece's parameter that is 0 on the carrier, and a signed distance.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "eval/segment.h"
#include "foundation/point.h"
#include "kurvo.h"
#include "relate/bezier_piece.h"

namespace kurvo {

class LineCarrier {
 public:
  explicit LineCarrier(const KurvoLine& line) : origin_(Planar(line.start)) {
    const Vec2 along = Planar(line.end) - origin_;
    const double length = Length(along);
    normal_ = {-along.y / length, along.x / length};
  }

  static constexpr int32_t kMaxDegree = 39;

  double Distance(Vec2 p) const { return Dot(normal_, p - origin_); }
  double DistanceSlope(const Jet& jet) const { return Dot(normal_, jet.d1); }
  // The largest coordinate that distances are made of.
  double Reach() const { return std::max(std::fabs(origin_.x), std::fabs(origin_.y)); }

  // True when control points with these smallest and largest distances cannot reach the line.
  bool Misses(const BezierPiece& piece, double tol) const {
    double low = Distance(Planar(piece.points[0])), high = low;
    for (int32_t i = 1; i <= piece.degree; ++i) {
      const double dist = Distance(Planar(piece.points[i]));
      low = std::min(low, dist);
      high = std::max(high, dist);
    }
    return low > tol || -tol > high;
  }

  // N . (C - O) W of degree n.
  Polynomial Substitute(const Segment& s) const {
    const double offset = -Dot(normal_, origin_);
    Polynomial f = SumScaled(Polynomial(), normal_.x, s.x);
    f = SumScaled(f, normal_.y, s.y);
    return s.rational ? SumScaled(f, offset, s.w) : MinusConstant(f, -offset);
  }

 private:
  Vec2 origin_;
  Vec2 normal_;
};

class CircleCarrier {
 public:
  explicit CircleCarrier(const KurvoArc& arc) : centre_(Planar(arc.centre)), radius_(arc.radius) {}

  static constexpr int32_t kMaxDegree = 19;

  double Distance(Vec2 p) const { return Length(p - centre_) - radius_; }
  double DistanceSlope(const Jet& jet) const {
    const Vec2 out = jet.p - centre_;
    return Dot(out, jet.d1) / Length(out);
  }
  double Reach() const { return std::max(std::fabs(centre_.x), std::fabs(centre_.y)) + radius_; }

  // True when all control points lie inside the circle, or their box outside.
  bool Misses(const BezierPiece& piece, double tol) const {
    Vec2 low = Planar(piece.points[0]), high = low;
    double farthest = 0.0;
    for (int32_t i = 0; i <= piece.degree; ++i) {
      const Vec2 p = Planar(piece.points[i]);
      low = {std::min(low.x, p.x), std::min(low.y, p.y)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y)};
      farthest = std::max(farthest, Length(p - centre_));
    }
    const Vec2 nearest = {std::clamp(centre_.x, low.x, high.x),
                          std::clamp(centre_.y, low.y, high.y)};
    return radius_ - tol > farthest || Length(nearest - centre_) > radius_ + tol;
  }

  // (X - cx W)^2 + (Y - cy W)^2 - r^2 W^2 of degree 2 n.
  Polynomial Substitute(const Segment& s) const {
    const double power = radius_ * radius_;
    if (!s.rational) {
      const Polynomial x = MinusConstant(s.x, centre_.x), y = MinusConstant(s.y, centre_.y);
      return MinusConstant(SumScaled(Product(x, x), 1.0, Product(y, y)), power);
    }
    const Polynomial x = SumScaled(s.x, -centre_.x, s.w), y = SumScaled(s.y, -centre_.y, s.w);
    return SumScaled(SumScaled(Product(x, x), 1.0, Product(y, y)), -power, Product(s.w, s.w));
  }

 private:
  Vec2 centre_;
  double radius_;
};

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
