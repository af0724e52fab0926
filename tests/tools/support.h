// What the tests of the client share: files that go away, drawings from text, the client as a
// process, the icons of this machine.
#pragma once

#include <stdio.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "svg/reader.h"

namespace kurvo::tools {

// A directory that goes away with its owner.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string name = (std::filesystem::temp_directory_path() / "kurvo-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
    path_ = name;
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string File(const std::string& name) const { return (path_ / name).string(); }
  std::string Write(const std::string& name, std::string_view content) const {
    std::ofstream(File(name), std::ios::binary) << content;
    return File(name);
  }
  bool IsEmpty() const { return std::filesystem::is_empty(path_); }

 private:
  std::filesystem::path path_;
};

inline std::string FileContent(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

// What an svg element with the content `body` shows.
inline Drawing ReadText(Context& context, const std::string& body) {
  const TemporaryDirectory directory;
  return ReadDrawing(context, directory.Write("in.svg", "<svg>" + body + "</svg>"));
}

inline std::string Path(const std::string& data) { return "<path d='" + data + "'/>"; }

// The curves of a drawing of one path with one outline.
inline std::vector<Curve> ReadPath(Context& context, const std::string& data) {
  return std::move(ReadText(context, Path(data)).shapes.at(0).outlines.at(0).curves);
}

// What a command of the shell prints. Throws std::runtime_error when it fails.
inline std::string Run(const std::string& command) {
  FILE* pipe = popen((command + " < /dev/null").c_str(), "r");
  std::string output;
  char part[4096];
  while (const std::size_t count = fread(part, 1, sizeof part, pipe)) output.append(part, count);
  if (pclose(pipe) != 0) throw std::runtime_error(command + " fails");
  return output;
}

inline std::string Client(const std::string& arguments) { return Run(KURVO_TOOL " " + arguments); }

// The drawings below a directory, in order; none when it is not there.
inline std::vector<std::string> DrawingsIn(const std::string& directory) {
  std::vector<std::string> paths;
  if (!std::filesystem::exists(directory)) return paths;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (entry.path().extension() == ".svg") paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

inline constexpr const char* kIconTheme = "/usr/share/icons/Adwaita";

}  // namespace kurvo::tools
