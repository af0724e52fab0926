#include "inputs.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>

#include "oracle.h"
#include "support/letters.h"

namespace peers {
namespace {

constexpr double kTurn = 2.0 * std::numbers::pi;

// A seed for each kind of question.
enum Seed : std::uint64_t {
  kSeedSegments = 20261122,
  kSeedArcs,
  kSeedCubics,
  kSeedOutlines,
  kSeedPoints,
  kSeedParameters,
  kSeedLineCubic,
  kSeedArcCubic,
  kSeedCubicCubic,
  kSeedOutlinePairs,
  kSeedNearlyCoincident,
  kSeedStrokes,
  kSeedGlyphStrokes,
  kSeedGlyphs,
  kSeedGlyphPoints,
  kSeedLetters,
};

Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }
Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }
Point operator*(double s, Point a) { return {s * a.x, s * a.y}; }
Point Turned(Point a, double angle) {
  const double c = std::cos(angle), s = std::sin(angle);
  return {c * a.x - s * a.y, s * a.x + c * a.y};
}

Point InSquare(Random& random, double size) {
  const double x = random.Between(0, size);
  return {x, random.Between(0, size)};
}

Segment ASegment(Random& random, double size) {
  const Point start = InSquare(random, size);
  return {start, InSquare(random, size)};
}

Arc AnArc(Random& random, double size) {
  Arc arc;
  arc.centre = InSquare(random, size);
  arc.radius = random.Between(0.1, 0.6) * size;
  arc.from = random.Between(0, kTurn);
  arc.sweep = random.Between(0.2, 0.95) * kTurn;
  return arc;
}

Bezier ACubic(Random& random, double size) {
  Bezier cubic;
  for (int i = 0; i < 4; ++i) cubic.push_back(InSquare(random, size));
  return cubic;
}

// 4 x^3 - 3 x over nearly [-1, 1], bent at random: against another one, turned by about a right
// angle, up to nine crossings.
Bezier AWave(Random& random, double size) {
  constexpr double kHeights[] = {-1.0, 5.0, -5.0, 1.0};
  const double angle = random.Between(0, kTurn), bend = random.Between(0, 0.5);
  const Point centre = {0.5 * size, 0.5 * size};
  Bezier wave;
  for (int i = 0; i < 4; ++i) {
    const double x = -1.0 + 2.0 * i / 3.0 + bend * random.Between(-1, 1);
    const double y = kHeights[i] + 3.0 * bend * random.Between(-1, 1);
    wave.push_back(centre + (0.4 * size) * Turned({x, y}, angle));
  }
  return wave;
}

Spline WithUniformKnots(std::vector<Point> points) {
  Spline spline{std::move(points), {}};
  const auto count = static_cast<int>(spline.points.size());
  for (int i = 0; i < count + 4; ++i)
    spline.knots.push_back(std::clamp(i - 3, 0, count - 3) / static_cast<double>(count - 3));
  return spline;
}

Spline AnOutline(Random& random, double size, int count) {
  const double waves = std::floor(random.Between(3, count / 6.0));
  const double high = random.Between(0.02, 0.15);
  const double phase = random.Between(0, kTurn), from = random.Between(0, kTurn);
  const double x = random.Between(0.4, 0.6) * size;
  const Point centre = {x, random.Between(0.4, 0.6) * size};
  std::vector<Point> points;
  for (int i = 0; i < count; ++i) {
    const double angle = from + kTurn * i / count;
    const double r = 0.45 * size * (1.0 + high * std::cos(waves * angle + phase));
    points.push_back(centre + Turned({r, 0.0}, angle));
  }
  return WithUniformKnots(points);
}

template <class Make>
auto Many(std::uint64_t seed, Make make) {
  Random random(seed);
  std::vector<decltype(make(random))> all;
  for (std::size_t i = 0; i < kCurves; ++i) all.push_back(make(random));
  return all;
}

Segment Moved(Segment s, Point by) { return {s.start + by, s.end + by}; }
Arc Moved(Arc arc, Point by) {
  arc.centre = arc.centre + by;
  return arc;
}
Bezier Moved(Bezier bezier, Point by) {
  for (Point& p : bezier) p = p + by;
  return bezier;
}
Spline Moved(Spline spline, Point by) {
  for (Point& p : spline.points) p = p + by;
  return spline;
}

template <class A>
auto OracleForm(const A& a) {
  return oracle::PiecesOf(a);
}
Arc OracleForm(const Arc& arc) { return arc; }

template <class A, class B>
std::size_t Count(const A& a, const B& b) {
  return oracle::Crossings(OracleForm(a), OracleForm(b)).size();
}

// Whether the number of crossings stays when one curve is moved by `length` in four directions.
template <class A, class B>
bool Steady(const Pair<A, B>& pair, std::size_t count, double length) {
  for (const Point by : {Point{length, 0}, {-length, 0}, {0, length}, {0, -length}})
    if (Count(Moved(pair.a, by), pair.b) != count) return false;
  return true;
}

// `each` pairs of every number of crossings from 0 to `most`, in turn.
template <class Make>
auto ByCrossings(std::uint64_t seed, double size, std::size_t most, std::size_t each, Make make) {
  constexpr int kTries = 300000;
  Random random(seed);
  using P = decltype(make(random));
  std::vector<std::vector<P>> found(most + 1);
  std::size_t full = 0;
  for (int i = 0; i < kTries && full <= most; ++i) {
    const P pair = make(random);
    const std::size_t count = Count(pair.a, pair.b);
    if (count > most || found[count].size() == each) continue;
    if (!Steady(pair, count, 1e-4 * size)) continue;
    found[count].push_back(pair);
    full += found[count].size() == each;
  }
  std::vector<P> all;
  for (std::size_t i = 0; i < each; ++i)
    for (const auto& some : found)
      if (i < some.size()) all.push_back(some[i]);
  return all;
}

}  // namespace

std::vector<Segment> Segments(double size) {
  return Many(kSeedSegments, [size](Random& r) { return ASegment(r, size); });
}

std::vector<Arc> Arcs(double size) {
  return Many(kSeedArcs, [size](Random& r) { return AnArc(r, size); });
}

std::vector<Bezier> Cubics(double size) {
  return Many(kSeedCubics, [size](Random& r) { return ACubic(r, size); });
}

std::vector<Spline> Outlines(double size, int count) {
  return Many(kSeedOutlines, [=](Random& r) { return AnOutline(r, size, count); });
}

std::vector<Bezier> BezierPieces(const Spline& spline) {
  std::vector<Bezier> pieces;
  for (const oracle::Piece& piece : oracle::PiecesOf(spline)) {
    Bezier& bezier = pieces.emplace_back();
    for (const oracle::Vec p : piece.points)
      bezier.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  }
  return pieces;
}

Spline OneSpan(const Bezier& cubic) { return WithUniformKnots(cubic); }

std::vector<About<Point>> PointsAround(const std::vector<Bezier>& curves, double size) {
  constexpr std::size_t kEach = 16;
  Random random(kSeedPoints);
  std::vector<About<Point>> points;
  for (std::size_t i = 0; i < kEach * curves.size(); ++i) {
    const std::size_t curve = i % curves.size();
    const oracle::Vec on = oracle::At(oracle::PiecesOf(curves[curve]), random.Unit());
    const Point near = {static_cast<double>(on.x), static_cast<double>(on.y)};
    const Point anywhere = InSquare(random, size), middle = {0.5 * size, 0.5 * size};
    const double reach[] = {0.05, 1.0, 3.0, 30.0};
    const std::size_t kind = i / curves.size() % std::size(reach);
    points.push_back({curve, (kind == 0 ? near : middle) + reach[kind] * (anywhere - middle)});
  }
  return points;
}

std::vector<About<double>> Parameters() {
  constexpr std::size_t kEach = 16;
  Random random(kSeedParameters);
  std::vector<About<double>> all;
  for (std::size_t i = 0; i < kEach * kCurves; ++i) all.push_back({i % kCurves, random.Unit()});
  return all;
}

std::vector<Pair<Segment, Bezier>> LinesAndCubics(double size) {
  return ByCrossings(kSeedLineCubic, size, 3, 128, [size](Random& r) {
    const Segment segment = ASegment(r, size);
    return Pair<Segment, Bezier>{segment, ACubic(r, size)};
  });
}

std::vector<Pair<Arc, Bezier>> ArcsAndCubics(double size) {
  return ByCrossings(kSeedArcCubic, size, 6, 32, [size](Random& r) {
    Arc arc = AnArc(r, size);
    if (r.Unit() < 0.5) return Pair<Arc, Bezier>{arc, ACubic(r, size)};
    arc.centre = {0.5 * size, r.Between(0.3, 0.7) * size};
    arc.radius = r.Between(0.15, 0.4) * size;
    return Pair<Arc, Bezier>{arc, AWave(r, size)};
  });
}

std::vector<Pair<Bezier, Bezier>> CubicPairs(double size) {
  return ByCrossings(kSeedCubicCubic, size, 9, 24, [size](Random& r) {
    const bool waves = r.Unit() < 0.7;
    const Bezier a = waves ? AWave(r, size) : ACubic(r, size);
    return Pair<Bezier, Bezier>{a, waves ? AWave(r, size) : ACubic(r, size)};
  });
}

std::vector<Pair<Spline, Spline>> OutlinePairs(double size, int count) {
  return Many(kSeedOutlinePairs, [=](Random& r) {
    while (true) {
      const Spline a = AnOutline(r, size, count);
      const Pair<Spline, Spline> pair{a, AnOutline(r, size, count)};
      if (Steady(pair, Count(pair.a, pair.b), 1e-4 * size)) return pair;
    }
  });
}

std::vector<Pair<Bezier, Bezier>> NearlyCoincident(double size) {
  return Many(kSeedNearlyCoincident, [size](Random& r) {
    constexpr double kAngle = 1e-7, kSlide = 1e-6;  // radians; of the size
    while (true) {
      const Bezier a = ACubic(r, size);
      const Point centre = InSquare(r, size);
      const Point by = Turned({kSlide * size, 0}, r.Between(0, kTurn));
      Bezier b;
      for (const Point p : a) b.push_back(centre + Turned(p - centre, kAngle) + by);
      const Pair<Bezier, Bezier> pair{a, b};
      if (Steady(pair, Count(a, b), 0.01 * kSlide * size)) return pair;
    }
  });
}

std::vector<Stroke> Strokes(double size) {
  const double distance = 0.02 * size;
  return Many(kSeedStrokes, [=](Random& r) {
    while (true) {
      const Bezier cubic = ACubic(r, size);
      if (oracle::SmallestRadius(oracle::PiecesOf(cubic)) * 0.8 > distance)
        return Stroke{cubic, r.Unit() < 0.5 ? distance : -distance};
    }
  });
}

std::vector<Stroke> GlyphStrokes(double size, int degree) {
  return Many(kSeedGlyphStrokes, [=](Random& r) {
    const double wide = r.Between(0.15, 0.3) * size, high = r.Between(0.15, 0.3) * size;
    const double full = r.Between(0.5, 0.6), angle = kTurn / 4 * std::floor(r.Between(0, 4));
    Bezier quarter = {{0, 0}, {0, high}, {wide, high}};
    if (degree == 3) quarter = {{0, 0}, {0, full * high}, {(1 - full) * wide, high}, {wide, high}};
    const double slant = r.Between(0, 0.2);
    for (Point& p : quarter) p = Turned({p.x + slant * p.y, p.y}, angle);
    return Stroke{quarter, (r.Unit() < 0.5 ? 0.02 : -0.02) * size};
  });
}

std::vector<Glyph> Glyphs(double size) {
  constexpr Point kOutline[] = {
      {.15, .20}, {.15, .05}, {.25, -.02}, {.50, -.10}, {.75, -.02}, {.86, .06},
      {.86, .22}, {.86, .36}, {.75, .42},  {.66, .48},  {.50, .53},  {.34, .58},
      {.30, .66}, {.30, .80}, {.50, .84},  {.68, .84},  {.72, .70},  {.78, .70},
      {.84, .70}, {.84, .82}, {.75, .88},  {.62, .96},  {.50, .96},  {.16, .94},
      {.16, .66}, {.16, .50}, {.32, .42},  {.44, .38},  {.56, .34},  {.72, .28},
      {.72, .18}, {.72, .02}, {.50, .02},  {.28, .04},  {.28, .20},  {.22, .20}};
  constexpr std::size_t kPoints = std::size(kOutline);
  return Many(kSeedGlyphs, [&](Random& r) {
    std::vector<Point> outline;
    for (const Point p : kOutline) {
      const double x = p.x + r.Between(-0.01, 0.01);
      outline.push_back(size * Point{x, p.y + r.Between(-0.01, 0.01)});
    }
    Glyph glyph;
    for (std::size_t i = 0; i < kPoints; i += 2)
      glyph.push_back({outline[i], outline[i + 1], outline[(i + 2) % kPoints]});
    return glyph;
  });
}

std::vector<About<Point>> PointsInGlyphs(const std::vector<Glyph>& glyphs, double size) {
  constexpr std::size_t kEach = 32;
  const double clear = 1e-4 * size;
  Random random(kSeedGlyphPoints);
  std::vector<About<Point>> points;
  while (points.size() < kEach * glyphs.size()) {
    const std::size_t i = points.size() % glyphs.size();
    const Point p = InSquare(random, size);
    const bool off = std::all_of(glyphs[i].begin(), glyphs[i].end(), [&](const Bezier& bezier) {
      return oracle::Distance(oracle::PiecesOf(bezier), {p.x, p.y}) > clear;
    });
    if (off) points.push_back({i, p});
  }
  return points;
}

static Outline LetterOf(std::size_t i, double size, double turn, Point by) {
  Outline outline;
  const auto place = [=](double x, double y) {
    const Point p = Turned({x / 1000 - 0.5, y / 1000 - 0.5}, turn);
    return Point{size * (p.x + 0.5) + by.x, size * (p.y + 0.5) + by.y};
  };
  for (auto& contour :
       kurvo_test::ContoursOf(kurvo_test::kGlyphs[i % kurvo_test::kSimpleGlyphCount], place))
    outline.push_back(std::move(contour));
  return outline;
}

std::vector<Letters> LetterPairs(double size, Placing placing) {
  constexpr std::size_t kLooks = 32;
  Random random(kSeedLetters);
  std::vector<Letters> all;
  for (std::size_t i = 0; i < kCurves; ++i) {
    const bool same = placing != Placing::kShifted && placing != Placing::kOverlaid;
    const double far = placing == Placing::kShifted ? size : 0;
    Point by = {random.Between(0.1, 0.5) * far, random.Between(-0.3, 0.3) * far};
    if (placing == Placing::kSlid) by = {1e-6 * size, -7e-7 * size};
    const double turn = placing == Placing::kTurned ? 1e-7 : 0;
    Letters letters = {
        LetterOf(i, size, 0, {}), LetterOf(same ? i : 7 * i + 3, size, turn, by), {}};
    while (letters.looks.size() < kLooks) {
      const Outline& outline = random.Unit() < 0.5 ? letters.a : letters.b;
      const auto some = [&](const auto& list) -> const auto& {
        return list[static_cast<std::size_t>(random.Between(0, double(list.size())))];
      };
      const auto pieces = oracle::PiecesOf(some(some(outline)));
      const oracle::Real t = random.Unit(), side = random.Unit() < 0.5 ? 1 : -1;
      const oracle::Vec at = oracle::At(pieces, t), d = oracle::DerivativeAt(pieces, t);
      const oracle::Vec look = at + side * 5e-4L * size / oracle::Size(d) * oracle::Vec{-d.y, d.x};
      const auto is_clear = [&](const Outline& of) {
        for (const Glyph& contour : of)
          for (const Bezier& bezier : contour)
            if (oracle::Distance(oracle::PiecesOf(bezier), look) < 2.5e-4L * size) return false;
        return true;
      };
      if (is_clear(letters.a) && is_clear(letters.b))
        letters.looks.push_back({double(look.x), double(look.y)});
    }
    all.push_back(std::move(letters));
  }
  return all;
}

}  // namespace peers
