// What making regions of a drawing has in common: calls of the library, and what comes of them.
#pragma once

#include <functional>
#include <vector>

#include "geometry/region_input.h"
#include "geometry/regions.h"

namespace kurvo::tools {

// Calls the library with complete options. `out` is written.
using MakeRegion = std::function<void(const KurvoOptions&, KurvoRegion*, KurvoReport*, GlobalVar*)>;

// Runs `make`, which calls `function`, on the sources and adds to the report.
void Run(Context& context, const KurvoOptions& options, const std::vector<const Operand*>& sources,
         double steps, const CurveDone& done, const char* function, const MakeRegion& make,
         Operand& out, KurvoReport& sum);

// KURVO_UNION ... of the sources; what is no farther apart than `tol`, a length, is the same. 0:
// the finest.
void Combine(Context& context, int operation, const std::vector<const Operand*>& sources,
             double steps, const CurveDone& done, Operand& out, KurvoReport& report,
             double tol = 0);

void OffsetGroup(Context& context, const Operand& source, double distance,
                 const KurvoOptions& options, const CurveDone& done, Operand& made,
                 KurvoReport& sum);

// Outlines that may not be closed have been left out before.
KurvoOptions ClosingAll(KurvoOptions options);

KurvoOptions WithTolerance(const PenOptions& pen, double distance, double size);

// The loops of a region that was made. Holes go with the element around them where that is filled.
void TakeLoops(Context& context, const Drawing& drawing, double distance, Operand& made,
               Regions& regions);

// An outline as it is.
void Keep(Context& context, const Outline& outline, std::size_t element, RegionLoop::Kind kind,
          Regions& regions);

void Append(Regions& part, Regions& all);
void SortByElement(Regions& regions);

}  // namespace kurvo::tools
