// What is asked of curves that run end to start, and made of them. All of it throws BadResult.
#pragma once

#include <vector>

#include "geometry/plane.h"

namespace kurvo::tools {

// The reader takes curves as joined whose ends agree within the length tolerance in x and in y,
// chains are joined where the distance is within it. While it lives, the tolerance is wide enough
// for the diagonal.
inline EpsilonScope WiderTolerance(Context& context) {
  constexpr double kDiagonal = 1.5;
  return {context, kDiagonal * context.Epsilon()};
}

double LengthOf(Context& context, const ChainView& chain);
// The narrowest box; an empty one without curves.
Bounds BoundsOf(Context& context, const ChainView& chain);
// The area is positive from the x axis to the y axis, an open chain closed by its chord.
Moments MomentsOf(Context& context, const ChainView& chain);

// Where a curve is nearest to a point: the first of several places.
struct NearestPoint {
  double parameter;
  Point point;
  double distance;
};
NearestPoint NearestOn(Context& context, const Curve& curve, Point p);

// The places that divide the chain into `count` stretches of the same length, both ends included;
// of a chain that closes the last is the first.
Array<Place> EqualSteps(Context& context, const ChainView& chain, std::size_t count);
// The place at a length along the chain.
Place PlaceAt(Context& context, const ChainView& chain, double length);
// The part from one place to another.
std::vector<Curve> Trimmed(Context& context, const ChainView& chain, const Place& from,
                           const Place& to);

// Chords, or lines and curves of a form, that stay within `deviation` (a length) of the chain.
std::vector<Curve> Flattened(Context& context, const ChainView& chain, double deviation);
std::vector<Curve> Fitted(Context& context, const ChainView& chain, Form form, double deviation);

}  // namespace kurvo::tools
