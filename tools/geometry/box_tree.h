// Boxes that are asked for by place.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

class BoxTree {
 public:
  // Empty boxes are nowhere.
  explicit BoxTree(const std::vector<Bounds>& boxes);
  BoxTree(const BoxTree&) = delete;
  BoxTree& operator=(const BoxTree&) = delete;
  ~BoxTree();

  // The numbers of the boxes that meet this one, ascending.
  std::vector<std::size_t> Meeting(const Bounds& box) const;
  // The number of a box that is nearest to this one, one of several. The tree must not be empty.
  std::size_t Nearest(const Bounds& box) const;
  bool IsEmpty() const;

 private:
  struct Tree;
  std::unique_ptr<Tree> tree_;
};

// 0 where they meet.
double Distance(const Bounds& a, const Bounds& b);

}  // namespace kurvo::tools
