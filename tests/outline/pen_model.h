// What a pen covers of a polyline, as convex pieces in long double.
#pragma once

#include <kurvo_outline.h>

#include <algorithm>
#include <vector>

#include "support/oracle.h"

namespace kurvo_test {

using Polygon = std::vector<LongPoint>;

inline LongPoint operator+(const LongPoint& a, const LongPoint& b) {
  return {a.x + b.x, a.y + b.y};
}

// What a polyline's stroke is the union of; a round join or cap is a disc of which the polygon
// holds the part that counts. Joins are round where the polyline stands for a smooth curve, and
// there the pen may reach to the centres of curvature only.
class PenModel {
 public:
  PenModel(const Polygon& p, bool closed, Wide left, Wide right, const KurvoOptions& options,
           const std::vector<bool>& smooth = {}, bool to_centres = false)
      : left_(left), right_(right), options_(options) {
    const std::size_t n = p.size(), count = closed ? n : n - 1;
    const auto at = [&](std::size_t i) { return p[i % n]; };
    const auto along = [&](std::size_t i) { return Unit(at(i % count + 1) - at(i % count)); };
    const auto is_smooth_at = [&](std::size_t i) { return !smooth.empty() && smooth[i % n]; };
    // At a vertex that is smooth, or beside it.
    const auto reach = [&](std::size_t i, std::size_t beside, Wide side, Wide sense) {
      if (!is_smooth_at(i)) i = beside;
      if (!to_centres || !is_smooth_at(i)) return side;
      const LongPoint before = at(i) - at(i + n - 1), after = at(i + 1) - at(i);
      const Wide turn = sense * std::atan2(Cross(before, after), Dot(before, after));
      const Wide length = (Gap(at(i), at(i + n - 1)) + Gap(at(i), at(i + 1))) / 2;
      return side * turn > length ? length / turn : side;
    };
    for (std::size_t i = 0; i < count; ++i) {
      const LongPoint normal = Right(along(i));
      Add({at(i) + reach(i, i + 1, right, -1) * normal,
           at(i + 1) + reach(i + 1, i, right, -1) * normal,
           at(i + 1) - reach(i + 1, i, left, 1) * normal,
           at(i) - reach(i, i + 1, left, 1) * normal});
      const bool is_smooth = is_smooth_at(i + 1);
      const int32_t join = is_smooth ? KURVO_JOIN_ROUND : options.join;
      if (closed || i + 1 < count) AddJoin(at(i + 1), along(i), along(i + 1), join);
      if (is_smooth && Dot(along(i), along(i + 1)) < 0)
        AddTip(at(i + 1), Unit(along(i) - along(i + 1)), left + right);
    }
    if (closed) return;
    AddCap(p.back(), along(count - 1), right);
    AddCap(p.front(), -1 * along(0), left);
  }

  // 1 inside, 0 outside, -1 too near an edge to tell.
  int Holds(const LongPoint& q, Wide tol) const {
    bool inside = false;
    for (const Piece& piece : pieces_) {
      Wide depth = piece.radius > 0 ? piece.radius - Gap(q, piece.centre) : 1e9L;
      const std::size_t n = piece.polygon.size();
      for (std::size_t i = 0; i < n; ++i) {
        const LongPoint a = piece.polygon[i], b = piece.polygon[(i + 1) % n];
        if (Gap(a, b) > 0) depth = std::min(depth, Cross(b - a, q - a) / Gap(a, b));
      }
      if (std::fabs(depth) <= tol) return -1;
      inside = inside || depth > 0;
    }
    return inside;
  }

 private:
  struct Piece {
    Polygon polygon;  // convex, counter-clockwise
    LongPoint centre;
    Wide radius;
  };
  static LongPoint Right(const LongPoint& v) { return {v.y, -v.x}; }

  void Add(Polygon polygon, LongPoint centre = {0, 0}, Wide radius = 0) {
    if (polygon.size() > 2 && Cross(polygon[1] - polygon[0], polygon[2] - polygon[1]) < 0)
      std::reverse(polygon.begin(), polygon.end());
    pieces_.push_back({polygon, centre, radius});
  }

  void AddJoin(const LongPoint& v, const LongPoint& t1, const LongPoint& t2, int32_t join) {
    const Wide cosine = Dot(t1, t2), d = Cross(t1, t2) > 0 ? right_ : -left_;
    const LongPoint a = v + d * Right(t1), b = v + d * Right(t2);
    if (d == 0) return;
    const LongPoint tip = v + d / (1 + cosine) * (Right(t1) + Right(t2));
    const Wide limit = options_.miter_limit;
    if (join == KURVO_JOIN_ROUND)
      Add({v, a, v + d * 2 / (1 + cosine) * (Right(t1) + Right(t2)), b}, v, std::fabs(d));
    else if (join == KURVO_JOIN_MITER && limit * limit * (1 + cosine) >= 2)
      Add({v, a, tip, b});
    else
      Add({v, a, b});
  }

  // The edges at a tip may cross: all that is before it.
  void AddTip(const LongPoint& v, const LongPoint& t, Wide radius) {
    const LongPoint side = radius * Right(t), top = radius * t;
    Add({v - side, v + side, v + side + top, v - side + top}, v, radius);
  }

  void AddCap(const LongPoint& v, const LongPoint& t, Wide to_right) {
    const Wide half = (left_ + right_) / 2;
    const LongPoint c = v + (to_right - half) * Right(t), n = half * Right(t);
    if (options_.cap == KURVO_CAP_BUTT) return;
    const bool disc = options_.cap == KURVO_CAP_ROUND;
    Add({c + n, c + n + half * t, c - n + half * t, c - n}, c, disc ? half : 0);
  }

  Wide left_, right_;
  const KurvoOptions& options_;
  std::vector<Piece> pieces_;
};

}  // namespace kurvo_test
