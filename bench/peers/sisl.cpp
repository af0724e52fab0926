// SISL. Every curve is a B-spline; a line and an arc are what its functions take for them, an
// unbounded line and a full circle, and the points beyond their ends are dropped here.
#include <sisl.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <numbers>
#include <utility>

#include "driver.h"

namespace {

using peers::Common;
using peers::Point;

constexpr int kPlane = 2;             // dimensions
constexpr double kComputation = 0.0;  // a tolerance that SISL does not use

class Handle {
 public:
  explicit Handle(SISLCurve* curve) : curve_(curve) {}
  Handle(Handle&& other) noexcept : curve_(std::exchange(other.curve_, nullptr)) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (curve_) freeCurve(curve_);
  }
  SISLCurve* get() const { return curve_; }

 private:
  SISLCurve* curve_;
};

struct Line {
  Point start, end;
};

// What an intersection gives; freed with free, as the manual asks.
class Answer {
 public:
  Answer() = default;
  Answer(Answer&& other) noexcept
      : on_a(std::exchange(other.on_a, nullptr)),
        on_b(std::exchange(other.on_b, nullptr)),
        count(std::exchange(other.count, 0)),
        curves(std::exchange(other.curves, nullptr)),
        curve_count(std::exchange(other.curve_count, 0)) {}
  Answer(const Answer&) = delete;
  Answer& operator=(const Answer&) = delete;
  ~Answer() {
    std::free(on_a);
    std::free(on_b);
    if (curves) freeIntcrvlist(curves, curve_count);
  }

  double *on_a = nullptr, *on_b = nullptr;
  int count = 0;
  SISLIntcurve** curves = nullptr;
  int curve_count = 0;
};

Point At(const Handle& curve, double t, int order, int which) {
  double out[2 * kPlane];
  int left = 0, status;
  s1221(curve.get(), order, t, &left, out, &status);
  return {out[kPlane * which], out[kPlane * which + 1]};
}

Handle Make(const std::vector<Point>& points, const std::vector<double>& knots, int order) {
  std::vector<double> flat;
  for (const Point p : points) flat.insert(flat.end(), {p.x, p.y});
  std::vector<double> copy = knots;
  constexpr int kPolynomial = 1, kCopied = 1;
  return Handle(newCurve(static_cast<int>(points.size()), order, copy.data(), flat.data(),
                         kPolynomial, kPlane, kCopied));
}

double PolygonLength(const Handle& curve) {
  const SISLCurve* c = curve.get();
  double length = 0.0;
  for (const double* p = c->ecoef; p < c->ecoef + kPlane * (c->in - 1); p += kPlane)
    length += std::hypot(p[2] - p[0], p[3] - p[1]);
  return length;
}

class Sisl {
 public:
  static constexpr const char* kName = "sisl";

  static Line MakeLine(const peers::Segment& s) { return {s.start, s.end}; }
  static peers::Arc MakeArc(const peers::Arc& a) { return a; }
  static Handle MakeCubic(const peers::Bezier& b) { return Make(b, {0, 0, 0, 0, 1, 1, 1, 1}, 4); }
  static Handle MakeQuadratic(const peers::Bezier& b) { return Make(b, {0, 0, 0, 1, 1, 1}, 3); }
  static Handle MakeSpline(const peers::Spline& s) { return Make(s.points, s.knots, 4); }

  static double Nearest(const Handle& curve, Point p) {
    Answer x;
    double point[] = {p.x, p.y};
    int status;
    s1953(curve.get(), point, kPlane, kComputation, peers::kTolerance, &x.count, &x.on_a,
          &x.curve_count, &x.curves, &status);
    return x.count > 0 ? x.on_a[0] : 0.0;
  }

  static Answer Intersect(const Handle& a, const Handle& b) {
    Answer x;
    int status;
    s1857(a.get(), b.get(), kComputation, peers::kTolerance, &x.count, &x.on_a, &x.on_b,
          &x.curve_count, &x.curves, &status);
    return x;
  }
  static Answer Intersect(const Line& line, const Handle& b) {
    Answer x;
    double on[] = {line.start.x, line.start.y};
    double normal[] = {line.start.y - line.end.y, line.end.x - line.start.x};
    int status;
    s1850(b.get(), on, normal, kPlane, kComputation, peers::kTolerance, &x.count, &x.on_b,
          &x.curve_count, &x.curves, &status);
    return x;
  }
  static Answer Intersect(const peers::Arc& arc, const Handle& b) {
    Answer x;
    double centre[] = {arc.centre.x, arc.centre.y};
    int status;
    s1371(b.get(), centre, arc.radius, kPlane, kComputation, peers::kTolerance, &x.count, &x.on_b,
          &x.curve_count, &x.curves, &status);
    return x;
  }
  static std::vector<Common> ReadCommon(const Handle&, const Handle&, const Answer& x) {
    std::vector<Common> common;
    for (int i = 0; i < x.count; ++i) common.push_back({x.on_a[i], x.on_b[i]});
    return common;
  }
  static std::vector<Common> ReadCommon(const Line& line, const Handle& b, const Answer& x) {
    std::vector<Common> common;
    const double dx = line.end.x - line.start.x, dy = line.end.y - line.start.y;
    for (int i = 0; i < x.count; ++i) {
      const Point p = At(b, x.on_b[i], 0, 0);
      const double s =
          ((p.x - line.start.x) * dx + (p.y - line.start.y) * dy) / (dx * dx + dy * dy);
      if (s >= 0.0 && s <= 1.0) common.push_back({s, x.on_b[i]});
    }
    return common;
  }
  static std::vector<Common> ReadCommon(const peers::Arc& arc, const Handle& b, const Answer& x) {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    std::vector<Common> common;
    for (int i = 0; i < x.count; ++i) {
      const Point p = At(b, x.on_b[i], 0, 0);
      double angle = std::atan2(p.y - arc.centre.y, p.x - arc.centre.x) - arc.from;
      angle -= kTurn * std::floor(angle / kTurn);
      if (angle <= arc.sweep) common.push_back({angle / arc.sweep, x.on_b[i]});
    }
    return common;
  }

  // The tolerance is one of shares of the whole.
  static double Length(const Handle& curve, double tolerance) {
    double length;
    int status;
    s1240(curve.get(), tolerance / PolygonLength(curve), &length, &status);
    return length;
  }

  static Point Position(const Handle& curve, double t) { return At(curve, t, 0, 0); }
  static Point Derivative(const Handle& curve, double t) { return At(curve, t, 1, 1); }

  static std::pair<Handle, Handle> Split(const Handle& curve, double t) {
    SISLCurve *first = nullptr, *second = nullptr;
    int status;
    s1710(curve.get(), t, &first, &second, &status);
    return {Handle(first), Handle(second)};
  }
  static Point SampleHalf(const std::pair<Handle, Handle>& halves, int half, double s) {
    const Handle& curve = half == 0 ? halves.first : halves.second;
    const SISLCurve* c = curve.get();
    const double from = c->et[c->ik - 1], to = c->et[c->in];
    return At(curve, from + s * (to - from), 0, 0);
  }

  static Handle Offset(const Handle& curve, double distance, double tolerance) {
    double unused_in_the_plane[] = {0.0, 0.0, 0.0};
    constexpr double kAnyStep = 0.0;
    SISLCurve* offset = nullptr;
    int status;
    s1360(curve.get(), distance, tolerance, unused_in_the_plane, kAnyStep, kPlane, &offset,
          &status);
    return Handle(offset);
  }
  static std::vector<Point> SampleOffset(const Handle& curve) {
    std::vector<Point> samples;
    if (const SISLCurve* c = curve.get())
      for (int k = c->ik - 1; k < c->in; ++k)
        for (int i = 0; i <= 32; ++i)
          samples.push_back(At(curve, c->et[k] + (c->et[k + 1] - c->et[k]) * i / 32.0, 0, 0));
    return samples;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Sisl>::Main(argc, argv); }
