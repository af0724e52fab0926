#include "chain/cut.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "base/refusal.h"
#include "strand/arc_sweep.h"
#include "strand/check.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

void Set(double* coord, Vec2 p) { KurvoclSetCoord(coord, p.x, p.y, 0); }

// The points of a line or an arc at the ends of a part: as stored where it is not cut.
Vec2 EndOf(const Span& span, const Frame& frame, double u, const double* start, const double* end) {
  if (u == 0) return {start[0], start[1]};
  if (u == 1) return {end[0], end[1]};
  return frame.Outwards(PointAt(span, u > 1 ? u - 1 : u));
}

void AppendLine(const Curve& curve, const Span& span, double from, double to, const Frame& frame,
                Array<OwnedCurve>& parts) {
  const auto& line = BlockOf<KurvoLine>(curve);
  parts.push_back(LineBetween(EndOf(span, frame, from, line.start, line.end),
                              EndOf(span, frame, to, line.start, line.end)));
}

// An arc so short that its ends, rounded, would make it a point or nearly a circle is a line.
OwnedCurve ArcOf(const KurvoArc& whole, Vec2 start, Vec2 end, double sweep, const Frame& frame) {
  const Vec2 centre = frame.Inwards(whole.centre);
  const double sense = whole.normal[2] < 0 ? -1 : 1;
  const double got =
      SweepBetween(frame.Inwards(start) - centre, frame.Inwards(end) - centre, sense, start == end);
  if (!(std::numbers::pi / 2 >= std::fabs(got - sweep))) return LineBetween(start, end);
  auto [curve, arc] = OwnedCurve::New<KurvoArc>(CV_ARC);
  *arc = whole;
  Set(arc->start, start);
  Set(arc->end, end);
  arc->centre[2] = 0;
  return std::move(curve);
}

void AppendArc(const Curve& curve, const Span& span, double from, double to, const Frame& frame,
               Array<OwnedCurve>& parts) {
  const auto& arc = BlockOf<KurvoArc>(curve);
  const double sweep = span.kind == Span::Kind::kArc ? std::fabs(span.sweep) : 0;
  const bool is_circle = sweep == kTurn;
  const int count = !is_circle || to - from <= 0.5 ? 1 : to - from < 1 ? 2 : 4;
  // A circle ends where it starts, whatever its record holds.
  const double* last = is_circle ? arc.start : arc.end;
  for (int i = 0; i < count; ++i) {
    const auto at = [&](int k) { return k == count ? to : from + (to - from) * k / count; };
    parts.push_back(ArcOf(arc, EndOf(span, frame, at(i), arc.start, last),
                          EndOf(span, frame, at(i + 1), arc.start, last),
                          sweep * (to - from) / count, frame));
  }
}

bool IsCircle(const Curve& curve, const Frame& frame) {
  if (curve.type != CV_ARC) return false;
  const auto& arc = BlockOf<KurvoArc>(curve);
  const Vec2 centre = frame.Inwards(arc.centre);
  const Vec2 from = frame.Inwards(arc.start) - centre, to = frame.Inwards(arc.end) - centre;
  if ((arc.normal[2] < 0 ? -1 : 1) * Cross(from, to) > 0) return false;  // below half a turn
  bool is_circle = false;
  ForEachSpan(curve, 0, frame, [&](const Span& span) {
    is_circle = span.kind == Span::Kind::kArc && std::fabs(span.sweep) == kTurn;
  });
  return is_circle;
}

// A control point in homogeneous coordinates of the frame.
struct HPoint {
  Vec2 point;  // times the weight
  double weight;
  const double* source;  // of the control point that it still is
};

HPoint Mix(const HPoint& a, const HPoint& b, double share) {
  return {Mix(a.point, b.point, share), (1 - share) * a.weight + share * b.weight, nullptr};
}

// A spline.
struct Form {
  int degree;
  Array<HPoint> points;
  Array<double> knots;

  // Cuts off what lies before u. With knots u_k <= u < u_k+1 the new control points are the
  // blossoms f[u^(p-s), u_k+1 ... u_k+s] for s < p: one triangle from the points that act there.
  void CutStart(double u) {
    const int p = degree, count = static_cast<int>(points.size());
    const auto next = std::upper_bound(knots.begin() + p, knots.begin() + count, u);
    const int k = static_cast<int>(next - knots.begin()) - 1;
    const double* knot = knots.data();
    HPoint* first = points.data() + (k - p);
    for (int r = 1; r <= p; ++r) {
      for (int i = 0; i <= p - r; ++i) {
        const double low = knot[k - p + r + i], high = knot[k + 1 + i];
        const double share = (u - low) / (high - low);
        first[i] = Mix(first[i], first[i + 1], share);
      }
    }
    points.erase(points.begin(), points.begin() + (k - p));
    knots.erase(knots.begin(), knots.begin() + (k - p));
    std::fill_n(knots.begin(), p + 1, u);
  }

  void Reverse() {
    std::reverse(points.begin(), points.end());
    std::reverse(knots.begin(), knots.end());
    for (double& knot : knots) knot = -knot;
  }
};

double WeightOf(const Coord&) { return 1; }
double WeightOf(const HCoord& point) { return point[3]; }

template <class Point>
void Load(const Point* points, int count, const Frame& frame, HPoint* out) {
  for (int i = 0; i < count; ++i) {
    const double weight = WeightOf(points[i]);
    out[i] = {weight * frame.Inwards(points[i]), weight, points[i]};
  }
}

void Store(const HPoint& point, const Frame& frame, double* out) {
  if (point.source) return Set(out, {point.source[0], point.source[1]});
  Require(point.weight != 0, KURVO_ERR_WEIGHT);
  Set(out, frame.Outwards((1 / point.weight) * point.point));
}
void StoreWeight(const HPoint&, Coord&) {}
void StoreWeight(const HPoint& point, HCoord& out) { out[3] = point.weight; }

template <class Point>
void Store(const HPoint* points, int count, const Frame& frame, Point* out) {
  for (int i = 0; i < count; ++i) {
    Store(points[i], frame, out[i]);
    StoreWeight(points[i], out[i]);
  }
}

// Cuts off what lies before u, by de Casteljau's algorithm.
void CutStart(HPoint* points, int degree, double u) {
  for (int r = 1; r <= degree; ++r)
    for (int i = 0; i <= degree - r; ++i) points[i] = Mix(points[i], points[i + 1], u);
}

void Cut(Form& form, double from, double to, Domain domain) {
  if (from > domain.from) form.CutStart(from);
  if (to >= domain.to) return;
  form.Reverse();
  form.CutStart(-to);
  form.Reverse();
}

template <class Record>
void AppendBezier(const Curve& curve, double from, double to, const Frame& frame,
                  Array<OwnedCurve>& parts) {
  const auto& bezier = BlockOf<Record>(curve);
  const int n = bezier.degree;
  HPoint points[kMostDegree + 1];
  Load(bezier.points, n + 1, frame, points);
  if (from > 0) CutStart(points, n, from);
  if (to < 1) {
    std::reverse(points, points + n + 1);
    CutStart(points, n, (1 - to) / (1 - std::max(from, 0.0)));
    std::reverse(points, points + n + 1);
  }
  auto [part, block] = OwnedCurve::New<Record>(curve.type, n);
  Store(points, n + 1, frame, block->points);
  parts.push_back(std::move(part));
}

template <class Record>
void AppendSpline(const Curve& curve, double from, double to, const Frame& frame,
                  Array<OwnedCurve>& parts) {
  const auto& spline = BlockOf<Record>(curve);
  Form form;
  form.degree = spline.order - 1;
  form.points.resize(static_cast<std::size_t>(spline.count));
  Load(spline.points, spline.count, frame, form.points.data());
  form.knots.assign(spline.knots, spline.knots + spline.count + spline.order);
  Cut(form, from, to, DomainOf(curve));
  const auto count = static_cast<int32_t>(form.points.size());
  auto [part, block] = OwnedCurve::New<Record>(curve.type, spline.order, count);
  Store(form.points.data(), count, frame, block->points);
  for (std::size_t i = 0; i < form.knots.size(); ++i)
    block->knots[i] = (form.knots[i] - from) / (to - from);
  parts.push_back(std::move(part));
}

// The pieces within, and of those at the ends a part.
void AppendComposite(const Curve& curve, double from, double to, const Frame& frame,
                     Array<OwnedCurve>& parts) {
  const auto& composite = BlockOf<KurvoSegcv>(curve);
  Array<OwnedCurve> pieces;
  Array<double> widths;
  double before = 0, covered = 0;
  for (int i = 0; i < composite.count; ++i) {
    const Curve& piece = composite.curves[i];
    const double width = composite.widths[i];
    const double low = std::max(from, before), high = std::min(to, before + width);
    const Domain domain = DomainOf(piece);
    const double u0 = low > before ? (low - before) / width : domain.from;
    const double u1 = high < before + width ? (high - before) / width : domain.to;
    before += width;
    if (!(u1 - u0 > kLeastPart)) continue;
    const std::size_t had = pieces.size();
    AppendPart(piece, std::max(u0, domain.from), std::min(u1, domain.to), frame, pieces);
    const auto share = (high - low) / static_cast<double>(pieces.size() - had);
    widths.resize(pieces.size(), share);
    covered += high - low;
  }
  if (pieces.empty()) return;
  auto [part, block] = OwnedCurve::New<KurvoSegcv>(CV_SEGCV, CountOf(pieces.size()));
  double sum = 0;  // of all but the last, which is what is missing to 1
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool is_last = i + 1 == pieces.size();
    block->curves[i] = pieces[i].Release();
    block->widths[i] = is_last ? 1 - sum : widths[i] / covered;
    sum += block->widths[i];
  }
  parts.push_back(std::move(part));
}

}  // namespace

void TakeWords(const Curve& from, Curve& to) {
  to.attr = from.attr;
  to.attr_p1 = from.attr_p1;
  to.attr_p2 = from.attr_p2;
}

void AppendPart(const Curve& curve, double from, double to, const Frame& frame,
                Array<OwnedCurve>& parts) {
  const std::size_t had = parts.size();
  const Domain domain = DomainOf(curve);
  if (from <= domain.from && to >= domain.to && !IsCircle(curve, frame)) {
    parts.push_back(CopyOf(curve));
  } else if (curve.type == CV_LINE || curve.type == CV_ARC) {
    const auto append = curve.type == CV_LINE ? AppendLine : AppendArc;
    ForEachSpan(curve, 0, frame,
                [&](const Span& span) { append(curve, span, from, to, frame, parts); });
  } else if (curve.type == CV_BEZIER) {
    AppendBezier<KurvoBezier>(curve, from, to, frame, parts);
  } else if (curve.type == CV_RBEZIER) {
    AppendBezier<KurvoRBezier>(curve, from, to, frame, parts);
  } else if (curve.type == CV_BSPLINE) {
    AppendSpline<KurvoBSpline>(curve, from, to, frame, parts);
  } else if (curve.type == CV_RBSPLINE) {
    AppendSpline<KurvoRBSpline>(curve, from, to, frame, parts);
  } else {
    AppendComposite(curve, from, to, frame, parts);
  }
  for (std::size_t i = had; i < parts.size(); ++i) TakeWords(curve, *parts[i].Get());
}

namespace {

// The control points of both ends; null for arrays of no length.
struct EndPoints {
  double *start, *end;
};

template <class Record>
EndPoints OfFreeForm(Curve& curve, int32_t (*count)(const Record&)) {
  auto& record = *static_cast<Record*>(curve.data);
  return {record.points[0], record.points[count(record) - 1]};
}

EndPoints PointsOf(Curve& curve) {
  switch (curve.type) {
    case CV_LINE: {
      auto& line = *static_cast<KurvoLine*>(curve.data);
      return {line.start, line.end};
    }
    case CV_ARC: {
      auto& arc = *static_cast<KurvoArc*>(curve.data);
      return {arc.start, arc.end};
    }
    case CV_BEZIER:
      return OfFreeForm<KurvoBezier>(curve, [](const KurvoBezier& b) { return b.degree + 1; });
    case CV_RBEZIER:
      return OfFreeForm<KurvoRBezier>(curve, [](const KurvoRBezier& b) { return b.degree + 1; });
    case CV_BSPLINE:
      return OfFreeForm<KurvoBSpline>(curve, [](const KurvoBSpline& b) { return b.count; });
    case CV_RBSPLINE:
      return OfFreeForm<KurvoRBSpline>(curve, [](const KurvoRBSpline& b) { return b.count; });
    default: {
      auto& composite = *static_cast<KurvoSegcv*>(curve.data);
      if (composite.count == 0) return {nullptr, nullptr};
      return {PointsOf(composite.curves[0]).start,
              PointsOf(composite.curves[composite.count - 1]).end};
    }
  }
}

}  // namespace

void SetStart(Curve& curve, Vec2 point) {
  if (double* start = PointsOf(curve).start) Set(start, point);
}

void SetEnd(Curve& curve, Vec2 point) {
  if (double* end = PointsOf(curve).end) Set(end, point);
}

namespace {

// In radians, in [0, 2 pi).
double SweepOf(const KurvoArc& arc) {
  const Vec2 centre = {arc.centre[0], arc.centre[1]};
  const Vec2 from = Vec2{arc.start[0], arc.start[1]} - centre;
  const Vec2 to = Vec2{arc.end[0], arc.end[1]} - centre;
  const double by = 1 / arc.radius;
  return SweepBetween(by * from, by * to, arc.normal[2] < 0 ? -1 : 1, false);
}

}  // namespace

// The centre lies on the middle normal of the chord, chord / 2 / tan(sweep / 2) to its left.
void Recentre(KurvoArc& arc, const KurvoArc& before, double slack) {
  constexpr double kLeastSine = 0.7;  // nearly all around a chord says little of its circle
  const Vec2 start = {arc.start[0], arc.start[1]}, end = {arc.end[0], arc.end[1]};
  const Vec2 centre = {arc.centre[0], arc.centre[1]};
  const auto miss = [&](Vec2 p) { return std::fabs(SafeLength(p - centre) - arc.radius); };
  if (slack >= std::max(miss(start), miss(end))) return;
  const double sweep = SweepOf(before), sine = std::sin(0.5 * sweep);
  if (!(sine > 0)) return;
  if (sweep > std::numbers::pi && kLeastSine >= sine) return;
  const double sense = arc.normal[2] < 0 ? -1 : 1;
  const Vec2 half = 0.5 * (end - start);
  const Vec2 moved = start + half + (sense * std::cos(0.5 * sweep) / sine) * Left(half);
  Set(arc.centre, moved);
  arc.radius = std::hypot(half.x, half.y) / sine;
}

}  // namespace kurvo::outline
