// The narrowest box around a chain.
#include "chain/tight_box.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "chain/hodograph.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/roots.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// The points where a coordinate turns: where its derivative, or a multiple of it, changes its sign.
void AddTurns(const Span& span, const double* slope, int degree, Bounds& box) {
  RootList turns;
  AddSignChanges(slope, degree, turns);
  for (const double u : turns) box.Add(PointAt(span, u));
}

void AddPolynomial(const Span& span, Bounds& box) {
  const Vec2* p = span.points;
  const int n = span.degree;
  const auto add = [&](double u) { box.Add(PointAt(span, u)); };
  double slope[kMostDegree];
  for (const auto axis : {&Vec2::x, &Vec2::y}) {
    for (int i = 0; i < n; ++i) slope[i] = n * (p[i + 1].*axis - p[i].*axis);
    if (n == 2 || n == 3) {
      // slope = a (1-u)^2 + 2 b u (1-u) + c u^2, of a quadratic b = (a + c) / 2. The root is that
      // of a + 2 b r + c r^2 with r = u / (1 - u) > 0, without cancellation: q / c and a / q.
      const double a = slope[0], c = slope[n - 1], b = n == 3 ? slope[1] : 0.5 * (a + c);
      const double under = b * b - a * c;
      if (!(under >= 0)) continue;
      const double q = -(b + std::copysign(std::sqrt(under), b));
      for (const double u : {q / (q + c), a / (a + q)})  // r / (1 + r)
        if (u > 0 && u < 1) add(u);
      continue;
    }
    AddTurns(span, slope, n - 1, box);
  }
}

// A coordinate turns where the numerator of its derivative changes its sign.
void AddRational(const Span& span, Bounds& box) {
  Hodograph hodograph;
  hodograph.SetRational(span);
  double slope[Hodograph::kMostDegree + 1];
  for (const auto axis : {&Vec2::x, &Vec2::y}) {
    for (int i = 0; i <= hodograph.degree; ++i) slope[i] = hodograph.points[i].*axis;
    AddTurns(span, slope, hodograph.degree, box);
  }
}

}  // namespace

void AddTightBox(const Span& span, Bounds& box) {
  box.Add(span.Start());
  box.Add(span.End());
  if (span.kind == Span::Kind::kArc) return box.Join(HullOf(span));
  if (span.kind == Span::Kind::kBezier) return AddPolynomial(span, box);
  if (span.kind == Span::Kind::kRational) return AddRational(span, box);
}

}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainTightBox(const Cvseq* chain, Box box, GlobalVar* g) noexcept {
  return Answer(g, [&] {
    Require(box, KURVO_ERR_OPTION);
    const Frame frame = FrameOf(chain);
    RequireJoined(*chain, GetEpsilon(g));
    Bounds bounds;
    ForEachSpan(*chain, frame, [&bounds](const Span& span) { AddTightBox(span, bounds); });
    const bool is_empty = bounds.IsEmpty();
    const Vec2 low = is_empty ? Vec2{0, 0} : frame.Outwards(bounds.low);
    const Vec2 high = is_empty ? Vec2{0, 0} : frame.Outwards(bounds.high);
    const double numbers[] = {low.x, low.y, 0, high.x, high.y, 0};
    std::copy(numbers, numbers + 6, &box[0]);
  });
}
