// The client's drawing of real files, rendered, beside the files themselves.
#include "raster.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "geometry/library.h"
#include "icon_theme.h"
#include "picture/picture.h"
#include "process.h"
#include "svg/svg_reader.h"
#include "temporary_directory.h"

namespace kurvo::tools {
namespace {

namespace fs = std::filesystem;

constexpr int kIconStep = 9;  // every ninth icon is rendered
constexpr int kPixels = 256;

// Of 255. The renderer flattens curves to a tenth of a pixel and rounds corners of its own; a curve
// that is off by half a pixel somewhere changes a pixel by twice as much (see the last test).
constexpr int kLargestDifference = 64;

// Paint as the client draws it; nothing is clipped, and only shapes are left.
constexpr const char* kCommonStyle =
    "opacity:1 !important;fill-opacity:1 !important;stroke-opacity:1 !important;"
    "clip-path:none !important;mask:none !important;filter:none !important;"
    "overflow:visible !important;stroke-dasharray:none !important;marker:none !important;"
    "stroke-linecap:round !important;stroke-linejoin:round !important;";

enum class Paint { kFill, kStroke };

std::vector<std::string> Samples() {
  std::vector<std::string> paths;
  for (const auto& entry : fs::directory_iterator(KURVO_SAMPLES)) {
    paths.push_back(entry.path().string());
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

// Draws one file both ways.
class Pair {
 public:
  Pair(const std::string& input, Paint paint) : input_(input), paint_(paint) {
    pugi::xml_document source;
    source.load_file(input.c_str());
    DrawWithClient(0);
    const pugi::xml_node view = FitSource(source);
    // A stroke of about a pixel and a half, in units of the drawing.
    stroke_width_ = 1.5 / kPixels * std::max(Side(view, 2), Side(view, 3));
    DrawWithClient(stroke_width_);
    FitSource(source);
    source.save_file(directory_.File("source.svg").c_str());
    WriteStyle();
  }

  RasterDifference Difference() const {
    const Raster source = Rasterise(directory_.File("source.svg"), directory_.File("style.css"));
    return Compare(source, Rasterise(directory_.File("client.svg"), ""));
  }

  // Moves the client's drawing sideways.
  void Shift(double pixels) const {
    pugi::xml_document drawing;
    drawing.load_file(directory_.File("client.svg").c_str());
    const pugi::xml_node root = drawing.document_element();
    const double unit = std::max(Side(root, 2), Side(root, 3)) / kPixels;
    const std::string move = "translate(" + std::to_string(pixels * unit) + ")";
    for (pugi::xml_node group : root.children()) {
      group.append_attribute("transform").set_value(move.c_str());
    }
    drawing.save_file(directory_.File("client.svg").c_str());
  }

 private:
  static double Side(const pugi::xml_node& root, int index) {
    const std::string box = root.attribute("viewBox").value();
    std::size_t position = 0;
    for (int i = 0; i < index; ++i) position = box.find(' ', position) + 1;
    return std::stod(box.substr(position));
  }

  void DrawWithClient(double stroke_width) const {
    std::vector<std::string> arguments = {KURVO_TOOL,     "draw",
                                          input_,         "-q",
                                          "-o",           directory_.File("client.svg"),
                                          "--size",       std::to_string(kPixels),
                                          "--curves-only"};
    if (paint_ == Paint::kFill) arguments.push_back("--fill");
    if (stroke_width > 0) {
      arguments.insert(arguments.end(), {"--stroke-width", std::to_string(stroke_width)});
    }
    const ProcessResult result = RunProcess(arguments);
    EXPECT_EQ(result.exit_code, 0) << result.errors;
  }

  // Gives the source the view of the client's drawing. Result: the root of that drawing.
  pugi::xml_node FitSource(pugi::xml_document& source) {
    drawing_.load_file(directory_.File("client.svg").c_str());
    const pugi::xml_node drawn = drawing_.document_element();
    pugi::xml_node root = source.document_element();
    root.remove_attribute("preserveAspectRatio");
    for (const char* name : {"viewBox", "width", "height"}) {
      root.remove_attribute(name);
      root.append_attribute(name).set_value(drawn.attribute(name).value());
    }
    return drawn;
  }

  void WriteStyle() const {
    const std::string width = std::to_string(stroke_width_);
    const std::string paint =
        paint_ == Paint::kFill
            ? "fill:#000 !important;stroke:none !important;"
            : "fill:none !important;stroke:#000 !important;stroke-width:" + width + " !important;";
    directory_.Write("style.css",
                     "*{" + paint + kCommonStyle + "} text,image{display:none !important}");
  }

  TemporaryDirectory directory_;
  std::string input_;
  Paint paint_;
  double stroke_width_ = 0;
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

TEST(IconTheme, EveryIconIsReadAndDrawn) {
  const std::vector<std::string> icons = Icons();
  if (icons.empty()) GTEST_SKIP() << kIconTheme << " is not installed";
  EXPECT_GT(icons.size(), 200u);
  Library library;
  for (const std::string& icon : icons) {
    try {
      const Drawing drawing = ReadSvg(library, icon);
      const std::string picture = PictureOf(library, drawing, {});
      EXPECT_TRUE(pugi::xml_document().load_string(picture.c_str())) << icon;
      EXPECT_EQ(picture.find("nan"), std::string::npos) << icon;
      EXPECT_EQ(picture.find("inf"), std::string::npos) << icon;
    } catch (const std::exception& error) {
      ADD_FAILURE() << icon << ": " << error.what();
    }
  }
}

TEST(IconTheme, DrawingsMatchTheIcons) {
  const std::vector<std::string> icons = Icons();
  if (icons.empty()) GTEST_SKIP() << kIconTheme << " is not installed";
  if (!CanRasterise()) GTEST_SKIP() << "rsvg-convert is not installed";
  int drawn = 0;
  int inked = 0;
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
  for (const std::string& sample : Samples()) {
    EXPECT_GT(ExpectSamePicture(sample, Paint::kFill), 1000) << sample;
    // Their only matrix and scale mirror.
    EXPECT_GT(ExpectSamePicture(sample, Paint::kStroke), 1000) << sample;
  }
  EXPECT_GT(ExpectSamePicture(KURVO_TEST_DATA "/features.svg", Paint::kFill), 1000);
}

// The measure above sees a drawing that is half a pixel away.
TEST(Samples, TheMeasureSeesHalfAPixel) {
  if (!CanRasterise()) GTEST_SKIP() << "rsvg-convert is not installed";
  for (const Paint paint : {Paint::kFill, Paint::kStroke}) {
    const Pair pair(KURVO_SAMPLES "/bodice.svg", paint);
    pair.Shift(0.5);
    EXPECT_GT(pair.Difference().largest, kLargestDifference);
  }
}

}  // namespace
}  // namespace kurvo::tools
