#include "svg/gzip.h"

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr int kGzipWindow = 15 + 16;  // the largest, with the header of gzip
constexpr int kMemory = 8;
constexpr std::size_t kStep = 1 << 20;
constexpr std::size_t kMostBytes = std::size_t{1} << 30;

// Runs `turn`, deflate or inflate, over all bytes. Result: what it says in the end.
template <class Turn>
int RunAll(z_stream& stream, std::string_view bytes, std::size_t most, const Turn& turn,
           std::string& out) {
  std::string buffer(kStep, '\0');
  int status = Z_OK;
  while (status == Z_OK && out.size() <= most) {
    if (stream.avail_in == 0 && !bytes.empty()) {
      const std::size_t part = std::min(bytes.size(), kStep);
      stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
      stream.avail_in = static_cast<uInt>(part);
      bytes.remove_prefix(part);
    }
    stream.next_out = reinterpret_cast<Bytef*>(buffer.data());
    stream.avail_out = static_cast<uInt>(buffer.size());
    status = turn(&stream, bytes.empty() ? Z_FINISH : Z_NO_FLUSH);
    out.append(buffer, 0, buffer.size() - stream.avail_out);
    const bool goes_on = status == Z_BUF_ERROR && (stream.avail_out == 0 || !bytes.empty());
    if (goes_on) status = Z_OK;
  }
  return status;
}

}  // namespace

bool IsGzip(std::string_view bytes) { return bytes.starts_with("\x1f\x8b"); }

std::string Packed(std::string_view bytes) {
  z_stream stream = {};
  if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemory,
                   Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
  const std::unique_ptr<z_stream, decltype(&deflateEnd)> end(&stream, deflateEnd);
  std::string packed;
  if (RunAll(stream, bytes, std::string::npos, deflate, packed) != Z_STREAM_END) {
    throw std::runtime_error("cannot be packed");
  }
  return packed;
}

std::string Unpacked(const std::string& name, std::string_view bytes) {
  z_stream stream = {};
  if (inflateInit2(&stream, kGzipWindow) != Z_OK) throw std::bad_alloc();
  const std::unique_ptr<z_stream, decltype(&inflateEnd)> end(&stream, inflateEnd);
  std::string unpacked;
  const int status = RunAll(stream, bytes, kMostBytes, inflate, unpacked);
  if (unpacked.size() > kMostBytes) throw InputError(OneLine(name) + ": unpacks to more than 1 GB");
  if (status != Z_STREAM_END) throw InputError(OneLine(name) + ": damaged, cannot be unpacked");
  return unpacked;
}

}  // namespace kurvo::tools
