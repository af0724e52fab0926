#include "json_reader.h"

#include <cstdlib>
#include <regex>
#include <stdexcept>

namespace kurvo::tools {
namespace {

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  Json ReadAll() {
    Json value = ReadValue();
    SkipSpace();
    if (position_ != text_.size()) Fail("text after the value");
    return value;
  }

 private:
  [[noreturn]] void Fail(const std::string& problem) const {
    throw std::runtime_error("offset " + std::to_string(position_) + ": " + problem);
  }

  char Peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

  void SkipSpace() {
    while (std::string_view(" \t\r\n").find(Peek()) != std::string_view::npos && Peek() != '\0') {
      ++position_;
    }
  }

  bool Accept(std::string_view token) {
    SkipSpace();
    if (text_.substr(position_, token.size()) != token) return false;
    position_ += token.size();
    return true;
  }

  void Expect(std::string_view token) {
    if (!Accept(token)) Fail("expected " + std::string(token));
  }

  Json ReadValue() {
    if (Accept("null")) return {nullptr};
    if (Accept("true")) return {true};
    if (Accept("false")) return {false};
    if (Accept("{")) return {ReadObject()};
    if (Accept("[")) return {ReadArray()};
    if (Peek() == '"') return {ReadString()};
    return {ReadNumber()};
  }

  Json::Object ReadObject() {
    Json::Object object;
    if (Accept("}")) return object;
    do {
      SkipSpace();
      const std::string key = ReadString();
      Expect(":");
      if (!object.emplace(key, ReadValue()).second) Fail("the key " + key + " again");
    } while (Accept(","));
    Expect("}");
    return object;
  }

  Json::Array ReadArray() {
    Json::Array array;
    if (Accept("]")) return array;
    do {
      array.push_back(ReadValue());
    } while (Accept(","));
    Expect("]");
    return array;
  }

  // Of the escapes only those below U+0080.
  std::string ReadString() {
    Expect("\"");
    std::string string;
    for (;; ++position_) {
      const char c = Peek();
      if (c == '"') break;
      if (static_cast<unsigned char>(c) < ' ') Fail("a control character in a string");
      string += c == '\\' ? ReadEscape() : c;
    }
    ++position_;
    return string;
  }

  char ReadEscape() {
    ++position_;
    if (Peek() == '"' || Peek() == '\\') return Peek();
    if (Peek() != 'u') Fail("unknown escape");
    const std::string digits(text_.substr(position_ + 1, 4));
    position_ += 4;
    return static_cast<char>(std::strtol(digits.c_str(), nullptr, 16));
  }

  double ReadNumber() {
    static const std::regex kNumber(R"(-?(0|[1-9]\d*)(\.\d+)?([eE][-+]?\d+)?)");
    const std::string rest(text_.substr(position_, 40));
    std::smatch match;
    if (!std::regex_search(rest, match, kNumber, std::regex_constants::match_continuous)) {
      Fail("expected a value");
    }
    position_ += match[0].str().size();
    return std::strtod(match[0].str().c_str(), nullptr);
  }

  std::string_view text_;
  std::size_t position_ = 0;
};

}  // namespace

Json ReadJson(std::string_view text) { return Reader(text).ReadAll(); }

}  // namespace kurvo::tools
