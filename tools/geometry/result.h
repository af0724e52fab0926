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
  std::span<const OwnedCurve> curves;
  bool closed = false;
  std::size_t element = kNoElement;  // into the shapes of the source
};

struct Result {
  const Drawing& source;            // its sheet, groups and elements
  std::vector<ResultChain> chains;  // those of one element one after the other
  // Whether the chains are no longer what the elements fill: they are drawn as lines then.
  bool lines = false;
};

// The drawing as it is.
Result ResultOf(const Drawing& drawing);

// Curves that come from no element, each as a chain of its own.
Result OneByOne(const Drawing& source, std::span<const OwnedCurve> curves);

// The runs of curves that meet, each of them as a chain, which is closed if it comes back to its
// start.
void AddRuns(Library& library, std::span<const OwnedCurve> curves, std::size_t element,
             std::vector<ResultChain>& chains);

Bounds BoundsOf(Library& library, const Result& result);

}  // namespace kurvo::tools
