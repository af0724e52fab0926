// Files that are complete or not there, and standard output.
#pragma once

#include <string>
#include <string_view>

namespace kurvo::tools {

// Writes `content` to a temporary file in the directory of `path` and renames it to `path`, so that
// nobody ever sees half a file and what was there stays when anything fails. An interrupt waits
// until that is done. Throws std::runtime_error.
void WriteWholeFile(const std::string& path, std::string_view content);

// Prints to standard output; throws when that cannot be written.
void Print(std::string_view text);

}  // namespace kurvo::tools
