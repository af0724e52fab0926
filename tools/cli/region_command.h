// What commands that make regions have in common.
#pragma once

#include "cli/output.h"
#include "report/reports.h"

namespace kurvo::tools {

// Writes and prints the regions: Deliver for commands that make them.
int DeliverRegions(Context& context, const InputOptions& input, const OutputOptions& options,
                   const std::vector<Source>& sources, const RegionReport& report, Look look);

}  // namespace kurvo::tools
