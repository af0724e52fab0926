#include "svg/input_error.h"

namespace kurvo::tools {

std::string OneLine(std::string_view text) {
  std::string line(text);
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = '?';
  }
  return line;
}

std::string Excerpt(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  return OneLine(text.substr(0, kLongest)) + (text.size() > kLongest ? "..." : "");
}

}  // namespace kurvo::tools
