// Files that are either complete or not there.
#pragma once

#include <string>
#include <string_view>

namespace kurvo::tools {

// Writes `content` to a temporary file in the directory of `path` and renames it to `path`, so that
// nobody ever sees half a file and what was there stays when anything fails. An interrupt waits
// until that is done. Throws std::runtime_error.
void WriteWholeFile(const std::string& path, std::string_view content);

}  // namespace kurvo::tools
