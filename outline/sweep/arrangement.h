// What a sweep makes: the edges of the result and the corners where they meet.
#pragma once

#include "base/memory.h"
#include "base/vec2.h"

namespace kurvo::outline {

struct Corner {
  Vec2 point;
  int32_t vertex;  // of the scene; -1: none of these
};

// With the inside to its left.
struct Edge {
  int32_t from, to;     // corners
  int32_t source;       // -1: a line that no source is behind
  double u_from, u_to;  // of the source's span
  int32_t left;         // the edge beside it at its lower end; -1: none, and of a horizontal one
  bool is_horizontal;
};

struct Arrangement {
  Array<Corner> corners;
  Array<Edge> edges;
  // The ends of edges around each corner, counter-clockwise from the east: twice the edge, and 1
  // where it leaves.
  Array<std::size_t> first_ray;  // by corner
  Array<int32_t> rays;
  double worst_bridge = 0;  // longest edge without a source

  void Clear() {
    corners.clear();
    edges.clear();
    first_ray.clear();
    rays.clear();
    worst_bridge = 0;
  }
  Edge& edge(int32_t i) { return edges[static_cast<std::size_t>(i)]; }
  const Edge& edge(int32_t i) const { return edges[static_cast<std::size_t>(i)]; }
  const Corner& corner(int32_t i) const { return corners[static_cast<std::size_t>(i)]; }
};

}  // namespace kurvo::outline
