#include "pair/box_pairs.h"

#include <algorithm>

namespace kurvo::outline {

PairTree::PairTree(const Array<Bounds>& boxes) : boxes_(boxes) {
  while (leaves_ * kRun < boxes.size()) leaves_ *= 2;
  nodes_.resize(2 * leaves_, Bounds());
  for (std::size_t i = 0; i < boxes.size(); ++i) nodes_[leaves_ + i / kRun].Join(boxes[i]);
  for (std::size_t node = leaves_; node-- > 1;) {
    nodes_[node] = nodes_[2 * node];
    nodes_[node].Join(nodes_[2 * node + 1]);
  }
}

PairTree::Run PairTree::RunOf(std::size_t leaf) const {
  const std::size_t begin = (leaf - leaves_) * kRun;
  return {begin, std::min(begin + kRun, boxes_.size())};
}

void PairTree::Descend(std::size_t node, const PairTree& other, std::size_t other_node,
                       double margin, Pair f) const {
  if (!Near(nodes_[node], other.nodes_[other_node], margin)) return;
  const bool leaf = node >= leaves_, other_leaf = other_node >= other.leaves_;
  if (leaf && other_leaf) {
    const Run run = RunOf(node), other_run = other.RunOf(other_node);
    for (std::size_t i = run.begin; i < run.end; ++i) {
      if (!Near(boxes_[i], other.nodes_[other_node], margin)) continue;
      for (std::size_t k = other_run.begin; k < other_run.end; ++k)
        if (Near(boxes_[i], other.boxes_[k], margin))
          f(static_cast<int32_t>(i), static_cast<int32_t>(k));
    }
    return;
  }
  const bool split =
      !leaf && (other_leaf || nodes_[node].LongerSide() >= other.nodes_[other_node].LongerSide());
  for (std::size_t child = 0; child < 2; ++child) {
    if (split) {
      Descend(2 * node + child, other, other_node, margin, f);
    } else {
      Descend(node, other, 2 * other_node + child, margin, f);
    }
  }
}

void PairTree::DescendSelf(std::size_t node, double margin, Pair f) const {
  if (nodes_[node].IsEmpty()) return;
  if (node >= leaves_) {
    const Run run = RunOf(node);
    for (std::size_t i = run.begin; i < run.end; ++i)
      for (std::size_t k = i + 1; k < run.end; ++k)
        if (Near(boxes_[i], boxes_[k], margin)) f(static_cast<int32_t>(i), static_cast<int32_t>(k));
    return;
  }
  DescendSelf(2 * node, margin, f);
  DescendSelf(2 * node + 1, margin, f);
  Descend(2 * node, *this, 2 * node + 1, margin, f);
}

void PairTree::ForEachPair(const PairTree& other, double margin, Pair f) const {
  Descend(1, other, 1, margin, f);
}

void PairTree::ForEachPair(double margin, Pair f) const { DescendSelf(1, margin, f); }

}  // namespace kurvo::outline
