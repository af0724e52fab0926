#include "cut/order.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace kurvo::tools {
namespace {

constexpr int kMostPasses = 20;       // of turning stretches round
constexpr std::size_t kReach = 1000;  // paths in a stretch, of many paths fewer:
constexpr std::size_t kLeastReach = 20;
constexpr std::size_t kMostPairs = 2000000;  // ends of stretches in a pass
constexpr std::size_t kMostNearest = 2000;   // of more paths none looks for the nearest
constexpr double kPathsHigh = 3;             // a strip
constexpr double kGain = 1e-9;               // mm, so that equal ways do not go round and round

using Numbers = std::vector<std::size_t>;

class Orderer {
 public:
  Orderer(const std::vector<CutPath>& paths, Point from) : paths_(paths), from_(from) {
    for (const CutPath& path : paths) starts_.push_back(StartsOf(path));
  }

  std::vector<CutStep> Order() {
    std::vector<Numbers> inside(paths_.size() + 1);  // the last: of no path
    for (std::size_t i = 0; i < paths_.size(); ++i) {
      const std::size_t around = paths_[i].around;
      inside[around == kNoPath ? paths_.size() : around].push_back(i);
    }
    const Numbers order = Unfolded(inside);
    return WithStarts(order);
  }

 private:
  Point At(std::size_t path) const { return starts_[path].front().enter; }
  double Way(std::size_t a, std::size_t b) const { return Size(At(b) - At(a)); }

  // Those inside, one list after the other, before the path around them; with a stack, since they
  // may lie in each other without end.
  Numbers Unfolded(std::vector<Numbers>& inside) const {
    struct Level {
      Numbers order;
      std::size_t next = 0;
    };
    Numbers result;
    std::vector<Level> stack = {{Short(inside.back(), from_)}};
    while (!stack.empty()) {
      Level& level = stack.back();
      if (level.next == level.order.size()) {
        stack.pop_back();
        if (!stack.empty()) result.push_back(stack.back().order[stack.back().next++]);
        continue;
      }
      const std::size_t path = level.order[level.next];
      const Point at = result.empty() ? from_ : At(result.back());
      stack.push_back({Short(inside[path], at)});
    }
    return result;
  }

  Numbers Short(Numbers left, Point from) const {
    Numbers order = left.size() > kMostNearest ? InStrips(std::move(left))
                                               : FromNearestToNearest(std::move(left), from);
    for (int pass = 0; pass < kMostPasses && Turned(from, order); ++pass) {
    }
    return order;
  }

  Numbers FromNearestToNearest(Numbers left, Point from) const {
    Numbers order;
    for (Point at = from; !left.empty(); at = At(order.back())) {
      const auto nearest = std::min_element(left.begin(), left.end(), [&](auto a, auto b) {
        return Size(At(a) - at) < Size(At(b) - at);
      });
      order.push_back(*nearest);
      left.erase(nearest);
    }
    return order;
  }

  // To and fro in strips that are as high as a few paths lie apart.
  Numbers InStrips(Numbers order) const {
    Bounds box;
    for (const std::size_t path : order) box.Add(At(path));
    const double count = static_cast<double>(order.size());
    const double height = std::max(std::sqrt(kPathsHigh * box.Width() * box.Height() / count),
                                   kPathsHigh * box.LongerSide() / count);
    const auto strip = [&](std::size_t path) {
      return height > 0 ? std::floor((At(path).y - box.min_y) / height) : 0;
    };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      if (strip(a) != strip(b)) return strip(a) < strip(b);
      return std::fmod(strip(a), 2) == 0 ? At(a).x < At(b).x : At(b).x < At(a).x;
    });
    return order;
  }

  // Turns stretches round whose ways to their neighbours are shorter then.
  bool Turned(Point from, Numbers& order) const {
    bool helped = false;
    const std::size_t count = order.size();
    const std::size_t reach =
        std::clamp(kMostPairs / std::max<std::size_t>(count, 1), kLeastReach, kReach);
    for (std::size_t i = 0; i + 1 < count; ++i) {
      for (std::size_t j = i + 1; j < std::min(count, i + reach); ++j) {
        const Point before = i == 0 ? from : At(order[i - 1]);
        double gain = Size(At(order[i]) - before) - Size(At(order[j]) - before);
        if (j + 1 < count) gain += Way(order[j], order[j + 1]) - Way(order[i], order[j + 1]);
        if (!(gain > kGain)) continue;
        std::reverse(order.begin() + static_cast<std::ptrdiff_t>(i),
                     order.begin() + static_cast<std::ptrdiff_t>(j) + 1);
        helped = true;
      }
    }
    return helped;
  }

  // Dynamic programming: the shortest way to each start of a path is one by some start of the path
  // before it.
  std::vector<CutStep> WithStarts(const Numbers& order) const {
    std::vector<Numbers> came_by(order.size());
    std::vector<double> ways;
    for (std::size_t k = 0; k < order.size(); ++k) {
      std::vector<double> next;
      for (const CutStart& start : starts_[order[k]]) {
        double least = k == 0 ? Size(start.enter - from_) : std::numeric_limits<double>::infinity();
        std::size_t by = 0;
        for (std::size_t i = 0; i < ways.size(); ++i) {
          const double way = ways[i] + Size(start.enter - starts_[order[k - 1]][i].leave);
          if (way < least) least = way, by = i;
        }
        next.push_back(least);
        came_by[k].push_back(by);
      }
      ways = std::move(next);
    }
    std::vector<CutStep> steps(order.size());
    auto at = static_cast<std::size_t>(std::min_element(ways.begin(), ways.end()) - ways.begin());
    for (std::size_t k = order.size(); k-- > 0; at = came_by[k][at])
      steps[k] = {order[k], starts_[order[k]][at]};
    return steps;
  }

  const std::vector<CutPath>& paths_;
  const Point from_;
  std::vector<std::vector<CutStart>> starts_;  // by path
};

}  // namespace

std::vector<CutStep> OrderOf(const std::vector<CutPath>& paths, Point from) {
  return paths.empty() ? std::vector<CutStep>() : Orderer(paths, from).Order();
}

}  // namespace kurvo::tools
