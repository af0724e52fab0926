// kurvo distance: the shortest links between two drawings.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddDistanceCommand(CLI::App& app);

}  // namespace kurvo::tools
