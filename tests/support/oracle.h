// Points, derivatives and lengths of curves of every type, slowly and in long double. It calls
// nothing of the library. Of free-form curves by de Boor's recursion on power series in h,
// evaluated at t + h: coefficient k is then the k-th derivative over k!.
#pragma once

#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "kurvo.h"

namespace kurvo_test {

using Wide = long double;

struct LongPoint {
  Wide x, y;
};
inline LongPoint operator-(const LongPoint& a, const LongPoint& b) {
  return {a.x - b.x, a.y - b.y};
}
inline LongPoint operator*(Wide s, const LongPoint& p) { return {s * p.x, s * p.y}; }
inline Wide Dot(const LongPoint& a, const LongPoint& b) { return a.x * b.x + a.y * b.y; }
inline Wide Cross(const LongPoint& a, const LongPoint& b) { return a.x * b.y - a.y * b.x; }
inline Wide Gap(const LongPoint& a, const LongPoint& b) { return std::hypot(a.x - b.x, a.y - b.y); }
inline LongPoint Unit(const LongPoint& v) { return (1 / Gap(v, {0, 0})) * v; }
inline double Distance(const LongPoint& a, const LongPoint& b) {
  return static_cast<double>(Gap(a, b));
}

struct WidePoint {
  Wide x, y, w;  // coordinates times the weight
};
inline WidePoint Between(const WidePoint& a, const WidePoint& b, Wide t) {
  return {(1 - t) * a.x + t * b.x, (1 - t) * a.y + t * b.y, (1 - t) * a.w + t * b.w};
}

// The angles that an arc starts at and sweeps, negative for a clockwise one.
struct WideTurn {
  Wide start, sweep;
};
WideTurn Turn(const KurvoArc& arc);

template <std::size_t kSize>
struct Jet {
  std::array<Wide, kSize> c{};

  friend Jet operator+(Jet a, const Jet& b) {
    for (std::size_t i = 0; i < kSize; ++i) a.c[i] += b.c[i];
    return a;
  }
  friend Jet operator-(Jet a, const Jet& b) {
    for (std::size_t i = 0; i < kSize; ++i) a.c[i] -= b.c[i];
    return a;
  }
  friend Jet operator*(const Jet& a, const Jet& b) {
    Jet product;
    for (std::size_t i = 0; i < kSize; ++i)
      for (std::size_t j = 0; i + j < kSize; ++j) product.c[i + j] += a.c[i] * b.c[j];
    return product;
  }
  friend Jet operator/(const Jet& a, const Jet& b) {
    Jet quotient;
    for (std::size_t i = 0; i < kSize; ++i) {
      Wide rest = a.c[i];
      for (std::size_t j = 0; j < i; ++j) rest -= quotient.c[j] * b.c[i - j];
      quotient.c[i] = rest / b.c[0];
    }
    return quotient;
  }
};

template <std::size_t kSize>
struct JetPoint {
  Jet<kSize> x, y;
  Wide span = 1;                 // of the parameter: the length of the polynomial piece
  const Curve* piece = nullptr;  // the curve itself, or the outermost piece of a composite

  LongPoint Derivative(std::size_t n) const {
    const Wide factor = std::tgamma(static_cast<Wide>(n) + 1);
    return {x.c[n] * factor, y.c[n] * factor};
  }
  Wide Size(std::size_t n) const { return Gap(Derivative(n), {0, 0}); }
};

// To which of two spans or pieces the parameter between them belongs.
enum class Side { kBefore, kBehind };

class Oracle {
 public:
  explicit Oracle(const Curve& cv);

  // The point at a parameter of the curve's own; beyond its ends, on the continuation.
  LongPoint PointAt(Wide t, Side side = Side::kBefore) const;
  // Derivatives are by the own parameter of the innermost piece. kSize is 1, 4 or 8.
  template <std::size_t kSize>
  JetPoint<kSize> JetAt(Wide t, Side side = Side::kBehind) const;
  Wide DistanceAt(Wide t, const double* p) const { return Gap(PointAt(t), {p[0], p[1]}); }
  // Between two parameters, halved until halves together agree with the whole to 1e-8.
  Wide Length(Wide from, Wide to) const;
  Wide Length() const { return Length(start(), end()); }

  Wide start() const;
  Wide end() const;
  // A part without knots: a Bezier polygon, or an arc when it has no points, over [0, 1] of a
  // parameter s of its own; start + s width on the whole curve.
  struct Part {
    std::vector<WidePoint> points;
    Wide cx, cy, r, angle, sweep;
    Wide start, width;
  };
  std::vector<Part> Parts() const;

 private:
  struct Leaf {
    const Curve* outer;
    Wide start, width;              // the own parameter u is start + u width on the whole curve
    std::vector<WidePoint> points;  // none for an arc
    std::vector<Wide> knots;
    Wide cx = 0, cy = 0, r = 0, angle = 0, sweep = 0;

    std::size_t order() const { return knots.size() - points.size(); }
    std::size_t Span(Wide u, Side side) const;
  };
  void Collect(const Curve& cv, Wide start, Wide width, const Curve* outer);
  const Leaf& LeafAt(Wide t, Side side) const;
  template <std::size_t kSize>
  static JetPoint<kSize> FreeFormAt(const Leaf& leaf, Wide u, Side side);

  std::vector<Leaf> leaves_;
};

}  // namespace kurvo_test
