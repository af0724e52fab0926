// The nearest points of two free-form pieces by branch and bound.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "relate/bezier_piece.h"
#include "relate/distance/distance_pieces.h"
#include "relate/distance/nearest_pair.h"
#include "relate/distance/squared_distance.h"

namespace kurvo {

// The planar distance of two boxes, 0 when they overlap and for NaN.
double BoxDistance(const PlanarBox& a, const PlanarBox& b);

// Counts work in multiplications and additions of points, so that a call ends in bounded time.
class WorkBudget {
 public:
  // For curves of so many pieces together.
  explicit WorkBudget(std::size_t pieces)
      : left_(std::min(kMost, kBase + kEachPiece * static_cast<int64_t>(pieces))) {}

  void Spend(int64_t work) { left_ -= work; }
  bool exhausted() const { return left_ < 0; }

 private:
  static constexpr int64_t kBase = int64_t{1} << 24;  // some hundredths of a second
  static constexpr int64_t kEachPiece = int64_t{1} << 14;
  static constexpr int64_t kMost = int64_t{1} << 27;  // some tenths of a second

  int64_t left_;
};

// Searches pairs of pieces, one pair after the other; results go into one NearestPair.
class PieceDistance {
 public:
  PieceDistance(NearestPair& nearest, WorkBudget& budget) : nearest_(nearest), budget_(budget) {}

  // Throws std::bad_alloc for degrees that need more memory than lies on the stack.
  void Search(const DistancePiece& a, const DistancePiece& b);

 private:
  using Pair = ParameterPair;
  using Cell = ParameterCell;
  static constexpr Cell kWhole = {{0.0, 0.0}, {1.0, 1.0}};

  void SearchParts(const BezierPiece& a, const BezierPiece& b, double bound, Pair known,
                   int halvings);
  bool Promising(const BezierPiece& a, const BezierPiece& b, double bound) const;
  bool WorthDescending(const BezierPiece& a, const BezierPiece& b, double bound);
  void SearchHalves(const BezierPiece& whole, bool of_a, const BezierPiece& other, Pair known,
                    int halvings);
  Pair Descend(Pair at, const Cell& cell);
  bool StepDown(Pair& at, Pair step, double square, const Cell& cell);

  NearestPair& nearest_;
  WorkBudget& budget_;
  const DistancePiece* a_ = nullptr;
  const DistancePiece* b_ = nullptr;
  WeightedPoint* arena_ = nullptr;
  int64_t step_cost_ = 0;  // of the descent
  std::size_t slot_ = 0;   // points of one part in the arena
  std::vector<WeightedPoint> heap_;
};

}  // namespace kurvo
