// Files that are read.
#pragma once

#include <string>

namespace kurvo::tools {

// All bytes of a file. Throws InputError.
std::string ReadWholeFile(const std::string& path);

}  // namespace kurvo::tools
