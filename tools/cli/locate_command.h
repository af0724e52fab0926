// kurvo locate: which points lie on, inside or outside the outlines of a drawing.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddLocateCommand(CLI::App& app);

}  // namespace kurvo::tools
