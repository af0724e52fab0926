#include <kurvo_outline.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/refusal.h"
#include "fit/biarc_fit.h"
#include "fit/cell_run.h"
#include "fit/pieces.h"
#include "fit/spline_fit.h"
#include "strand/check.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

constexpr double kLeastDeviation = 0x1p-44;  // of the size: a smaller one is raised to it
constexpr double kCellShare = 1.0 / 64;      // of the deviation, for cubics in the place of others

class Fitting {
 public:
  Fitting(const Cvseq& chain, int32_t form, double deviation)
      : frame_(FrameOf(&chain)), pieces_(frame_), form_(form) {
    deviation_ = std::max(frame_.LengthInwards(deviation),
                          kLeastDeviation * frame_.LengthInwards(frame_.size()));
  }

  void Add(const Curve& curve) {
    pieces_.Begin(&curve);
    Walk(curve);
  }
  Cvseq Release() { return pieces_.Release(); }

 private:
  // The curves of a composite become curves of the chain, with the words of the composite.
  void Walk(const Curve& curve) {
    if (curve.type != CV_SEGCV) return AddLeaf(curve);
    const auto& composite = BlockOf<KurvoSegcv>(curve);
    for (int i = 0; i < composite.count; ++i) Walk(composite.curves[i]);
  }

  void AddLeaf(const Curve& curve) {
    Ends ends;
    EndsOf(curve, ends);
    spans_.clear();
    arena_.Clear();
    ForEachSpan(curve, 0, frame_, [&](const Span& span) { spans_.push_back(Kept(span, arena_)); });
    pieces_.StartAt(ends.start);
    if (Stays(curve)) return pieces_.Copy(curve);
    for (std::size_t i = 0; i < spans_.size();) {
      std::size_t next = i + 1;
      if (!IsDirect(spans_[i]))
        while (next < spans_.size() && !IsDirect(spans_[next])) ++next;
      const Vec2 end = next == spans_.size() ? ends.end : frame_.Outwards(spans_[next - 1].End());
      if (IsDirect(spans_[i]))
        AddDirectly(spans_[i], end);
      else
        FitSpans(i, next, end);
      i = next;
    }
  }

  // Whether a curve is of the form already.
  bool Stays(const Curve& curve) const {
    const Span& span = spans_.front();
    switch (curve.type) {
      case CV_ARC:
        return form_ == KURVO_FIT_ARCS && span.kind == Span::Kind::kArc && PartsOf(span) == 1;
      case CV_BEZIER:
        return span.kind == Span::Kind::kBezier && span.degree == DegreeOfForm();
      default:
        return false;
    }
  }
  int DegreeOfForm() const {
    return form_ == KURVO_FIT_CUBICS ? 3 : form_ == KURVO_FIT_QUADRATICS ? 2 : 0;
  }

  // Whether a span is a piece, or equal pieces, of the form.
  bool IsDirect(const Span& span) const {
    if (span.degree == 1 || span.kind == Span::Kind::kArc) return true;
    return span.kind == Span::Kind::kBezier && DegreeOfForm() >= span.degree;
  }

  void AddDirectly(const Span& span, Vec2 end) {
    if (span.degree == 1) {
      pieces_.Line(end);
    } else if (span.kind == Span::Kind::kArc && form_ == KURVO_FIT_ARCS) {
      CutArc(span, end);
    } else if (span.kind == Span::Kind::kArc && form_ == KURVO_FIT_QUADRATICS) {
      AddArcAsQuadratics(span, deviation_, end, pieces_);
    } else if (span.degree == DegreeOfForm() && span.degree == 2) {
      pieces_.Quadratic(span.points[1], end);
    } else {
      cells_.clear();
      AppendCells(span, 0, deviation_, cells_);
      for (std::size_t i = 0; i < cells_.size(); ++i) {
        const Vec2* points = cells_[i].points;
        const Vec2 to = i + 1 == cells_.size() ? end : frame_.Outwards(points[3]);
        pieces_.Cubic(points[1], points[2], to);
      }
    }
  }

  // An arc of half a turn or more is cut into equal parts, a circle into quarters.
  static int PartsOf(const Span& arc) {
    constexpr double kSlack = 1e-9;  // radians
    const double sweep = std::fabs(arc.sweep);
    if (std::numbers::pi - kSlack > sweep) return 1;
    return static_cast<int>(std::ceil((sweep - kSlack) / (std::numbers::pi / 2)));
  }
  void CutArc(const Span& arc, Vec2 end) {
    const int n = PartsOf(arc);
    for (int i = 1; i <= n; ++i) {
      const Vec2 to = i == n ? end : frame_.Outwards(PointAt(arc, static_cast<double>(i) / n));
      pieces_.Arc(arc.centre, arc.radius, arc.sweep < 0, to);
    }
  }

  // Smooth runs of cubics alongside the spans, cut at cusps and corners.
  void FitSpans(std::size_t begin, std::size_t end, Vec2 end_point) {
    const double error = std::max(kCellShare * deviation_, kLeastDeviation);
    cells_.clear();
    bool exact = true;
    for (std::size_t i = begin; i < end; ++i)
      exact &= AppendCells(spans_[i], static_cast<int32_t>(i), error, cells_);
    CutAtCusps(cells_);
    std::erase_if(cells_, [](const CubicCell& cell) {
      return DirectionAtStart(cell) == Vec2{0, 0};
    });
    if (cells_.empty()) return pieces_.Line(end_point);
    const double rest = exact ? deviation_ : (1 - kCellShare) * deviation_;
    for (std::size_t i = 0; i < cells_.size();) {
      std::size_t next = i + 1;
      while (next < cells_.size() && GoesOn(cells_[next - 1], cells_[next])) ++next;
      run_.cells.assign(cells_.begin() + static_cast<std::ptrdiff_t>(i),
                        cells_.begin() + static_cast<std::ptrdiff_t>(next));
      const CubicCell &first = cells_[i], &last = cells_[next - 1];
      const auto span_of = [&](const CubicCell& cell) -> const Span& {
        return spans_[static_cast<std::size_t>(cell.span)];
      };
      run_.first_tangent = first.from == 0 ? TangentAt(span_of(first), 0) : DirectionAtStart(first);
      run_.last_tangent = last.to == 1 ? TangentAt(span_of(last), 1) : DirectionAtEnd(last);
      const Vec2 to = next == cells_.size() ? end_point : frame_.Outwards(last.points[3]);
      if (form_ == KURVO_FIT_ARCS)
        FitArcs(run_, rest, to, pieces_);
      else
        FitBeziers(run_, DegreeOfForm(), rest, to, pieces_);
      i = next;
    }
  }

  const Frame frame_;
  Pieces pieces_;
  const int32_t form_;
  double deviation_ = 0;
  Array<Span> spans_;
  Arena arena_;
  Array<CubicCell> cells_;
  CellRun run_;
};

}  // namespace
}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainFit(const Cvseq* chain, int32_t form, double deviation, Cvseq* out,
                             GlobalVar* g) noexcept {
  const bool is_input = out == chain;
  if (out && !is_input) KurvocvInitCvseq(out);
  return Answer(g, [&] {
    Require(out && !is_input, KURVO_ERR_OPTION);
    Require(form == KURVO_FIT_ARCS || form == KURVO_FIT_QUADRATICS || form == KURVO_FIT_CUBICS,
            KURVO_ERR_OPTION);
    Require(deviation > 0, KURVO_ERR_TOLERANCE);
    RequireFinite(deviation);
    Bounds unused;
    CheckChain(chain, unused);
    RequireJoined(*chain, GetEpsilon(g));
    Fitting fitting(*chain, form, deviation);
    for (int i = 0; i < chain->count; ++i) fitting.Add(chain->curves[i]);
    *out = fitting.Release();
  });
}
