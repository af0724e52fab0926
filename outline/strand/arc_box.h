// Boxes of arcs that are not looked at closely.
#pragma once

#include <kurvo.h>

#include <algorithm>
#include <cmath>

#include "base/bounds.h"

namespace kurvo::outline {

// Adds a box that holds an arc, in the caller's coordinates. Below a quarter turn that of its ends,
// widened by what it may bend: chord / 2 tan(sweep / 4) < chord / 4, and by what its ends miss the
// circle; a shallow arc may belong to a circle far larger than the drawing. Otherwise the circle's.
inline void AddArc(const KurvoArc& arc, Bounds& box) {
  const Vec2 start = {arc.start[0], arc.start[1]}, end = {arc.end[0], arc.end[1]};
  const Vec2 centre = {arc.centre[0], arc.centre[1]};
  const Vec2 from = start - centre, to = end - centre;
  const double sense = arc.normal[2] < 0 ? -1 : 1;
  const double miss =
      std::max(std::fabs(SafeLength(from) - arc.radius), std::fabs(SafeLength(to) - arc.radius));
  box.Add(start);
  box.Add(end);
  Vec2 reach = {arc.radius, arc.radius};
  if (Dot(from, to) > 0 && sense * Cross(from, to) > 0 && 0.25 * arc.radius >= miss) {
    const double bend = 0.25 * SafeLength(end - start) + miss;
    reach = {bend, bend};
    for (const Vec2 p : {start, end}) {
      box.Add(p - reach);
      box.Add(p + reach);
    }
    return;
  }
  box.Add(centre - reach);
  box.Add(centre + reach);
}

}  // namespace kurvo::outline
