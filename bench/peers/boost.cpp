// Boost has no curves: what it has is a quadrature, for lengths.
#include <algorithm>
#include <boost/math/quadrature/gauss_kronrod.hpp>
#include <cmath>
#include <cstddef>

#include "driver.h"

namespace {

class Boost {
 public:
  static constexpr const char* kName = "boost";

  static peers::Bezier MakeCubic(const peers::Bezier& b) { return b; }

  static double Length(const peers::Bezier& b, double tolerance) {
    constexpr unsigned kDepth = 15;
    const auto speed = [&b](double t) {
      const double s = 1.0 - t;
      const double w[] = {3.0 * s * s, 6.0 * s * t, 3.0 * t * t};
      double x = 0.0, y = 0.0;
      for (std::size_t i = 0; i < 3; ++i) {
        x += w[i] * (b[i + 1].x - b[i].x);
        y += w[i] * (b[i + 1].y - b[i].y);
      }
      return std::sqrt(x * x + y * y);
    };
    double polygon = 0.0;  // the tolerance is a share of the whole
    for (std::size_t i = 0; i < 3; ++i)
      polygon += std::hypot(b[i + 1].x - b[i].x, b[i + 1].y - b[i].y);
    using boost::math::quadrature::gauss_kronrod;
    return gauss_kronrod<double, 15>::integrate(speed, 0.0, 1.0, kDepth, tolerance / polygon);
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Boost>::Main(argc, argv); }
