// What a sweep is about: the curves of all operands as sources, joined at vertices.
#pragma once

#include <kurvo_outline.h>

#include <cstddef>
#include <cstdint>

#include "base/memory.h"
#include "base/vec2.h"
#include "strand/frame.h"
#include "strand/span.h"

namespace kurvo::outline {

// Loops that fill by one rule.
struct Operand {
  const Cvseq* loops;
  int32_t count;
  int32_t rule;  // KURVO_FILL_*
};

struct Vertex {
  Vec2 point;     // in the frame
  Vec2 given;     // in the caller's coordinates; the record's bits where it is an end of a curve
  bool is_given;  // it is
};

// A smooth piece of a curve of an operand, or the line that closes a gap between two.
struct Source {
  Span span;  // of a gap its curve is kNone
  int32_t operand, loop;
  int32_t start, end;  // vertices

  static constexpr int32_t kNone = -1;
  bool IsBridge() const { return span.curve == kNone; }
};

struct Scene {
  Frame frame;
  double tol = 0;  // in the frame, like all lengths here
  Array<Source> sources;
  Array<Vertex> vertices;
  int32_t gaps = 0;       // joints that are wider than nothing
  double widest_gap = 0;  // of those that Joined moves together
  Arena arena;

  int32_t AddVertex(const Vertex& vertex) {
    vertices.push_back(vertex);
    return CountOf(vertices.size()) - 1;
  }
  const Source& source(int32_t i) const { return sources[static_cast<std::size_t>(i)]; }
  const Vertex& vertex(int32_t i) const { return vertices[static_cast<std::size_t>(i)]; }
};

// Adds the loops of a checked operand to a scene whose frame and tol are known. Ends of neighbours
// that are hardly apart share a vertex; others are bridged, at jumps within a curve too. Throws
// Refusal: KURVO_ERR_CHAIN_ENDS for a joint wider than `gap` (the caller's unit).
void AddLoops(const Operand& operand, int32_t number, double gap, Scene& scene);

}  // namespace kurvo::outline
