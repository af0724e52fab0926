// Parts of curves, of the same types.
#pragma once

#include "base/memory.h"
#include "base/owned.h"
#include "strand/frame.h"

namespace kurvo::outline {

// Of a domain: parts no longer than that are none.
inline constexpr double kLeastPart = 0x1p-50;

// Appends the part of a checked curve between two parameters of its domain: one curve of its type,
// but of a full circle, and of a composite that is one, up to four arcs. Each runs over [0, 1], a
// composite too, and carries the attribute words; control points that the cuts do not move keep
// their bits. A whole curve is copied, a whole circle becomes four quarters; `to` may be beyond the
// end of a circle that is begun at `from`. Throws Refusal.
void AppendPart(const Curve& curve, double from, double to, const Frame& frame,
                Array<OwnedCurve>& parts);

// Gives a curve the attribute words of another.
void TakeWords(const Curve& from, Curve& to);

// Moves the end of a curve that was cut there, in the caller's coordinates.
void SetStart(Curve& curve, Vec2 point);
void SetEnd(Curve& curve, Vec2 point);

// Gives an arc whose ends were moved the circle through both on which it goes as far as before,
// when one of them lies farther than `slack` from its own.
void Recentre(KurvoArc& arc, const KurvoArc& before, double slack);

}  // namespace kurvo::outline
