// lyon, through the C functions of rust/.
#include "driver.h"
#include "rust/peers.h"

namespace {

using peers::Point;

class Lyon : public RustPeer {
 public:
  static constexpr const char* kName = "lyon";

  static peers::Arc MakeArc(const peers::Arc& arc) { return arc; }

  static RustAnswer Intersect(const RustLine& line, const RustCubic& c) {
    RustAnswer answer;
    answer.count = lyon_line_cubic(&line, &c, &answer.common);
    return answer;
  }
  static RustAnswer Intersect(const RustCubic& a, const RustCubic& b) {
    RustAnswer answer;
    answer.count = lyon_cubic_cubic(&a, &b, &answer.common);
    return answer;
  }
  static double Length(const RustCubic& c, double tolerance) { return lyon_length(&c, tolerance); }
  static Point Position(const RustLine& line, double t) { return lyon_line_position(&line, t); }
  static Point Position(const RustCubic& c, double t) { return lyon_position(&c, t); }
  static Point Position(const peers::Arc& a, double t) {
    return lyon_arc_position(a.centre, a.radius, a.from, a.sweep, t);
  }
  static Point Derivative(const RustCubic& c, double t) { return lyon_derivative(&c, t); }
  static RustHalves Split(const RustCubic& c, double t) {
    RustHalves halves;
    lyon_split(&c, t, &halves);
    return halves;
  }
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Lyon>::Main(argc, argv); }
