#include "strand/spans.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"
#include "strand/arc_sweep.h"
#include "strand/bernstein.h"
#include "strand/bezier_of_spline.h"
#include "strand/check.h"

namespace kurvo::outline {
namespace {

// Powers of weights beyond leave the range of double. Where all lie so far from 1, they are scaled
// to about 1, exactly; where those of an end are so light beside another, its point is lost.
constexpr double kHeavy = 0x1p200, kLight = 0x1p-200;
constexpr int kMostHalvings = 48;         // until all weights have one sign
constexpr double kPointCircle = 0x1p-30;  // of the size: radius of a circle that is a point
constexpr int kRoom = kMostDegree + 1;

bool IsOneStretch(const Curve& curve) {
  return !(curve.type == CV_BSPLINE || curve.type == CV_RBSPLINE || curve.type == CV_SEGCV);
}

// Visits the spans of curves, one after the other. Parameters of a piece are those of the curve:
// offset + scale t.
class Walk {
 public:
  Walk(const Frame& frame, SpanVisitor visit, const StretchFilter* wanted = nullptr)
      : frame_(frame), visit_(visit), wanted_(wanted) {}

  void Whole(const ::Curve& curve, int32_t index) {
    span_.curve = index;
    Curve(curve, 0, 1);
  }

 private:
  void Curve(const ::Curve& curve, double offset, double scale) {
    offset_ = offset;
    scale_ = scale;
    if (wanted_ && IsOneStretch(curve) && !IsWanted(curve, 0, 1, 0, 0)) return;
    switch (curve.type) {
      case CV_LINE:
        return Line(BlockOf<KurvoLine>(curve));
      case CV_ARC:
        return Arc(BlockOf<KurvoArc>(curve));
      case CV_BEZIER:
        return Bezier(BlockOf<KurvoBezier>(curve));
      case CV_RBEZIER:
        return Bezier(BlockOf<KurvoRBezier>(curve));
      case CV_BSPLINE:
        return PolynomialSpline(curve);
      case CV_RBSPLINE:
        return RationalSpline(curve);
      default:
        return Composite(BlockOf<KurvoSegcv>(curve), offset, scale);
    }
  }

  void Composite(const KurvoSegcv& composite, double offset, double scale) {
    double before = 0;
    for (int i = 0; i < composite.count; ++i) {
      Curve(composite.curves[i], offset + scale * before, scale * composite.widths[i]);
      before += composite.widths[i];
    }
  }

  void Line(const KurvoLine& line) {
    points_[0] = frame_.Inwards(line.start);
    points_[1] = frame_.Inwards(line.end);
    EmitPolynomial(1, 0, 1);
  }

  void Arc(const KurvoArc& arc) {
    points_[0] = frame_.Inwards(arc.start);
    points_[1] = frame_.Inwards(arc.end);
    const bool same_ends = arc.start[0] == arc.end[0] && arc.start[1] == arc.end[1];
    if (!(arc.radius > 0) || (same_ends && kPointCircle * frame_.size() >= arc.radius))
      return EmitPolynomial(1, 0, 1);
    const Vec2 centre = frame_.Inwards(arc.centre);
    const Vec2 from = points_[0] - centre, to = points_[1] - centre;
    const double sense = arc.normal[2] < 0 ? -1 : 1;
    // Where the ends are the same in the frame alone, the record knows which comes first.
    const Vec2 step = {arc.end[0] - arc.start[0], arc.end[1] - arc.start[1]};
    const bool is_circle = same_ends || (from == to && sense * Cross(from, step) < 0);
    const double sweep = SweepBetween(from, to, sense, is_circle);
    if (sweep == kTurn) points_[1] = points_[0];
    span_.kind = Span::Kind::kArc;
    span_.degree = 0;
    span_.points = points_;
    span_.weights = nullptr;
    span_.centre = centre;
    span_.radius = frame_.LengthInwards(arc.radius);
    span_.angle = std::atan2(from.y, from.x);
    span_.sweep = sense * sweep;
    Emit(0, 1);
  }

  void Bezier(const KurvoBezier& bezier) {
    for (int i = 0; i <= bezier.degree; ++i) points_[i] = frame_.Inwards(bezier.points[i]);
    EmitPolynomial(bezier.degree, 0, 1);
  }

  void Bezier(const KurvoRBezier& bezier) {
    for (int i = 0; i <= bezier.degree; ++i) Load(bezier.points[i], i);
    EmitRational(bezier.degree, 0, 1);
  }

  void PolynomialSpline(const ::Curve& curve) {
    const auto& spline = BlockOf<KurvoBSpline>(curve);
    bool has_joint = false;
    ForEachKnotSpan(spline, [&](int k, int p, bool joined) {
      joined = joined && has_joint;
      has_joint = !wanted_ || IsWanted(curve, spline.knots[k], spline.knots[k + 1], k - p, p + 1);
      if (!has_joint) return;
      const Vec2 joint = points_[p];
      for (int i = 0; i <= p; ++i) points_[i] = frame_.Inwards(spline.points[k - p + i]);
      BezierOfSpline(spline.knots, k, p, points_);
      if (joined) points_[0] = joint;  // neighbours share their end to the last bit
      EmitPolynomial(p, spline.knots[k], spline.knots[k + 1]);
    });
  }

  void RationalSpline(const ::Curve& curve) {
    const auto& spline = BlockOf<KurvoRBSpline>(curve);
    ForEachKnotSpan(spline, [&](int k, int p, bool) {
      if (wanted_ && !IsWanted(curve, spline.knots[k], spline.knots[k + 1], k - p, p + 1)) return;
      for (int i = 0; i <= p; ++i) Load(spline.points[k - p + i], i);
      BezierOfSpline(spline.knots, k, p, points_);
      BezierOfSpline(spline.knots, k, p, weights_);
      EmitRational(p, spline.knots[k], spline.knots[k + 1]);
    });
  }

  // Calls visit(k, p, joined) for each span that is not empty, between the knots k and k + 1;
  // `joined` when it starts where the one before ended: the knot between is not p + 1 fold.
  template <class Record, class Visit>
  static void ForEachKnotSpan(const Record& spline, const Visit& visit) {
    const int p = spline.order - 1;
    int last = -1;
    for (int k = p; k < spline.count; ++k) {
      if (!(spline.knots[k + 1] > spline.knots[k])) continue;
      visit(k, p, last >= 0 && k - last <= p);
      last = k;
    }
  }

  void Load(const double* point, int i) {
    weights_[i] = point[3];
    points_[i] = point[3] * frame_.Inwards(point);
  }

  void EmitPolynomial(int degree, double from, double to) {
    if (degree == 0) points_[1] = points_[0];
    span_.degree = std::max(degree, 1);
    span_.kind = degree > 1 ? Span::Kind::kBezier : Span::Kind::kLine;
    span_.points = points_;
    span_.weights = nullptr;
    Emit(from, to);
  }

  void EmitRational(int degree, double from, double to) {
    if (degree == 0) {
      points_[0] = (1 / weights_[0]) * points_[0];
      return EmitPolynomial(0, from, to);
    }
    span_.kind = Span::Kind::kRational;
    span_.degree = degree;
    EmitPositive(points_, weights_, from, to, kMostHalvings);
  }

  // Halves until the weights have one sign, which they have nowhere near a point at infinity.
  void EmitPositive(const Vec2* points, const double* weights, double from, double to,
                    int halvings_left) {
    const int n = span_.degree;
    const auto [least, most] = std::minmax_element(weights, weights + n + 1);
    if (*least > 0 || *most < 0) {
      const double sign = *least > 0 ? 1 : -1;
      for (int i = 0; i <= n; ++i) {
        positive_points_[i] = sign * points[i];
        positive_weights_[i] = sign * weights[i];
      }
      const double heaviest = std::max(sign * *least, sign * *most);
      Require(std::min(positive_weights_[0], positive_weights_[n]) >= kLight * heaviest,
              KURVO_ERR_WEIGHT);
      if (heaviest >= kHeavy || heaviest <= kLight) [[unlikely]]
        Rescale(n, -std::ilogb(heaviest));
      span_.points = positive_points_;
      span_.weights = positive_weights_;
      return Emit(from, to);
    }
    Require(halvings_left > 0, KURVO_ERR_WEIGHT);
    Vec2 low[kRoom], high[kRoom];
    double low_weights[kRoom], high_weights[kRoom];
    SplitBernstein(points, n, 0.5, low, high);
    SplitBernstein(weights, n, 0.5, low_weights, high_weights);
    const double middle = 0.5 * (from + to);
    EmitPositive(low, low_weights, from, middle, halvings_left - 1);
    EmitPositive(high, high_weights, middle, to, halvings_left - 1);
  }

  void Rescale(int degree, int exponent) {
    for (int i = 0; i <= degree; ++i) {
      Vec2& p = positive_points_[i];
      p = {std::scalbn(p.x, exponent), std::scalbn(p.y, exponent)};
      positive_weights_[i] = std::scalbn(positive_weights_[i], exponent);
    }
  }

  void Emit(double from, double to) {
    span_.from = ParameterOf(from);
    span_.to = ParameterOf(to);
    visit_(span_);
  }

  double ParameterOf(double t) const { return offset_ + scale_ * t; }

  bool IsWanted(const ::Curve& piece, double from, double to, int first, int count) const {
    return (*wanted_)({ParameterOf(from), ParameterOf(to), piece, first, count});
  }

  const Frame& frame_;
  SpanVisitor visit_;
  const StretchFilter* wanted_;  // null: all
  Span span_;
  double offset_ = 0, scale_ = 1;
  Vec2 points_[kRoom];
  double weights_[kRoom];
  Vec2 positive_points_[kRoom];
  double positive_weights_[kRoom];
};

}  // namespace

void ForEachSpan(const Curve& curve, int32_t index, const Frame& frame, SpanVisitor visit) {
  Walk(frame, visit).Whole(curve, index);
}

void ForEachSpan(const Curve& curve, int32_t index, const Frame& frame, StretchFilter wanted,
                 SpanVisitor visit) {
  Walk(frame, visit, &wanted).Whole(curve, index);
}

void ForEachSpan(const Cvseq& chain, const Frame& frame, SpanVisitor visit) {
  Walk walk(frame, visit);
  for (int i = 0; i < chain.count; ++i) walk.Whole(chain.curves[i], i);
}

Frame FrameOf(const Cvseq* chain) {
  Bounds box;
  CheckChain(chain, box);
  return Frame(box);
}

void CollectSpans(const Cvseq* chain, SpanList& list) {
  list.frame = FrameOf(chain);
  list.spans.reserve(static_cast<std::size_t>(chain->count));
  ForEachSpan(*chain, list.frame,
              [&](const Span& span) { list.spans.push_back(Kept(span, list.arena)); });
}

Array<Bounds> HullsOf(const Array<Span>& spans) {
  Array<Bounds> boxes;
  boxes.reserve(spans.size());
  for (const Span& span : spans) boxes.push_back(HullOf(span));
  return boxes;
}

}  // namespace kurvo::outline
