#include "dxf/pieces.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace kurvo::tools {
namespace {

// Relative: what arcs of one circle differ by in centre, radius and sum of their sweeps.
constexpr double kSameCircle = 1e-12;

class RunBuilder {
 public:
  RunBuilder(Context& context, const Affine& map) : context_(context), map_(map) {}

  void Add(const Curve& curve) {
    if (const KurvoLine* line = curve.AsLine()) return AddLine(Load(line->start), Load(line->end));
    if (const KurvoArc* arc = curve.AsArc()) return AddArc(*arc);
    if (curve.Type() == CV_SEGCV) {
      for (const Curve& piece : curve) Add(piece);
    }
    curve.Visit([&](const auto& block) {
      if constexpr (requires { block.points; }) AddFreeForm(block);
    });
  }

  std::vector<DxfRun> Take(bool closed) {
    if (runs_.empty()) return {};
    if (runs_.size() == 1) {
      runs_[0].closed = closed;
    } else if (closed && !runs_.front().IsSpline() && !runs_.back().IsSpline() &&
               Meets(runs_.back(), runs_.front().segments[0].from)) {
      auto& first = runs_.front().segments;
      auto& last = runs_.back().segments;
      first.insert(first.begin(), last.begin(), last.end());
      runs_.pop_back();
    }
    return std::move(runs_);
  }

 private:
  bool Meets(const DxfRun& run, Point p) const { return Same(run.segments.back().to, p, context_); }

  void AddSegment(const DxfSegment& segment) {
    const bool goes_on =
        !runs_.empty() && !runs_.back().IsSpline() && Meets(runs_.back(), segment.from);
    if (!goes_on) runs_.emplace_back();
    runs_.back().segments.push_back(segment);
  }

  void AddLine(Point from, Point to) { AddSegment({map_.Apply(from), map_.Apply(to)}); }

  void AddArc(const KurvoArc& arc) {
    const Point centre = map_.Apply(Load(arc.centre));
    const Point from = map_.Apply(Load(arc.start)), to = map_.Apply(Load(arc.end));
    const double radius = arc.radius * std::sqrt(std::fabs(map_.Determinant()));
    const double sign = (arc.normal[2] < 0) == (map_.Determinant() < 0) ? 1 : -1;
    const Point u = from - centre, v = to - centre;
    double sweep = sign * std::atan2(Cross(u, v), Dot(u, v));
    if (!(sweep > 0)) sweep += 2 * std::numbers::pi;
    const DxfSegment whole = {from, to, sign * sweep, centre, radius};
    if (sweep <= std::numbers::pi) return AddSegment(whole);
    const double half = sign * sweep / 2;
    const Point middle = centre + Point{std::cos(half) * u.x - std::sin(half) * u.y,
                                        std::sin(half) * u.x + std::cos(half) * u.y};
    AddSegment({from, middle, half, centre, radius});
    AddSegment({middle, to, half, centre, radius});
  }

  template <class Block>
  void AddFreeForm(const Block& block) {
    const auto points = Points(block);
    int degree = 0;
    if constexpr (requires { block.order; })
      degree = block.order - 1;
    else
      degree = block.degree;
    if (degree < 1) return;
    DxfSpline spline;
    spline.degree = degree;
    for (const auto& p : points) {
      spline.points.push_back(map_.Apply({p.x, p.y}));
      if constexpr (requires { p.w; }) spline.weights.push_back(p.w);
    }
    if constexpr (requires { block.knots; }) {
      const auto knots = Knots(block);
      spline.knots.assign(knots.begin(), knots.end());
    } else {
      if (degree == 1) return AddSegment({spline.points[0], spline.points[1]});
      spline.knots.assign(static_cast<std::size_t>(degree) + 1, 0);
      spline.knots.resize(2 * spline.knots.size(), 1);
    }
    runs_.push_back({{}, std::move(spline)});
  }

  Context& context_;
  const Affine map_;
  std::vector<DxfRun> runs_;
};

}  // namespace

bool DxfRun::IsCircle() const {
  double sweep = 0;
  for (const DxfSegment& segment : segments) {
    const DxfSegment& first = segments.front();
    const double slack = kSameCircle * (first.radius + Size(first.centre));
    const bool is_same = slack >= Size(segment.centre - first.centre) &&
                         slack >= std::fabs(segment.radius - first.radius);
    if (segment.sweep == 0 || !is_same) return false;
    sweep += segment.sweep;
  }
  constexpr double kTurn = 2 * std::numbers::pi;
  return closed && 1e3 * kSameCircle * kTurn >= std::fabs(std::fabs(sweep) - kTurn);
}

std::vector<DxfRun> RunsOf(Context& context, const ResultChain& chain, const Affine& map) {
  RunBuilder builder(context, map);
  for (const Curve& curve : chain.curves) builder.Add(curve);
  return builder.Take(chain.closed);
}

}  // namespace kurvo::tools
