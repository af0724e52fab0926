// Machine code (RS-274) of what is cut.
#pragma once

#include <string>

#include "cut/plan.h"

namespace kurvo::tools {

enum class Dialect { kGrbl, kLinuxcnc };

struct MachineOptions {
  double feed = 1000;   // mm a minute
  double power = 1000;  // of the beam, as S takes it
  Dialect dialect = Dialect::kGrbl;
};

// In millimetres with four digits. Arcs, of 120 degrees at most, have centres that are as far from
// their ends as these are written: grbl refuses radii that differ by 0.005 mm and a thousandth.
std::string MachineCode(const CutPlan& plan, const MachineOptions& options);

}  // namespace kurvo::tools
