// What the outlines of a drawing surround, put together, cleaned, at a distance; what a pen covers
// that runs along them. All of it throws BadResult.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "geometry/chain.h"
#include "geometry/drawing.h"
#include "geometry/result.h"

namespace kurvo::tools {

// A loop of a region, or an outline that is none.
struct RegionLoop {
  enum class Kind { kOutline, kHole, kOpen, kKept };  // kKept: it closes

  std::vector<Curve> curves;
  std::size_t element = kNoElement;  // that it comes from, into the shapes of the drawing
  Kind kind = Kind::kOutline;
  double distance = 0;  // that it was moved by
  Moments moments = {};
  Bounds box = {};
};

struct Regions {
  std::vector<RegionLoop> loops;  // element by element
  std::size_t left_out = 0;       // open outlines
  KurvoReport report = {};        // of all that was done
};

// Which elements make one region.
enum class Nesting {
  kElements,  // each one
  kUnfilled,  // those that are only lines together: an outline inside another is a hole
  kAll
};

// Outlines that do not close surround what they fill, as pictures show them. Those of elements
// without a fill are closed when their ends are no farther apart than this.
struct Closing {
  double gap = 0;  // length
};

// The drawing with the shapes of another behind its own.
Drawing Together(Drawing first, Drawing second);

// KURVO_UNION ... of the first `count` shapes of a drawing and of the others. The region of either
// is the union of its elements, each by its own rule, unless they nest.
Regions Combined(const Drawing& drawing, std::size_t count, int operation, Nesting nesting,
                 const Closing& closing, const CurveDone& done);

// Each element by loops that do not cross. Open outlines stay as they are where the element has a
// stroke or no fill.
Regions Cleaned(const Drawing& drawing, const Closing& closing, const CurveDone& done);

// What joins and ends look like, as in KurvoOptions; tol is a length.
struct PenOptions {
  KurvoOptions record = {};
  std::vector<double> dashes = {};  // lengths
  std::optional<double> tolerance = {};
};

// How far curves may be off that are made for a distance, when nothing is said: the lesser of these
// parts of the distance and of the drawing.
inline constexpr double kPartOfDistance = 1e-3;
inline constexpr double kPartOfDrawing = 1e-5;

// The regions of the drawing at every distance, grown where it is positive.
Regions Offset(const Drawing& drawing, const std::vector<double>& distances, Nesting nesting,
               const Closing& closing, const PenOptions& pen, const CurveDone& done);

// Which outlines of the drawing stay beside its offsets.
enum class Keeping { kNone, kOpen, kAll };

// Adds the outlines as they are: those of Keeping::kOpen are the ones that surround nothing, which
// are not left out then. Where `only` is not null, those of the shapes that it names alone.
void KeepOutlines(const Drawing& drawing, Keeping keeping, const Closing& closing,
                  const std::vector<bool>* only, Regions& regions);

// What a pen covers along the outlines of each element; the left of travel as seen in the drawing.
Regions Stroked(const Drawing& drawing, double left, double right, const PenOptions& pen,
                const CurveDone& done);

Result ResultOf(const Drawing& source, const Regions& regions, Look look);

}  // namespace kurvo::tools
