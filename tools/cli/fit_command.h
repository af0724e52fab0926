// kurvo fit: a spline through points.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddFitCommand(CLI::App& app);

}  // namespace kurvo::tools
