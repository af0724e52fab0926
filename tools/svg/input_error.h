// What is thrown when the input cannot be read.
#pragma once

#include <cstddef>
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

  bool HasOffset() const { return has_offset_; }

 private:
  bool has_offset_ = false;
};

// `text` on one line: control characters become '?'.
std::string OneLine(std::string_view text);

// The same, cut when it is long.
std::string Excerpt(std::string_view text);

}  // namespace kurvo::tools
