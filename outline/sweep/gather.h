// From the edges of an arrangement to loops.
#pragma once

#include <kurvo_outline.h>

#include "sweep/parts.h"

namespace kurvo::outline {

// Makes loops of edges those of a result. Loops no wider than tol are dropped and counted in the
// report, which also tells how far ends were moved. Gaps up to `closed` (caller's unit) are closed
// by moving ends together.
class PartTaker {
 public:
  PartTaker(const Scene& scene, const Arrangement& arrangement, double closed, KurvoReport& report,
            ResultLoops& result)
      : scene_(scene),
        arrangement_(arrangement),
        closed_(closed),
        report_(report),
        result_(result) {}

  void Take(std::span<const int32_t> edges, ResultLoop& made);
  void Drop(ResultLoop& made, double area);

 private:
  const Scene& scene_;
  const Arrangement& arrangement_;
  const double closed_;
  KurvoReport& report_;
  ResultLoops& result_;
  LoopOfParts collected_;
};

// All loops of an arrangement, taken so.
void GatherLoops(const Scene& scene, const Arrangement& arrangement, double closed,
                 KurvoReport& report, ResultLoops& result);

}  // namespace kurvo::outline
