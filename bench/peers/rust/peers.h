// The C functions of src/lib.rs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "../curve.h"

extern "C" {

struct RustLine {
  peers::Point p[2];
};
struct RustCubic {
  peers::Point p[4];
};
struct RustHalves {
  peers::Point p[8];
};
struct RustCommon {
  peers::Common found[9];
};
struct RustPath;

double kurbo_nearest(const RustCubic*, peers::Point, double accuracy);
std::int32_t kurbo_line_cubic(const RustLine*, const RustCubic*, RustCommon*);
double kurbo_length(const RustCubic*, double accuracy);
peers::Point kurbo_line_position(const RustLine*, double t);
peers::Point kurbo_position(const RustCubic*, double t);
peers::Point kurbo_derivative(const RustCubic*, double t);
void kurbo_split(const RustCubic*, double t, RustHalves*);
RustPath* kurbo_path_new(const peers::Point*, std::size_t curves);
void kurbo_path_free(RustPath*);
std::int32_t kurbo_winding(const RustPath*, peers::Point);

std::int32_t lyon_line_cubic(const RustLine*, const RustCubic*, RustCommon*);
std::int32_t lyon_cubic_cubic(const RustCubic*, const RustCubic*, RustCommon*);
double lyon_length(const RustCubic*, double tolerance);
peers::Point lyon_line_position(const RustLine*, double t);
peers::Point lyon_position(const RustCubic*, double t);
peers::Point lyon_arc_position(peers::Point centre, double radius, double from, double sweep,
                               double t);
peers::Point lyon_derivative(const RustCubic*, double t);
void lyon_split(const RustCubic*, double t, RustHalves*);
}

// A list of common points, as the two libraries return it: on the stack.
struct RustAnswer {
  RustCommon common;
  std::int32_t count;
};

inline peers::Point BezierPoint(const peers::Point* p, double t) {
  const double s = 1.0 - t;
  const double b[] = {s * s * s, 3.0 * s * s * t, 3.0 * s * t * t, t * t * t};
  return {b[0] * p[0].x + b[1] * p[1].x + b[2] * p[2].x + b[3] * p[3].x,
          b[0] * p[0].y + b[1] * p[1].y + b[2] * p[2].y + b[3] * p[3].y};
}

// What both have: records of plain points.
class RustPeer {
 public:
  static RustLine MakeLine(const peers::Segment& s) { return {{s.start, s.end}}; }
  static RustCubic MakeCubic(const peers::Bezier& b) { return {{b[0], b[1], b[2], b[3]}}; }
  static peers::Point SampleHalf(const RustHalves& halves, int half, double s) {
    return BezierPoint(halves.p + 4 * half, s);
  }
  template <class A, class B>
  static std::vector<peers::Common> ReadCommon(const A&, const B&, const RustAnswer& answer) {
    return {answer.common.found, answer.common.found + answer.count};
  }
};
