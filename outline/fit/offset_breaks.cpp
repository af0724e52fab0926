#include "fit/offset_breaks.h"

#include <algorithm>
#include <cmath>

#include "strand/arc_sweep.h"
#include "strand/bracket.h"
#include "strand/roots.h"

namespace kurvo::outline {
namespace {

// By powers of u.
struct Polynomial {
  static constexpr int kMostDegree = 6;
  int degree = 0;
  double at[kMostDegree + 1] = {};
};

Polynomial operator*(const Polynomial& p, const Polynomial& q) {
  Polynomial product;
  product.degree = p.degree + q.degree;
  for (int i = 0; i <= p.degree; ++i)
    for (int k = 0; k <= q.degree; ++k) product.at[i + k] += p.at[i] * q.at[k];
  return product;
}

Polynomial Sum(double s, const Polynomial& p, double t, const Polynomial& q) {
  Polynomial sum;
  sum.degree = std::max(p.degree, q.degree);
  for (int i = 0; i <= sum.degree; ++i) sum.at[i] = s * p.at[i] + t * q.at[i];
  return sum;
}

Polynomial SquaredSpeed(const Hodograph3& h) {
  return {4,
          {Dot(h.v, h.v), 2 * Dot(h.v, h.a), Dot(h.a, h.a) + Dot(h.v, h.j), Dot(h.a, h.j),
           0.25 * Dot(h.j, h.j)}};
}

Polynomial CrossOf(const Hodograph3& h) { return {2, {h.cross[0], h.cross[1], h.cross[2]}}; }

// b_k = sum C(k,i) / C(n,i) c_i (Farouki and Rajan, 1988).
void ToBernstein(const Polynomial& p, double* b) {
  const int n = p.degree;
  for (int k = 0; k <= n; ++k) {
    double share = 1;
    b[k] = p.at[0];
    for (int i = 1; i <= k; ++i) {
      share *= static_cast<double>(k - i + 1) / (n - i + 1);
      b[k] += share * p.at[i];
    }
  }
}

RootList RootsOf(const Polynomial& p) {
  double b[Polynomial::kMostDegree + 1];
  ToBernstein(p, b);
  RootList roots;
  AddSignChanges(b, p.degree, roots);
  return roots;
}

// The roots of a + b u + c u^2 within (low, high), ascending.
Breaks RootsOfQuadratic(double a, double b, double c, double low, double high) {
  Breaks roots;
  const double discriminant = b * b - 4 * a * c;
  if (!(discriminant >= 0)) return roots;
  const double sum = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
  for (const double u : {sum / c, a / sum})
    if (u > low && u < high) roots.Add(u);
  roots.Sort();
  return roots;
}

// The turn from one direction to another in the sense (1 or -1), of a stretch that turns one way by
// less than a full turn.
double TurnBetween(Vec2 from, Vec2 to, double sense) {
  constexpr double kNoise = 1e-3;  // radians: so little in the wrong sense is none
  const double turn = sense * std::atan2(Cross(from, to), Dot(from, to));
  if (turn < -kNoise) return turn + kTurn;
  return std::max(turn, 0.0);
}

double ParameterOf(const Hodograph3& h, Vec2 direction, double low, double high, double share) {
  const Breaks roots = RootsOfQuadratic(Cross(h.v, direction), Cross(h.a, direction),
                                        0.5 * Cross(h.j, direction), low, high);
  for (std::size_t i = 0; i < roots.count; ++i)
    if (Dot(h.VelocityAt(roots.at[i]), direction) > 0) return roots.at[i];
  return low + share * (high - low);
}

}  // namespace

Hodograph3::Hodograph3(const Vec2* p)
    : v(3.0 * (p[1] - p[0])),
      a(6.0 * ((p[2] - p[1]) - (p[1] - p[0]))),
      j(6.0 * ((p[3] - p[0]) - 3.0 * (p[2] - p[1]))),
      cross{Cross(v, a), Cross(v, j), 0.5 * Cross(a, j)} {}

void Breaks::Sort() { std::sort(at, at + count); }

// The speed falls below sigma times the fastest: directions there are off by 2^-52 / sigma, sides
// by the distance times that; what is left out is sigma^2 long.
void FindHalts(const Hodograph3& h, double distance, Halts& halts) {
  constexpr double kRounding = 0x1p-52;
  constexpr double kLeastDistance = 1e-3;
  const Polynomial square = SquaredSpeed(h);
  double b[5];
  ToBernstein(square, b);
  const double most = *std::max_element(b, b + 5);
  const double sigma = std::cbrt(kRounding * std::max(std::fabs(distance), kLeastDistance));
  const double slow = sigma * std::sqrt(most);
  if (*std::min_element(b, b + 5) > slow * slow) return;
  const auto add = [&](double u) {
    const double speed = Length(h.VelocityAt(u));
    if (!(slow >= speed) || halts.count == std::size(halts.at)) return;
    if ((u == 0 || u == 1) && speed == 0) return;  // it leaves in the direction of its bend
    const double width = std::min(slow / Length(h.BendAt(u)), std::sqrt(2 * slow / Length(h.j)));
    halts.at[halts.count++] = {u, std::min(width, 0.125)};
  };
  add(0);
  const Polynomial slope = {3,
                            {square.at[1], 2 * square.at[2], 3 * square.at[3], 4 * square.at[4]}};
  for (const double u : RootsOf(slope)) add(u);
  add(1);
}

// The derivative of (v x a) / |v|^3 is that of v x a times |v|^2, less 3/2 of v x a times that of
// |v|^2, over |v|^5.
void AddVertices(const Hodograph3& h, double low, double high, Breaks& breaks) {
  const Polynomial speed = SquaredSpeed(h), cross = CrossOf(h);
  const Polynomial cross_slope = {1, {cross.at[1], 2 * cross.at[2]}};
  const Polynomial speed_slope = {3,
                                  {speed.at[1], 2 * speed.at[2], 3 * speed.at[3], 4 * speed.at[4]}};
  for (const double u : RootsOf(Sum(1, cross_slope * speed, -1.5, cross * speed_slope)))
    if (u > low && u < high) breaks.Add(u);
}

// Where |v|^3 + d (v x a) changes its sign: once at most between two vertices.
void AddTightest(const Hodograph3& h, double distance, double low, double high, Breaks& breaks) {
  const Polynomial speed = SquaredSpeed(h), cross = CrossOf(h);
  double s[5], c[3];
  ToBernstein(speed, s);
  ToBernstein(cross, c);
  double tightest = 0;
  for (const double value : c) tightest = std::max(tightest, -distance * value);
  if (!(tightest > 0)) return;
  const double slowest = std::max(*std::min_element(s, s + 5), 0.0);
  if (slowest * slowest * slowest > tightest * tightest) return;
  const auto run = [&](double u) {
    const Vec2 v = h.VelocityAt(u);
    const double square = SquaredLength(v);
    return square * std::sqrt(square) + distance * Cross(v, h.BendAt(u));
  };
  Breaks ends;
  AddVertices(h, low, high, ends);
  ends.Add(SquaredLength(h.VelocityAt(high)) == 0 ? high - kBesideHalt : high);
  double from = SquaredLength(h.VelocityAt(low)) == 0 ? low + kBesideHalt : low;
  double before = run(from);
  for (std::size_t i = 0; i < ends.count; ++i) {
    const double to = ends.at[i], after = run(to);
    if ((before < 0) != (after < 0) && to > from)
      breaks.Add(SignChangeBetween(run, from, to, before, after));
    from = to;
    before = after;
  }
}

void AddTurns(const Hodograph3& h, double low, Vec2 leaves, double high, Vec2 arrives, double most,
              Breaks& breaks) {
  constexpr double kSlack = 1e-9;  // radians
  Breaks ends = RootsOfQuadratic(h.cross[0], h.cross[1], h.cross[2], low, high);
  ends.Add(high);
  double turned = 0, from = low;
  Vec2 direction = leaves;
  for (std::size_t i = 0; i < ends.count; ++i) {
    const double to = ends.at[i], middle = 0.5 * (from + to);
    const Vec2 next = to == high ? arrives : h.VelocityAt(to);
    const double bend = h.cross[0] + middle * (h.cross[1] + middle * h.cross[2]);
    const double sense = bend < 0 ? -1 : 1;
    const Vec2 between = h.VelocityAt(middle);
    const double turn = TurnBetween(direction, between, sense) + TurnBetween(between, next, sense);
    if (turned + turn > most + kSlack) {
      if (i > 0) breaks.Add(from);  // at an inflection
      const int parts = std::max(1, static_cast<int>(std::ceil(turn / most - kSlack)));
      for (int k = 1; k < parts; ++k) {
        const double angle = sense * turn * k / parts;
        const Vec2 turned_by = {std::cos(angle), std::sin(angle)};
        const Vec2 toward = {Dot(direction, {turned_by.x, -turned_by.y}),
                             Dot(direction, {turned_by.y, turned_by.x})};
        breaks.Add(ParameterOf(h, toward, from, to, static_cast<double>(k) / parts));
      }
      turned = turn / parts;
    } else {
      turned += turn;
    }
    from = to;
    direction = next;
  }
}

}  // namespace kurvo::outline
