// What is read: files, the numbers and words of a text, and what is thrown when they cannot be.
#pragma once

#include <cstddef>
#include <kurvo.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kurvo::tools {

// Input that cannot be read; the message names the file and the place in it on one line.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A fault in one element; the reader adds the file and the name of the element.
class ElementError : public std::runtime_error {
 public:
  // In the element as a whole; the reader adds its offset in the file.
  explicit ElementError(const std::string& problem) : std::runtime_error(problem) {}
  // In the value of an attribute, `offset` bytes from its start.
  ElementError(std::string_view attribute, std::size_t offset, const std::string& problem)
      : std::runtime_error("offset " + std::to_string(offset) + " in " + std::string(attribute) +
                           ": " + problem),
        has_offset_(true) {}

  // What makes the whole drawing one that cannot be read.
  static ElementError Limit(const std::string& problem) {
    ElementError error(problem);
    error.is_limit_ = true;
    return error;
  }

  bool HasOffset() const { return has_offset_; }
  bool IsLimit() const { return is_limit_; }

 private:
  bool is_limit_ = false;
  bool has_offset_ = false;
};

// A failure of the library in words: a fault of this program or of the machine, not of the input.
std::string ErrorText(const Error& error);

// What is named once: how many there are, and the first of them.
struct Tally {
  std::size_t count = 0;
  std::string first;

  void Add(std::string_view what) {
    if (count++ == 0) first = what;
  }
};

// `text` on one line: control characters become '?'.
std::string OneLine(std::string_view text);

// The same, cut when it is long.
std::string Excerpt(std::string_view text);

// The file name of standard input and of standard output.
inline constexpr std::string_view kStandardStream = "-";

// All bytes of a file, or of standard input, which is there once only. Throws InputError.
std::string ReadWholeFile(const std::string& path);

// Numbers above this are refused: doubles there are further apart than any drawing is fine.
inline constexpr double kLargestNumber = 1e15;

// Reads numbers, flags and words off the text of one attribute.
class TextScanner {
 public:
  // Both texts must outlive the scanner. `attribute` names the source in error messages.
  TextScanner(std::string_view attribute, std::string_view text)
      : attribute_(attribute), text_(text) {}

  bool AtEnd() const { return position_ == text_.size(); }
  std::size_t Offset() const { return position_; }
  // The next character; '\0' at the end.
  char Peek() const { return AtEnd() ? '\0' : text_[position_]; }
  // Skips `c` when it comes next.
  bool Accept(char c);
  void SkipSpace();
  // Skips spaces with at most one comma among them. Result: whether there was a comma.
  bool SkipCommaSpace();
  // Whether a number could begin here.
  bool AtNumber() const;

  // sign? (digits '.'? digits? | '.' digits) (('e'|'E') sign? digits)?
  // It ends where it can no longer be continued, so ".5.5" and "1e-3-2" are two numbers each.
  double Number();
  // A single '0' or '1'.
  bool Flag();
  // Letters up to the next other character.
  std::string_view Word();

  // "'x'" for what comes next, or "the end", for messages of the form "expected ..., found ...".
  std::string Found() const;
  [[noreturn]] void Fail(const std::string& problem) const { FailAt(position_, problem); }
  [[noreturn]] void FailAt(std::size_t offset, const std::string& problem) const;

 private:
  std::size_t EndOfNumber() const;

  std::string_view attribute_;
  std::string_view text_;
  std::size_t position_ = 0;
};

bool IsSpace(char c);

// Without spaces at its ends.
std::string_view Trimmed(std::string_view text);

}  // namespace kurvo::tools
