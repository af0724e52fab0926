// What a group of contacts is: a point or a stretch that both chains share.
#pragma once

#include <optional>

#include "chain/contact_groups.h"

namespace kurvo::outline {

// All that a group covers, in the sense of travel of the first chain.
struct Extent {
  Position a_from, a_to, b_from, b_to;
  double length;    // of chords along the first chain
  bool is_against;  // the second chain runs against the first
};
// Contacts of a group are no farther apart than `gap`.
Extent ExtentOf(const Track& a, const Contact* contacts, std::size_t count, double gap);

// The stretch that the chains share, or nothing when they only meet. Curves that are the same but
// for rounding over an eighth of where they are near at all share it: a touch of order m is as
// close as that over 2^(-14 / m) of it (far from the origin, where rounding comes near the
// tolerance, over more, and so must they be). So do curves that stay near over kLongStretch of the
// size, or over a whole span that is not short. Analytic curves part at the end of a span only: the
// ends of an exact stretch are moved onto one that lies as close as two curves may part in between.
std::optional<Extent> SharedStretch(const Track& a, const Track& b, const Contact* contacts,
                                    std::size_t count, const Extent& extent,
                                    const Nearness& nearness);
inline constexpr double kLongStretch = 0x1p-5;

}  // namespace kurvo::outline
