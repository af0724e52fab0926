// Where curves cross.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "bernstein.h"
#include "oracle.h"

namespace peers::oracle {
namespace {

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

}  // namespace

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

}  // namespace peers::oracle
