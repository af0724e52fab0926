// Parts of a chain put together to a new one.
#pragma once

#include <kurvo_outline.h>

#include "base/memory.h"
#include "base/owned.h"
#include "strand/frame.h"

namespace kurvo::outline {

// A place at which a chain is cut: its curve, the parameter, and where that is for the caller.
struct Stop {
  int32_t index;
  double t;
  Vec2 point;
};

// Of a place on a checked chain; parts that would be none (kLeastPart) are left to the neighbours.
Stop StopOf(const Cvseq& chain, const KurvoPlace& place);

class Trimmer {
 public:
  // Of a checked chain; both must outlive the trimmer.
  Trimmer(const Cvseq& chain, const Frame& frame) : chain_(chain), frame_(frame) {}

  // From a place, or the start of the chain (null), to one that is no earlier, or its end.
  void Add(const Stop* from, const Stop* to);
  // A loop that is one circle, begun at a place.
  void AddCircle(const Stop& from);

  std::size_t size() const { return trimmed_.size(); }
  // Which part of which curve of the chain each new curve is.
  struct Source {
    int32_t curve;
    double from, to;
  };
  const Array<Source>& sources() const { return sources_; }
  OwnedChain Take() { return std::move(trimmed_); }

 private:
  void AddCurve(int32_t index, const Stop* from, const Stop* to);
  void AddParts(Array<OwnedCurve>& parts, const Source& source);

  const Cvseq& chain_;
  const Frame& frame_;
  OwnedChain trimmed_;
  Array<Source> sources_;
};

}  // namespace kurvo::outline
