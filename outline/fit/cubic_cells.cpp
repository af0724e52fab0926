#include "fit/cubic_cells.h"

#include <algorithm>
#include <cmath>

#include "strand/check.h"

namespace kurvo::outline {
namespace {

constexpr int kMostHalvings = 30;            // of a span: then a cell is taken as it is,
constexpr std::size_t kMostCells = 1 << 14;  // as are cells beyond these of one span
constexpr double kRounding = 0x1p-52;        // of handles, by the square of the degree

// The cubic of a polynomial of degree 1 to 3.
void RaiseDegree(const Span& span, Vec2* cubic) {
  const Vec2* p = span.points;
  const Vec2 first = p[0], last = p[span.degree];
  cubic[0] = first;
  cubic[3] = last;
  if (span.degree == 3) {
    cubic[1] = p[1];
    cubic[2] = p[2];
  } else if (span.degree == 2) {
    cubic[1] = first + (2.0 / 3) * (p[1] - first);
    cubic[2] = last + (2.0 / 3) * (p[1] - last);
  } else {
    cubic[1] = first + (1.0 / 3) * (last - first);
    cubic[2] = last + (1.0 / 3) * (first - last);
  }
}

// The cubic with the point and the velocity of a Bezier curve W / w at both ends: the velocity is
// n w_1 / w_0 (P_1 - P_0), and a third of it is the handle.
void Hermite(const Span& part, Vec2* cubic) {
  const int n = part.degree;
  const auto handle = [&](int end, int beside) {
    const double weight = part.weights ? part.weights[end] : 1;
    const double weight_beside = part.weights ? part.weights[beside] : 1;
    const Vec2 point = (1 / weight) * part.points[end];
    return point + (n / (3 * weight)) * (part.points[beside] - weight_beside * point);
  };
  cubic[0] = part.Start();
  cubic[1] = handle(0, 1);
  cubic[2] = handle(n, n - 1);
  cubic[3] = part.End();
}

// Whether W / w stays within `error` of the cubic H at every parameter. W - w H and w have degree
// n + 3 in Bernstein form; with positive w_k their quotient is at most the largest of the quotients
// of coefficients. A product has the coefficients sum over j of C(3,j) C(n,k-j) / C(n+3,k) a_k-j
// b_j.
bool IsAlongside(const Span& part, const Vec2* cubic, double error) {
  constexpr double kThree[] = {1, 3, 3, 1};
  const int n = part.degree;
  double binomials[kMostDegree + 1];  // n over i
  binomials[0] = 1;
  for (int i = 1; i <= n; ++i) binomials[i] = binomials[i - 1] * (n - i + 1) / i;
  for (int k = 0; k <= n + 3; ++k) {
    Vec2 gap = {0, 0};
    double weight = 0;
    for (int j = std::max(0, k - n); j <= std::min(3, k); ++j) {
      const double share = kThree[j] * binomials[k - j];
      const double w = part.weights ? part.weights[k - j] : 1;
      gap = gap + share * (part.points[k - j] - w * cubic[j]);
      weight += share * w;
    }
    if (!(error * weight >= Length(gap))) return false;
  }
  return true;
}

// The cubic along a circle with handles of 4/3 tan(sweep / 4) radii, whose distance from the circle
// is at most 2/27 sin^6(sweep / 4) / cos^2(sweep / 4) radii (Goldapp, Approximation of circular
// arcs by cubic polynomials, CAGD 8, 1991).
void AppendArc(const Span& arc, int32_t index, double error, Array<CubicCell>& cells) {
  constexpr int kMostParts = 1 << 20;
  const auto gap = [&](int n) {
    const double s = std::sin(std::fabs(arc.sweep) / (4 * n));
    return 2.0 / 27 * arc.radius * std::pow(s, 6) / (1 - s * s);
  };
  int n = std::max(1, static_cast<int>(std::ceil(std::fabs(arc.sweep) / 2)));
  while (n < kMostParts && !(error >= gap(n))) n += 1 + n / 8;
  const double reach = 4.0 / 3 * std::tan(arc.sweep / (4 * n)) / arc.sweep;
  for (int i = 0; i < n; ++i) {
    const double from = static_cast<double>(i) / n, to = static_cast<double>(i + 1) / n;
    const Vec2 start = PointAt(arc, from), end = PointAt(arc, to);
    cells.push_back(
        {{start, start + reach * VelocityAt(arc, from), end - reach * VelocityAt(arc, to), end},
         index,
         from,
         to});
  }
}

}  // namespace

bool AppendCells(const Span& span, int32_t index, double error, Array<CubicCell>& cells) {
  if (span.kind == Span::Kind::kArc) {
    AppendArc(span, index, error, cells);
    return false;
  }
  CubicCell cell = {{}, index, 0, 1};
  if (span.kind != Span::Kind::kRational && span.degree <= 3) {
    RaiseDegree(span, cell.points);
    cells.push_back(cell);
    return true;
  }
  // Cells are dyadic: the next one may be as wide as its start allows.
  Arena arena;
  const std::size_t most = cells.size() + kMostCells;
  const double rounding = kRounding * span.degree * span.degree;
  int halvings = 0;
  for (double width = 1; cell.from < 1;) {
    cell.to = cell.from + width;
    arena.Clear();
    const Span part = PartOf(span, cell.from, cell.to, arena);
    Hermite(part, cell.points);
    if (halvings < kMostHalvings && cells.size() < most &&
        !IsAlongside(part, cell.points, std::max(error, rounding))) {
      width /= 2;
      ++halvings;
      continue;
    }
    cells.push_back(cell);
    cell.from = cell.to;
    if (halvings > 0 && std::fmod(cell.from, 2 * width) == 0) {
      width *= 2;
      --halvings;
    }
  }
  return false;
}

}  // namespace kurvo::outline
