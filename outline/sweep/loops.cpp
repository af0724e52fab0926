#include "sweep/loops.h"

#include <utility>

#include "base/refusal.h"

namespace kurvo::outline {
namespace {

// The edge that follows each one. Around a corner inside and outside alternate, so rays that arrive
// and rays that leave do.
Array<int32_t> FollowersOf(const Arrangement& arrangement) {
  Array<int32_t> next;
  next.resize(arrangement.edges.size(), -1);
  for (std::size_t corner = 0; corner < arrangement.corners.size(); ++corner) {
    const int32_t* rays = arrangement.rays.data() + arrangement.first_ray[corner];
    const std::size_t count = arrangement.first_ray[corner + 1] - arrangement.first_ray[corner];
    for (std::size_t i = 0; i < count; ++i) {
      if (rays[i] % 2 != 0) continue;
      const int32_t follower = rays[i > 0 ? i - 1 : count - 1];
      Require(follower % 2 != 0, KURVO_ERR_CURVE);
      next[static_cast<std::size_t>(rays[i] / 2)] = follower / 2;
    }
  }
  return next;
}

}  // namespace

void ForEachLoop(const Arrangement& arrangement,
                 FunctionRef<void(std::span<const int32_t>)> visit) {
  Array<int32_t> next = FollowersOf(arrangement);
  Array<int32_t> walk;
  walk.reserve(next.size());
  Array<int32_t> step_at;  // by corner: the step of the walk that leaves it
  step_at.resize(arrangement.corners.size(), -1);
  for (std::size_t first = 0; first < next.size(); ++first) {
    walk.clear();
    for (auto edge = static_cast<int32_t>(first); next[static_cast<std::size_t>(edge)] >= 0;) {
      const auto corner = static_cast<std::size_t>(arrangement.edge(edge).from);
      step_at[corner] = static_cast<int32_t>(walk.size());
      walk.push_back(edge);
      // A corner of the walk closes a loop: it is cut out.
      const int32_t step = step_at[static_cast<std::size_t>(arrangement.edge(edge).to)];
      if (step >= 0) {
        const std::span<const int32_t> loop(walk.data() + step, walk.data() + walk.size());
        visit(loop);
        for (const int32_t e : loop)
          step_at[static_cast<std::size_t>(arrangement.edge(e).from)] = -1;
        walk.resize(static_cast<std::size_t>(step));
      }
      edge = std::exchange(next[static_cast<std::size_t>(edge)], -1);
    }
  }
}

}  // namespace kurvo::outline
