// The nearest points of two free-form pieces by branch and bound.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "foundation/work_budget.h"
#include "relate/distance/distance_pieces.h"
#include "relate/distance/nearest_pair.h"
#include "relate/distance/squared_distance.h"

namespace kurvo {

// The planar distance of two boxes, 0 when they overlap and for NaN.
double BoxDistance(const PlanarBox& a, const PlanarBox& b);

// Searches pairs of pieces, one pair after the other; results go into one NearestPair. Work is
// counted in multiplications and additions of points.
class PieceDistance {
 public:
  PieceDistance(NearestPair& nearest, WorkBudget& work) : nearest_(nearest), work_(work) {}

  // Throws std::bad_alloc for degrees that need more memory than lies on the stack.
  void Search(const DistancePiece& a, const DistancePiece& b);

 private:
  using Pair = ParameterPair;
  using Cell = ParameterCell;
  static constexpr Cell kWhole = {{0.0, 0.0}, {1.0, 1.0}};

  void SearchParts(const BezierPiece& a, const BezierPiece& b, double bound, Pair known,
                   int halvings);
  bool IsPoint(const BezierPiece& part) const;  // but for rounding
  bool IsLeaf(const BezierPiece& part) const;   // not to be divided
  bool Promising(const BezierPiece& a, const BezierPiece& b, double bound) const;
  bool WorthDescending(const BezierPiece& a, const BezierPiece& b, double bound);
  void SearchHalves(const BezierPiece& whole, bool of_a, const BezierPiece& other, Pair known,
                    int halvings);
  Pair Descend(Pair at, const Cell& cell);
  bool StepDown(Pair& at, Pair step, double square, const Cell& cell);

  NearestPair& nearest_;
  WorkBudget& work_;
  const DistancePiece* a_ = nullptr;
  const DistancePiece* b_ = nullptr;
  WeightedPoint* arena_ = nullptr;
  int64_t step_cost_ = 0;  // of the descent
  std::size_t slot_ = 0;   // points of one part in the arena
  std::vector<WeightedPoint> heap_;
};

}  // namespace kurvo
