// Text of any origin as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace kurvo::tools {

// `text` with U+FFFD for each byte that is not part of a UTF-8 sequence.
std::string ValidUtf8(std::string_view text);

}  // namespace kurvo::tools
