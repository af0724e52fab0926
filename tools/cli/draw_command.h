// kurvo draw: what the outlines of a drawing are made of.
#pragma once

#include "cli/command_support.h"

namespace kurvo::tools {

Command AddDrawCommand(CLI::App& app);

}  // namespace kurvo::tools
