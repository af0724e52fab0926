// The client's SVG reader on any bytes: a drawing, or one line that says what is wrong.
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "svg/input.h"
#include "svg/reader.h"

namespace {

// A file without a place on a disk.
class MemoryFile {
 public:
  MemoryFile(const uint8_t* data, std::size_t size) : file_(memfd_create("drawing", 0)) {
    if (file_ < 0 || write(file_, data, size) != static_cast<ssize_t>(size)) std::abort();
  }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(file_); }
  std::string Path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const MemoryFile file(data, size);
  kurvo::Context context;
  try {
    kurvo::tools::ReadDrawing(context, file.Path());
  } catch (const kurvo::tools::InputError& error) {
    const std::string line = error.what();
    if (!line.starts_with(file.Path() + ":") || line.find('\n') != std::string::npos) {
      std::fprintf(stderr, "not one line that names the file: %s\n", line.c_str());
      std::abort();
    }
  }
  return 0;
}
