// Curves for the benchmarks: seeded, of 100 units unless a benchmark names another size, at general
// angles, and many of a kind that are asked in turn: neither branches nor caches know an answer.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numbers>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "kurvo.h"

namespace bench {

constexpr double kSize = 100.0;                    // of the square that curves lie in
constexpr double kSizes[] = {1.0, 100.0, 1000.0};  // where a tolerance of length counts
constexpr unsigned kSeed = 20240917;

class Random {
 public:
  explicit Random(unsigned seed = kSeed) : engine_(seed) {}
  double Unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(engine_); }
  double Between(double low, double high) { return low + (high - low) * Unit(); }

 private:
  std::mt19937_64 engine_;
};

// A curve that frees itself, with the record it is asked through.
class OwnCurve {
 public:
  OwnCurve() {
    KurvoInitGlobalVar(&g);
    KurvocvInitCurve(&curve);
  }
  ~OwnCurve() { KurvocvFreeCurve(&curve); }
  OwnCurve(const OwnCurve&) = delete;
  OwnCurve& operator=(const OwnCurve&) = delete;

  Curve curve;
  GlobalVar g;
};

// How curves of a kind are made, and of about how many points each.
struct Kind {
  std::function<void(Curve&, Random&)> make;
  int32_t points = 4;
};

// Curves of one kind, to be asked in turn: 64, or fewer when they would be more than 65 536 points,
// so that a benchmark of large curves does not become one of the memory.
class Family {
 public:
  explicit Family(const Kind& kind) {
    constexpr std::size_t kMost = 64, kPoints = 1 << 16;
    std::size_t count = kMost;
    while (count > 1 && count * static_cast<std::size_t>(kind.points) > kPoints) count /= 2;
    curves_.resize(count);
    KurvoInitGlobalVar(&g);
    Random random;
    for (Curve& curve : curves_) kind.make(curve, random);
  }
  ~Family() {
    for (Curve& curve : curves_) KurvocvFreeCurve(&curve);
  }
  Family(const Family&) = delete;
  Family& operator=(const Family&) = delete;

  std::size_t size() const { return curves_.size(); }  // a power of two
  Curve* operator[](std::size_t i) { return &curves_[i & (curves_.size() - 1)]; }

  GlobalVar g;

 private:
  std::vector<Curve> curves_;
};

constexpr std::size_t kQuestions = 1024;  // a power of two

// The unit square, turned about its middle and made larger.
class Place {
 public:
  Place(Random& random, double size) : Place(random.Between(0.0, 2.0 * std::numbers::pi), size) {}
  Place(double angle, double size) : c_(size * std::cos(angle)), s_(size * std::sin(angle)) {
    middle_ = 0.5 * size;
  }
  void Put(double* p, double x, double y) const {
    KurvoclSetCoord(p, middle_ + c_ * (x - 0.5) - s_ * (y - 0.5),
                    middle_ + s_ * (x - 0.5) + c_ * (y - 0.5), 0.0);
  }

 private:
  double c_, s_, middle_;
};

inline Kind Lines(double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const Place place(random, size);
            auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&curve, CV_LINE));
            place.Put(line->start, 0.0, random.Unit());
            place.Put(line->end, 1.0, random.Unit());
          },
          2};
}

// From an eighth of a turn to nearly a whole one, to either side.
inline Kind Arcs(double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const double from = random.Between(0.0, 2.0 * std::numbers::pi);
            const double sweep = 2.0 * std::numbers::pi * random.Between(0.125, 0.95);
            auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(&curve, CV_ARC));
            arc->radius = random.Between(0.2, 0.5) * size;
            for (int c = 0; c < 2; ++c) arc->centre[c] = random.Between(0.3, 0.7) * size;
            arc->centre[2] = 0.0;
            KurvoclSetCoord(arc->normal, 0.0, 0.0, 1.0);
            const auto at = [arc](double angle, double* p) {
              KurvoclSetCoord(p, arc->centre[0] + arc->radius * std::cos(angle),
                              arc->centre[1] + arc->radius * std::sin(angle), 0.0);
            };
            at(from, arc->start);
            at(from + sweep, arc->end);
            if (random.Unit() < 0.5) {
              std::swap(arc->start, arc->end);
              arc->normal[2] = -1.0;
            }
          },
          2};
}

inline double Weight(Random& random) { return random.Between(0.5, 1.5); }

// Control points anywhere in the square: loops, cusps and bends of all sorts.
inline Kind Beziers(int32_t degree, double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const Place place(random, size);
            auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&curve, CV_BEZIER, degree));
            for (int32_t i = 0; i <= degree; ++i)
              place.Put(block->points[i], random.Unit(), random.Unit());
          },
          degree + 1};
}

inline Kind RationalBeziers(int32_t degree, double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const Place place(random, size);
            auto* block =
                static_cast<KurvoRBezier*>(KurvocvMallocCurve(&curve, CV_RBEZIER, degree));
            for (int32_t i = 0; i <= degree; ++i) {
              place.Put(block->points[i], random.Unit(), random.Unit());
              block->points[i][3] = Weight(random);
            }
          },
          degree + 1};
}

// Clamped, with uniform inner knots over [0, 1].
inline void UniformKnots(double* knots, int32_t order, int32_t count) {
  const int32_t spans = count - order + 1;
  for (int32_t i = 0; i < order + count; ++i)
    knots[i] = double(std::clamp(i - order + 1, 0, spans)) / spans;
}

// Control points that advance along one side of the square and wave across it.
inline Kind BSplines(int32_t order, int32_t count, double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const Place place(random, size);
            auto* block =
                static_cast<KurvoBSpline*>(KurvocvMallocCurve(&curve, CV_BSPLINE, order, count));
            for (int32_t i = 0; i < count; ++i)
              place.Put(block->points[i], double(i) / (count - 1), random.Unit());
            UniformKnots(block->knots, order, count);
          },
          count};
}

inline Kind RationalBSplines(int32_t order, int32_t count, double size = kSize) {
  return {[=](Curve& curve, Random& random) {
            const Place place(random, size);
            auto* block =
                static_cast<KurvoRBSpline*>(KurvocvMallocCurve(&curve, CV_RBSPLINE, order, count));
            for (int32_t i = 0; i < count; ++i) {
              place.Put(block->points[i], double(i) / (count - 1), random.Unit());
              block->points[i][3] = Weight(random);
            }
            UniformKnots(block->knots, order, count);
          },
          count};
}

// A B-spline of as many spans, as a chain of its Bezier pieces.
inline Kind Composites(int32_t spans, double size = kSize) {
  const Kind splines = BSplines(4, spans + 3, size);
  return {[splines](Curve& curve, Random& random) {
            OwnCurve spline;
            splines.make(spline.curve, random);
            curve.type = CV_SEGCV;
            KurvocvConvert(&spline.curve, &curve, &spline.g);
          },
          4 * spans};
}

// An outline as drawings have them: a ring about the middle of the square that waves.
inline Kind Outlines(int32_t count, double size = kSize) {
  return {
      [=](Curve& curve, Random& random) {
        const double waves = std::floor(random.Between(3.0, count / 6.0));
        const double high = random.Between(0.02, 0.15), turn = 2.0 * std::numbers::pi;
        const double phase = random.Between(0.0, turn), from = random.Between(0.0, turn);
        const double x = random.Between(0.4, 0.6) * size, y = random.Between(0.4, 0.6) * size;
        auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&curve, CV_BSPLINE, 4, count));
        for (int32_t i = 0; i < count; ++i) {
          const double angle = from + turn * i / (count - 1);
          const double r = 0.45 * size * (1.0 + high * std::cos(waves * angle + phase));
          KurvoclSetCoord(block->points[i], x + r * std::cos(angle), y + r * std::sin(angle), 0.0);
        }
        KurvoclCopyVector(block->points[0], block->points[count - 1]);
        UniformKnots(block->knots, 4, count);
      },
      count};
}

// Parameters over the domain in random order.
inline std::array<double, kQuestions> Parameters() {
  Random random;
  std::array<double, kQuestions> parameters;
  for (double& t : parameters) t = random.Unit();
  return parameters;
}

using Points = std::vector<std::array<double, 3>>;

// Question i is about curve i of the family.
inline Points PointsOn(Family& family) {
  Random random;
  Points points(kQuestions);
  for (std::size_t i = 0; i < kQuestions; ++i)
    KurvocvPosition(family[i], random.Unit(), points[i].data(), &family.g);
  return points;
}

// Points near the curves, among them, around them and far away, in turn.
inline Points PointsAround(Family& family, double size = kSize) {
  constexpr double kReach[] = {0.05, 1.0, 3.0, 30.0};
  Random random(kSeed + 1);
  Points points = PointsOn(family);
  for (std::size_t i = 0; i < kQuestions; ++i) {
    const std::size_t kind = i / family.size() % std::size(kReach);
    for (std::size_t c = 0; c < 2; ++c) {
      const double middle = kind == 0 ? points[i][c] : 0.5 * size;
      points[i][c] = middle + kReach[kind] * size * random.Between(-0.5, 0.5);
    }
  }
  return points;
}

inline std::string Name(const std::string& name, double size) {
  return name + '/' + std::to_string(static_cast<int64_t>(size));
}

}  // namespace bench
