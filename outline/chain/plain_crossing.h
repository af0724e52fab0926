// Crossings that need no search: two pieces that meet once, at an angle, far from their ends.
#pragma once

#include <optional>

#include "chain/track.h"

namespace kurvo::outline {

class PlainCrossings {
 public:
  // Of two tracks, which must outlive this, or of one with itself. Points no farther apart than
  // `tol` meet.
  PlainCrossings(const Track& a, const Track& b, bool with_itself, double tol);

  struct Crossing {
    Position a, b;
  };
  // Where piece i of the first track and piece k of the second (a later one where there is one
  // track) cross, when that is easily shown to be plain: seen from there, the four parts of the two
  // lie in wedges that alternate and are apart. So the pieces are near each other there alone, and
  // no other contact of the chains touches this one.
  std::optional<Crossing> Find(int32_t i, int32_t k) const;

 private:
  bool IsFarAlong(const Crossing& crossing) const;

  const Track& a_;
  const Track& b_;
  const bool with_itself_;
  const double clear_;  // length
};

}  // namespace kurvo::outline
