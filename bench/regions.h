// Regions that are asked about: letters, rings and circles.
#pragma once

#include <benchmark/benchmark.h>
#include <kurvo_outline.h>

#include <memory>
#include <vector>

#include "curves.h"
#include "support/letters.h"

namespace bench {

struct XY {
  double x, y;
};

class Region {
 public:
  Region() = default;
  ~Region() {
    for (Cvseq& loop : loops_) KurvocvFreeCvseq(&loop);
  }
  Region(const Region&) = delete;
  Region& operator=(const Region&) = delete;

  KurvoRegion* get() {
    region_ = {static_cast<int32_t>(loops_.size()), KURVO_FILL_NONZERO, loops_.data(), nullptr};
    return &region_;
  }

  void Contour(const kurvo_test::Contour<XY>& pieces) {
    Cvseq loop;
    KurvocvMallocCvseq(&loop, static_cast<int32_t>(pieces.size()));
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      const auto& points = pieces[i];
      if (points.size() == 2) {
        auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(loop.curves + i, CV_LINE));
        Put(line->start, points[0]);
        Put(line->end, points[1]);
        continue;
      }
      auto* bezier = static_cast<KurvoBezier*>(
          KurvocvMallocCurve(loop.curves + i, CV_BEZIER, static_cast<int32_t>(points.size()) - 1));
      for (std::size_t k = 0; k < points.size(); ++k) Put(bezier->points[k], points[k]);
    }
    loops_.push_back(loop);
  }

  // Half circles and more between corners: bulges as their sagittas over half their chords.
  void Arcs(const std::vector<XY>& corners, const std::vector<double>& bulges) {
    Cvseq loop;
    KurvocvMallocCvseq(&loop, static_cast<int32_t>(corners.size()));
    for (std::size_t i = 0; i < corners.size(); ++i) {
      const XY a = corners[i], b = corners[(i + 1) % corners.size()];
      const double half = std::tan(2 * std::atan(bulges[i]));  // of half the sweep
      const XY centre = {(a.x + b.x) / 2 - (b.y - a.y) / 2 / half,
                         (a.y + b.y) / 2 + (b.x - a.x) / 2 / half};
      auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(loop.curves + i, CV_ARC));
      arc->radius = std::hypot(a.x - centre.x, a.y - centre.y);
      Put(arc->centre, centre);
      KurvoclSetCoord(arc->normal, 0, 0, bulges[i] < 0 ? -1 : 1);
      Put(arc->start, a);
      Put(arc->end, b);
    }
    loops_.push_back(loop);
  }

  void Circle(XY c, double r) { Arcs({{c.x - r, c.y}, {c.x + r, c.y}}, {1, 1}); }

 private:
  static void Put(double* to, XY p) { KurvoclSetCoord(to, p.x, p.y, 0); }

  std::vector<Cvseq> loops_;  // adding one by one would be quadratic
  KurvoRegion region_;
};

using Some = std::vector<std::unique_ptr<Region>>;

// Letter `index`, turned about its middle and moved.
inline std::unique_ptr<Region> Letter(std::size_t index, double turn, double dx, double dy) {
  auto region = std::make_unique<Region>();
  const double c = std::cos(turn), s = std::sin(turn);
  const auto place = [=](double x, double y) {
    return XY{c * (x - 500) - s * (y - 500) + 500 + dx, s * (x - 500) + c * (y - 500) + 500 + dy};
  };
  const std::string path = kurvo_test::kGlyphs[index % kurvo_test::kGlyphCount];
  for (const auto& contour : kurvo_test::ContoursOf(path, place)) region->Contour(contour);
  return region;
}

// All letters from one on, as they stand.
inline Some Letters(std::size_t first = 0) {
  Some letters;
  for (std::size_t i = first; i < kurvo_test::kGlyphCount; ++i)
    letters.push_back(Letter(i, 0, 0, 0));
  return letters;
}

// The corners of a ring that waves, and is rough by half its steps.
inline std::vector<XY> RingCorners(Random& random, int count) {
  std::vector<XY> corners;
  const double x = random.Between(-30, 30), y = random.Between(-30, 30);
  const double phase = random.Between(0, 2 * std::numbers::pi), rough = 250.0 / count;
  for (int k = 0; k < count; ++k) {
    const double angle = 2 * std::numbers::pi * k / count;
    const double r = 80 + 10 * std::cos(3 * angle + phase) + random.Between(-rough, rough);
    corners.push_back({x + r * std::cos(angle), y + r * std::sin(angle)});
  }
  return corners;
}
inline std::unique_ptr<Region> ArcRing(Random& random, int arcs) {
  std::vector<double> bulges;
  for (int k = 0; k < arcs; ++k)
    bulges.push_back(random.Between(.1, .4) * (random.Unit() < .5 ? -1 : 1));
  auto region = std::make_unique<Region>();
  region->Arcs(RingCorners(random, arcs), bulges);
  return region;
}
inline std::unique_ptr<Region> LineRing(Random& random, int lines) {
  kurvo_test::Contour<XY> pieces;
  const std::vector<XY> corners = RingCorners(random, lines);
  for (std::size_t k = 0; k < corners.size(); ++k)
    pieces.push_back({corners[k], corners[(k + 1) % corners.size()]});
  auto region = std::make_unique<Region>();
  region->Contour(pieces);
  return region;
}

// Sharp corners all around, 0.5 to 1 times `radius` from the middle.
inline kurvo_test::Contour<XY> Teeth(Random& random, int lines, double radius) {
  std::vector<XY> corners;
  for (int k = 0; k < lines; ++k) {
    const double angle = 2 * std::numbers::pi * k / lines, r = radius * random.Between(0.5, 1);
    corners.push_back({r * std::cos(angle), r * std::sin(angle)});
  }
  kurvo_test::Contour<XY> pieces;
  for (std::size_t k = 0; k < corners.size(); ++k)
    pieces.push_back({corners[k], corners[(k + 1) % corners.size()]});
  return pieces;
}

inline void Count(benchmark::State& state, int64_t curves) {
  state.counters["curves"] = benchmark::Counter(double(curves), benchmark::Counter::kAvgIterations);
}
inline int64_t CurvesOf(const KurvoRegion& region) {
  int64_t curves = 0;
  for (int32_t i = 0; i < region.count; ++i) curves += region.loops[i].count;
  return curves;
}

}  // namespace bench
