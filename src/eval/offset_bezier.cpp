// Bezier curves at a constant distance from Bezier curves.
#include "eval/offset_bezier.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <type_traits>

#include "control/casteljau_split.h"
#include "control/degree_elevation.h"
#include "control/homogeneous.h"
#include "eval/offset_polygon.h"
#include "records/new_records.h"

namespace kurvo {
namespace {

// Halvings of one curve, one in another. Where that makes too many pieces the curve is halved less
// often, so that they are spread evenly.
constexpr int kMaxDepth = 14;

// Parameters at which the distance is compared: 0, 0.1, ... 1.
constexpr int kSamples = 11;
constexpr double SampleAt(int k) { return k / (kSamples - 1.0); }

// A distance that is exact but for rounding differs by this part of itself.
constexpr double kRounding = 8.0 * std::numeric_limits<double>::epsilon();

// Legs this many times shorter than the largest coordinate may point where rounding has put them.
constexpr double kNoise = 64.0 * std::numeric_limits<double>::epsilon();

// The Bernstein polynomials of degree n < kPoints at the samples.
template <std::size_t kPoints>
struct Bernstein {
  constexpr explicit Bernstein(int32_t n) {
    std::fill_n(at[0], kSamples, 1.0);
    for (int32_t level = 1; level <= n; ++level) {
      std::fill_n(at[level], kSamples, 0.0);
      for (int32_t i = level; i >= 0; --i) {
        for (int k = 0; k < kSamples; ++k) {
          const double s = SampleAt(k);
          at[i][k] = (1.0 - s) * at[i][k] + (i > 0 ? s * at[i - 1][k] : 0.0);
        }
      }
    }
    if (!std::is_constant_evaluated()) return;  // what is not used need not be written
    for (std::size_t i = static_cast<std::size_t>(n) + 1; i < kPoints; ++i)
      std::fill_n(at[i], kSamples, 0.0);
  }
  double at[kPoints][kSamples];
};

// Candidates of cubics have five points: their polynomials are known before the program runs.
constexpr std::size_t kFewPoints = 5;

template <std::size_t kPoints>
class Bases {
 public:
  explicit Bases(int32_t degree) : outer(degree), inner(degree - 1) {}
  const Bernstein<kPoints> outer, inner;
};

template <>
class Bases<kFewPoints> {
 public:
  explicit Bases(int32_t degree) : outer(kKnown[degree]), inner(kKnown[degree - 1]) {}
  const Bernstein<kFewPoints>&outer, &inner;

 private:
  static constexpr Bernstein<kFewPoints> kKnown[] = {
      Bernstein<kFewPoints>(0), Bernstein<kFewPoints>(1), Bernstein<kFewPoints>(2),
      Bernstein<kFewPoints>(3), Bernstein<kFewPoints>(4)};
};

// kPoints: as many as a candidate may have.
template <std::size_t kDim, std::size_t kPoints>
class BezierOffset {
 public:
  BezierOffset(int32_t degree, const OffsetTask& task, int max_depth, OwnedSequence& pieces)
      : degree_(degree),
        task_(task),
        max_depth_(max_depth),
        bases_(degree),
        slack_(task.tolerance + kRounding * std::fabs(task.distance)),
        most_pieces_(pieces.size() + task.most_pieces),
        pieces_(pieces) {}

  // Offsets a curve, whose control points it may change, `depth` halvings below the whole one.
  // False when that makes too many pieces.
  bool Add(double (*points)[kDim], int depth) {
    Vec2 polygon[kPoints];
    Vec2 moves[kPoints];
    for (int32_t i = 0; i <= degree_; ++i) polygon[i] = Planar(points[i]);
    const auto move = [&](SharpestTurn sharpest) {
      return MovePolygon(polygon, degree_, task_.distance, ShortestLeg(polygon, depth),
                         task_.epsilon, sharpest, moves);
    };
    if (!move(SharpestTurn::kChecked)) return true;
    if (KeepsDistance(points, moves) && MovesSideways(points, polygon, moves))
      return Append(points, moves);
    if (MustStand(polygon, depth)) {
      move(SharpestTurn::kUnchecked);
      return Append(points, moves);
    }
    double before[kPoints][kDim];
    SplitBezier(points, degree_, 0.5, before);
    return Add(before, depth + 1) && Add(points, depth + 1);
  }

 private:
  // Legs are too short for a direction below epsilon. Those of a piece count at the length that
  // they had before it was halved, so that halving makes none short and pieces join; but none
  // counts that rounding may have turned.
  double ShortestLeg(const Vec2* polygon, int depth) const {
    double extent = 0.0;
    for (int32_t i = 0; i <= degree_; ++i)
      extent = std::max({extent, std::fabs(polygon[i].x), std::fabs(polygon[i].y)});
    return std::min(task_.epsilon, std::max(std::ldexp(task_.epsilon, -depth), kNoise * extent));
  }

  // Source and candidate have the same weights, so that the way from one to the other is the Bezier
  // curve of the moves.
  bool KeepsDistance(const double (*points)[kDim], const Vec2* moves) const {
    for (const int k : {5, 2, 8})  // where most candidates fail
      if (!KeepsDistanceAt(k, points, moves)) return false;
    double x[kSamples] = {};
    double y[kSamples] = {};
    double w[kSamples] = {};
    for (int32_t i = 0; i <= degree_; ++i) {
      const double weight = WeightOf(points[i]);
      const Vec2 move = weight * moves[i];
      for (int k = 0; k < kSamples; ++k) {
        const double b = bases_.outer.at[i][k];
        x[k] += b * move.x;
        y[k] += b * move.y;
        if (kDim == 4) w[k] += b * weight;
      }
    }
    const double wanted = std::fabs(task_.distance);
    bool keeps = true;
    for (int k = 0; k < kSamples; ++k) {
      const double divisor = kDim == 4 ? std::fabs(w[k]) : 1.0;
      const double found = std::sqrt(x[k] * x[k] + y[k] * y[k]) / divisor;
      keeps &= slack_ >= std::fabs(found - wanted);
    }
    return keeps;
  }

  bool KeepsDistanceAt(int k, const double (*points)[kDim], const Vec2* moves) const {
    double x = 0.0, y = 0.0, w = 0.0;
    for (int32_t i = 0; i <= degree_; ++i) {
      const double weight = WeightOf(points[i]), b = bases_.outer.at[i][k];
      const Vec2 move = weight * moves[i];
      x += b * move.x;
      y += b * move.y;
      if (kDim == 4) w += b * weight;
    }
    const double found = std::sqrt(x * x + y * y) / (kDim == 4 ? std::fabs(w) : 1.0);
    return slack_ >= std::fabs(found - std::fabs(task_.distance));
  }

  // A way of the right length that is not at right angles to the source ends nearer to it. With
  // tangential part a of the way, at curvature c, the distance falls short by
  //   a^2 / (2 distance (1 - c distance)),
  // where 1 - c distance is the speed of the candidate in parts of that of the source. Beyond the
  // centre of curvature, where it is negative, nothing is asked. Looks at every other sample
  // between the ends.
  bool MovesSideways(const double (*points)[kDim], const Vec2* polygon, const Vec2* moves) const {
    for (int k = 1; k < kSamples - 1; k += 2) {
      // The last two points of de Casteljau's algorithm, of the source and of the moves.
      Vec2 p0, p1, m0, m1;
      double w0 = 0.0, w1 = 0.0;
      for (int32_t i = 0; i < degree_; ++i) {
        const double b = bases_.inner.at[i][k];
        const double b0 = b * WeightOf(points[i]);
        const double b1 = b * WeightOf(points[i + 1]);
        w0 += b0;
        w1 += b1;
        p0 = p0 + b0 * polygon[i];
        p1 = p1 + b1 * polygon[i + 1];
        m0 = m0 + b0 * moves[i];
        m1 = m1 + b1 * moves[i + 1];
      }
      const double s = SampleAt(k);
      const Vec2 way = (1.0 / ((1.0 - s) * w0 + s * w1)) * ((1.0 - s) * m0 + s * m1);
      const Vec2 along = (1.0 / w1) * p1 - (1.0 / w0) * p0;
      const Vec2 moved_along = along + ((1.0 / w1) * m1 - (1.0 / w0) * m0);
      const double speed = Dot(moved_along, along);
      const double aside = Dot(way, along);
      if (speed > 0.0 && !(std::fabs(task_.distance) * slack_ * speed >= aside * aside))
        return false;
    }
    return true;
  }

  // True where halving ends although the distance is not right.
  bool MustStand(const Vec2* polygon, int depth) const {
    if (depth >= max_depth_) return true;
    return std::all_of(polygon + 1, polygon + degree_ + 1, [&](Vec2 p) {
      return SamePoint(OnPlane(p), OnPlane(polygon[0]), task_.epsilon);
    });
  }

  bool Append(const double (*points)[kDim], const Vec2* moves) {
    if (pieces_.size() >= most_pieces_) return false;
    pieces_.push_back(NewBezier<kDim>(degree_, [&](double(*to)[kDim]) {
      for (int32_t i = 0; i <= degree_; ++i) {
        to[i][0] = points[i][0] + moves[i].x;
        to[i][1] = points[i][1] + moves[i].y;
        to[i][2] = 0.0;
        if constexpr (kDim == 4) to[i][3] = points[i][3];
      }
    }));
    return true;
  }

  const int32_t degree_;
  const OffsetTask& task_;
  const int max_depth_;
  const Bases<kPoints> bases_;
  const double slack_;
  const std::size_t most_pieces_;
  OwnedSequence& pieces_;
};

// False, with no piece left, when halving to that depth makes too many.
template <std::size_t kDim>
bool OffsetToDepth(const double (*points)[kDim], int32_t degree, const OffsetTask& task,
                   int max_depth, OwnedSequence& pieces) {
  double raised[kMaxOffsetPoints][kDim];
  FlattenPoints(points, degree + 1, raised);
  ToHomogeneous(raised, degree + 1);
  ElevateDegree(raised, degree);
  ToCartesian(raised, degree + 2);
  FlattenPoint(points[0], raised[0]);  // weights must not round the ends
  FlattenPoint(points[degree], raised[degree + 1]);
  const std::size_t before = pieces.size();
  const bool few = kFewPoints >= static_cast<std::size_t>(degree) + 2;
  const bool added =
      few ? BezierOffset<kDim, kFewPoints>(degree + 1, task, max_depth, pieces).Add(raised, 0)
          : BezierOffset<kDim, kMaxOffsetPoints>(degree + 1, task, max_depth, pieces)
                .Add(raised, 0);
  if (added) return true;
  pieces.resize(before);
  return false;
}

}  // namespace

template <std::size_t kDim>
void OffsetBezier(const double (*points)[kDim], int32_t degree, const OffsetTask& task,
                  OwnedSequence& pieces) {
  const int even_depth = static_cast<int>(std::bit_width(task.most_pieces)) - 1;
  if (!OffsetToDepth(points, degree, task, kMaxDepth, pieces))
    OffsetToDepth(points, degree, task, even_depth, pieces);
}

template void OffsetBezier(const double (*)[3], int32_t, const OffsetTask&, OwnedSequence&);
template void OffsetBezier(const double (*)[4], int32_t, const OffsetTask&, OwnedSequence&);

}  // namespace kurvo
