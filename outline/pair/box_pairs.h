// Which of many things come near each other by their boxes.
#pragma once

#include "base/bounds.h"
#include "base/function_ref.h"
#include "base/memory.h"

namespace kurvo::outline {

// Boxes around runs of consecutive boxes, which lie near each other in any outline: a binary tree
// in an array, the children of node k at 2 k and 2 k + 1, runs of kRun boxes from `leaves_` on.
class PairTree {
 public:
  explicit PairTree(const Array<Bounds>& boxes);  // which must outlive the tree

  using Pair = FunctionRef<void(int32_t, int32_t)>;
  // Calls f(i, k) for all boxes i of this and k of the other tree that are no farther apart
  // than `margin` in x and y. Cost: that of the pairs, and of the nodes above them.
  void ForEachPair(const PairTree& other, double margin, Pair f) const;
  // The same for pairs i < k of one tree.
  void ForEachPair(double margin, Pair f) const;

 private:
  static constexpr std::size_t kRun = 8;

  struct Run {
    std::size_t begin, end;
  };
  Run RunOf(std::size_t leaf) const;
  void Descend(std::size_t node, const PairTree& other, std::size_t other_node, double margin,
               Pair f) const;
  void DescendSelf(std::size_t node, double margin, Pair f) const;

  const Array<Bounds>& boxes_;
  Array<Bounds> nodes_;  // empty ones where there are none
  std::size_t leaves_ = 1;
};

}  // namespace kurvo::outline
