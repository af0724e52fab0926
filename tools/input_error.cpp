#include "input_error.h"

namespace kurvo::tools {

std::string Printable(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  std::string line(text.substr(0, kLongest));
  for (char& c : line) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') c = '?';
  }
  if (text.size() > kLongest) line += "...";
  return line;
}

}  // namespace kurvo::tools
