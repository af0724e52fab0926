// What is asked of a library, in templates that know nothing of it.
//
// A peer is a class with `kName` and those of the functions below that its library has; a question
// is asked when all that it needs is there. Make... turns plain numbers into the library's own
// record, out of the timing; the questions take such records and return the library's own answers,
// freed in time; Read... and Sample... turn these into plain numbers again, out of the timing.
//
//   MakeLine(Segment), MakeArc(Arc), MakeCubic(Bezier), MakeQuadratic(Bezier), MakeSpline(Spline),
//   MakeGlyph(Glyph)
//   Nearest(curve, Point)          the parameter of the nearest point
//   FirstFoot(curve, Point)        that of the first foot point
//   Intersect(a, b)                for ReadCommon(a, b, answer): std::vector<Common>
//   Length(curve, tolerance)
//   Position(curve, t), Derivative(curve, t)     Point
//   Split(curve, t)                for SampleHalf(answer, half, s): Point of one half, over [0, 1]
//   Offset(curve, distance, tolerance)           positive to the left of travel; for
//                                  SampleOffset(answer): std::vector<Point>, in order, 33 a piece
//   Inside(glyph, Point)           bool
//   MakeOutline(Outline), Combine(outline, outline, operation)   for ReadOutline(answer): Outline;
//                                  union, intersection, difference and xor by number
#pragma once

#include <cstddef>
#include <vector>

#include "inputs.h"
#include "judge.h"
#include "measure.h"

namespace peers {

// The tolerance that every library is given where it takes one (length), and that of lengths and
// offsets.
inline constexpr double kTolerance = 1e-6;
inline constexpr double kLengthTolerance = 1e-3;
inline constexpr double kOffsetShare = 1e-4;  // of the size

// Each function fills in the result and returns true, or returns false where the library has not
// what it needs.
template <class P>
class Questions {
 private:
  template <class A, class Make>
  static auto All(const std::vector<A>& numbers, Make make) {
    std::vector<decltype(make(numbers[0]))> all;
    all.reserve(numbers.size());
    for (const A& a : numbers) all.push_back(make(a));
    return all;
  }

  // Questions about points and cubics, given to the library as make(cubic).
  template <class Make, class Ask, class Right>
  static bool AtPoints(double size, Make make, Ask ask, Right right, Result* result) {
    const auto numbers = Cubics(size);
    const auto curves = All(numbers, make);
    const auto points = PointsAround(numbers, size);
    *result = Measure(
        points.size(), [&](std::size_t i) { return ask(curves[points[i].curve], points[i].what); },
        [&](std::size_t i, double t) {
          return right(numbers[points[i].curve], points[i].what, t);
        });
    return true;
  }

  // Intersections of `pairs`, made into records by the two functions.
  template <class Pairs, class MakeA, class MakeB>
  static bool Intersect(P& peer, const Pairs& pairs, MakeA make_a, MakeB make_b, Result* result) {
    const auto a = All(pairs, [&](const auto& pair) { return make_a(pair.a); });
    const auto b = All(pairs, [&](const auto& pair) { return make_b(pair.b); });
    *result = Measure(
        pairs.size(), [&](std::size_t i) { return peer.Intersect(a[i], b[i]); },
        [&](std::size_t i, const auto& answer) {
          return judge::Crossings(pairs[i], peer.ReadCommon(a[i], b[i], answer));
        });
    return true;
  }

  static bool Cubics2(P& peer, const std::vector<Pair<Bezier, Bezier>>& pairs, Result* result) {
    if constexpr (requires(const Bezier& b) {
                    peer.Intersect(peer.MakeCubic(b), peer.MakeCubic(b));
                  }) {
      const auto make = [&](const Bezier& b) { return peer.MakeCubic(b); };
      return Intersect(peer, pairs, make, make, result);
    }
    return false;
  }

  template <class Numbers, class Make>
  static bool Length(P& peer, const Numbers& numbers, Make make, Result* result) {
    const auto curves = All(numbers, make);
    *result = Measure(
        curves.size(), [&](std::size_t i) { return peer.Length(curves[i], kLengthTolerance); },
        [&](std::size_t i, double length) {
          return judge::Length(numbers[i], length, kLengthTolerance);
        });
    return true;
  }

  template <class Numbers, class Make>
  static bool Position(P& peer, const Numbers& numbers, Make make, Result* result) {
    const auto curves = All(numbers, make);
    const auto at = Parameters();
    *result = Measure(
        at.size(), [&](std::size_t i) { return peer.Position(curves[at[i].curve], at[i].what); },
        [&](std::size_t i, Point p) {
          return judge::Position(numbers[at[i].curve], at[i].what, p);
        });
    return true;
  }

  template <class Numbers, class Make>
  static bool Split(P& peer, const Numbers& numbers, Make make, Result* result) {
    const auto curves = All(numbers, make);
    const auto at = Parameters();
    *result = Measure(
        at.size(), [&](std::size_t i) { return peer.Split(curves[at[i].curve], at[i].what); },
        [&](std::size_t i, const auto& answer) {
          return judge::Split(numbers[at[i].curve], at[i].what,
                              [&](int half, double s) { return peer.SampleHalf(answer, half, s); });
        });
    return true;
  }

  template <class Make>
  static bool Offset(P& peer, const std::vector<Stroke>& strokes, double tolerance, Make make,
                     Result* result) {
    const auto curves = All(strokes, [&](const Stroke& s) { return make(s.curve); });
    *result = Measure(
        curves.size(),
        [&](std::size_t i) { return peer.Offset(curves[i], strokes[i].distance, tolerance); },
        [&](std::size_t i, const auto& answer) {
          return judge::Offset(strokes[i], tolerance, peer.SampleOffset(answer));
        });
    return true;
  }

 public:
  static bool Nearest(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Nearest(peer.MakeCubic(b), Point{}); })
      return AtPoints(
          size, [&](const Bezier& b) { return peer.MakeCubic(b); },
          [&](const auto& curve, Point p) { return peer.Nearest(curve, p); }, judge::Nearest,
          result);
    return false;
  }

  static bool NearestOneSpan(P& peer, double size, Result* result) {
    if constexpr (requires(const Spline& s) { peer.Nearest(peer.MakeSpline(s), Point{}); })
      return AtPoints(
          size, [&](const Bezier& b) { return peer.MakeSpline(OneSpan(b)); },
          [&](const auto& curve, Point p) { return peer.Nearest(curve, p); }, judge::Nearest,
          result);
    return false;
  }

  static bool FirstFoot(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.FirstFoot(peer.MakeCubic(b), Point{}); })
      return AtPoints(
          size, [&](const Bezier& b) { return peer.MakeCubic(b); },
          [&](const auto& curve, Point p) { return peer.FirstFoot(curve, p); }, judge::FirstFoot,
          result);
    return false;
  }

  static bool LineCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Segment& s, const Bezier& b) {
                    peer.Intersect(peer.MakeLine(s), peer.MakeCubic(b));
                  })
      return Intersect(
          peer, LinesAndCubics(size), [&](const Segment& s) { return peer.MakeLine(s); },
          [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  static bool ArcCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Arc& a, const Bezier& b) {
                    peer.Intersect(peer.MakeArc(a), peer.MakeCubic(b));
                  })
      return Intersect(
          peer, ArcsAndCubics(size), [&](const Arc& a) { return peer.MakeArc(a); },
          [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  static bool CubicCubic(P& peer, double size, Result* result) {
    return Cubics2(peer, CubicPairs(size), result);
  }

  static bool Coincident(P& peer, double size, Result* result) {
    return Cubics2(peer, NearlyCoincident(size), result);
  }

  template <int kCount>
  static bool Splines(P& peer, double size, Result* result) {
    if constexpr (requires(const Spline& s) {
                    peer.Intersect(peer.MakeSpline(s), peer.MakeSpline(s));
                  }) {
      const auto make = [&](const Spline& s) { return peer.MakeSpline(s); };
      return Intersect(peer, OutlinePairs(size, kCount), make, make, result);
    }
    return false;
  }

  static bool LengthOfCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Length(peer.MakeCubic(b), 0.0); })
      return Length(
          peer, Cubics(size), [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  static bool LengthOfSpline(P& peer, double size, Result* result) {
    if constexpr (requires(const Spline& s) { peer.Length(peer.MakeSpline(s), 0.0); })
      return Length(
          peer, Outlines(size, 100), [&](const Spline& s) { return peer.MakeSpline(s); }, result);
    return false;
  }

  static bool PositionOnLine(P& peer, double size, Result* result) {
    if constexpr (requires(const Segment& s) { peer.Position(peer.MakeLine(s), 0.0); })
      return Position(
          peer, Segments(size), [&](const Segment& s) { return peer.MakeLine(s); }, result);
    return false;
  }

  static bool PositionOnCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Position(peer.MakeCubic(b), 0.0); })
      return Position(
          peer, Cubics(size), [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  static bool PositionOnArc(P& peer, double size, Result* result) {
    if constexpr (requires(const Arc& a) { peer.Position(peer.MakeArc(a), 0.0); })
      return Position(
          peer, Arcs(size), [&](const Arc& a) { return peer.MakeArc(a); }, result);
    return false;
  }

  static bool Derivative(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Derivative(peer.MakeCubic(b), 0.0); }) {
      const auto numbers = Cubics(size);
      const auto curves = All(numbers, [&](const Bezier& b) { return peer.MakeCubic(b); });
      const auto at = Parameters();
      *result = Measure(
          at.size(),
          [&](std::size_t i) { return peer.Derivative(curves[at[i].curve], at[i].what); },
          [&](std::size_t i, Point p) {
            return judge::Derivative(numbers[at[i].curve], at[i].what, p);
          });
      return true;
    }
    return false;
  }

  static bool SplitCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Split(peer.MakeCubic(b), 0.5); })
      return Split(
          peer, Cubics(size), [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  static bool SplitSpline(P& peer, double size, Result* result) {
    if constexpr (requires(const Spline& s) { peer.Split(peer.MakeSpline(s), 0.5); })
      return Split(
          peer, Outlines(size, 1000), [&](const Spline& s) { return peer.MakeSpline(s); }, result);
    return false;
  }

  static bool OffsetCubic(P& peer, double size, Result* result) {
    if constexpr (requires(const Bezier& b) { peer.Offset(peer.MakeCubic(b), 0.0, 0.0); })
      return Offset(
          peer, Strokes(size), kOffsetShare * size,
          [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    return false;
  }

  // Half a unit of a thousand an em.
  template <int kDegree>
  static bool OffsetGlyph(P& peer, double size, Result* result) {
    constexpr double kShare = 0.5e-3;
    if constexpr (kDegree == 2) {
      if constexpr (requires(const Bezier& b) { peer.Offset(peer.MakeQuadratic(b), 0.0, 0.0); })
        return Offset(
            peer, GlyphStrokes(size, 2), kShare * size,
            [&](const Bezier& b) { return peer.MakeQuadratic(b); }, result);
    } else {
      if constexpr (requires(const Bezier& b) { peer.Offset(peer.MakeCubic(b), 0.0, 0.0); })
        return Offset(
            peer, GlyphStrokes(size, 3), kShare * size,
            [&](const Bezier& b) { return peer.MakeCubic(b); }, result);
    }
    return false;
  }

  template <Placing kPlacing>
  static bool Combine(P& peer, double size, Result* result) {
    if constexpr (requires(const Outline& o) {
                    peer.Combine(peer.MakeOutline(o), peer.MakeOutline(o), 0);
                  }) {
      constexpr std::size_t kOperations = 4;
      const auto numbers = LetterPairs(size, kPlacing);
      const auto a = All(numbers, [&](const Letters& pair) { return peer.MakeOutline(pair.a); });
      const auto b = All(numbers, [&](const Letters& pair) { return peer.MakeOutline(pair.b); });
      *result = Measure(
          kOperations * numbers.size(),
          [&](std::size_t i) {
            const std::size_t pair = i / kOperations;
            return peer.Combine(a[pair], b[pair], static_cast<int>(i % kOperations));
          },
          [&](std::size_t i, const auto& answer) {
            return judge::Combined(numbers[i / kOperations], static_cast<int>(i % kOperations),
                                   peer.ReadOutline(answer));
          });
      return true;
    }
    return false;
  }

  static bool Classify(P& peer, double size, Result* result) {
    if constexpr (requires(const Glyph& g) { peer.Inside(peer.MakeGlyph(g), Point{}); }) {
      const auto numbers = Glyphs(size);
      const auto glyphs = All(numbers, [&](const Glyph& g) { return peer.MakeGlyph(g); });
      const auto points = PointsInGlyphs(numbers, size);
      *result = Measure(
          points.size(),
          [&](std::size_t i) { return peer.Inside(glyphs[points[i].curve], points[i].what); },
          [&](std::size_t i, bool inside) {
            return judge::Inside(numbers[points[i].curve], points[i].what, inside);
          });
      return true;
    }
    return false;
  }
};

}  // namespace peers
