#include "geometry/sampling.h"

#include <cmath>

namespace kurvo::tools {
namespace {

// Stretches of the curve that are always looked at, so that no bend or cusp of a cubic hides
// between two points that happen to lie on a chord.
constexpr int kFirstStretches = 8;
constexpr int kMaxDepth = 10;  // halvings of a stretch; at the cap it is a chord as it is

struct Sample {
  double t;
  Point point;
};

double DistanceToSegment(Point p, Point start, Point end) {
  const Point chord = end - start;
  const double length2 = Dot(chord, chord);
  const double s = length2 > 0 ? Dot(p - start, chord) / length2 : 0;
  const Point foot = start + (s < 0 ? 0 : s > 1 ? 1 : s) * chord;
  return std::hypot(p.x - foot.x, p.y - foot.y);
}

class Sampler {
 public:
  Sampler(Library& library, const OwnedCurve& curve, double tolerance)
      : library_(library), curve_(curve), tolerance_(tolerance) {}

  std::vector<Point> Run(double start, double end) {
    const int stretches = curve_.Type() == CV_LINE ? 1 : kFirstStretches;
    Sample from = At(start);
    points_.push_back(from.point);
    for (int i = 1; i <= stretches; ++i) {
      const Sample to = At(start + (end - start) * i / stretches);
      Append(from, to, curve_.Type() == CV_LINE ? kMaxDepth : 0);
      from = to;
    }
    return std::move(points_);
  }

 private:
  Sample At(double t) const { return {t, PositionOf(library_, curve_, t)}; }

  // Appends what lies past `from`, up to `to`.
  void Append(const Sample& from, const Sample& to, int depth) {
    if (depth < kMaxDepth) {
      const Sample middle = At(0.5 * (from.t + to.t));
      if (!(DistanceToSegment(middle.point, from.point, to.point) <= tolerance_)) {
        Append(from, middle, depth + 1);
        Append(middle, to, depth + 1);
        return;
      }
    }
    points_.push_back(to.point);
  }

  Library& library_;
  const OwnedCurve& curve_;
  const double tolerance_;
  std::vector<Point> points_;
};

}  // namespace

std::vector<Point> SampleCurve(Library& library, const OwnedCurve& curve, double tolerance,
                               double from, double to) {
  return Sampler(library, curve, tolerance).Run(from, to);
}

}  // namespace kurvo::tools
