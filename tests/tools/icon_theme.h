// The drawings of the installed icon theme, in order; none when it is not installed.
#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace kurvo::tools {

inline constexpr const char* kIconTheme = "/usr/share/icons/Adwaita";

inline std::vector<std::string> Icons() {
  std::vector<std::string> paths;
  if (!std::filesystem::exists(kIconTheme)) return paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(kIconTheme)) {
    if (entry.path().extension() == ".svg") paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

}  // namespace kurvo::tools
