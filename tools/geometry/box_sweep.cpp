#include "geometry/box_sweep.h"

#include <algorithm>
#include <array>

namespace kurvo::tools {
namespace {

struct Item {
  Bounds box;  // x is the way of the sweep
  int side;    // 0 for the first list, 1 for the second
  std::size_t index;
};

double TotalWidth(const std::vector<Item>& items) {
  double sum = 0;
  for (const Item& item : items) sum += item.box.Width();
  return sum;
}

void SwapAxes(std::vector<Item>& items) {
  for (Item& item : items) {
    std::swap(item.box.min_x, item.box.min_y);
    std::swap(item.box.max_x, item.box.max_y);
  }
}

// The sweep goes where boxes are narrow beside the drawing, so that few are met at once.
void TurnToNarrowSide(std::vector<Item>& items) {
  Bounds all;
  for (const Item& item : items) all.Add(item.box);
  const double width = TotalWidth(items);
  SwapAxes(items);
  const double height = TotalWidth(items);
  if (!(height * all.Width() < width * all.Height())) SwapAxes(items);
}

void Sweep(std::vector<Item> items, bool one_list, const BoxPair& pair, const BoxDone& done) {
  TurnToNarrowSide(items);
  std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) {
    if (a.box.min_x != b.box.min_x) return a.box.min_x < b.box.min_x;
    return a.side != b.side ? a.side < b.side : a.index < b.index;
  });
  std::array<std::vector<const Item*>, 2> open;  // boxes that the sweep line may still meet
  for (const Item& item : items) {
    std::vector<const Item*>& others = open[one_list ? 0u : item.side == 0 ? 1u : 0u];
    std::erase_if(others, [&](const Item* other) { return other->box.max_x < item.box.min_x; });
    for (const Item* other : others) {
      if (other->box.max_y < item.box.min_y || item.box.max_y < other->box.min_y) continue;
      const bool in_order = one_list ? item.index < other->index : item.side == 0;
      if (in_order) {
        pair(item.index, other->index);
      } else {
        pair(other->index, item.index);
      }
    }
    open[one_list || item.side == 0 ? 0u : 1u].push_back(&item);
    done();
  }
}

void Append(const std::vector<Bounds>& boxes, int side, std::vector<Item>& items) {
  for (std::size_t i = 0; i < boxes.size(); ++i) items.push_back({boxes[i], side, i});
}

}  // namespace

void SweepBoxes(const std::vector<Bounds>& first, const std::vector<Bounds>& second,
                const BoxPair& pair, const BoxDone& done) {
  std::vector<Item> items;
  Append(first, 0, items);
  Append(second, 1, items);
  Sweep(std::move(items), false, pair, done);
}

void SweepBoxes(const std::vector<Bounds>& boxes, const BoxPair& pair, const BoxDone& done) {
  std::vector<Item> items;
  Append(boxes, 0, items);
  Sweep(std::move(items), true, pair, done);
}

}  // namespace kurvo::tools
