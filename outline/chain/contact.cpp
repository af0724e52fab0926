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
      const Level bottom = LevelAt(near.low), top = LevelAt(near.high);
      Contact contact = Over(bottom, top);
      Closest(bottom, top, contact);
      if (near.high - near.low > kShort * reach) Exact(near, work, contact);
      if (contact.distance <= nearness_.tol || contact.exact_length > 0)
        contacts.push_back(contact);
    }
  }

 private:
  static const Piece& PieceOf(const Track& track, int32_t i) {
    return track.pieces()[static_cast<std::size_t>(i)];
  }

  // A height, and the parameters of the graphs there.
  struct Level {
    double height, a, b;
  };
  Level LevelAt(double height) const {
    return {height, a_.ParameterAt(height), b_.ParameterAt(height)};
  }
  Position OnA(const Level& level) const { return {i_, a_.ToPiece(level.a)}; }
  Position OnB(const Level& level) const { return {k_, b_.ToPiece(level.b)}; }
  double Apart(const Level& level) const { return a_.SideAt(level.a) - b_.SideAt(level.b); }
  double SlopesApart(const Level& level) const { return a_.SlopeAt(level.a) - b_.SlopeAt(level.b); }

  Contact Over(const Level& low, const Level& high) const {
    Contact contact;
    contact.a_from = OnA(low);
    contact.a_to = OnA(high);
    contact.b_from = OnB(low);
    contact.b_to = OnB(high);
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
  bool Crossing(double low, double high, Position& on_a, Position& on_b) const {
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
      if (!(height >= low && height <= high)) return false;
      on_a.u = u;
      on_b.u = v;
      return true;
    }
    return false;
  }

  // Where the sides are the same, or the slopes are; else an end.
  void Closest(const Level& low, const Level& high, Contact& contact) const {
    const double at_low = Apart(low), at_high = Apart(high);
    const auto consider = [&](double height) {
      const Level level = LevelAt(height);
      Consider(OnA(level), OnB(level), contact);
    };
    if ((at_low < 0) != (at_high < 0) && at_low != 0 && at_high != 0) {
      const Level middle = LevelAt(0.5 * (low.height + high.height));
      Position a = OnA(middle), b = OnB(middle);
      if (Crossing(low.height, high.height, a, b)) {
        Consider(a, b, contact);
      } else {
        consider(SignChangeBetween([this](double h) { return Apart(LevelAt(h)); }, low.height,
                                   high.height, at_low, at_high));
      }
    } else if (high.height > low.height) {
      const double slope_low = SlopesApart(low), slope_high = SlopesApart(high);
      if ((slope_low < 0) != (slope_high < 0))
        consider(SignChangeBetween([this](double h) { return SlopesApart(LevelAt(h)); }, low.height,
                                   high.height, slope_low, slope_high));
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
    const Contact within = Over(LevelAt(found.front().low), LevelAt(found.back().high));
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
