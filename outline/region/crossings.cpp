#include "region/crossings.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "chain/foot.h"
#include "strand/bernstein.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

// Parts of a span halved so often are points; those that q is not on are passed long before.
constexpr int kMostHalvings = 52;
constexpr int kMostParts = 1 << 16;  // of a span, which has collapsed onto q when it has more
constexpr double kSmall = 8;         // bands: parts so near to q and so small are measured exactly

bool IsOn(const Span& span, Vec2 q, double band) {
  Feet feet;
  feet.Assume(band * band);
  SearchSpan(span, 0, q, feet);
  return !feet.IsEmpty() && band >= feet.First().distance;
}

int Rise(bool start_above, bool end_above) { return int{end_above} - int{start_above}; }

// To the right of q where it rises, if q is to its left.
int CrossingsOfLine(const Span& line, Vec2 q, bool start_above, bool end_above) {
  const int rise = Rise(start_above, end_above);
  const double side = Cross(line.points[1] - line.points[0], q - line.points[0]);
  return rise * side > 0 ? rise : 0;
}

// In pieces that rise or fall: from the start over the highest and lowest points to the end.
int CrossingsOfArc(const Span& arc, Vec2 q, bool start_above, bool end_above) {
  constexpr double kHalf = std::numbers::pi;
  const Vec2 from_centre = q - arc.centre;
  // Half the width of the circle at the height of q.
  const double squared = (arc.radius - from_centre.y) * (arc.radius + from_centre.y);
  const double half_width = std::sqrt(std::max(squared, 0.0));
  // Angles in the sense of the arc; extremes are at (k + 1/2) pi, the even ones high when counter-
  // clockwise.
  const double sense = arc.sweep < 0 ? -1 : 1;
  double from = sense * arc.angle;
  const double end = from + std::fabs(arc.sweep);
  double k = std::floor(from / kHalf - 0.5) + 1;
  int turns = 0;
  bool above = start_above;
  for (bool is_last = false; !is_last; ++k) {
    double to = (k + 0.5) * kHalf;
    is_last = !(to < end);
    if (is_last) to = end;
    const double extreme = sense * (std::fmod(k, 2) == 0 ? arc.radius : -arc.radius);
    const bool to_above = is_last ? end_above : extreme > from_centre.y;
    const double x = std::cos(0.5 * (from + to)) > 0 ? half_width : -half_width;
    if (x > from_centre.x) turns += Rise(above, to_above);
    above = to_above;
    from = to;
  }
  return turns;
}

// Halves until q is in no box: what is to its left crosses no ray, what is to its right as its ends
// say. All about q and, of rational spans, times the weights, which leaves every sign as it is.
template <int kDegree, bool kRational>  // degree 0: any
class BezierCrossings {
 public:
  BezierCrossings(const Span& span, Vec2 q, bool start_above, bool end_above)
      : n_(kDegree ? kDegree : span.degree) {
    Piece& whole = pieces_[0];
    for (int i = 0; i <= n(); ++i) {
      whole.points[i] = span.points[i] - (kRational ? span.weights[i] : 1.0) * q;
      if constexpr (kRational) whole.weights[i] = span.weights[i];
    }
    whole.start_above = start_above;
    whole.end_above = end_above;
    whole.halvings_left = kMostHalvings;
  }

  // Nothing: a part comes as near as a few bands.
  std::optional<int> Count(double band) {
    int turns = 0;
    int parts_left = kMostParts;
    for (int count = 1; count > 0; --parts_left) {
      Piece& piece = pieces_[count - 1];
      const int rise = Rise(piece.start_above, piece.end_above);
      const Sides sides = SidesOf(piece, band);
      if (sides.left || (rise == 0 && (sides.above || sides.below || sides.right))) {
        --count;
      } else if (sides.right || piece.halvings_left == 0 || parts_left <= 0) {
        if (piece.points[0].x > 0) turns += rise;
        --count;
      } else if (sides.small) {
        return std::nullopt;
      } else {
        Halve(piece, pieces_[count++]);
      }
    }
    return turns;
  }

 private:
  static constexpr std::size_t kRoom = (kDegree ? kDegree : kMostDegree) + 1;

  struct Piece {
    Vec2 points[kRoom];
    double weights[kRational ? kRoom : 1];
    bool start_above, end_above;
    int halvings_left;
  };

  // Whether all control points are there, by more than a band; `small`: within a few bands of q.
  struct Sides {
    bool left = true, right = true, above = true, below = true, small;
  };

  int n() const { return kDegree ? kDegree : n_; }

  Sides SidesOf(const Piece& piece, double band) const {
    Sides sides;
    sides.small = band > 0;
    for (int i = 0; i <= n(); ++i) {
      const double margin = kRational ? piece.weights[i] * band : band;
      const auto [x, y] = piece.points[i];
      sides.left = sides.left && x < -margin;
      sides.right = sides.right && x > margin;
      sides.above = sides.above && y > margin;
      sides.below = sides.below && y < -margin;
      sides.small = sides.small && kSmall * margin >= std::max(std::fabs(x), std::fabs(y));
    }
    return sides;
  }

  // The second half stays, the first one comes behind it.
  void Halve(Piece& piece, Piece& first) const {
    SplitBernstein(piece.points, n(), 0.5, first.points, piece.points);
    if constexpr (kRational) SplitBernstein(piece.weights, n(), 0.5, first.weights, piece.weights);
    first.start_above = piece.start_above;
    first.end_above = piece.start_above = piece.points[0].y > 0;
    first.halvings_left = --piece.halvings_left;
  }

  const int n_;
  Piece pieces_[kMostHalvings + 1];
};

// One frame on the stack for each kind: those of high degree are large.
template <int kDegree, bool kRational>
[[gnu::noinline]] std::optional<int> CrossingsOfBezier(const Span& span, Vec2 q, double band,
                                                       bool start_above, bool end_above) {
  using Crossings = BezierCrossings<kDegree, kRational>;
  const auto count = Crossings(span, q, start_above, end_above).Count(band);
  if (count) return count;
  if (IsOn(span, q, band)) return std::nullopt;
  return Crossings(span, q, start_above, end_above).Count(0);
}

}  // namespace

std::optional<int> CrossingsOf(const Span& span, Vec2 q, double band, bool start_above,
                               bool end_above) {
  switch (span.kind) {
    case Span::Kind::kLine:
      if (IsOn(span, q, band)) return std::nullopt;
      return CrossingsOfLine(span, q, start_above, end_above);
    case Span::Kind::kArc:
      if (IsOn(span, q, band)) return std::nullopt;
      return CrossingsOfArc(span, q, start_above, end_above);
    case Span::Kind::kBezier:
      if (span.degree == 2)
        return CrossingsOfBezier<2, false>(span, q, band, start_above, end_above);
      if (span.degree == 3)
        return CrossingsOfBezier<3, false>(span, q, band, start_above, end_above);
      return CrossingsOfBezier<0, false>(span, q, band, start_above, end_above);
    default:
      return CrossingsOfBezier<0, true>(span, q, band, start_above, end_above);
  }
}

}  // namespace kurvo::outline
