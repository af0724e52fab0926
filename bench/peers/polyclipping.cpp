// Clipper, on polygons within a ten-thousandth of the size of the curves, in whole thousandths of a
// unit: no curves come out.
#include <clipper.hpp>

#include "driver.h"
#include "flatten.h"

namespace {

namespace cl = ClipperLib;

constexpr double kGrid = 1000;  // of a unit

class Polyclipping {
 public:
  static constexpr const char* kName = "polyclipping";

  static cl::Paths MakeOutline(const peers::Outline& outline) {
    cl::Paths paths;
    for (const peers::Glyph& contour : outline) {
      paths.emplace_back();
      for (const peers::Point p : peers::Corners(contour))
        paths.back().emplace_back(std::llround(kGrid * p.x), std::llround(kGrid * p.y));
    }
    return paths;
  }
  static cl::Paths Combine(const cl::Paths& a, const cl::Paths& b, int operation) {
    constexpr cl::ClipType kTypes[] = {cl::ctUnion, cl::ctIntersection, cl::ctDifference,
                                       cl::ctXor};
    cl::Clipper clipper;
    clipper.AddPaths(a, cl::ptSubject, true);
    clipper.AddPaths(b, cl::ptClip, true);
    cl::Paths result;
    clipper.Execute(kTypes[operation], result, cl::pftNonZero, cl::pftNonZero);
    return result;
  }
  static peers::Outline ReadOutline(const cl::Paths& paths) {
    peers::Outline outline;
    for (const cl::Path& path : paths)
      outline.push_back(peers::LinesOf(path, [](const cl::IntPoint& p) {
        return peers::Point{double(p.X) / kGrid, double(p.Y) / kGrid};
      }));
    return outline;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Polyclipping>::Main(argc, argv); }
