#include "svg/linked_styles.h"

#include <cstdlib>
#include <optional>
#include <utility>

namespace kurvo::tools {
namespace {

namespace fs = std::filesystem;

constexpr int kMostFiles = 64;                     // that one drawing links to
constexpr int kDeepest = 8;                        // of files that import others
constexpr std::uintmax_t kLargestFile = 16 << 20;  // bytes

// "%20" and the like as what they stand for.
std::string Decoded(std::string_view reference) {
  std::string text;
  for (std::size_t i = 0; i < reference.size(); ++i) {
    const std::string digits(reference.substr(i + 1, reference[i] == '%' ? 2 : 0));
    char* end = nullptr;
    const long value = std::strtol(digits.c_str(), &end, 16);
    const bool is_byte = digits.size() == 2 && *end == '\0' && value > 0;
    text += is_byte ? static_cast<char>(value) : reference[i];
    if (is_byte) i += 2;
  }
  return text;
}

// A file in that folder or below it; nothing for what is elsewhere or is no file.
std::optional<fs::path> LocalFile(const fs::path& folder, std::string_view reference) {
  const std::string name = Decoded(reference.substr(0, reference.find_first_of("?#")));
  const fs::path path(name);
  if (name.empty() || name.find(':') != name.npos || !path.is_relative()) return std::nullopt;
  for (const fs::path& part : path) {
    if (part == "..") return std::nullopt;
  }
  const fs::path file = folder / path;
  std::error_code error;
  if (!fs::is_regular_file(file, error) || fs::file_size(file, error) > kLargestFile || error) {
    return std::nullopt;
  }
  return file;
}

}  // namespace

LinkedStyles::LinkedStyles(const std::string& drawing, StyleSheet& sheet)
    : folder_(fs::path(drawing).parent_path()),
      has_folder_(drawing != kStandardStream),
      sheet_(sheet) {}

void LinkedStyles::Read(std::string_view text) {
  sheet_.Read(text, [this](std::string_view reference) { Link(reference); });
}

void LinkedStyles::Link(std::string_view reference) {
  std::optional<fs::path> file;
  if (has_folder_ && depth_ < kDeepest && files_ < kMostFiles) file = LocalFile(folder_, reference);
  if (!file) return not_read_.Add(Excerpt(reference));
  ++files_;
  std::string text;
  try {
    text = ReadWholeFile(file->string());
  } catch (const InputError&) {
    return not_read_.Add(Excerpt(reference));
  }
  const fs::path folder = std::exchange(folder_, file->parent_path());
  ++depth_;
  Read(text);
  --depth_;
  folder_ = folder;
}

}  // namespace kurvo::tools
