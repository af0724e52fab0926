// Where the offset of a cubic must be cut.
#pragma once

#include <cstddef>

#include "base/vec2.h"

namespace kurvo::outline {

// Velocity and bend of a cubic by powers of its parameter.
struct Hodograph3 {
  explicit Hodograph3(const Vec2* points);

  Vec2 VelocityAt(double u) const { return v + u * (a + (0.5 * u) * j); }
  Vec2 BendAt(double u) const { return a + u * j; }

  Vec2 v, a, j;     // at 0, each the derivative of the one before
  double cross[3];  // velocity x bend, by powers
};

// Parameters, ascending once they are sorted.
struct Breaks {
  static constexpr std::size_t kMost = 64;

  double at[kMost];
  std::size_t count = 0;

  void Add(double u) {
    if (count < kMost) at[count++] = u;
  }
  void Sort();
};

// All within (low, high): where the cubic stands still but for rounding; `width` is how far before
// and after that its directions are not to be trusted.
struct Halt {
  double at, width;
};
struct Halts {
  Halt at[4];
  std::size_t count = 0;
};
void FindHalts(const Hodograph3& hodograph, double distance, Halts& halts);

// So far from an end without velocity, in parameters, tells what becomes of the curvature there.
inline constexpr double kBesideHalt = 0x1p-18;

// Where the centre of curvature lies at this distance to the right, which is negative to the left.
void AddTightest(const Hodograph3& hodograph, double distance, double low, double high,
                 Breaks& breaks);
// Where the curvature is largest or least.
void AddVertices(const Hodograph3& hodograph, double low, double high, Breaks& breaks);
// Between these the direction turns by no more than `most` (radians).
void AddTurns(const Hodograph3& hodograph, double low, Vec2 leaves, double high, Vec2 arrives,
              double most, Breaks& breaks);

}  // namespace kurvo::outline
