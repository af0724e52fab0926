// The questions: seeded, the same for every library. Lengths go with `size`, the width of the
// square that the curves are drawn in.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include "curve.h"

namespace peers {

class Random {
 public:
  explicit Random(std::uint64_t seed) : engine_(seed) {}
  double Unit() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
  double Between(double low, double high) { return low + (high - low) * Unit(); }

 private:
  std::mt19937_64 engine_;
};

inline constexpr std::size_t kCurves = 64;

std::vector<Segment> Segments(double size);
std::vector<Arc> Arcs(double size);
std::vector<Bezier> Cubics(double size);

// Waving rings, open at one place, of `count` control points.
std::vector<Spline> Outlines(double size, int count);

// The Bezier curves that a spline is made of, for libraries without splines.
std::vector<Bezier> BezierPieces(const Spline& spline);

// A cubic as a spline.
Spline OneSpan(const Bezier& cubic);

// A question about one of the curves.
template <class What>
struct About {
  std::size_t curve = 0;
  What what{};
};

// Points near the curves, inside their box, around it and far away, in turn.
std::vector<About<Point>> PointsAround(const std::vector<Bezier>& curves, double size);

// Parameters over [0, 1].
std::vector<About<double>> Parameters();

template <class A, class B>
struct Pair {
  A a;
  B b;
};

// Pairs that cross at 0, 1, 2... points, as many pairs of each number, in turn. None is nearly
// tangent and none meets near an end: moved by a ten-thousandth of the size they cross as often.
std::vector<Pair<Segment, Bezier>> LinesAndCubics(double size);
std::vector<Pair<Arc, Bezier>> ArcsAndCubics(double size);
std::vector<Pair<Bezier, Bezier>> CubicPairs(double size);

// Pairs of outlines, as they come.
std::vector<Pair<Spline, Spline>> OutlinePairs(double size, int count);

// A cubic and itself, turned by 1e-7 radians and slid by a millionth of the size.
std::vector<Pair<Bezier, Bezier>> NearlyCoincident(double size);

// Curves to offset to either side by less than four fifths of their smallest radius.
struct Stroke {
  Bezier curve;
  double distance = 0.0;
};
std::vector<Stroke> Strokes(double size);

// Quarters of ovals, as outlines of letters have them, of degree 2 or 3: `size` units an em.
std::vector<Stroke> GlyphStrokes(double size, int degree);

// Two letters to combine, of contours that do not cross, and points beside their outlines at which
// to look whether that was right: half a thousandth of the size off, at least a quarter of one from
// all of them.
enum class Placing { kShifted, kOverlaid, kSlid, kTurned, kIdentical };
struct Letters {
  Outline a, b;
  std::vector<Point> looks;
};
// Slid by a millionth of the size, turned by 1e-7 radians.
std::vector<Letters> LetterPairs(double size, Placing placing);

// The letter S in quadratic curves, a little different each time, and points in its box that are
// not on the outline.
std::vector<Glyph> Glyphs(double size);
std::vector<About<Point>> PointsInGlyphs(const std::vector<Glyph>& glyphs, double size);

}  // namespace peers
