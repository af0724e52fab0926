#include "fit/spline_fit.h"

#include "base/refusal.h"

namespace kurvo::outline {

void FitBeziers(const CellRun&, int, double, Vec2, Pieces&) { throw Refusal{KURVO_ERR_OPTION}; }

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
