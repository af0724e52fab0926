// Where the curves of a chain meet.
#pragma once

#include <kurvo.h>

#include "base/function_ref.h"
#include "base/vec2.h"

namespace kurvo::outline {

// The ends of a checked curve in the caller's coordinates, as its records hold them where they do.
struct Ends {
  Vec2 start, end;
};
// Result: whether it has ends, which a composite without curves has not.
bool EndsOf(const Curve& curve, Ends& ends);

// Whether two points are no farther apart than the distance.
bool Meet(Vec2 a, Vec2 b, double distance);

// Whether a checked curve has no jump wider than `gap` within: no knot of a spline is repeated as
// often as its order, and pieces of composites meet.
bool IsUnbroken(const Curve& curve, double gap);

// Throws KURVO_ERR_CHAIN_ENDS when neighbours of a checked chain are farther apart than `gap`
// (length). Curves without ends are passed over.
void RequireJoined(const Cvseq& chain, double gap);

// Whether the last end of a checked chain of this size meets the first start: no farther than
// epsilon, nor than kClosingShare of the size, so that a chain smaller than epsilon may be open.
bool IsClosed(const Cvseq& chain, double size, double epsilon);
inline constexpr double kClosingShare = 0x1p-10;

// Ends of a chain: the start of the first curve that has one and the end of the last.
bool EndsOf(const Cvseq& chain, Ends& ends);

}  // namespace kurvo::outline
