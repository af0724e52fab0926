// kurbo, through the C functions of rust/.
#include <utility>

#include "driver.h"
#include "rust/peers.h"

namespace {

using peers::Point;

class Path {
 public:
  explicit Path(const std::vector<Point>& points)
      : path_(kurbo_path_new(points.data(), points.size() / 2)) {}
  Path(Path&& other) noexcept : path_(std::exchange(other.path_, nullptr)) {}
  Path(const Path&) = delete;
  Path& operator=(const Path&) = delete;
  ~Path() {
    if (path_) kurbo_path_free(path_);
  }
  const RustPath* get() const { return path_; }

 private:
  RustPath* path_;
};

class Kurbo : public RustPeer {
 public:
  static constexpr const char* kName = "kurbo";

  static Path MakeGlyph(const peers::Glyph& glyph) {
    std::vector<Point> points = {glyph[0][0]};
    for (const peers::Bezier& b : glyph) points.insert(points.end(), {b[1], b[2]});
    return Path(points);
  }

  static double Nearest(const RustCubic& c, Point p) {
    return kurbo_nearest(&c, p, peers::kTolerance);
  }
  static RustAnswer Intersect(const RustLine& line, const RustCubic& c) {
    RustAnswer answer;
    answer.count = kurbo_line_cubic(&line, &c, &answer.common);
    return answer;
  }
  static double Length(const RustCubic& c, double tolerance) { return kurbo_length(&c, tolerance); }
  static Point Position(const RustLine& line, double t) { return kurbo_line_position(&line, t); }
  static Point Position(const RustCubic& c, double t) { return kurbo_position(&c, t); }
  static Point Derivative(const RustCubic& c, double t) { return kurbo_derivative(&c, t); }
  static RustHalves Split(const RustCubic& c, double t) {
    RustHalves halves;
    kurbo_split(&c, t, &halves);
    return halves;
  }
  static bool Inside(const Path& path, Point p) { return kurbo_winding(path.get(), p) != 0; }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Kurbo>::Main(argc, argv); }
