#include "oracle.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace peers::oracle {
namespace {

constexpr int kBisections = 70;  // a long double has 64 bits
constexpr int kHalvings = 60;    // of a parameter, at most

Vec V(Point p) { return {p.x, p.y}; }

template <class T>
T DeCasteljau(std::vector<T> b, Real t) {
  for (std::size_t n = b.size(); n > 1; --n)
    for (std::size_t i = 0; i + 1 < n; ++i) b[i] = (1 - t) * b[i] + t * b[i + 1];
  return b[0];
}

template <class T>
void Halve(const std::vector<T>& b, std::vector<T>* left, std::vector<T>* right) {
  *right = b;
  left->resize(b.size());
  for (std::size_t n = b.size(); n > 0; --n) {
    (*left)[b.size() - n] = (*right)[0];
    for (std::size_t i = 0; i + 1 < n; ++i)
      (*right)[i] = Real(0.5) * ((*right)[i] + (*right)[i + 1]);
  }
}

std::vector<Vec> Hodograph(const std::vector<Vec>& points) {
  std::vector<Vec> d;
  for (std::size_t i = 0; i + 1 < points.size(); ++i)
    d.push_back(static_cast<Real>(points.size() - 1) * (points[i + 1] - points[i]));
  return d;
}

Real Binomial(std::size_t n, std::size_t k) {
  Real b = 1;
  for (std::size_t i = 0; i < k; ++i) b = b * static_cast<Real>(n - i) / static_cast<Real>(i + 1);
  return b;
}

// The Bernstein coefficients of the scalar product of two curves.
std::vector<Real> Product(const std::vector<Vec>& a, const std::vector<Vec>& b) {
  const std::size_t m = a.size() - 1, n = b.size() - 1;
  std::vector<Real> c(m + n + 1, 0);
  for (std::size_t i = 0; i <= m; ++i)
    for (std::size_t j = 0; j <= n; ++j)
      c[i + j] += Binomial(m, i) * Binomial(n, j) / Binomial(m + n, i + j) * Dot(a[i], b[j]);
  return c;
}

void FindRoots(const std::vector<Real>& b, Real from, Real to, int depth,
               std::vector<Real>* roots) {
  int changes = 0;
  for (std::size_t i = 0; i + 1 < b.size(); ++i) changes += (b[i] > 0) != (b[i + 1] > 0);
  if (changes == 0) return;
  if (changes == 1) {
    Real low = 0, high = 1;
    for (int i = 0; i < kBisections; ++i) {
      const Real mid = (low + high) / 2;
      ((DeCasteljau(b, mid) > 0) == (b[0] > 0) ? low : high) = mid;
    }
    roots->push_back(from + (to - from) * (low + high) / 2);
    return;
  }
  if (depth == kHalvings) return roots->push_back((from + to) / 2);
  std::vector<Real> left, right;
  Halve(b, &left, &right);
  FindRoots(left, from, (from + to) / 2, depth + 1, roots);
  FindRoots(right, (from + to) / 2, to, depth + 1, roots);
}

// The Bernstein coefficients of (B - p) . B'.
std::vector<Real> FootEquation(std::vector<Vec> points, Vec p) {
  const std::vector<Vec> d = Hodograph(points);
  for (Vec& q : points) q = q - p;
  return Product(points, d);
}

const Piece& PieceAt(const Pieces& curve, Real t) {
  std::size_t i = 0;
  while (i + 1 < curve.size() && t > curve[i].to) ++i;
  return curve[i];
}

Real Local(const Piece& piece, Real t) { return (t - piece.from) / (piece.to - piece.from); }

// ---- Crossings ----

constexpr std::size_t kMost = 4;  // control points of a piece

struct Part {
  std::array<Vec, kMost> p;
  std::size_t n = 0;
  Real from = 0, to = 1;
};

// Whether the two lie on different sides of a line along the chord of `a`.
bool ChordParts(const Part& a, const Part& b) {
  const Vec along = a.p[a.n - 1] - a.p[0];
  Real a0 = 0, a1 = 0, b0 = Cross(along, b.p[0] - a.p[0]), b1 = b0;
  for (std::size_t i = 1; i < a.n; ++i) {
    const Real h = Cross(along, a.p[i] - a.p[0]);
    a0 = std::min(a0, h), a1 = std::max(a1, h);
  }
  for (std::size_t i = 1; i < b.n; ++i) {
    const Real h = Cross(along, b.p[i] - a.p[0]);
    b0 = std::min(b0, h), b1 = std::max(b1, h);
  }
  return a1 < b0 || b1 < a0;
}

bool MayMeet(const Part& a, const Part& b) {
  const auto apart = [&](Real Vec::*x) {
    Real a0 = a.p[0].*x, a1 = a0, b0 = b.p[0].*x, b1 = b0;
    for (std::size_t i = 1; i < a.n; ++i)
      a0 = std::min(a0, a.p[i].*x), a1 = std::max(a1, a.p[i].*x);
    for (std::size_t i = 1; i < b.n; ++i)
      b0 = std::min(b0, b.p[i].*x), b1 = std::max(b1, b.p[i].*x);
    return a1 < b0 || b1 < a0;
  };
  return !apart(&Vec::x) && !apart(&Vec::y) && !ChordParts(a, b) && !ChordParts(b, a);
}

// Whether no direction of the one is a direction of the other, forwards or backwards, and those of
// neither fill half a turn: then they have one point in common at most.
bool DirectionsPart(const Part& a, const Part& b) {
  int side = 0;
  for (std::size_t i = 0; i + 1 < a.n; ++i)
    for (std::size_t j = 0; j + 1 < b.n; ++j) {
      const Real c = Cross(a.p[i + 1] - a.p[i], b.p[j + 1] - b.p[j]);
      const int s = c > 0 ? 1 : c < 0 ? -1 : 0;
      if (s == 0 || s == -side) return false;
      side = s;
    }
  const auto fan = [](const Part& q) {
    for (std::size_t i = 0; i + 1 < q.n; ++i)
      if (Dot(q.p[i + 1] - q.p[i], q.p[q.n - 1] - q.p[0]) <= 0) return false;
    return true;
  };
  return fan(a) && fan(b);
}

void Halve(const Part& whole, Part* left, Part* right) {
  *left = *right = whole;
  for (std::size_t n = whole.n; n > 0; --n) {
    left->p[whole.n - n] = right->p[0];
    for (std::size_t i = 0; i + 1 < n; ++i)
      right->p[i] = Real(0.5) * (right->p[i] + right->p[i + 1]);
  }
  left->to = right->from = (whole.from + whole.to) / 2;
}

Vec At(const Part& part, Real t) {
  std::array<Vec, kMost> b = part.p;
  for (std::size_t n = part.n; n > 1; --n)
    for (std::size_t i = 0; i + 1 < n; ++i) b[i] = (1 - t) * b[i] + t * b[i + 1];
  return b[0];
}

Vec Tangent(const Part& part, Real t) {
  Part d = part;
  d.n = part.n - 1;
  for (std::size_t i = 0; i < d.n; ++i)
    d.p[i] = static_cast<Real>(d.n) * (part.p[i + 1] - part.p[i]);
  return At(d, t);
}

// Newton's method from the middles. False when it leaves the two parts or does not settle.
bool Settle(const Part& a, const Part& b, Crossing* found) {
  constexpr int kSteps = 30;
  constexpr Real kOut = 1e-13L, kStill = 1e-16L;
  Real s = 0.5, t = 0.5;
  for (int i = 0; i < kSteps; ++i) {
    const Vec gap = At(b, t) - At(a, s), u = Tangent(a, s), v = Tangent(b, t);
    const Real det = Cross(u, v);
    const Real ds = Cross(gap, v) / det, dt = Cross(gap, u) / det;
    s += ds, t += dt;
    if (!(s >= -1 && s <= 2 && t >= -1 && t <= 2)) return false;
    if (std::abs(ds) > kStill || std::abs(dt) > kStill) continue;
    found->on_a = a.from + s * (a.to - a.from);
    found->on_b = b.from + t * (b.to - b.from);
    found->sine = std::abs(det) / (Size(u) * Size(v));
    return s >= -kOut && s <= 1 + kOut && t >= -kOut && t <= 1 + kOut;
  }
  return false;
}

void Meet(const Part& a, const Part& b, int depth, std::vector<Crossing>* found) {
  constexpr int kDeepest = 60;
  if (!MayMeet(a, b)) return;
  Crossing crossing;
  if (DirectionsPart(a, b) && Settle(a, b, &crossing)) return found->push_back(crossing);
  if (depth == kDeepest) return;
  Part a0, a1, b0, b1;
  Halve(a, &a0, &a1);
  Halve(b, &b0, &b1);
  for (const Part* x : {&a0, &a1})
    for (const Part* y : {&b0, &b1}) Meet(*x, *y, depth + 1, found);
}

Part PartOf(const Piece& piece) {
  Part part;
  part.n = piece.points.size();
  std::copy(piece.points.begin(), piece.points.end(), part.p.begin());
  part.from = piece.from, part.to = piece.to;
  return part;
}

// In order along `a`, each once: halving finds those between two parts twice.
void Tidy(std::vector<Crossing>* found) {
  constexpr Real kSame = 1e-10L;
  std::sort(found->begin(), found->end(),
            [](const Crossing& x, const Crossing& y) { return x.on_a < y.on_a; });
  std::vector<Crossing> once;
  for (const Crossing& c : *found) {
    const bool known = std::any_of(once.begin(), once.end(), [&](const Crossing& o) {
      return std::abs(o.on_a - c.on_a) <= kSame && std::abs(o.on_b - c.on_b) <= kSame;
    });
    if (!known) once.push_back(c);
  }
  *found = once;
}

// The blossom of the span [knots[k], knots[k + 1]] of a cubic B-spline.
Vec Blossom(const Spline& spline, std::size_t k, std::array<Real, 3> at) {
  std::array<Vec, 4> d;
  for (std::size_t i = 0; i < 4; ++i) d[i] = V(spline.points[k - 3 + i]);
  for (std::size_t r = 1; r <= 3; ++r)
    for (std::size_t j = 3; j >= r; --j) {
      const Real low = spline.knots[k - 3 + j], high = spline.knots[k + 1 + j - r];
      const Real s = (at[r - 1] - low) / (high - low);
      d[j] = (1 - s) * d[j - 1] + s * d[j];
    }
  return d[3];
}

}  // namespace

Real Size(Vec a) { return std::hypot(a.x, a.y); }

Pieces PiecesOf(const Segment& segment) { return {{{V(segment.start), V(segment.end)}, 0, 1}}; }

Pieces PiecesOf(const Bezier& bezier) {
  Piece piece;
  for (const Point p : bezier) piece.points.push_back(V(p));
  return {piece};
}

Pieces PiecesOf(const Spline& spline) {
  Pieces pieces;
  for (std::size_t k = 3; k < spline.points.size(); ++k) {
    const Real u = spline.knots[k], v = spline.knots[k + 1];
    pieces.push_back({{Blossom(spline, k, {u, u, u}), Blossom(spline, k, {u, u, v}),
                       Blossom(spline, k, {u, v, v}), Blossom(spline, k, {v, v, v})},
                      u,
                      v});
  }
  return pieces;
}

Vec At(const Pieces& curve, Real t) {
  const Piece& piece = PieceAt(curve, t);
  return DeCasteljau(piece.points, Local(piece, t));
}

Vec At(const Arc& arc, Real t) {
  const Real angle = arc.from + t * arc.sweep;
  return V(arc.centre) + arc.radius * Vec{std::cos(angle), std::sin(angle)};
}

Vec DerivativeAt(const Pieces& curve, Real t) {
  const Piece& piece = PieceAt(curve, t);
  return 1 / (piece.to - piece.from) * DeCasteljau(Hodograph(piece.points), Local(piece, t));
}

Vec DerivativeAt(const Arc& arc, Real t) {
  const Real angle = arc.from + t * arc.sweep;
  return Real(arc.radius) * arc.sweep * Vec{-std::sin(angle), std::cos(angle)};
}

std::vector<Real> Roots(const std::vector<Real>& bernstein) {
  std::vector<Real> roots;
  FindRoots(bernstein, 0, 1, 0, &roots);
  return roots;
}

Real Distance(const Pieces& curve, Vec p) {
  Real least = std::numeric_limits<Real>::infinity();
  for (const Piece& piece : curve) {
    std::vector<Real> feet = Roots(FootEquation(piece.points, p));
    feet.insert(feet.end(), {0, 1});
    for (const Real t : feet) least = std::min(least, Size(DeCasteljau(piece.points, t) - p));
  }
  return least;
}

std::vector<Real> FeetAndEnds(const Bezier& bezier, Vec p) {
  std::vector<Real> feet = Roots(FootEquation(PiecesOf(bezier)[0].points, p));
  feet.insert(feet.end(), {0, 1});
  return feet;
}

Real FirstFoot(const Bezier& bezier, Vec p) {
  constexpr Real kBeyond = 0.001L;
  const Pieces curve = PiecesOf(bezier);
  const std::vector<Vec>& points = curve[0].points;
  // The control points over [-kBeyond, 1 + kBeyond], by the blossom.
  const std::size_t n = points.size() - 1;
  std::vector<Vec> longer;
  for (std::size_t k = 0; k <= n; ++k) {
    std::vector<Vec> b = points;
    for (std::size_t r = 0; r < n; ++r) {
      const Real s = r < k ? 1 + kBeyond : -kBeyond;
      for (std::size_t i = 0; i + r < n; ++i) b[i] = (1 - s) * b[i] + s * b[i + 1];
    }
    longer.push_back(b[0]);
  }
  const std::vector<Real> feet = Roots(FootEquation(longer, p));
  if (!feet.empty()) {
    const Real t = -kBeyond + feet[0] * (1 + 2 * kBeyond);
    if (t >= 0 && t <= 1) return t;
  }
  return Size(points[0] - p) < Size(points[n] - p) ? 0 : 1;
}

Real Length(const Pieces& curve) {
  constexpr int kParts = 1024;
  constexpr Real kAt[] = {0.0L, 0.5384693101056830910363144L, 0.9061798459386639927976269L};
  constexpr Real kWeight[] = {0.5688888888888888888888889L, 0.4786286704993664680412915L,
                              0.2369268850561890875142640L};
  const int parts = std::max(16, kParts / static_cast<int>(curve.size()));
  Real length = 0;
  for (const Piece& piece : curve) {
    const std::vector<Vec> d = Hodograph(piece.points);
    const Real half = Real(0.5) / parts;
    for (int i = 0; i < parts; ++i)
      for (int j = -2; j <= 2; ++j) {
        const Real t = half * (2 * i + 1 + (j < 0 ? -1 : 1) * kAt[std::abs(j)]);
        length += half * kWeight[std::abs(j)] * Size(DeCasteljau(d, t));
      }
  }
  return length;
}

std::vector<Crossing> Crossings(const Pieces& a, const Pieces& b) {
  std::vector<Crossing> found;
  std::vector<Part> parts;
  for (const Piece& piece : b) parts.push_back(PartOf(piece));
  for (const Piece& piece : a) {
    const Part part = PartOf(piece);
    for (const Part& other : parts) Meet(part, other, 0, &found);
  }
  Tidy(&found);
  return found;
}

std::vector<Crossing> Crossings(const Arc& a, const Pieces& b) {
  constexpr Real kTurn = 6.283185307179586476925287L;
  std::vector<Crossing> found;
  for (const Piece& piece : b) {
    std::vector<Vec> from_centre = piece.points;
    for (Vec& p : from_centre) p = p - V(a.centre);
    std::vector<Real> equation = Product(from_centre, from_centre);
    for (Real& c : equation) c -= Real(a.radius) * a.radius;
    for (const Real root : Roots(equation)) {
      const Real t = piece.from + root * (piece.to - piece.from);
      const Vec p = DeCasteljau(from_centre, root);
      Real angle = std::fmod(std::atan2(p.y, p.x) - a.from, kTurn);
      if (angle < 0) angle += kTurn;
      const Real s = angle / a.sweep;
      if (s > 1) continue;
      const Vec u = DerivativeAt(a, s), v = DerivativeAt(b, t);
      found.push_back({s, t, std::abs(Cross(u, v)) / (Size(u) * Size(v))});
    }
  }
  Tidy(&found);
  return found;
}

int Winding(const Glyph& glyph, Vec p) {
  int winding = 0;
  for (const Bezier& bezier : glyph) {
    const Pieces curve = PiecesOf(bezier);
    std::vector<Real> height;
    for (const Vec q : curve[0].points) height.push_back(q.y - p.y);
    for (const Real t : Roots(height))
      if (At(curve, t).x > p.x) winding += DerivativeAt(curve, t).y > 0 ? 1 : -1;
  }
  return winding;
}

Real SmallestRadius(const Pieces& curve) {
  constexpr int kLooks = 257;
  Real least = std::numeric_limits<Real>::infinity();
  for (const Piece& piece : curve) {
    const std::vector<Vec> d = Hodograph(piece.points), dd = Hodograph(d);
    for (int i = 0; i < kLooks; ++i) {
      const Real t = Real(i) / (kLooks - 1), speed = Size(DeCasteljau(d, t));
      const Real turn = std::abs(Cross(DeCasteljau(d, t), DeCasteljau(dd, t)));
      if (turn > 0) least = std::min(least, speed * speed * speed / turn);
    }
  }
  return least;
}

}  // namespace peers::oracle
