// Contacts of neighbouring pieces that are one place or one stretch of their chains.
#pragma once

#include "base/memory.h"
#include "chain/contact.h"

namespace kurvo::outline {

// The contacts from number `first` on, `count` of them, of the sorted list are one.
struct ContactGroup {
  std::size_t first, count;
};

// Sorts the contacts into groups: two belong together when they lie on the same or on neighbouring
// pieces of both chains and their ends are no farther apart than `gap` on both. Cost: n log n.
Array<ContactGroup> GroupContacts(const Track& a, const Track& b, double gap,
                                  Array<Contact>& contacts);

inline constexpr double kJoined = 4;  // of the tolerance: usual gaps within one place

// The closest contact of a group, or one at a vertex of those that are as close as rounding tells.
const Contact& ClosestOf(const Contact* contacts, std::size_t count, const Nearness& nearness);

}  // namespace kurvo::outline
