// The Bezier pieces that free-form curves are made of.
#include "control/bezier_pieces.h"

#include <algorithm>
#include <cstring>

#include "control/blossom.h"
#include "control/homogeneous.h"
#include "foundation/clamped_size.h"
#include "foundation/new_array.h"
#include "records/pieces.h"

namespace kurvo {
namespace {

template <std::size_t kDim>
void CopyPoint(const double (&from)[kDim], double (&to)[kDim]) {
  std::copy_n(from, kDim, to);
}

}  // namespace

int32_t CountSpans(const KnotVector& knots) {
  int32_t count = 0;
  for (int32_t i = knots.order - 1; i < knots.count; ++i)
    if (knots.u[i] < knots.u[i + 1]) ++count;
  return count;
}

template <std::size_t kDim>
void ExtractBezier(const SplineView<kDim>& spline, int32_t i, double (*out)[kDim]) {
  const int32_t k = spline.order;
  const double* u = spline.knots + i;
  const double(*points)[kDim] = spline.points + (i - k + 1);
  std::memcpy(out, points, static_cast<std::size_t>(k) * sizeof(*out));
  const bool starts_clamped = k == 1 || u[2 - k] == u[0];
  const bool ends_clamped = k == 1 || u[k - 1] == u[1];
  if (starts_clamped && ends_clamped) return;  // a Bezier piece already
  ToHomogeneous(out, k);
  WithOrder(k, [&](auto order) { RaiseSpanKnots(order, u, out); });
  ToCartesian(out, k);
  if (starts_clamped) CopyPoint(points[0], out[0]);  // weights must not round the ends
  if (ends_clamped) CopyPoint(points[k - 1], out[k - 1]);
}

template void ExtractBezier(const SplineView<3>&, int32_t, double (*)[3]);
template void ExtractBezier(const SplineView<4>&, int32_t, double (*)[4]);

namespace {

// What a curve needs to be stored.
struct Size {
  int32_t max_degree;
  std::size_t spans = 0;
  ClampedSize<> doubles = 0;
};

// Adds up the size of all pieces; false for a record that cannot be right or a degree too high.
bool Measure(const Curve& curve, Size& size) {
  return AllLeaves(
      curve, Overloaded{[](const Curve&, const auto&) { return true; },
                        [](const Curve&, Refused) { return false; },
                        [&]<std::size_t kDim>(const Curve&, const BezierView<kDim>& bezier) {
                          ++size.spans;
                          return bezier.degree <= size.max_degree;
                        },
                        [&]<std::size_t kDim>(const Curve&, const SplineView<kDim>& spline) {
                          if (spline.order > kMaxSplineOrder || spline.order - 1 > size.max_degree)
                            return false;
                          const auto spans = static_cast<std::size_t>(CountSpans(KnotsOf(spline)));
                          const auto order = static_cast<std::size_t>(spline.order);
                          size.spans += spans;
                          size.doubles = size.doubles + ClampedSize(kDim) * order * spans;
                          return true;
                        }});
}

// Fills what Measure has measured.
class Collector {
 public:
  Collector(std::vector<BezierSpan>& spans, double* storage) : spans_(spans), next_(storage) {}

  void Add(const Curve& curve) {
    AllLeafStretches(curve, [this](const Curve&, const auto& view, LeafStretch on) {
      AddLeaf(view, on);
      return true;
    });
  }

 private:
  void AddLeaf(const auto&, LeafStretch) {}

  template <std::size_t kDim>
  void AddLeaf(const BezierView<kDim>& bezier, LeafStretch on) {
    spans_.push_back({bezier.points[0], bezier.degree, kDim == 4, on.start, on.width});
  }

  template <std::size_t kDim>
  void AddLeaf(const SplineView<kDim>& spline, LeafStretch on) {
    ExtractAllBeziers(spline, [&](int32_t i) {
      const double* u = spline.knots + i;
      auto* points = static_cast<double(*)[kDim]>(static_cast<void*>(next_));
      spans_.push_back({next_, spline.order - 1, kDim == 4, on.start + u[0] * on.width,
                        (u[1] - u[0]) * on.width});
      next_ += static_cast<std::size_t>(spline.order) * kDim;
      return points;
    });
  }

  std::vector<BezierSpan>& spans_;
  double* next_;
};

}  // namespace

std::optional<BezierSpans> BezierSpans::Of(const Curve& curve, int32_t max_degree) {
  Size size{.max_degree = max_degree};
  if (!Measure(curve, size)) return std::nullopt;
  std::vector<BezierSpan> spans;
  spans.reserve(size.spans);
  std::unique_ptr<double[]> storage;
  if (size.doubles.value() > 0) storage = NewArray<double>(size.doubles.value());
  Collector(spans, storage.get()).Add(curve);
  return BezierSpans(std::move(spans), std::move(storage));
}

}  // namespace kurvo
