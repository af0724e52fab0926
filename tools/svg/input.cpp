#include "svg/input.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace kurvo::tools {
namespace {

bool IsDigit(char c) { return '0' <= c && c <= '9'; }
bool IsLetter(char c) { return ('a' <= c && c <= 'z') || ('A' <= c && c <= 'Z'); }

std::string ReadAll(std::istream& in) {
  constexpr std::size_t kAtOnce = 1 << 16;
  std::string bytes;
  std::size_t size = 0;
  do {
    bytes.resize(size + std::max(kAtOnce, size));
    in.read(bytes.data() + size, static_cast<std::streamsize>(bytes.size() - size));
    size += static_cast<std::size_t>(in.gcount());
  } while (in);
  bytes.resize(size);
  return bytes;
}

}  // namespace

std::string ErrorText(const Error& error) {
  return fmt::format("the library reports error 0x{:06X}{}", static_cast<unsigned>(error.code),
                     error.code == KURVO_ERR_MEMORY ? " (out of memory)" : "");
}

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

std::string ReadWholeFile(const std::string& path) {
  if (path == kStandardStream) {
    static bool was_read = false;
    if (was_read) throw InputError("-: standard input can be read once only");
    was_read = true;
    return ReadAll(std::cin);
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw InputError(OneLine(path) + ": is a directory");
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) throw InputError(OneLine(path) + ": cannot be opened");
  std::string bytes = ReadAll(file);
  if (file.bad()) throw InputError(OneLine(path) + ": cannot be read");
  return bytes;
}

bool IsSpace(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

bool TextScanner::Accept(char c) {
  if (AtEnd() || text_[position_] != c) return false;
  ++position_;
  return true;
}

void TextScanner::SkipSpace() {
  while (!AtEnd() && IsSpace(text_[position_])) ++position_;
}

bool TextScanner::SkipCommaSpace() {
  SkipSpace();
  const bool comma = Accept(',');
  SkipSpace();
  return comma;
}

bool TextScanner::AtNumber() const {
  const char c = Peek();
  return IsDigit(c) || c == '.' || c == '-' || c == '+';
}

// The offset past the number that begins here; the current offset when none does.
std::size_t TextScanner::EndOfNumber() const {
  const auto at = [this](std::size_t i) { return i < text_.size() ? text_[i] : '\0'; };
  const auto past_digits = [&at](std::size_t i) {
    while (IsDigit(at(i))) ++i;
    return i;
  };
  const auto past_sign = [&at](std::size_t i) { return at(i) == '+' || at(i) == '-' ? i + 1 : i; };

  const std::size_t first = past_sign(position_);
  std::size_t end = past_digits(first);
  std::size_t digits = end - first;
  if (at(end) == '.') {
    const std::size_t fraction_end = past_digits(end + 1);
    digits += fraction_end - (end + 1);
    end = fraction_end;
  }
  if (digits == 0) return position_;
  if (at(end) == 'e' || at(end) == 'E') {
    // "2em" is a length of two em: an exponent has digits.
    const std::size_t exponent = past_sign(end + 1);
    if (IsDigit(at(exponent))) end = past_digits(exponent);
  }
  return end;
}

double TextScanner::Number() {
  const std::size_t end = EndOfNumber();
  if (end == position_) Fail("expected a number, found " + Found());
  const std::string digits(text_.substr(position_, end - position_));
  // strtod reads by the "C" locale: this program never sets another. It turns what is too large
  // into infinity and what is too small into 0.
  const double value = std::strtod(digits.c_str(), nullptr);
  if (!(std::fabs(value) <= kLargestNumber)) {
    Fail("number out of range: " + Excerpt(digits));
  }
  position_ = end;
  return value;
}

bool TextScanner::Flag() {
  const char c = Peek();
  if (c != '0' && c != '1') Fail("expected an arc flag (0 or 1), found " + Found());
  ++position_;
  return c == '1';
}

std::string_view TextScanner::Word() {
  const std::size_t first = position_;
  while (IsLetter(Peek())) ++position_;
  return text_.substr(first, position_ - first);
}

std::string TextScanner::Found() const {
  if (AtEnd()) return "the end";
  const auto byte = static_cast<unsigned char>(text_[position_]);
  if (' ' <= byte && byte < 0x7f) return std::string("'") + text_[position_] + "'";
  return fmt::format("byte 0x{:02x}", byte);
}

void TextScanner::FailAt(std::size_t offset, const std::string& problem) const {
  throw ElementError(attribute_, offset, problem);
}

}  // namespace kurvo::tools
