// The client's drawing of real files, rendered, beside the files themselves.
#include <gtest/gtest.h>
#include <png.h>

#include <cstdint>
#include <pugixml.hpp>

#include "support.h"

namespace kurvo::tools {
namespace {

constexpr int kIconStep = 9;  // every ninth icon is rendered
constexpr int kPixels = 256;

// Of 255. The renderer flattens curves to a tenth of a pixel and rounds corners of its own; a curve
// that is off by half a pixel somewhere changes a pixel by twice as much.
constexpr int kLargestDifference = 64;

// Paint as the client draws it; nothing is clipped, and only shapes are left.
constexpr const char* kCommonStyle =
    "opacity:1 !important;fill-opacity:1 !important;stroke-opacity:1 !important;"
    "clip-path:none !important;mask:none !important;filter:none !important;"
    "overflow:visible !important;stroke-dasharray:none !important;marker:none !important;"
    "stroke-linecap:round !important;stroke-linejoin:round !important;";

enum class Paint { kFill, kStroke };

struct Raster {
  unsigned width = 0, height = 0;
  std::vector<std::uint8_t> ink;  // row by row: 0 for paper, 255 for full cover
};

bool CanRasterise() { return std::system("rsvg-convert --version > /dev/null 2>&1") == 0; }

// `options` are the renderer's. Throws std::runtime_error.
Raster Rasterise(const std::string& svg, const std::string& options = "") {
  const std::string png = svg + ".png";
  Run("rsvg-convert -b white -o " + png + " " + options + " " + svg);
  png_image image = {};
  image.version = PNG_IMAGE_VERSION;
  bool is_read = png_image_begin_read_from_file(&image, png.c_str()) != 0;
  image.format = PNG_FORMAT_GRAY;
  Raster raster = {image.width, image.height, {}};
  raster.ink.resize(PNG_IMAGE_SIZE(image));
  is_read = is_read && png_image_finish_read(&image, nullptr, raster.ink.data(), 0, nullptr) != 0;
  if (!is_read) throw std::runtime_error(png + ": " + image.message);
  for (std::uint8_t& value : raster.ink) value = static_cast<std::uint8_t>(255 - value);
  return raster;
}

struct RasterDifference {
  int largest;      // of a pixel, 0 to 255; 256 when the sizes differ
  double ink_left;  // ink of the first, in pixels
};

RasterDifference Compare(const Raster& a, const Raster& b) {
  RasterDifference difference = {a.width == b.width && a.height == b.height ? 0 : 256, 0};
  for (std::size_t i = 0; i < a.ink.size(); ++i) {
    difference.ink_left += a.ink[i] / 255.0;
    if (difference.largest == 256) continue;
    difference.largest = std::max(difference.largest, std::abs(a.ink[i] - b.ink[i]));
  }
  return difference;
}

// Draws one file both ways.
class Pair {
 public:
  Pair(const std::string& input, Paint paint) : input_(input), paint_(paint) {
    pugi::xml_document source;
    source.load_file(input.c_str());
    DrawWithClient("");
    const pugi::xml_node view = FitSource(source);
    // A stroke of about a pixel and a half, in units of the drawing.
    const std::string width = std::to_string(1.5 * Unit(view));
    DrawWithClient(" --stroke-width " + width);
    FitSource(source);
    source.save_file(directory_.File("source.svg").c_str());
    const std::string painted =
        paint == Paint::kFill
            ? "fill:#000 !important;stroke:none !important;"
            : "fill:none !important;stroke:#000 !important;stroke-width:" + width + " !important;";
    directory_.Write("style.css",
                     "*{" + painted + kCommonStyle + "} text,image{display:none !important}");
  }

  RasterDifference Difference() const {
    return Compare(Rasterise(directory_.File("source.svg"), "-s " + directory_.File("style.css")),
                   Rasterise(drawn_));
  }

 private:
  // The size of a pixel.
  static double Unit(const pugi::xml_node& root) {
    double x, y, width, height;
    std::istringstream(root.attribute("viewBox").value()) >> x >> y >> width >> height;
    return std::max(width, height) / kPixels;
  }

  void DrawWithClient(const std::string& options) const {
    Client("draw '" + input_ + "' -q --picture " + drawn_ + " --size " + std::to_string(kPixels) +
           " --curves-only" + (paint_ == Paint::kFill ? " --fill" : "") + options);
  }

  // Gives the source the view of the client's drawing. Result: the root of that drawing.
  pugi::xml_node FitSource(pugi::xml_document& source) {
    drawing_.load_file(drawn_.c_str());
    const pugi::xml_node drawn = drawing_.document_element();
    pugi::xml_node root = source.document_element();
    root.remove_attribute("preserveAspectRatio");
    for (const char* name : {"viewBox", "width", "height"}) {
      root.remove_attribute(name);
      root.append_attribute(name).set_value(drawn.attribute(name).value());
    }
    return drawn;
  }

  const TemporaryDirectory directory_;
  const std::string drawn_ = directory_.File("client.svg");
  const std::string input_;
  const Paint paint_;
  pugi::xml_document drawing_;
};

// Whether the transforms of a file keep lengths, so that strokes are as wide as they say.
bool KeepsStrokes(const std::string& path) {
  const std::string content = FileContent(path);
  for (const char* stretch : {"matrix(", "scale(", "skewX(", "skewY(", "<symbol"}) {
    if (content.find(stretch) != std::string::npos) return false;
  }
  return true;
}

// Result: the ink of the original in pixels.
double ExpectSamePicture(const std::string& path, Paint paint) {
  const RasterDifference difference = Pair(path, paint).Difference();
  EXPECT_LE(difference.largest, kLargestDifference)
      << path << (paint == Paint::kFill ? " filled" : " stroked");
  return difference.ink_left;
}

TEST(IconTheme, DrawingsMatchTheIcons) {
  const std::vector<std::string> icons = DrawingsIn(kIconTheme);
  if (icons.empty()) GTEST_SKIP() << kIconTheme << " is not installed";
  if (!CanRasterise()) GTEST_SKIP() << "rsvg-convert is not installed";
  int drawn = 0, inked = 0;
  for (std::size_t i = 0; i < icons.size(); i += kIconStep) {
    ++drawn;
    const double fill = ExpectSamePicture(icons[i], Paint::kFill);
    const double stroke = KeepsStrokes(icons[i]) ? ExpectSamePicture(icons[i], Paint::kStroke) : 0;
    if (fill > 100 || stroke > 100) ++inked;
  }
  EXPECT_GE(inked, drawn * 9 / 10) << "most icons must show something, or nothing is compared";
}

TEST(Samples, DrawingsMatchTheSources) {
  if (!CanRasterise()) GTEST_SKIP() << "rsvg-convert is not installed";
  const std::vector<std::string> samples = DrawingsIn(KURVO_SAMPLES);
  EXPECT_EQ(samples.size(), 3u);
  for (const std::string& sample : samples) {
    EXPECT_GT(ExpectSamePicture(sample, Paint::kFill), 1000) << sample;
    // Their only matrix and scale mirror.
    EXPECT_GT(ExpectSamePicture(sample, Paint::kStroke), 1000) << sample;
  }
  EXPECT_GT(ExpectSamePicture(KURVO_TEST_DATA "/features.svg", Paint::kFill), 1000);
}

}  // namespace
}  // namespace kurvo::tools
