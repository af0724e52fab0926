// The drawing that a command makes of another: chains, each with the element that it comes from.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "geometry/drawing.h"

namespace kurvo::tools {

inline constexpr std::size_t kNoElement = static_cast<std::size_t>(-1);

// Curves that run end to start. They are seen, not owned.
struct ResultChain {
  std::span<const Curve> curves;
  bool closed = false;
  std::size_t element = kNoElement;  // into the shapes of the source
};

// How chains are painted: as the elements are; as lines, since they are no longer what the elements
// fill; or filled with the colour of the lines, which they surround.
enum class Look { kAsElements, kLines, kSurround };

struct Result {
  const Drawing& source;            // its sheet, groups and elements
  std::vector<ResultChain> chains;  // those of one element one after the other
  Look look = Look::kAsElements;
};

// The chains by the element that they come from; one that comes from none is alone.
std::vector<std::span<const ResultChain>> Elements(const Result& result);

// The view of the sheet, or else a box around the chains, which is never empty.
Bounds ViewOf(Context& context, const Result& result);

// Of lines that nothing says the width of; thin beside the view.
inline double ThinStroke(const Bounds& view) { return 1e-3 * view.LongerSide(); }

// How the chains of an element are painted. A shape that was only filled shows its fill in the
// lines that are made of it.
Paint PaintOf(const Result& result, std::size_t element, double thin_stroke);

// The same with curves of its own.
Drawing DrawingOf(Context& context, const Result& result);

// The drawing as it is.
Result ResultOf(const Drawing& drawing);

// Curves that come from no element, each as a chain of its own.
Result OneByOne(const Drawing& source, std::span<const Curve> curves);

// The runs of curves that meet, each of them as a chain, which is closed if it comes back to its
// start.
void AddRuns(Context& context, std::span<const Curve> curves, std::size_t element,
             std::vector<ResultChain>& chains);

}  // namespace kurvo::tools
