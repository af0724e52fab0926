// Runs a fuzz target on files, in builds without a fuzzer.
// usage: TARGET FILE|DIRECTORY...
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace {

void Replay(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
  std::fprintf(stderr, "%s\n", path.c_str());  // the last one named is the one that died
  LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int count, char** arguments) {
  int replayed = 0;
  for (int i = 1; i < count; ++i) {
    const std::filesystem::path path = arguments[i];
    if (!std::filesystem::is_directory(path)) {
      Replay(path);
      ++replayed;
      continue;
    }
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
      Replay(entry.path());
      ++replayed;
    }
  }
  std::printf("%d inputs\n", replayed);
  return replayed > 0 ? 0 : 2;
}
