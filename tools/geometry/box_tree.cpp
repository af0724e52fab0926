#include "geometry/box_tree.h"

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <iterator>
#include <utility>

namespace kurvo::tools {
namespace {

namespace bg = boost::geometry;

using Corner = bg::model::d2::point_xy<double>;
using Box = bg::model::box<Corner>;
using Entry = std::pair<Box, std::size_t>;

constexpr std::size_t kNodeSize = 16;

Box BoxOf(const Bounds& box) { return {{box.min_x, box.min_y}, {box.max_x, box.max_y}}; }

std::vector<Entry> Entries(const std::vector<Bounds>& boxes) {
  std::vector<Entry> entries;
  entries.reserve(boxes.size());
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (!boxes[i].IsEmpty()) entries.emplace_back(BoxOf(boxes[i]), i);
  }
  return entries;
}

}  // namespace

struct BoxTree::Tree {
  bg::index::rtree<Entry, bg::index::quadratic<kNodeSize>> entries;
};

BoxTree::BoxTree(const std::vector<Bounds>& boxes)
    : tree_(std::make_unique<Tree>(Tree{decltype(Tree::entries)(Entries(boxes))})) {}

BoxTree::~BoxTree() = default;

bool BoxTree::IsEmpty() const { return tree_->entries.empty(); }

std::vector<std::size_t> BoxTree::Meeting(const Bounds& box) const {
  std::vector<std::size_t> numbers;
  const auto& entries = tree_->entries;
  for (auto i = entries.qbegin(bg::index::intersects(BoxOf(box))); i != entries.qend(); ++i)
    numbers.push_back(i->second);
  std::sort(numbers.begin(), numbers.end());
  return numbers;
}

std::size_t BoxTree::Nearest(const Bounds& box) const {
  const auto& entries = tree_->entries;
  return entries.qbegin(bg::index::nearest(BoxOf(box), 1))->second;
}

double Distance(const Bounds& a, const Bounds& b) {
  const double dx = std::max({0.0, b.min_x - a.max_x, a.min_x - b.max_x});
  const double dy = std::max({0.0, b.min_y - a.max_y, a.min_y - b.max_y});
  return Size({dx, dy});
}

}  // namespace kurvo::tools
