// What the tests of the planar calculus share: points by value, a fresh record, seeded numbers.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <initializer_list>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "kurvo.h"

namespace kurvo_test {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kUlp = std::numeric_limits<double>::epsilon();
constexpr long double kPiL = 3.14159265358979323846264338327950288L;

constexpr long double L(double x) { return static_cast<long double>(x); }

// Processor time since it was made, in seconds: other programs on the machine do not count.
class Stopwatch {
 public:
  double Seconds() const { return static_cast<double>(std::clock() - start_) / CLOCKS_PER_SEC; }

 private:
  std::clock_t start_ = std::clock();
};

// KURVO_TEST_CASES overrides the number of cases.
inline int Cases(int usual) {
  const char* wanted = std::getenv("KURVO_TEST_CASES");
  return wanted ? std::max(1, std::atoi(wanted)) : usual;
}

// A Coord that copies.
struct Point : std::array<double, 3> {
  operator double*() { return data(); }
  operator const double*() const { return data(); }
};

struct Globals : GlobalVar {
  Globals() { KurvoInitGlobalVar(this); }
  explicit Globals(double eps) : Globals() { KurvoclPushEpsilon(eps, this); }
};

// The same numbers on every run; KURVO_TEST_SEED chooses others.
class Random {
 public:
  Random() {
    if (const char* seed = std::getenv("KURVO_TEST_SEED")) seed_ = std::strtoull(seed, nullptr, 10);
    engine_.seed(seed_);
  }
  double Uniform(double low, double high) {
    return low + (high - low) * (static_cast<double>(engine_() >> 11) * 0x1p-53);
  }
  Point Planar(double size) { return {Uniform(-size, size), Uniform(-size, size), 0.0}; }
  Point Spatial(double size) {
    return {Uniform(-size, size), Uniform(-size, size), Uniform(-size, size)};
  }
  std::string Trace() const { return "KURVO_TEST_SEED=" + std::to_string(seed_); }

 private:
  uint64_t seed_ = 20240607;
  std::mt19937_64 engine_;
};

// Calls body(random, round) until one fails.
template <class Body>
void Rounds(int count, const Body& body) {
  Random random;
  SCOPED_TRACE(random.Trace());
  for (int round = 0; round < count && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    body(random, round);
  }
}

constexpr double kSize = 10;  // of random coordinates

// x, y, or x, y, weight, one after the other.
inline std::vector<double> RandomPoints(Random& random, int count, bool weights) {
  std::vector<double> points;
  for (int i = 0; i < count; ++i) {
    points.insert(points.end(), {random.Uniform(-kSize, kSize), random.Uniform(-kSize, kSize)});
    if (weights) points.push_back(random.Uniform(.2, 3));
  }
  return points;
}

}  // namespace kurvo_test
