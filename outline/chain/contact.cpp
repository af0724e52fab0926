#include "chain/contact.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "strand/bracket.h"

namespace kurvo::outline {
namespace {

constexpr double kShort = 64;  // of the reach: shorter stretches are points in any case

class Pair {
 public:
  Pair(const Track& a, int32_t i, const Track& b, int32_t k, const Nearness& nearness)
      : a_track_(a),
        b_track_(b),
        i_(i),
        k_(k),
        nearness_(nearness),
        axis_(AxisBetween(PieceOf(a, i).sector, PieceOf(b, k).sector)),
        a_(PieceOf(a, i), axis_),
        b_(PieceOf(b, k), axis_) {}

  void Run(Work& work, Array<Contact>& contacts) {
    const double reach = kSteepest * nearness_.tol;
    const double low = std::max(a_.low(), b_.low()), high = std::min(a_.high(), b_.high());
    if (low > high) {
      if (low - high <= reach) EndToEnd(contacts);
      return;
    }
    Array<NearHeights> found;
    FindNear(a_, b_, reach, work, found);
    for (const NearHeights& near : found) {
      Contact contact = Over(near);
      Closest(near, contact);
      if (near.high - near.low > kShort * reach) Exact(near, work, contact);
      if (contact.distance <= nearness_.tol || contact.exact_length > 0)
        contacts.push_back(contact);
    }
  }

 private:
  static const Piece& PieceOf(const Track& track, int32_t i) {
    return track.pieces()[static_cast<std::size_t>(i)];
  }
  Position OnA(double height) const { return {i_, a_.ToPiece(a_.ParameterAt(height))}; }
  Position OnB(double height) const { return {k_, b_.ToPiece(b_.ParameterAt(height))}; }
  double Apart(double height) const {
    return a_.SideAt(a_.ParameterAt(height)) - b_.SideAt(b_.ParameterAt(height));
  }
  double SlopesApart(double height) const {
    return a_.SlopeAt(a_.ParameterAt(height)) - b_.SlopeAt(b_.ParameterAt(height));
  }

  Contact Over(const NearHeights& near) const {
    Contact contact;
    contact.a_from = OnA(near.low);
    contact.a_to = OnA(near.high);
    contact.b_from = OnB(near.low);
    contact.b_to = OnB(near.high);
    if (contact.a_to < contact.a_from) {
      std::swap(contact.a_from, contact.a_to);
      std::swap(contact.b_from, contact.b_to);
    }
    contact.a = contact.a_from;
    contact.b = contact.b_from;
    contact.distance = std::numeric_limits<double>::infinity();
    return contact;
  }

  // The upper end of one piece and the lower end of the other, beyond each other's heights.
  void EndToEnd(Array<Contact>& contacts) const {
    const bool a_is_below = a_.high() < b_.low();
    const Position a = {i_, a_.ToPiece(a_is_below ? 1 : 0)};
    const Position b = {k_, b_.ToPiece(a_is_below ? 0 : 1)};
    Contact contact;
    contact.a_from = contact.a_to = a;
    contact.b_from = contact.b_to = b;
    contact.distance = std::numeric_limits<double>::infinity();
    ConsiderEnd(a, b, contact);
    if (contact.distance <= nearness_.tol) contacts.push_back(contact);
  }

  // Keeps the pair of positions when it is closer than the one so far, or as close as rounding
  // tells and at a vertex.
  void Consider(Position a, Position b, Contact& contact) const {
    const double distance = Length(a_track_.PointAt(a) - b_track_.PointAt(b));
    const bool at_vertex = a_track_.IsVertex(a) || b_track_.IsVertex(b);
    const double at_most = std::max(contact.distance, at_vertex ? nearness_.exact : 0);
    if (!(distance < contact.distance) && !(at_vertex && distance <= at_most)) return;
    if (contact.at_vertex && !at_vertex && contact.distance <= nearness_.exact) return;
    contact.a = a;
    contact.b = b;
    contact.distance = distance;
    contact.at_vertex = at_vertex;
  }

  // Positions at one height, and those nearest to either of them, which need not be.
  void ConsiderEnd(Position a, Position b, Contact& contact) const {
    Consider(a, b, contact);
    if (contact.distance <= nearness_.exact) return;
    Consider(a, b_track_.FootNear(b, a_track_.PointAt(a)), contact);
    Consider(a_track_.FootNear(a, b_track_.PointAt(b)), b, contact);
  }

  // Newton's method on A(u) = B(v) from where it is asked: two curves that cross at an angle.
  // Result: whether it settles between the heights.
  bool Crossing(const NearHeights& near, Position& on_a, Position& on_b) const {
    constexpr int kMost = 8;
    constexpr double kSettled = 0x1p-50;
    const Span& a = PieceOf(a_track_, i_).span;
    const Span& b = PieceOf(b_track_, k_).span;
    double u = on_a.u, v = on_b.u;
    for (int step = 0; step < kMost; ++step) {
      const Vec2 gap = PointAt(b, v) - PointAt(a, u);
      const Vec2 along_a = VelocityAt(a, u), along_b = VelocityAt(b, v);
      const double by = Cross(along_a, along_b);
      const double du = Cross(gap, along_b) / by, dv = Cross(gap, along_a) / by;
      u += du;
      v += dv;
      if (!(u >= 0 && u <= 1 && v >= 0 && v <= 1)) return false;
      if (!(kSettled >= std::fabs(du) && kSettled >= std::fabs(dv))) continue;
      const double height = Dot(PointAt(a, u), axis_.up);
      if (!(height >= near.low && height <= near.high)) return false;
      on_a.u = u;
      on_b.u = v;
      return true;
    }
    return false;
  }

  // Where the sides are the same, or the slopes are; else an end.
  void Closest(const NearHeights& near, Contact& contact) const {
    const double at_low = Apart(near.low), at_high = Apart(near.high);
    const auto consider = [&](double height) { Consider(OnA(height), OnB(height), contact); };
    if ((at_low < 0) != (at_high < 0) && at_low != 0 && at_high != 0) {
      const double middle = 0.5 * (near.low + near.high);
      Position a = OnA(middle), b = OnB(middle);
      if (Crossing(near, a, b)) {
        Consider(a, b, contact);
      } else {
        consider(SignChangeBetween([this](double h) { return Apart(h); }, near.low, near.high,
                                   at_low, at_high));
      }
    } else if (near.high > near.low) {
      const double slope_low = SlopesApart(near.low), slope_high = SlopesApart(near.high);
      if ((slope_low < 0) != (slope_high < 0))
        consider(SignChangeBetween([this](double h) { return SlopesApart(h); }, near.low, near.high,
                                   slope_low, slope_high));
    }
    const Position ends[][2] = {{contact.a_from, contact.b_from}, {contact.a_to, contact.b_to}};
    for (const auto& end : ends) ConsiderEnd(end[0], end[1], contact);
  }

  void Exact(const NearHeights& near, Work& work, Contact& contact) const {
    Array<NearHeights> found;
    FindNear(a_, b_, near.low, near.high, kSteepest * nearness_.exact, work, found);
    std::erase_if(found, [this](const NearHeights& part) {
      return !(part.high - part.low > kShort * nearness_.exact);
    });
    if (found.empty()) return;
    double length = 0;
    for (const NearHeights& part : found) length += part.high - part.low;
    const Contact within = Over({found.front().low, found.back().high});
    contact.exact_length = length;
    contact.exact_a_from = within.a_from;
    contact.exact_a_to = within.a_to;
    contact.exact_b_from = within.b_from;
    contact.exact_b_to = within.b_to;
  }

  const Track& a_track_;
  const Track& b_track_;
  const int32_t i_, k_;
  const Nearness nearness_;
  const Axis axis_;
  const Graph a_, b_;
};

}  // namespace

void AddContacts(const Track& a, int32_t i, const Track& b, int32_t k, const Nearness& nearness,
                 Work& work, Array<Contact>& contacts) {
  Pair(a, i, b, k, nearness).Run(work, contacts);
}

}  // namespace kurvo::outline
