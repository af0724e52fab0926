// A chain that is made piece by piece, each from where the last one ended.
#pragma once

#include <kurvo.h>

#include <utility>

#include "base/owned.h"
#include "base/vec2.h"
#include "strand/frame.h"

namespace kurvo::outline {

// Ends are in the caller's coordinates, so that they keep their bits; what lies between in the
// frame's. Pieces carry the attribute words of `source`.
class Pieces {
 public:
  explicit Pieces(const Frame& frame) : frame_(frame) {}

  const Frame& frame() const { return frame_; }
  void Reserve(std::size_t count) { chain_.Reserve(count); }
  void Begin(const Curve* source) { source_ = source; }
  void StartAt(Vec2 start) { at_ = start; }
  Vec2 at() const { return at_; }

  void Line(Vec2 end);
  void Arc(Vec2 centre, double radius, bool clockwise, Vec2 end);
  void Quadratic(Vec2 control, Vec2 end);
  void Cubic(Vec2 control0, Vec2 control1, Vec2 end);
  // An arc or a Bezier curve as it is, but for z.
  void Copy(const Curve& curve);
  Cvseq Release() { return chain_.Release(); }

 private:
  void Add(OwnedCurve curve, Vec2 end);

  const Frame& frame_;
  const Curve* source_ = nullptr;
  Vec2 at_ = {};
  OwnedChain chain_;
};

}  // namespace kurvo::outline
