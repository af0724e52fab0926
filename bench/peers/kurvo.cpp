// Kurvo, through its public interfaces.
#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "driver.h"

namespace {

using peers::Common;
using peers::Point;

class Record {
 public:
  Record() { KurvocvInitCurve(&curve); }
  Record(Record&& other) noexcept : curve(std::exchange(other.curve, Curve{})) {}
  Record(const Record&) = delete;
  Record& operator=(const Record&) = delete;
  ~Record() { KurvocvFreeCurve(&curve); }

  Curve curve;
};

class Chain {
 public:
  Chain() { KurvocvInitCvseq(&seq); }
  Chain(Chain&& other) noexcept : seq(std::exchange(other.seq, Cvseq{})) {}
  Chain(const Chain&) = delete;
  Chain& operator=(const Chain&) = delete;
  ~Chain() { KurvocvFreeCvseq(&seq); }

  Cvseq seq;
};

class Region {
 public:
  Region() { KurvoRegionInit(&region); }
  Region(Region&& other) noexcept : region(std::exchange(other.region, KurvoRegion{})) {}
  Region(const Region&) = delete;
  Region& operator=(const Region&) = delete;
  ~Region() { KurvoRegionFree(&region); }

  KurvoRegion region;
};

struct Points {
  Points() = default;
  Points(Points&& other) noexcept
      : on_a(std::exchange(other.on_a, {})), on_b(std::exchange(other.on_b, {})) {}
  Points(const Points&) = delete;
  Points& operator=(const Points&) = delete;
  ~Points() {
    KurvocrFreeCvParam(&on_a);
    KurvocrFreeCvParam(&on_b);
  }

  CvParam on_a{}, on_b{};
};

struct Halves {
  Record first, second;
};

void Put(double* out, Point p) { KurvoclSetCoord(out, p.x, p.y, 0.0); }

class Kurvo {
 public:
  static constexpr const char* kName = "kurvo";

  Kurvo() { KurvoInitGlobalVar(&g_); }

  static Record MakeLine(const peers::Segment& segment) {
    Record r;
    auto* line = static_cast<KurvoLine*>(KurvocvMallocCurve(&r.curve, CV_LINE));
    Put(line->start, segment.start);
    Put(line->end, segment.end);
    return r;
  }
  static Record MakeArc(const peers::Arc& a) {
    Record r;
    auto* arc = static_cast<KurvoArc*>(KurvocvMallocCurve(&r.curve, CV_ARC));
    const auto at = [&a](double angle) {
      return Point{a.centre.x + a.radius * std::cos(angle),
                   a.centre.y + a.radius * std::sin(angle)};
    };
    arc->radius = a.radius;
    Put(arc->centre, a.centre);
    KurvoclSetCoord(arc->normal, 0.0, 0.0, 1.0);
    Put(arc->start, at(a.from));
    Put(arc->end, at(a.from + a.sweep));
    return r;
  }
  static Record MakeCubic(const peers::Bezier& bezier) {
    Record r;
    const auto degree = static_cast<int32_t>(bezier.size()) - 1;
    auto* block = static_cast<KurvoBezier*>(KurvocvMallocCurve(&r.curve, CV_BEZIER, degree));
    for (std::size_t i = 0; i < bezier.size(); ++i) Put(block->points[i], bezier[i]);
    return r;
  }
  static Record MakeQuadratic(const peers::Bezier& bezier) { return MakeCubic(bezier); }
  static Record MakeSpline(const peers::Spline& spline) {
    Record r;
    const auto count = static_cast<int32_t>(spline.points.size());
    auto* block = static_cast<KurvoBSpline*>(KurvocvMallocCurve(&r.curve, CV_BSPLINE, 4, count));
    for (std::size_t i = 0; i < spline.points.size(); ++i) Put(block->points[i], spline.points[i]);
    std::copy(spline.knots.begin(), spline.knots.end(), block->knots);
    return r;
  }
  static Chain MakeGlyph(const peers::Glyph& glyph) {
    Chain chain;
    KurvocvMallocCvseq(&chain.seq, static_cast<int32_t>(glyph.size()));
    for (std::size_t i = 0; i < glyph.size(); ++i) {
      Record piece = MakeCubic(glyph[i]);
      std::swap(chain.seq.curves[i], piece.curve);
    }
    return chain;
  }

  double Nearest(const Record& r, Point p) {
    const Coord point = {p.x, p.y, 0.0};
    double t;
    KurvocvDistPoint(&r.curve, point, &t, &g_);
    return t;
  }
  double FirstFoot(const Record& r, Point p) { return Nearest(r, p); }

  Points Intersect(const Record& a, const Record& b) {
    Points points;
    KurvocrCurveCurve(&a.curve, &b.curve, &points.on_a, &points.on_b, kBothEnd, &g_);
    return points;
  }
  static std::vector<Common> ReadCommon(const Record&, const Record&, const Points& points) {
    std::vector<Common> common;
    for (int32_t i = 0; i < points.on_a.count; ++i)
      common.push_back({points.on_a.values[i], points.on_b.values[i]});
    return common;
  }

  double Length(const Record& r, double /*the rule is the library's own*/) {
    double length;
    KurvocvCurveLen(&r.curve, 0.0, 1.0, &length, &g_);
    return length;
  }

  Point Position(const Record& r, double t) {
    Coord p;
    KurvocvPosition(&r.curve, t, p, &g_);
    return {p[0], p[1]};
  }
  Point Derivative(const Record& r, double t) {
    Coord d;
    KurvocvDeriv(&r.curve, t, d, &g_);
    return {d[0], d[1]};
  }

  Halves Split(const Record& r, double t) {
    Halves halves;
    KurvocvDivide(&r.curve, t, &halves.first.curve, &halves.second.curve, &g_);
    return halves;
  }
  Point SampleHalf(const Halves& halves, int half, double s) {
    return Position(half == 0 ? halves.first : halves.second, s);
  }

  Chain Offset(const Record& r, double distance, double tolerance) {
    constexpr Coord kNormal = {0.0, 0.0, 1.0};
    Chain chain;
    KurvocvOffsetCurve(&r.curve, kNormal, distance, tolerance, &chain.seq, &g_);
    return chain;
  }
  std::vector<Point> SampleOffset(const Chain& chain) {
    std::vector<Point> samples;
    for (int32_t i = 0; i < chain.seq.count; ++i)
      for (int j = 0; j <= 32; ++j) {
        Coord p;
        KurvocvPosition(chain.seq.curves + i, j / 32.0, p, &g_);
        samples.push_back({p[0], p[1]});
      }
    return samples;
  }

  Region MakeOutline(const peers::Outline& outline) {
    Region r;
    for (const peers::Glyph& contour : outline) {
      Chain chain;
      KurvocvMallocCvseq(&chain.seq, static_cast<int32_t>(contour.size()));
      for (std::size_t i = 0; i < contour.size(); ++i) {
        const peers::Bezier& b = contour[i];
        Record piece = b.size() == 2 ? MakeLine({b[0], b[1]}) : MakeCubic(b);
        std::swap(chain.seq.curves[i], piece.curve);
      }
      KurvoRegionAdd(&r.region, &chain.seq, 0, &g_);
    }
    return r;
  }
  Region Combine(const Region& a, const Region& b, int operation) {
    Region out;
    KurvoRegionCombine(operation, &a.region, &b.region, nullptr, &out.region, nullptr, &g_);
    return out;
  }
  static peers::Outline ReadOutline(const Region& r) {
    peers::Outline outline;
    for (int32_t i = 0; i < r.region.count; ++i) {
      peers::Glyph contour;
      for (int32_t k = 0; k < r.region.loops[i].count; ++k) {
        const Curve& curve = r.region.loops[i].curves[k];
        peers::Bezier b;
        const auto add = [&b](const double* p) { b.push_back({p[0], p[1]}); };
        if (curve.type == CV_LINE) {
          const auto& line = *static_cast<const KurvoLine*>(curve.data);
          add(line.start);
          add(line.end);
        } else {
          const auto& bezier = *static_cast<const KurvoBezier*>(curve.data);
          for (int32_t j = 0; j <= bezier.degree; ++j) add(bezier.points[j]);
        }
        contour.push_back(std::move(b));
      }
      outline.push_back(std::move(contour));
    }
    return outline;
  }

  bool Inside(const Chain& chain, Point p) {
    constexpr Coord kNormal = {0.0, 0.0, 1.0};
    const Coord point = {p.x, p.y, 0.0};
    uint32_t result;
    KurvosfPntBoundForPlane(kNormal, &chain.seq, point, &result, &g_);
    return result == KURVO_REGION_INSIDE;
  }

 private:
  static constexpr int32_t kBothEnd = 3;

  GlobalVar g_;
};

}  // namespace

int main(int argc, char** argv) { return peers::Driver<Kurvo>::Main(argc, argv); }
