// Compressed files (RFC 1952).
#pragma once

#include <string>
#include <string_view>

namespace kurvo::tools {

bool IsGzip(std::string_view bytes);

// Throws std::runtime_error.
std::string Packed(std::string_view bytes);
// Throws InputError, which begins with `name`, when the bytes are damaged or would take more than
// a drawing can.
std::string Unpacked(const std::string& name, std::string_view bytes);

}  // namespace kurvo::tools
