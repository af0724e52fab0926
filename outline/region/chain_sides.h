// On which side of a region's loops the parts of chains are.
#pragma once

#include <kurvo_outline.h>

#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "base/memory.h"
#include "chain/track.h"
#include "region/chain_cuts.h"
#include "region/many_points.h"

namespace kurvo::outline {

// The inside of a region, by how often its loops go around points.
class Field {
 public:
  Field(std::span<const Cvseq> loops, int32_t rule, const Frame& frame, double tol)
      : points_(loops, frame), rule_(rule), tol_(tol) {}

  // Whether a point is inside; nothing when a loop is within so much of it.
  std::optional<bool> IsInside(Vec2 q, double band) const;
  // Of a point on a loop: whether the region lies to either side of the track there.
  bool HasInsideBeside(const Track& track, Position at) const;

 private:
  const ManyPoints points_;
  const int32_t rule_;
  const double tol_;
};

struct ChainPart {
  Position from, to;  // of a closed chain `to` may lie before `from`, or be it: all around
  bool is_inside;
};

// Divides the chains of a track where they change sides.
class ChainSides {
 public:
  ChainSides(const Track& track, const Field& field, double tol)
      : track_(track), field_(field), tol_(tol) {}

  // Alternately inside and outside, along the chain; of a closed one that is on both sides they
  // begin at a cut.
  Array<ChainPart> Divide(int32_t chain, const ChainCuts& cuts);
  int32_t unresolved() const { return unresolved_; }

 private:
  void TakeStretches(const Array<Passage>& passages);
  bool IsAlongside(double chords);
  Position At(double chords) const {
    return track_.AtChords(chain_, chords > all_ ? chords - all_ : chords);
  }
  std::optional<bool> SideAt(double chords, double band) const {
    return field_.IsInside(track_.PointAt(At(chords)), band);
  }
  void Tell(Position from, Position to);
  bool SideOnLoop(double low, double high, bool is_alongside) const;
  Position Change(double low, double high, bool low_is_inside) const;
  void Add(Position from, Position to, bool is_inside);
  Array<ChainPart> Joined();

  const Track& track_;
  const Field& field_;
  const double tol_;
  int32_t chain_ = 0;
  Position first_ = {}, last_ = {};  // the ends of the chain
  double all_ = 0;                   // its chords
  Array<std::pair<double, double>> stretches_;
  std::size_t next_ = 0;             // the first stretch that begins later than was asked,
  double reached_ = -1, asked_ = 0;  // and how far those before it reach
  Array<ChainPart> parts_;
  int32_t unresolved_ = 0;
};

}  // namespace kurvo::outline
