// One side of a chain or loop as part of a raw loop.
#pragma once

#include "fit/offset_fit.h"
#include "raw/raw_loop.h"
#include "raw/short_cut.h"

namespace kurvo::outline {

// How corners are rounded on their outer side.
struct Corners {
  int32_t join;        // KURVO_JOIN_*
  double miter_limit;  // of the miter's length by the distance
  double tol;          // length in the frame's unit
  bool is_region;      // loops go around regions: tips are told, and round
  bool is_disc;        // all around a vertex what is no farther than the distance counts
};

// What runs around strips at this distance to the right, or to the left where it is negative: along
// each strip; at an outer corner around the join; at an inner one through the vertex, or short cut
// where that is sure to be the same. Strips and joins are then encircled once each, in one sense.
// A closed side is a loop by itself. An open one starts and ends at the full distance.
class Side {
 public:
  Side(const StripList& list, double distance, bool is_closed, const Corners& corners)
      : list_(list), distance_(distance), is_closed_(is_closed), corners_(corners) {}

  void AppendTo(RawLoop& loop) const;

 private:
  enum class Kind : uint8_t { kSmooth, kInner, kShort, kOuter };
  struct Corner {
    Kind kind;
    ShortCut cut;         // of a short one
    bool is_tip = false;  // may be turned inside out
  };

  std::size_t count() const { return list_.strips.size(); }
  const Strip& At(std::size_t i) const { return list_.strips[i % count()]; }
  bool HasCorner(std::size_t i) const { return is_closed_ || i + 1 < count(); }
  Corner CornerAfter(std::size_t i) const;
  Corner PlainCornerAfter(std::size_t i) const;
  bool IsTipAfter(std::size_t i) const;
  bool TurnsBackAfter(std::size_t i) const;
  bool IsShort(const Strip& strip) const {
    constexpr double kShort = 4;  // tolerances
    return kShort * corners_.tol >= Length(strip.end - strip.start);
  }
  void AppendStrip(std::size_t i, const Corner& before, const Corner& after, RawLoop& loop) const;
  void AppendCorner(std::size_t i, const Corner& corner, RawLoop& loop) const;
  void AppendDisc(const Strip& before, RawLoop& loop) const;
  void AppendJoin(const Strip& before, const Strip& after, Vec2 end, RawLoop& loop) const;

  const StripList& list_;
  const double distance_;
  const bool is_closed_;
  const Corners& corners_;
};

// Whether a strip stands for a gap of the chain: those have the index of the curve after it,
// negated and less 1.
inline bool IsBridge(int32_t curve) { return curve < 0; }
inline int32_t CurveOf(int32_t curve) { return IsBridge(curve) ? -1 - curve : curve; }

}  // namespace kurvo::outline
