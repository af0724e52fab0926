// Outlines in pieces, loose curves as chains, and pieces at a distance.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "geometry/chain.h"
#include "geometry/drawing.h"
#include "geometry/result.h"

namespace kurvo::tools {

// A stretch of an outline: curves that run end to start.
struct Piece {
  std::vector<Curve> curves;  // at least one, none of them a point
  double length = 0;
  bool closed = false;
};

struct SplitOutline {
  std::string label;
  std::vector<Piece> pieces;
  std::size_t element = kNoElement;  // into the shapes of the drawing
};

// Every curve of the drawing cut at the parameters, which ascend and lie in [0, 1]: a piece for
// each part that is not a point. `done` is called for each curve, here and below.
std::vector<SplitOutline> SplitAt(Context& context, const Drawing& drawing,
                                  const std::vector<double>& parameters, const CurveDone& done);

// Every outline in `count` pieces of the same arc length; one without length gives none.
std::vector<SplitOutline> SplitIntoParts(Context& context, const Drawing& drawing,
                                         std::size_t count, const CurveDone& done);

struct JoinedCurves {
  SplitOutline chains;  // without a name; closed ones first
  std::size_t closed = 0;
  KurvoReport report = {};
};

// Chains of all curves of the drawing, in any order and direction, where ends no farther apart than
// `gap` (a length; 0: the length tolerance) are joined. A curve given twice comes once.
JoinedCurves JoinCurves(Context& context, const Drawing& drawing, double gap);

// One outline of the drawing, which must outlive it, at one distance.
struct OutlineOffset {
  std::string label;
  const Outline* source;
  double distance;
  std::vector<Curve> pieces;
  std::size_t element;
};

// What a tolerance is when none is given, in parts of the distance.
inline constexpr double kOffsetTolerance = 1e-3;

// Every outline at every distance, in drawing order; positive distances go to the left of travel as
// seen in the drawing. `done` is called for each curve at each
// distance, from several threads. Curves are offset one by one: nothing is put in or cut off at
// corners.
std::vector<OutlineOffset> OffsetOutlines(const Drawing& drawing,
                                          const std::vector<double>& distances,
                                          const std::optional<double>& tolerance,
                                          const CurveDone& done);

// What they make, as drawings.
Result ResultOf(const Drawing& source, std::span<const SplitOutline> outlines);
Result ResultOf(Context& context, const Drawing& source, std::span<const OutlineOffset> offsets);

}  // namespace kurvo::tools
