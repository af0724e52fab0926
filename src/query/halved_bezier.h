// The control polygons of a rational Bezier curve while the curve is halved.
#pragma once

#include <cmath>
#include <cstdint>

#include "query/halved_pieces.h"

namespace kurvo {

// A control value is w x, w y, w.
template <std::size_t kStackDoubles>
class HalvedBezier {
 public:
  using Point = std::array<double, 3>;

  explicit HalvedBezier(int32_t degree) : pieces_(static_cast<std::size_t>(degree) + 1) {}

  // One piece with the control points at(0) ... at(degree).
  template <class At>
  void Start(const At& at) {
    pieces_.Start(1, [&](std::size_t, std::size_t i) { return at(i); });
  }

  std::size_t count() const { return pieces_.count(); }
  // Interpolations between two control points that the next halving takes.
  std::size_t InterpolationsToHalve() const {
    return pieces_.count() * pieces_.values() * (pieces_.values() - 1) / 2;
  }

  // Control point i of piece p.
  Point PointOf(std::size_t p, std::size_t i) const {
    const double* at = pieces_.At(p, i);
    return {at[0], at[kLanes], at[2 * kLanes]};
  }

  void Halve() { pieces_.Halve(); }

  // Of all control polygons together.
  double Length() const {
    double sum = 0.0;
    pieces_.template WithLanes<kLanes>([&](auto lanes) {
      for (std::size_t p = 0; p < pieces_.count(); p += lanes) sum += LengthFrom(lanes, p);
    });
    return sum;
  }

 private:
  using Pieces = HalvedPieces<3, kStackDoubles>;
  static constexpr std::size_t kLanes = Pieces::kLanes;

  template <class LaneCount>
  double LengthFrom(LaneCount, std::size_t p) const {
    constexpr std::size_t kCount = LaneCount::value;
    double x[kLanes], y[kLanes], length[kLanes];
    const auto load = [&](const double* at, std::size_t lane, double& px, double& py)
        __attribute__((always_inline)) {
      px = at[lane] / at[2 * kLanes + lane];
      py = at[kLanes + lane] / at[2 * kLanes + lane];
    };
    const double* at = pieces_.At(p, 0);
    for (std::size_t lane = 0; lane < kCount; ++lane) {
      load(at, lane, x[lane], y[lane]);
      length[lane] = 0.0;
    }
    for (std::size_t i = 1; i < pieces_.values(); ++i) {
      at += Pieces::kRow;
      for (std::size_t lane = 0; lane < kCount; ++lane) {
        double px, py;
        load(at, lane, px, py);
        const double dx = px - x[lane];
        const double dy = py - y[lane];
        length[lane] += std::sqrt(dx * dx + dy * dy);
        x[lane] = px;
        y[lane] = py;
      }
    }
    double sum = 0.0;
    for (std::size_t lane = 0; lane < kCount; ++lane) sum += length[lane];
    return sum;
  }

  Pieces pieces_;
};

}  // namespace kurvo
