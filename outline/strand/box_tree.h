// A tree of boxes over things in a row.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/bounds.h"
#include "base/memory.h"
#include "base/pair.h"

namespace kurvo::outline {

// Boxes of four neighbours each, of four of those, and so on: neighbours along a chain lie near
// each other, so nothing is sorted. Flat arrays, no pointers: the children of node i of a level are
// the nodes 4 i ... 4 i + 3 of the level below, and below level 0 stand the leaves.
class BoxTree {
 public:
  static constexpr uint32_t kFan = 4;
  static constexpr uint32_t kMostLevels = 16;  // of 2^32 leaves

  // The boxes of all children of a node; of one that is not there nothing is near.
  struct Node {
    double low_x[kFan], low_y[kFan], high_x[kFan], high_y[kFan];

    void Set(uint32_t child, const Bounds& box) {
      low_x[child] = box.low.x;
      low_y[child] = box.low.y;
      high_x[child] = box.high.x;
      high_y[child] = box.high.y;
    }
    Bounds box(uint32_t child) const {
      Bounds box;
      box.low = {low_x[child], low_y[child]};
      box.high = {high_x[child], high_y[child]};
      return box;
    }
  };

  // `boxes` are those of the leaves, fewer than 2^31.
  explicit BoxTree(const Array<Bounds>& boxes) {
    nodes_.reserve(boxes.size() / (kFan - 1) + kMostLevels);
    uint32_t below = static_cast<uint32_t>(boxes.size());
    while (below > (levels_ == 0 ? 0 : 1)) {
      const uint32_t begin = static_cast<uint32_t>(nodes_.size());
      for (uint32_t i = 0; i < below; i += kFan) {
        Node node;
        for (uint32_t k = 0; k < kFan; ++k)
          node.Set(k, i + k >= below ? Bounds{}
                      : levels_ == 0 ? boxes[i + k]
                                     : Around(nodes_[begin_[levels_ - 1] + i + k]));
        nodes_.push_back(node);
      }
      begin_[levels_++] = begin;
      below = static_cast<uint32_t>(nodes_.size()) - begin;
    }
  }

  uint32_t levels() const { return levels_; }  // the last one has one node; 0: there are no leaves
  const Node& node(uint32_t level, uint32_t i) const { return nodes_[begin_[level] + i]; }
  // Where it stands among all nodes, lower levels first.
  uint32_t Number(uint32_t level, uint32_t i) const { return begin_[level] + i; }
  uint32_t size(uint32_t level) const {
    const auto end = static_cast<uint32_t>(nodes_.size());
    return (level + 1 < levels_ ? begin_[level + 1] : end) - begin_[level];
  }

  // Calls visit(leaf) for those whose boxes are no farther from q than the root of limit(), which
  // may fall meanwhile: of four the nearer first.
  template <class Limit, class Visit>
  void ForEachNear(Vec2 q, const Limit& limit, const Visit& visit) const {
    struct Entry {
      double bound;
      uint32_t level, index;  // of a node; of a leaf: 0 and where it stands; else level + 1
    };
    Entry stack[kMostLevels * kFan];
    uint32_t count = 0;
    Entry next = {0, levels_, 0};
    for (bool goes_on = levels_ > 0; goes_on;) {
      if (next.level == 0) {
        visit(next.index);
        next.bound = std::numeric_limits<double>::infinity();
      } else {
        uint64_t nearest[kFan];
        InOrder(node(next.level - 1, next.index), q, nearest);
        const uint32_t first = kFan * next.index, level = next.level - 1;
        const auto entry = [&](uint64_t child) {
          return Entry{std::bit_cast<double>(child), level,
                       first + static_cast<uint32_t>(child % kFan)};
        };
        const double most = std::min(limit(), std::numeric_limits<double>::max());
        for (uint32_t k = kFan - 1; k > 0; --k) {
          stack[count] = entry(nearest[k]);
          count += stack[count].bound <= most;
        }
        next = entry(nearest[0]);
      }
      while (!(next.bound <= limit()) && count > 0) next = stack[--count];
      goes_on = next.bound <= limit();
    }
  }

 private:
  static Bounds Around(const Node& node) {
    Bounds box;
    for (uint32_t k = 0; k < kFan; ++k) box.Join(node.box(k));
    return box;
  }

  // Squared.
  static void Distances(const Node& node, Vec2 q, double* distances) {
    const Pair x(q.x), y(q.y), none(0.0);
    for (uint32_t k = 0; k < kFan; k += 2) {
      const Pair dx = Most(Most(Pair(node.low_x + k) - x, x - Pair(node.high_x + k)), none);
      const Pair dy = Most(Most(Pair(node.low_y + k) - y, y - Pair(node.high_y + k)), none);
      const Pair squares = dx * dx + dy * dy;
      distances[k] = squares.x();
      distances[k + 1] = squares.y();
    }
  }

  // The children, nearest first: the bits of squared distances, which ascend as these do, with the
  // number of the child in the last two. A distance may so become a rounding less or, of a child
  // that is not there, no number.
  static void InOrder(const Node& node, Vec2 q, uint64_t* children) {
    double distances[kFan];
    Distances(node, q, distances);
    for (uint32_t k = 0; k < kFan; ++k)
      children[k] = std::bit_cast<uint64_t>(distances[k]) / kFan * kFan + k;
    const auto order = [children](int a, int b) {
      const uint64_t less = std::min(children[a], children[b]);
      children[b] = std::max(children[a], children[b]);
      children[a] = less;
    };
    order(0, 1);
    order(2, 3);
    order(0, 2);
    order(1, 3);
    order(1, 2);
  }

  Array<Node> nodes_;
  uint32_t begin_[kMostLevels] = {};
  uint32_t levels_ = 0;
};

}  // namespace kurvo::outline
