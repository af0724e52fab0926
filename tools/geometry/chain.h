// What the library for outlines tells of curves that run end to start, and makes of them. All of it
// throws BadResult.
#pragma once

#include <kurvo_outline.h>

#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

// A view of curves, which must outlive it.
class Chain {
 public:
  // Implicit, so that questions to chains can be asked of curves.
  Chain(const std::vector<OwnedCurve>& curves);
  Chain(const OwnedCurve& curve) : curves_{*curve.Get()} {}

  // The library does not write to a chain that it reads, but its record has no const array.
  Cvseq Seq() const {
    return {static_cast<std::int32_t>(curves_.size()), const_cast<::Curve*>(curves_.data())};
  }
  bool IsEmpty() const { return curves_.empty(); }

 private:
  std::vector<::Curve> curves_;  // headers; the blocks belong to the curves
};

// A region, or a record of chains, that frees itself.
struct OwnedRegion {
  OwnedRegion() { KurvoRegionInit(&record); }
  OwnedRegion(const OwnedRegion&) = delete;
  OwnedRegion& operator=(const OwnedRegion&) = delete;
  ~OwnedRegion() { KurvoRegionFree(&record); }

  KurvoRegion record;
};

// The reader takes curves as joined whose ends agree within the length tolerance in x and in y,
// chains are joined where the distance is within it. While it lives, the tolerance is wide enough
// for the diagonal.
class WiderTolerance {
 public:
  explicit WiderTolerance(Context& context) : context_(context) {
    KurvoclPushEpsilon(kDiagonal * context.Epsilon(), context.Get());
  }
  WiderTolerance(const WiderTolerance&) = delete;
  WiderTolerance& operator=(const WiderTolerance&) = delete;
  ~WiderTolerance() { KurvoclPopEpsilon(context_.Get()); }

 private:
  static constexpr double kDiagonal = 1.5;

  Context& context_;
};

double LengthOf(Context& context, const Chain& chain);
// The narrowest box; an empty one without curves.
Bounds BoundsOf(Context& context, const Chain& chain);
// The area is positive from the x axis to the y axis, an open chain closed by its chord.
KurvoMoments MomentsOf(Context& context, const Chain& chain);

// Where a curve is nearest to a point: the first of several places.
struct NearestPoint {
  double parameter;
  Point point;
  double distance;
};
NearestPoint NearestOn(Context& context, const OwnedCurve& curve, Point p);

// The places that divide the chain into `count` stretches of the same length, both ends included;
// of a chain that closes the last is the first.
std::vector<KurvoPlace> EqualSteps(Context& context, const Chain& chain, std::size_t count);
// The place at a length along the chain.
KurvoPlace PlaceAt(Context& context, const Chain& chain, double length);
// The part from one place to another.
std::vector<OwnedCurve> Trimmed(Context& context, const Chain& chain, const KurvoPlace& from,
                                const KurvoPlace& to);

// Chords, or lines and curves of a form (KURVO_FIT_ARCS ...), that stay within `deviation` (a
// length) of the chain.
std::vector<OwnedCurve> Flattened(Context& context, const Chain& chain, double deviation);
std::vector<OwnedCurve> Fitted(Context& context, const Chain& chain, int form, double deviation);

}  // namespace kurvo::tools
