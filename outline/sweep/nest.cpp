#include "sweep/nest.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "sweep/bands.h"

namespace kurvo::outline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr std::size_t kMostLooks = 64;  // of holes at sides, for each side

class Rays {
 public:
  Rays(const Array<Strand>& strands, const Array<NestSide>& sides, Array<ResultLoop>& loops)
      : strands_(strands), sides_(sides), loops_(loops) {}

  bool Run() {
    FindHighest();
    for (const Loop& loop : own_)
      if (!loop.highest) return false;
    if (!TellHoles()) return false;
    const auto is_outer = [](const ResultLoop& loop) { return loop.is_outer; };
    if (std::all_of(loops_.begin(), loops_.end(), is_outer)) return true;
    SortOuterSides();
    if (!AreFewLooks()) return false;
    around_.resize(loops_.size());
    for (std::size_t i = 0; i < loops_.size(); ++i)
      if (!loops_[i].is_outer && !FindParent(i)) return false;
    return true;
  }

 private:
  struct Loop {
    const NestSide* highest = nullptr;
    double height = 0, side = 0;  // half-way up
    int32_t winding = 0;          // of the loop to the left of that
  };

  static std::size_t At(int32_t i) { return static_cast<std::size_t>(i); }
  double SideAt(const NestSide& side, double height) const {
    return strands_[At(side.strand)].At(height);
  }

  // Sides of what is not in a loop have none.
  void FindHighest() {
    own_.resize(loops_.size());
    for (const NestSide& side : sides_) {
      if (side.up == 0 || side.loop < 0) continue;
      Loop& loop = own_[At(side.loop)];
      if (!loop.highest || side.high - side.low > loop.highest->high - loop.highest->low)
        loop.highest = &side;
    }
    for (Loop& loop : own_) {
      if (!loop.highest) continue;
      loop.height = 0.5 * (loop.highest->low + loop.highest->high);
      loop.side = SideAt(*loop.highest, loop.height);
    }
  }

  // Whether a side lies to the left of where a ray begins.
  bool IsPassed(const NestSide& side, const Loop& from, double& place) const {
    if (side.up == 0 || &side == from.highest) return false;
    if (!(side.low <= from.height && from.height < side.high)) return false;
    if (!(strands_[At(side.strand)].least_x < from.side)) return false;
    place = SideAt(side, from.height);
    return place < from.side;
  }

  // Loops run with the inside to their left: an outer one goes around it once, a hole does not.
  bool TellHoles() {
    for (const NestSide& side : sides_) {
      if (side.loop < 0) continue;
      Loop& loop = own_[At(side.loop)];
      double unused;
      if (IsPassed(side, loop, unused)) loop.winding -= side.up;
    }
    for (std::size_t i = 0; i < loops_.size(); ++i) {
      const Loop& loop = own_[i];
      const int32_t inside = loop.highest->up > 0 ? loop.winding : loop.winding + 1;
      if (inside != 0 && inside != 1) return false;
      loops_[i].is_outer = inside == 1;
    }
    return true;
  }

  void SortOuterSides() {
    bands_.Build(sides_.size(), [this](std::size_t i, double& low, double& high) {
      const NestSide& side = sides_[i];
      low = side.low;
      high = side.high;
      return side.up != 0 && side.loop >= 0 && loops_[At(side.loop)].is_outer;
    });
  }

  bool AreFewLooks() const {
    std::size_t looks = 0;
    for (std::size_t i = 0; i < loops_.size(); ++i)
      if (!loops_[i].is_outer) looks += bands_.At(own_[i].height).size();
    return looks <= kMostLooks * sides_.size();
  }

  // Of the outer loops around a hole the innermost is the one that the ray meets first.
  bool FindParent(std::size_t hole) {
    met_.clear();
    for (const int32_t i : bands_.At(own_[hole].height)) {
      const NestSide& side = sides_[At(i)];
      double place;
      if (!IsPassed(side, own_[hole], place)) continue;
      Around& around = around_[At(side.loop)];
      if (around.nearest == -kInfinity) met_.push_back(side.loop);
      around.winding -= side.up;
      around.nearest = std::max(around.nearest, place);
    }
    double nearest = -kInfinity;
    for (const int32_t loop : met_) {
      const Around around = std::exchange(around_[At(loop)], {});
      if (around.winding == 0 || !(around.nearest > nearest)) continue;
      nearest = around.nearest;
      loops_[hole].parent = loop;
    }
    return nearest > -kInfinity;
  }

  struct Around {
    int32_t winding = 0;
    double nearest = -kInfinity;
  };

  const Array<Strand>& strands_;
  const Array<NestSide>& sides_;
  Array<ResultLoop>& loops_;
  Array<Loop> own_;       // by loop
  Bands bands_;           // of sides of outer loops
  Array<Around> around_;  // by loop
  Array<int32_t> met_;    // loops that a ray meets
};

}  // namespace

bool Nest(const Array<Strand>& strands, const Array<NestSide>& sides, Array<ResultLoop>& loops) {
  return Rays(strands, sides, loops).Run();
}

}  // namespace kurvo::outline
