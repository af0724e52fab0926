// A drawing as what a machine cuts of it, with its beam beside the outlines.
#pragma once

#include <cstddef>
#include <vector>

#include "cut/path.h"
#include "geometry/regions.h"

namespace kurvo::tools {

// Lengths in units of the drawing.
struct CutOptions {
  double kerf = 0;       // how much the beam takes away
  double deviation = 0;  // what is cut stays so close to what is drawn
  double gap = 0;        // ends no farther apart are joined
  double lead_in = 0;    // the radius of the arcs on which the beam comes to closed outlines
};

// One path with its lead-in; in the order of cutting.
struct MachineCut {
  std::vector<DxfSegment> lead_in;   // none or one
  std::vector<DxfSegment> segments;  // run end to start
  bool closed = false;
};

struct CutPlan {
  Affine map;  // from the drawing to the machine
  std::vector<MachineCut> cuts;
  std::size_t closed = 0, open = 0;  // outlines of the drawing, joined
  std::size_t closed_cuts = 0;  // what of the closed ones is cut: others merge or are too narrow
  KurvoReport report = {};      // of joining and offsetting
  double length = 0;            // cut, with the lead-ins; mm
  double way = 0;               // between cuts, from the origin; mm
};

// In millimetres with y pointing up; the origin is the lower left corner of the sheet, or that of
// the drawing where it has no sheet. `done` is called for each curve. Throws BadResult.
CutPlan PlanCuts(Context& context, const Drawing& drawing, const CutOptions& options,
                 const CurveDone& done);

}  // namespace kurvo::tools
