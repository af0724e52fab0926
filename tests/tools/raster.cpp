#include "raster.h"

#include <png.h>

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "process.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

Raster ReadPng(const std::string& path) {
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
    throw std::runtime_error(path + ": " + image.message);
  }
  image.format = PNG_FORMAT_GRAY;
  Raster raster = {static_cast<int>(image.width), static_cast<int>(image.height), {}};
  raster.ink.resize(PNG_IMAGE_SIZE(image));
  if (png_image_finish_read(&image, nullptr, raster.ink.data(), 0, nullptr) == 0) {
    throw std::runtime_error(path + ": " + image.message);
  }
  for (std::uint8_t& value : raster.ink) value = static_cast<std::uint8_t>(255 - value);
  return raster;
}

}  // namespace

bool CanRasterise() { return RunProcess({"rsvg-convert", "--version"}).exit_code == 0; }

Raster Rasterise(const std::string& svg_path, const std::string& stylesheet) {
  const TemporaryDirectory directory;
  const std::string png = directory.File("out.png");
  std::vector<std::string> arguments = {"rsvg-convert", "-b", "white", "-o", png, svg_path};
  if (!stylesheet.empty()) arguments.insert(arguments.begin() + 1, {"-s", stylesheet});
  const ProcessResult result = RunProcess(arguments);
  if (result.exit_code != 0) throw std::runtime_error(svg_path + ": " + result.errors);
  return ReadPng(png);
}

RasterDifference Compare(const Raster& a, const Raster& b) {
  RasterDifference difference = {0, 0};
  for (const std::uint8_t value : a.ink) difference.ink_left += value / 255.0;
  if (a.width != b.width || a.height != b.height) {
    difference.largest = 256;
    return difference;
  }
  for (std::size_t i = 0; i < a.ink.size(); ++i) {
    difference.largest = std::max(difference.largest, std::abs(a.ink[i] - b.ink[i]));
  }
  return difference;
}

}  // namespace kurvo::tools
