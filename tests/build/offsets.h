// Offsets and the brute force that they are tested against: the nearest distance to a polyline.
#pragma once

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {

constexpr Point kUp{0, 0, 1}, kDown{0, 0, -1};

// An offset that frees itself; no error may come of it.
class Offset {
 public:
  Offset(const Curve& cv, double distance, double tolerance, const Point& normal = kUp) {
    Globals g;
    KurvocvOffsetCurve(&cv, normal, distance, tolerance, seq_.get(), &g);
    EXPECT_EQ(KurvoErrGet(&g) & ~KURVO_WARN_SHORT_VECTOR, 0);
  }
  int size() const { return seq_.count(); }
  const Curve& operator[](int i) const { return seq_[i]; }

 private:
  Chain seq_;
};

using Polyline = std::vector<XY>;

inline void AddSamples(const Curve& cv, int count, Polyline& line) {
  const Oracle exact(cv);
  for (int i = 0; i <= count; ++i) {
    const LongPoint p = exact.PointAt(std::lerp(exact.start(), exact.end(), L(i) / count));
    line.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  }
}

inline double Nearest(const Polyline& line, XY p) {
  double best = kInfinity;  // squared
  for (std::size_t i = 0; i + 1 < line.size(); ++i) {
    const XY a{line[i].x - p.x, line[i].y - p.y};
    const XY d{line[i + 1].x - line[i].x, line[i + 1].y - line[i].y};
    const double square = d.x * d.x + d.y * d.y;
    const double s = square > 0 ? std::clamp(-(a.x * d.x + a.y * d.y) / square, 0., 1.) : 0;
    const XY foot{a.x + s * d.x, a.y + s * d.y};
    best = std::min(best, foot.x * foot.x + foot.y * foot.y);
  }
  return std::sqrt(best);
}

// The points of all pieces.
inline Polyline Samples(const Offset& pieces) {
  Polyline line;
  for (int i = 0; i < pieces.size(); ++i)
    AddSamples(pieces[i], std::max(5, 600 / pieces.size()), line);
  return line;
}

inline double LargestJump(const Offset& pieces) {
  double jump = 0;
  for (int i = 0; i + 1 < pieces.size(); ++i)
    jump = std::max(jump, Distance(Oracle(pieces[i]).PointAt(1), Oracle(pieces[i + 1]).PointAt(0)));
  return jump;
}

constexpr int kChords = 1500;

// The smallest radius of curvature, from the angles between chords.
inline double SharpestBend(const Polyline& line) {
  double radius = kInfinity;
  for (std::size_t i = 1; i + 1 < line.size(); ++i) {
    const XY a{line[i].x - line[i - 1].x, line[i].y - line[i - 1].y},
        b{line[i + 1].x - line[i].x, line[i + 1].y - line[i].y};
    const double turn = std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    radius = std::min(radius, std::hypot(a.x, a.y) / std::fabs(turn));
  }
  return radius;
}

// Every point of the pieces is at the distance, and every point at the distance, on the side that
// it calls for, is on the pieces.
inline void ExpectAtDistance(const Curve& cv, const Offset& pieces, double distance,
                             double tolerance) {
  Polyline source;
  AddSamples(cv, kChords, source);
  const Polyline result = Samples(pieces);
  const double slack = 2 * tolerance + 2e-5;  // of the chords
  for (const XY& p : result) ASSERT_LE(std::fabs(Nearest(source, p) - std::fabs(distance)), slack);
  for (std::size_t i = 50; i + 1 < source.size(); i += 100) {
    const XY a = source[i - 1], b = source[i + 1];
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const XY p{source[i].x - distance * (b.y - a.y) / length,
               source[i].y + distance * (b.x - a.x) / length};
    ASSERT_LE(Nearest(result, p), slack + 1e-4) << "missing at chord " << i;
  }
}

}  // namespace kurvo_test
