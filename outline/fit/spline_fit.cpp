#include "fit/spline_fit.h"

#include <cmath>

#include "fit/greedy.h"
#include "fit/over_chord.h"

namespace kurvo::outline {
namespace {

// Nodes and weights of the Gauss-Legendre rule of five points on [0, 1]: exact up to degree 9, the
// integrand x y dx of a cubic having degree 8.
constexpr double kFiveNodes[] = {0.046910077030668, 0.230765344947158, 0.5, 0.769234655052842,
                                 0.953089922969332};
constexpr double kFiveWeights[] = {0.118463442528095, 0.239314335249683, 0.284444444444444,
                                   0.239314335249683, 0.118463442528095};

constexpr double kTinyStretch = 0x1p-36;         // of the size: below it a stretch is a point
constexpr double kShortStretch = 0x1p-16;        // of the size: below it tangents need not meet
constexpr double kStraight = 1e-9;               // radians between tangents and chord of a line
constexpr int kLeastPairs = 8, kMostPairs = 64;  // parts that are compared

// The Bezier points of a cubic over [0, 1], as those of a quadratic are when raised.
struct Piece {
  Vec2 points[4];
};

class BezierFitting {
 public:
  BezierFitting(const CellRun& run, int degree, double deviation)
      : run_(run), degree_(degree), deviation_(deviation) {}

  Attempt Try(double from, double to, Piece& piece) const {
    const Vec2 start = run_.PointAt(from), end = run_.PointAt(to), chord = end - start;
    const Vec2 third = (1.0 / 3) * chord;
    piece = {{start, start + third, end - third, end}};
    const double length = Length(chord);
    if (!(length > 0) || IsTiny(from, to, start)) return {IsTiny(from, to, start), 0};
    const Vec2 along = (1 / length) * chord;
    const auto turned = [&](Vec2 v) { return Vec2{Dot(v, along), Cross(along, v)}; };
    const Vec2 leaves = turned(run_.TangentAt(from)), arrives = turned(run_.TangentAt(to));
    double a, b;
    const bool found = degree_ == 3 ? HandlesOfCubic(leaves, arrives, from, to, along, length, a, b)
                                    : HandlesOfQuadratic(leaves, arrives, a, b);
    // Tangents that differ by rounding may not meet: a short stretch then has a straight piece.
    if (!found) return {IsWithin(std::min(kShortStretch, 0.5 * deviation_), from, to, start), 0};
    piece.points[1] = start + (a * length) * run_.TangentAt(from);
    piece.points[2] = end - (b * length) * run_.TangentAt(to);
    return Compare(piece, from, to);
  }

 private:
  bool HandlesOfCubic(Vec2 leaves, Vec2 arrives, double from, double to, Vec2 along, double length,
                      double& a, double& b) const {
    a = 2.0 / 3 / (1 + std::max(leaves.x, 0.0));
    b = 2.0 / 3 / (1 + std::max(arrives.x, 0.0));
    const double first_a = a, first_b = b;
    if (std::fabs(leaves.y) <= kStraight && std::fabs(arrives.y) <= kStraight) return leaves.x > 0;
    const OverChord over(leaves, arrives);
    if (over.Solve(UnderRun(from, to, along, length), a, b)) return true;
    a = first_a;
    b = first_b;
    return true;
  }

  // Where the tangents meet; the handles of the raised curve are 2/3 of the way.
  static bool HandlesOfQuadratic(Vec2 leaves, Vec2 arrives, double& a, double& b) {
    constexpr double kFarthest = 8;  // chords
    a = b = 1.0 / 3;
    if (std::fabs(leaves.y) <= kStraight && std::fabs(arrives.y) <= kStraight)
      return leaves.x > 0 && arrives.x > 0;
    const double sine = Cross(leaves, arrives);
    a = 2.0 / 3 * arrives.y / sine;
    b = -2.0 / 3 * leaves.y / sine;
    return a > 0 && b > 0 && a < kFarthest && b < kFarthest;
  }

  Under UnderRun(double from, double to, Vec2 along, double length) const {
    const Vec2 start = run_.PointAt(from);
    Under under = {0, 0};
    run_.ForEachPart(from, to, [&](const Vec2* part) {
      for (int i = 0; i < 5; ++i) {
        const Vec2 w = CubicAt(part, kFiveNodes[i]) - start;
        const double x = Dot(w, along), y = Cross(along, w);
        const double dx = Dot(CubicDerivatives(part, kFiveNodes[i]).first, along);
        under.area += kFiveWeights[i] * y * dx;
        under.moment += kFiveWeights[i] * x * y * dx;
      }
      return true;
    });
    return {under.area / (length * length), under.moment / (length * length * length)};
  }

  // A bound of the distance between the piece and the stretch, in both directions: both are cut
  // where normals of the stretch meet the piece. Cubics over one parameter are as near as they are
  // across the velocity; what they are apart along it, at a bend k, counts as k/2 of its square.
  Attempt Compare(const Piece& piece, double from, double to) const {
    const double cells = static_cast<double>(run_.CellOf(to) - run_.CellOf(from) + 1);
    for (int pairs = kLeastPairs; pairs <= kMostPairs; pairs *= 2) {
      const int of_cell = std::max(1, static_cast<int>(std::ceil(pairs / cells)));
      double reached = 0, bound = 0, last = 0;
      const bool goes = run_.ForEachPart(from, to, [&](const Vec2* part) {
        for (int i = 0; i < of_cell; ++i) {
          const double low = static_cast<double>(i) / of_cell;
          const double high = static_cast<double>(i + 1) / of_cell;
          if (!ComparePart(piece, part, low, high, last, reached, bound)) return false;
        }
        return true;
      });
      if (!goes) return {false, reached > deviation_ ? reached : 0};
      // What is left of the piece beyond the last normal is no longer than it is near.
      if (!(last > 1 - kLeftOver)) return {false, 0};
      if (deviation_ >= bound) return {true, bound};
      if (reached > kHopeless * deviation_ || pairs == kMostPairs) return {false, bound};
    }
    return {false, 0};
  }

  static constexpr double kLeftOver = 1e-6;
  static constexpr double kHopeless = 0.999;

  bool ComparePart(const Piece& piece, const Vec2* part, double low, double high, double& last,
                   double& reached, double& bound) const {
    Vec2 p[4], q[4];
    CubicPart(part, low, high, p);
    const Vec2 end = p[3], direction = p[3] - p[2];
    const Vec2 toward = SquaredLength(direction) > 0 ? direction : p[3] - p[0];
    const double next = Abreast(piece.points, end, toward, last);
    if (!(next >= last)) return false;
    CubicPart(piece.points, last, next, q);
    last = next;
    const Vec2 chord = p[3] - p[0];
    const double length = Length(chord);
    if (!(length > 0)) return true;
    const Vec2 along = (1 / length) * chord;
    double beside = 0, apart = 0, slope = 0, slowest = length;
    Vec2 gaps[4], steps[3];
    for (int i = 0; i < 4; ++i) {
      gaps[i] = q[i] - p[i];
      beside = std::max(beside, std::fabs(Dot(along, gaps[i])));
      apart = std::max(apart, Length(gaps[i]));
      if (i == 3) break;
      steps[i] = p[i + 1] - p[i];
      for (const Vec2 step : {steps[i], q[i + 1] - q[i]}) {
        const double ahead = Dot(step, along);
        slowest = std::min(slowest, ahead);
        if (ahead > 0) slope = std::max(slope, std::fabs(Cross(along, step)) / ahead);
      }
    }
    // Bends are no sharper than twice the angle between the steps on their length.
    const double shifted = 2 * slope / length * beside * beside;
    const double off = slowest > 0 ? AcrossOf(gaps, steps) / slowest + shifted : apart;
    bound = std::max(bound, std::min(off, apart));
    reached = std::max(reached, Length(q[3] - p[3]));
    return !(reached > 4 * deviation_);
  }

  // A bound of gap x velocity / 3, by its coefficients sum C(3,i) C(2,k-i) / C(5,k) gap x step.
  static double AcrossOf(const Vec2* gaps, const Vec2* steps) {
    constexpr double kThree[] = {1, 3, 3, 1}, kTwo[] = {1, 2, 1}, kFive[] = {1, 5, 10, 10, 5, 1};
    double across[6] = {}, most = 0;
    for (int i = 0; i < 4; ++i)
      for (int j = 0; j < 3; ++j) across[i + j] += kThree[i] * kTwo[j] * Cross(gaps[i], steps[j]);
    for (int k = 0; k < 6; ++k) most = std::max(most, std::fabs(across[k]) / kFive[k]);
    return most;
  }

  // The parameter after `last` at which the piece crosses a normal.
  static double Abreast(const Vec2* piece, Vec2 point, Vec2 direction, double last) {
    constexpr int kSteps = 5;
    const auto ahead = [&](double t) { return Dot(CubicAt(piece, t) - point, direction); };
    double t = last;
    // A step from `last` lands near; from there on Newton's method.
    for (int i = 0; i < kSteps; ++i) {
      const double speed = Dot(CubicDerivatives(piece, t).first, direction);
      if (!(speed > 0)) break;
      const double next = std::clamp(t - ahead(t) / speed, last, 1.0);
      const bool close = 1e-9 >= std::fabs(next - t);
      t = next;
      if (close) break;
    }
    return t;
  }

  bool IsTiny(double from, double to, Vec2 start) const {
    return IsWithin(std::min(kTinyStretch, 0.5 * deviation_), from, to, start);
  }
  bool IsWithin(double distance, double from, double to, Vec2 start) const {
    double most = 0;
    run_.ForEachPart(from, to, [&](const Vec2* part) {
      for (int i = 0; i < 4; ++i) most = std::max(most, SquaredLength(part[i] - start));
      return true;
    });
    return distance >= std::sqrt(most);
  }

  const CellRun& run_;
  const int degree_;
  const double deviation_;
};

void Fit(const CellRun& run, int degree, double deviation,
         FunctionRef<void(const Vec2*, double)> take) {
  const BezierFitting fitting(run, degree, deviation);
  const double order = degree == 3 ? 6 : 4;  // of the deviation by the length
  FitGreedily<Piece>(
      run.Size(), deviation, order,
      [&](double from, double to, Piece& piece) { return fitting.Try(from, to, piece); },
      [&](const Piece& piece, double to) { take(piece.points, to); });
}

}  // namespace

void FitCubics(const CellRun& run, double deviation, FunctionRef<void(const Vec2*, double)> take) {
  Fit(run, 3, deviation, take);
}

void FitBeziers(const CellRun& run, int degree, double deviation, Vec2 end, Pieces& pieces) {
  Fit(run, degree, deviation, [&](const Vec2* p, double to) {
    const Vec2 at = to >= run.Size() ? end : pieces.frame().Outwards(p[3]);
    if (degree == 3) return pieces.Cubic(p[1], p[2], at);
    pieces.Quadratic(p[0] + 1.5 * (p[1] - p[0]), at);
  });
}

// With the control point where the tangents meet, the middle is off by r (1 - c)^2 / (2 c), c being
// the cosine of half the sweep, and nothing more.
void AddArcAsQuadratics(const Span& arc, double deviation, Vec2 end, Pieces& pieces) {
  constexpr int kMost = 1 << 20;
  const auto off = [&](int n) {
    const double sine = std::sin(arc.sweep / (4 * n)), gap = 2 * sine * sine;  // 1 - c
    return 0.5 * arc.radius * gap * gap / (1 - gap);
  };
  int n = std::max(1, static_cast<int>(std::ceil(std::fabs(arc.sweep) / 2)));
  while (n < kMost && !(deviation >= off(n))) n += 1 + n / 16;
  const double leg = std::tan(arc.sweep / (2 * n)) / arc.sweep;
  for (int i = 0; i < n; ++i) {
    const double from = static_cast<double>(i) / n, to = static_cast<double>(i + 1) / n;
    pieces.Quadratic(PointAt(arc, from) + leg * VelocityAt(arc, from),
                     i + 1 == n ? end : pieces.frame().Outwards(PointAt(arc, to)));
  }
}

}  // namespace kurvo::outline
