// Where two pieces come near each other.
#pragma once

#include <algorithm>

#include "chain/track.h"
#include "pair/near.h"

namespace kurvo::outline {

// Distances that count, in the coordinates of the frame.
struct Nearness {
  double tol;    // points no farther apart meet
  double exact;  // curves no farther apart are the same but for rounding
};

// A stretch of two pieces over which they are near, in the sense of travel of the first.
struct Contact {
  Position a_from, a_to;
  Position b_from, b_to;  // at the same ends; b may run backwards
  // Where within they are the same but for rounding; a length of 0 when nowhere.
  double exact_length = 0;
  Position exact_a_from, exact_a_to, exact_b_from, exact_b_to;
  // Where they cross or are closest, and how close.
  Position a, b;
  double distance = 0;
  bool at_vertex = false;  // of either chain
};

// What a contact covers of one chain, both ends on one piece.
struct Cover {
  int32_t piece;
  double low, high;
};
inline Cover OfA(const Contact& c) { return {c.a_from.piece, c.a_from.u, c.a_to.u}; }
inline Cover OfB(const Contact& c) {
  return {c.b_from.piece, std::min(c.b_from.u, c.b_to.u), std::max(c.b_from.u, c.b_to.u)};
}

// Adds the contacts of piece i of the first track and piece k of the second.
void AddContacts(const Track& a, int32_t i, const Track& b, int32_t k, const Nearness& nearness,
                 Work& work, Array<Contact>& contacts);

}  // namespace kurvo::outline
