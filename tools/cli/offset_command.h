// kurvo offset: the outlines of a drawing at a distance.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddOffsetCommand(CLI::App& app);

}  // namespace kurvo::tools
