// Whether the control points of a curve run straight ahead.
#include "calc/lines.h"
#include "foundation/error_codes.h"
#include "records/views.h"

namespace kurvo {
namespace {

// Takes points one by one and tests each with the first and the one before it. Fewer than three
// points are straight.
class StraightRun {
 public:
  explicit StraightRun(GlobalVar& g) : g_(g) {}

  void Add(Vec3 p) {
    if (count_ == 0) first_ = p;
    if (count_ >= 2 && straight_) straight_ = OnOneRay(first_, last_, p, g_);
    last_ = p;
    if (count_ < 2) ++count_;
  }
  bool straight() const { return straight_; }

 private:
  GlobalVar& g_;
  int count_ = 0;
  bool straight_ = true;
  Vec3 first_;
  Vec3 last_;
};

int Shape(const StraightRun& run) {
  return run.straight() ? KURVO_SHAPE_STRAIGHT : KURVO_SHAPE_BENT;
}

template <class PointAt>
int ShapeOfPoints(int32_t count, PointAt&& point, GlobalVar& g) {
  StraightRun run(g);
  for (int32_t i = 0; i < count && run.straight(); ++i) run.Add(point(i));
  return Shape(run);
}

// The control points of all Bezier pieces as one run; pieces of other types are passed over.
// Fixed behaviour: coordinates of rational pieces are multiplied by their weights here, and nowhere
// else in this file. Do not unify.
int ShapeOfComposite(const CompositeView& composite, GlobalVar& g) {
  StraightRun run(g);
  for (int32_t i = 0; i < composite.count && run.straight(); ++i) {
    VisitCurve(composite.curves[i],
               Overloaded{[&](const BezierView<3>& bezier) {
                            for (int32_t j = 0; j <= bezier.degree; ++j)
                              run.Add(Spatial(bezier.points[j]));
                          },
                          [&](const BezierView<4>& bezier) {
                            for (int32_t j = 0; j <= bezier.degree; ++j)
                              run.Add(OnPlane(bezier.points[j][3] * Planar(bezier.points[j])));
                          },
                          [](const auto&) {}});
  }
  return Shape(run);
}

Vec3 PointForShape(const double (&p)[3]) { return Spatial(p); }
Vec3 PointForShape(const double (&p)[4]) { return OnPlane(Planar(p)); }

int IsLine(const Curve& cv, GlobalVar& g) {
  return VisitCurve(
      cv,
      Overloaded{[](const KurvoLine&) -> int { return KURVO_SHAPE_LINE; },
                 [](const KurvoArc&) -> int { return KURVO_SHAPE_BENT; },
                 [&]<std::size_t kDim>(const BezierView<kDim>& bezier) -> int {
                   const auto point = [&](int32_t i) { return PointForShape(bezier.points[i]); };
                   return ShapeOfPoints(bezier.degree + 1, point, g);
                 },
                 [&]<std::size_t kDim>(const SplineView<kDim>& spline) -> int {
                   const auto point = [&](int32_t i) { return PointForShape(spline.points[i]); };
                   return ShapeOfPoints(spline.count, point, g);
                 },
                 [&](const CompositeView& composite) { return ShapeOfComposite(composite, g); },
                 [&](Refused) -> int {
                   Fail(g, KURVO_ERR_CURVE);
                   return KURVO_SHAPE_BENT;
                 }});
}

}  // namespace
}  // namespace kurvo

extern "C" int KurvocvIsLine(const Curve* cv, GlobalVar* g) noexcept {
  if (kurvo::ErrorPending(*g) || !cv || !cv->data) return KURVO_SHAPE_UNKNOWN;
  return kurvo::IsLine(*cv, *g);
}
