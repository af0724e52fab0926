// The length of a Bezier curve by halving.
#include "query/bezier_length.h"

#include <cmath>

#include "query/halved_bezier.h"

namespace kurvo {
namespace {

// Length; absolute, whatever the size of the curve.
constexpr double kSettled = 0.001;
constexpr int kMaxPasses = 10;  // to 1024 pieces; without having settled by then the last is taken
constexpr std::size_t kMostPieces = std::size_t{1} << kMaxPasses;
constexpr std::size_t kParts = 16;  // that Measure::kSixteenths settles one by one
// Mixes of two control points in one pass: what 1024 pieces of degree 180 take. Polygons of a
// higher degree are as close to the curve with fewer pieces.
constexpr std::size_t kMaxMixes = std::size_t{1} << 24;
// The same for one of the sixteenths, of which a curve may have thousands; up to the highest degree
// in use all passes are made.
constexpr std::size_t kMaxMixesOfPart = std::size_t{1} << 17;
constexpr int32_t kMostUsedDegree = 24;

// What lies on the stack, beyond it the heap serves.
constexpr std::size_t kWholeDoubles = kMostPieces * 5 * 3;   // pieces of rational degree 4
constexpr std::size_t kSixteenthsDoubles = kParts * 10 * 3;  // pieces of rational degree 9

// Halves the curve with the control points at(i) until the length of its polygons settles.
template <class Pieces, class At>
double SettledLength(Pieces& pieces, std::size_t max_mixes, const At& at) {
  pieces.Start(at);
  double length = pieces.PolygonLength();
  for (int pass = 0; pass < kMaxPasses; ++pass) {
    if (pieces.MixesToHalve() > max_mixes) break;
    const double before = length;
    pieces.Halve();
    length = pieces.PolygonLength();
    // A point of weight 0 is no number in the first polygon; what is none then stays so.
    if (kSettled >= std::fabs(length - before) || (std::isnan(length) && std::isnan(before))) break;
  }
  return length;
}

template <std::size_t kSize, std::size_t kDim>
std::array<double, kSize> ControlPoint(const double (&p)[kDim]) {
  if constexpr (kSize == 3)
    return {p[3] * p[0], p[3] * p[1], p[3]};
  else
    return {p[0], p[1]};
}

}  // namespace

template <std::size_t kDim>
double BezierLength(const BezierView<kDim>& bezier, Measure measure) {
  constexpr std::size_t kSize = kDim == 4 ? 3 : 2;
  const auto at = [&](std::size_t i) { return ControlPoint<kSize>(bezier.points[i]); };
  HalvedBezier<kSize, kWholeDoubles> pieces(bezier.degree);
  if (measure == Measure::kWhole) return SettledLength(pieces, kMaxMixes, at);

  HalvedBezier<kSize, kSixteenthsDoubles> sixteenths(bezier.degree);
  sixteenths.Start(at);
  while (sixteenths.count() < kParts) sixteenths.Halve();
  const std::size_t max_mixes = kMostUsedDegree >= bezier.degree ? kMaxMixes : kMaxMixesOfPart;
  double sum = 0.0;
  for (std::size_t p = 0; p < sixteenths.count(); ++p)
    sum +=
        SettledLength(pieces, max_mixes, [&](std::size_t i) { return sixteenths.PointOf(p, i); });
  return sum;
}

template double BezierLength(const BezierView<3>&, Measure);
template double BezierLength(const BezierView<4>&, Measure);

}  // namespace kurvo
