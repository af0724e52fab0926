// Style sheets in files of their own, which a drawing or another style sheet names.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "svg/input.h"
#include "svg/style_sheet.h"

namespace kurvo::tools {

// Reads those that lie beside the drawing or in a folder below it; nothing comes over a network.
class LinkedStyles {
 public:
  // `drawing` (in): its file. What is on standard input lies beside nothing.
  LinkedStyles(const std::string& drawing, StyleSheet& sheet);

  // Adds the rules of a text, and of what it imports.
  void Read(std::string_view text);
  // Adds those of a file; what cannot be read is counted.
  void Link(std::string_view reference);

  const Tally& NotRead() const { return not_read_; }

 private:
  std::filesystem::path folder_;  // of the file that is read
  const bool has_folder_;
  StyleSheet& sheet_;
  int depth_ = 0;
  int files_ = 0;
  Tally not_read_;
};

}  // namespace kurvo::tools
