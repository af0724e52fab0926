#include "svg/input_file.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "svg/input_error.h"

namespace kurvo::tools {

std::string ReadWholeFile(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw InputError(OneLine(path) + ": is a directory");
  }
  std::ifstream file(path, std::ios::binary);
  if (!file) throw InputError(OneLine(path) + ": cannot be opened");
  std::string bytes{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) throw InputError(OneLine(path) + ": cannot be read");
  return bytes;
}

}  // namespace kurvo::tools
