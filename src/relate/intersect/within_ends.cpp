// Which crossings lie on the bounded parts of curves.
#include "relate/intersect/within_ends.h"

#include "foundation/point.h"
#include "query/position.h"
#include "records/domain.h"
#include "records/views.h"

namespace kurvo {
namespace {

// The point at t, where a composite goes on beyond its end along its last piece.
Vec2 PointBeyond(const Curve& curve, double t, double end, GlobalVar& g) {
  return VisitCurve(curve,
                    Overloaded{[&](const auto&) { return Planar(PointOfCurve(curve, t, 0, g)); },
                               [&](const CompositeView& composite) {
                                 if (t <= end || composite.count == 0)
                                   return Planar(PointOfCurve(curve, t, 0, g));
                                 const int32_t last = composite.count - 1;
                                 const double width = composite.widths[last];
                                 const Curve& piece = composite.curves[last];
                                 const Domain domain = DomainOf(piece);
                                 const double beyond = width > 0.0 ? (t - end) / width : 0.0;
                                 return PointBeyond(piece, domain.end + beyond, domain.end, g);
                               }});
}

class EndTest {
 public:
  EndTest(const Curve& curve, GlobalVar& g) : curve_(curve), g_(g), domain_(DomainOf(curve)) {}

  bool Keeps(double t) const {
    if (t >= domain_.start - kEndSlack && domain_.end + kEndSlack >= t) return true;
    Coord nearest_end = {};
    if (t < domain_.start)
      KurvocvStartPoint(&curve_, nearest_end, &g_);
    else
      KurvocvEndPoint(&curve_, nearest_end, &g_);
    const Vec2 gap = PointBeyond(curve_, t, domain_.end, g_) - Planar(nearest_end);
    return Within(OnPlane(gap), g_.epsilon);
  }

 private:
  const Curve& curve_;
  GlobalVar& g_;
  const Domain domain_;
};

}  // namespace

void KeepBounded(const Curve& a, const Curve& b, Bounded bounded, GlobalVar& g,
                 Crossings& crossings) {
  DropNotFinite(crossings);
  if (bounded.first) {
    const EndTest test(a, g);
    crossings.erase_if([&](const Crossing& at) { return !test.Keeps(at.first); });
  }
  if (bounded.second) {
    const EndTest test(b, g);
    crossings.erase_if([&](const Crossing& at) { return !test.Keeps(at.second); });
  }
}

}  // namespace kurvo
