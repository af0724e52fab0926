// The length of a Bezier curve by halving: the control polygons of the parts are longer than the
// curve, and converge to it from above with the square of their size (Gravesen,
// Computational Geometry 8, 1997).
#include "query/bezier_length.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "query/halved_bezier.h"
#include "query/halved_legs.h"

namespace kurvo {
namespace {

// Length; absolute, whatever the size of the curve.
constexpr double kSettledLength = 0.001;
constexpr int kMaxPasses = 10;  // to 1024 pieces; without having settled by then the last is taken
constexpr std::size_t kMostPieces = std::size_t{1} << kMaxPasses;
constexpr std::size_t kParts = 16;  // that Measure::kSixteenths settles one by one
// Interpolations between control points in one pass: what 1024 pieces of degree 180 take. Polygons
// of a higher degree are as close to the curve with fewer pieces.
constexpr std::size_t kMostWork = std::size_t{1} << 24;
// The same for one of the sixteenths, of which a curve may have thousands; up to the highest degree
// in use all passes are made.
constexpr std::size_t kMostWorkOfPart = std::size_t{1} << 17;
constexpr int32_t kMostUsedDegree = 24;

// What lies on the stack, beyond it the heap serves: all pieces of degree 6, or rational 4, and the
// parts of degree 9 with their halves.
constexpr std::size_t kWholeLegs = kMostPieces * 6 * 2;
constexpr std::size_t kWholePoints = kMostPieces * 5 * 3;
constexpr std::size_t kPartLegs = 2 * kParts * 9 * 2;
constexpr std::size_t kPartPoints = kParts * 10 * 3;

// What is no number stays so: a point of weight 0 is none in the first polygon.
bool IsSettled(double before, double length) {
  return kSettledLength >= std::fabs(length - before) || (std::isnan(length) && std::isnan(before));
}

// Halves the pieces until the length of their polygons settles, for which some passes have been
// made already.
template <class Pieces>
double SettledLength(Pieces& pieces, std::size_t most_work, int passes = 0) {
  double length = pieces.Length();
  for (; passes < kMaxPasses; ++passes) {
    if (pieces.InterpolationsToHalve() > most_work) break;
    const double before = length;
    pieces.Halve();
    length = pieces.Length();
    if (IsSettled(before, length)) break;
  }
  return length;
}

// Plain curves: by their legs, of which less has to be computed than of the control points.

using WholeLegs = HalvedLegs<kWholeLegs>;

auto LegsOf(const BezierView<3>& bezier) {
  return [&bezier](std::size_t, std::size_t i) {
    return Planar(bezier.points[i + 1]) - Planar(bezier.points[i]);
  };
}

double WholeLength(const BezierView<3>& bezier) {
  WholeLegs pieces(bezier.degree);
  pieces.Start(1.0, 1, LegsOf(bezier));
  return SettledLength(pieces, kMostWork);
}

// Most parts of a spline settle when they are halved once, which is done for all together.
double LengthInSixteenths(const BezierView<3>& bezier, std::size_t most_work) {
  HalvedLegs<kPartLegs> parts(bezier.degree);
  parts.Start(1.0, 1, LegsOf(bezier));
  while (parts.count() < kParts) parts.HalveOnly();
  const bool halve = most_work >= parts.InterpolationsToHalve() / kParts;
  double before[kParts], length[kParts];
  parts.HalveEach(before, length);
  double sum = 0.0;
  for (std::size_t p = 0; p < kParts; ++p) {
    if (!halve) {
      length[p] = before[p];
    } else if (!IsSettled(before[p], length[p])) {
      WholeLegs pieces(bezier.degree);
      const auto leg = [&](std::size_t half, std::size_t i) {
        return parts.Leg(p + half * kParts, i);
      };
      pieces.Start(parts.scale(), 2, leg);
      length[p] = SettledLength(pieces, most_work, 1);
    }
    sum += length[p];
  }
  return sum;
}

// Rational curves.

auto PointsOf(const BezierView<4>& bezier) {
  return [&bezier](std::size_t i) -> std::array<double, 3> {
    const double* p = bezier.points[i];
    return {p[3] * p[0], p[3] * p[1], p[3]};
  };
}

double WholeLength(const BezierView<4>& bezier) {
  HalvedBezier<kWholePoints> pieces(bezier.degree);
  pieces.Start(PointsOf(bezier));
  return SettledLength(pieces, kMostWork);
}

double LengthInSixteenths(const BezierView<4>& bezier, std::size_t most_work) {
  HalvedBezier<kPartPoints> parts(bezier.degree);
  parts.Start(PointsOf(bezier));
  while (parts.count() < kParts) parts.Halve();
  HalvedBezier<kWholePoints> pieces(bezier.degree);
  double sum = 0.0;
  for (std::size_t p = 0; p < kParts; ++p) {
    pieces.Start([&](std::size_t i) { return parts.PointOf(p, i); });
    sum += SettledLength(pieces, most_work);
  }
  return sum;
}

}  // namespace

template <std::size_t kDim>
double BezierLength(const BezierView<kDim>& bezier, Measure measure) {
  if (kDim == 3 && 2 > bezier.degree)  // a line, or a point: its polygon is the curve
    return Length(Planar(bezier.points[bezier.degree]) - Planar(bezier.points[0]));
  if (measure == Measure::kWhole) return WholeLength(bezier);
  return LengthInSixteenths(bezier, kMostUsedDegree >= bezier.degree ? kMostWork : kMostWorkOfPart);
}

template double BezierLength(const BezierView<3>&, Measure);
template double BezierLength(const BezierView<4>&, Measure);

}  // namespace kurvo
