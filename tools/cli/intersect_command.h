// kurvo intersect: where the curves of one drawing or of two cross.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddIntersectCommand(CLI::App& app);

}  // namespace kurvo::tools
