// The form in which regions are packed: what the words say of a curve, and which numbers follow.
#pragma once

#include <kurvo.h>

#include <cstddef>

namespace kurvo::outline {

inline constexpr int32_t kPackedVersion = 1;
inline constexpr int kWordsOfCurve = 8;  // type, two sizes, attr, attr_p1 and attr_p2 by halves

struct Sizes {
  int32_t first, second;  // degree; order and count; count of pieces
};

// What is needed of the blocks, of records that hold nothing impossible.
inline Sizes SizesOf(const Curve& curve) {
  switch (curve.type) {
    case CV_BEZIER:
      return {static_cast<const KurvoBezier*>(curve.data)->degree, 0};
    case CV_RBEZIER:
      return {static_cast<const KurvoRBezier*>(curve.data)->degree, 0};
    case CV_BSPLINE: {
      const auto& spline = *static_cast<const KurvoBSpline*>(curve.data);
      return {spline.order, spline.count};
    }
    case CV_RBSPLINE: {
      const auto& spline = *static_cast<const KurvoRBSpline*>(curve.data);
      return {spline.order, spline.count};
    }
    case CV_SEGCV:
      return {static_cast<const KurvoSegcv*>(curve.data)->count, 0};
    default:
      return {0, 0};
  }
}

// Calls f(numbers, count) for each array of a record in the order of packing; f may write.
template <class F>
void ForEachArray(const Curve& curve, const F& f) {
  const auto size = [](int32_t n) { return static_cast<std::size_t>(n); };
  const auto spline = [&](auto& record, std::size_t width) {
    f(&record.points[0][0], width * size(record.count));
    f(record.knots, size(record.order) + size(record.count));
  };
  switch (curve.type) {
    case CV_LINE: {
      auto& line = *static_cast<KurvoLine*>(curve.data);
      f(line.start, 3);
      return f(line.end, 3);
    }
    case CV_ARC: {
      auto& arc = *static_cast<KurvoArc*>(curve.data);
      f(&arc.radius, 1);
      for (double* point : {arc.centre, arc.normal, arc.start, arc.end}) f(point, 3);
      return;
    }
    case CV_BEZIER: {
      auto& bezier = *static_cast<KurvoBezier*>(curve.data);
      return f(&bezier.points[0][0], 3 * (size(bezier.degree) + 1));
    }
    case CV_RBEZIER: {
      auto& bezier = *static_cast<KurvoRBezier*>(curve.data);
      return f(&bezier.points[0][0], 4 * (size(bezier.degree) + 1));
    }
    case CV_BSPLINE:
      return spline(*static_cast<KurvoBSpline*>(curve.data), 3);
    case CV_RBSPLINE:
      return spline(*static_cast<KurvoRBSpline*>(curve.data), 4);
    default: {
      auto& composite = *static_cast<KurvoSegcv*>(curve.data);
      if (composite.count > 0) f(composite.widths, size(composite.count));
    }
  }
}

}  // namespace kurvo::outline
