// kurvo split: cuts outlines into pieces.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddSplitCommand(CLI::App& app);

}  // namespace kurvo::tools
