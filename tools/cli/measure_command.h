// kurvo measure: the curves of a drawing one by one, and what is nearest to a point.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddMeasureCommand(CLI::App& app);

}  // namespace kurvo::tools
