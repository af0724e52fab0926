// Offsets and strokes of rough chains, whose strips cross each other without number, put together
// by runs of curves.
#pragma once

#include "raw/stroke_loops.h"
#include "region/raw_result.h"

namespace kurvo::outline {

// Whether corners of a checked chain within this distance (the caller's unit) of each other are so
// many that one sweep over all strips as long would be at pains.
bool IsRough(const Cvseq& chain, double distance);
// Whether that is so of a loop of a simple region, whose loops are lines and arcs.
bool IsRough(const KurvoRegion& simple, double distance);

// What a pen covers of runs of curves, united with that of as many neighbours: what crosses inside
// of a union is gone when it meets the next one. Origins name curves of the chains.
class StripUnion {
 public:
  // `work` and `frame` outlive this.
  StripUnion(Composition& work, const Frame& frame, const Pen& pen, const GlobalVar& g);
  StripUnion(const StripUnion&) = delete;
  StripUnion& operator=(const StripUnion&) = delete;
  ~StripUnion();

  // Of a chain, the one with this index, in runs where it is rough (composites stay whole). Throws
  // Refusal.
  void Add(const Cvseq& chain, int32_t index, const StrokeJoints& joints, bool is_rough,
           Progress& progress);
  // All that was added; nothing is left here. Throws Refusal.
  void Finish(KeptRegion& all);
  int32_t gaps() const { return gaps_; }

 private:
  // Curves of a chain from `first` on.
  struct Run {
    Cvseq curves;
    const Cvseq& chain;
    int32_t index, first;
    bool is_closed;     // it is all of a closed chain
    bool begins, ends;  // as the chain does
  };
  struct Part {
    KurvoRegion region;
    int unions;  // within it, one in the other
  };

  void Add(const Run& run, const StrokeJoints& joints);
  static void Rename(const Run& run, KurvoOrigin& origin);
  void Keep(KeptRegion& made, const KurvoReport& report, int unions);
  void Unite();

  Composition& work_;
  const Frame& frame_;
  const KurvoOptions options_;
  const Pen pen_;
  GlobalVar g_;
  int32_t gaps_ = 0;
  KurvoReport report_ = {};
  double moved_ = 0;  // by one operation, at most
  Made made_;
  Array<Part> parts_;
};

}  // namespace kurvo::outline
