// The rows of the comparison, asked of one library: a program per library, a row per run.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>

#include "questions.h"

namespace peers {

template <class P>
class Driver {
 public:
  // The rows, each with the function that runs it. `size` is that of the curves.
  struct Row {
    const char* name;
    bool (*run)(P&, double size, Result*);
    double size;
  };
  static std::span<const Row> Rows() {
    constexpr double kUsual = 100.0, kEm = 1000.0;
    using Q = Questions<P>;
    static constexpr Row kRows[] = {
        {"nearest/cubic", Q::Nearest, kUsual},
        {"nearest/cubic", Q::Nearest, 1.0},
        {"nearest/cubic", Q::Nearest, 1000.0},
        {"nearest/spline/1", Q::NearestOneSpan, kUsual},
        {"first-foot/cubic", Q::FirstFoot, kUsual},
        {"intersect/line-cubic", Q::LineCubic, kUsual},
        {"intersect/line-cubic", Q::LineCubic, 1.0},
        {"intersect/line-cubic", Q::LineCubic, 1000.0},
        {"intersect/arc-cubic", Q::ArcCubic, kUsual},
        {"intersect/arc-cubic", Q::ArcCubic, 1.0},
        {"intersect/arc-cubic", Q::ArcCubic, 1000.0},
        {"intersect/cubic-cubic", Q::CubicCubic, kUsual},
        {"intersect/cubic-cubic", Q::CubicCubic, 1.0},
        {"intersect/cubic-cubic", Q::CubicCubic, 1000.0},
        {"intersect/splines/20", Q::template Splines<20>, kUsual},
        {"intersect/splines/100", Q::template Splines<100>, kUsual},
        {"intersect/splines/500", Q::template Splines<500>, kUsual},
        {"intersect/nearly-coincident", Q::Coincident, 1000.0},
        {"length/cubic", Q::LengthOfCubic, kUsual},
        {"length/cubic", Q::LengthOfCubic, 1.0},
        {"length/cubic", Q::LengthOfCubic, 1000.0},
        {"length/spline/100", Q::LengthOfSpline, kUsual},
        {"position/line", Q::PositionOnLine, kUsual},
        {"position/cubic", Q::PositionOnCubic, kUsual},
        {"position/arc", Q::PositionOnArc, kUsual},
        {"derivative/cubic", Q::Derivative, kUsual},
        {"split/cubic", Q::SplitCubic, kUsual},
        {"split/spline/1000", Q::SplitSpline, kUsual},
        {"offset/cubic", Q::OffsetCubic, kUsual},
        {"offset/cubic", Q::OffsetCubic, 1.0},
        {"offset/cubic", Q::OffsetCubic, 1000.0},
        {"offset/glyph-quadratic", Q::template OffsetGlyph<2>, kEm},
        {"offset/glyph-cubic", Q::template OffsetGlyph<3>, kEm},
        {"classify/glyph", Q::Classify, kUsual},
        {"classify/glyph", Q::Classify, kEm},
        {"combine/letters-shifted", Q::template Combine<Placing::kShifted>, kEm},
        {"combine/letters-overlaid", Q::template Combine<Placing::kOverlaid>, kEm},
        {"combine/letters-slid", Q::template Combine<Placing::kSlid>, kEm},
        {"combine/letters-turned", Q::template Combine<Placing::kTurned>, kEm},
        {"combine/letters-identical", Q::template Combine<Placing::kIdentical>, kEm},
    };
    return kRows;
  }

  static int Main(int argc, char** argv) {
    if (argc == 2 && !std::strcmp(argv[1], "--rows")) {
      for (const Row& row : Rows()) std::printf("%s %g\n", row.name, row.size);
      return 0;
    }
    if (argc != 3) {
      std::fprintf(stderr, "usage: %s --rows | %s ROW SIZE\n", argv[0], argv[0]);
      return 2;
    }
    P peer;
    for (const Row& row : Rows()) {
      if (std::strcmp(row.name, argv[1]) != 0 || row.size != std::atof(argv[2])) continue;
      Result r;
      if (row.run(peer, row.size, &r))
        std::printf("%s\t%g\t%s\t%.1f\t%.1f\t%.1f\t%.1f\t%zu\t%zu\n", row.name, row.size, P::kName,
                    r.mean, r.median, r.p90, r.worst, r.right, r.asked);
      return 0;
    }
    std::fprintf(stderr, "no row %s %s\n", argv[1], argv[2]);
    return 2;
  }
};

}  // namespace peers
