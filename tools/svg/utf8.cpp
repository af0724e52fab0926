#include "svg/utf8.h"

#include <cstddef>

namespace kurvo::tools {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // U+FFFD

// The length of the UTF-8 sequence at the start of `text` (RFC 3629), 0 when there is none.
std::size_t SequenceLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  if (lead < 0x80) return 1;
  const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2u
                             : lead >= 0xE0 && lead < 0xF0 ? 3u
                             : lead >= 0xF0 && lead < 0xF5 ? 4u
                                                           : 0u;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  const bool overlong = (lead == 0xE0 && byte(1) < 0xA0) || (lead == 0xF0 && byte(1) < 0x90);
  const bool surrogate = lead == 0xED && byte(1) >= 0xA0;
  const bool too_large = lead == 0xF4 && byte(1) >= 0x90;
  return overlong || surrogate || too_large ? 0 : length;
}

}  // namespace

std::string ValidUtf8(std::string_view text) {
  std::string valid;
  while (!text.empty()) {
    const std::size_t length = SequenceLength(text);
    valid += length == 0 ? kReplacement : text.substr(0, length);
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return valid;
}

}  // namespace kurvo::tools
