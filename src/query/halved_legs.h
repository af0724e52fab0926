// The legs of a Bezier curve's control polygons while the curve is halved.
#pragma once

#include <cmath>
#include <cstdint>

#include "foundation/point.h"
#include "foundation/with_constant.h"
#include "query/halved_pieces.h"

namespace kurvo {

// The legs P[i+1] - P[i] are the control points of C' / n, so that de Casteljau's algorithm on the
// legs alone, one point fewer, halves the curve: the legs of a half are half as long as what it
// gives, which one factor for all of them takes care of. The last leg of a left half is the first
// leg of the right one, and the outer legs are those of the piece that was halved: each is measured
// once.
template <std::size_t kStackDoubles>
class HalvedLegs {
 public:
  // For a Bezier curve of this degree, 2 or more.
  explicit HalvedLegs(int32_t degree) : pieces_(static_cast<std::size_t>(degree)) {}

  // One piece or two, of which the legs are leg(piece, 0) ... leg(piece, degree - 1) times `scale`.
  template <class LegOf>
  void Start(double scale, std::size_t count, const LegOf& leg) {
    scale_ = scale;
    outer_ = inner_ = 0.0;
    pieces_.Start(count, [&](std::size_t p, std::size_t r) -> typename Pieces::Value {
      const Vec2 v = leg(p, r);
      (IsOuter(r) ? outer_ : inner_) += kurvo::Length(v);
      return {v.x, v.y};
    });
  }

  std::size_t count() const { return pieces_.count(); }
  double scale() const { return scale_; }
  // Interpolations between two control points of the curve that the next halving stands for.
  std::size_t InterpolationsToHalve() const {
    return pieces_.count() * pieces_.values() * (pieces_.values() + 1) / 2;
  }

  // Of all control polygons together.
  double Length() const { return scale_ * (outer_ + inner_); }

  // Leg r of piece p, to be multiplied by the scale.
  Vec2 Leg(std::size_t p, std::size_t r) const {
    const double* at = pieces_.At(p, r);
    return {at[0], at[kLanes]};
  }

  // Halves every piece at its middle: the left half replaces it, the right half goes behind all
  // pieces. Throws std::bad_alloc.
  void Halve() {
    inner_ = 0.0;
    HalveAll<true>([this](std::size_t, double inner, double joint) {
      inner_ += inner;
      outer_ += 2.0 * joint;
    });
  }
  // The same; nothing is measured.
  void HalveOnly() {
    HalveAll<false>([](std::size_t, double, double) {});
  }
  // The same; before[p] and after[p] become the length of the polygon of piece p, and that of its
  // halves. For a multiple of eight pieces.
  void HalveEach(double* before, double* after) {
    for (std::size_t p = 0; p < count(); p += kLanes) {
      double outer[kLanes] = {}, inner[kLanes] = {};
      for (std::size_t r = 0; r < pieces_.values(); ++r)
        Measure(pieces_.At(p, r), IsOuter(r) ? outer : inner);
      for (std::size_t i = 0; i < kLanes; ++i) {
        before[p + i] = scale_ * (outer[i] + inner[i]);
        after[p + i] = 0.5 * scale_ * outer[i];
      }
    }
    const double scale = 0.5 * scale_;
    HalveAll<true>([&](std::size_t p, double inner, double joint) {
      after[p] += scale * (inner + 2.0 * joint);
    });
  }

 private:
  using Pieces = HalvedPieces<2, kStackDoubles>;
  static constexpr std::size_t kLanes = Pieces::kLanes;
  static constexpr std::size_t kFewLanes = 2;  // whose legs stay in registers

  bool IsOuter(std::size_t r) const { return r == 0 || r + 1 == pieces_.values(); }

  template <std::size_t kCount>
  static void Measure(const double* at, double (&sum)[kCount]) {
    for (std::size_t i = 0; i < kCount; ++i)
      sum[i] += std::sqrt(at[i] * at[i] + at[kLanes + i] * at[kLanes + i]);
  }

  // Calls use(p, inner, joint) for every piece with the lengths of the legs that are new: that at
  // the joint of both halves, and of the other ones.
  template <bool kMeasure, class Use>
  void HalveAll(const Use& use) {
    WithConstant<2, 3>(pieces_.values(), [&]<class Legs>(Legs legs) {
      if constexpr (!std::is_same_v<Legs, std::size_t>)
        pieces_.template HalveBy<kFewLanes>(
            [&](auto lanes, std::size_t p) { HalveFew<kMeasure>(legs, lanes, p, use); });
      else
        HalveMany<kMeasure>(use);
    });
    scale_ *= 0.5;
  }

  // De Casteljau's algorithm at 1/2 on the lanes from piece p on.
  template <bool kMeasure, class Legs, class LaneCount, class Use>
  void HalveFew(Legs, LaneCount, std::size_t p, const Use& use) {
    constexpr std::size_t kCount = LaneCount::value;
    struct Lane {
      double x[kCount];
      double y[kCount];
    };
    Lane leg[Legs::value];
    double inner[kCount] = {}, joint[kCount] = {};
    const auto store = [](const Lane& v, double* to) {
      std::copy_n(v.x, kCount, to);
      std::copy_n(v.y, kCount, to + kLanes);
    };
    const auto measure = [](const Lane& v, double(&sum)[kCount]) {
      for (std::size_t i = 0; kMeasure && i < kCount; ++i)
        sum[i] += std::sqrt(v.x[i] * v.x[i] + v.y[i] * v.y[i]);
    };
    const auto mix = [](Lane& a, const Lane& b) {
      for (std::size_t i = 0; i < kCount; ++i) a.x[i] = 0.5 * (a.x[i] + b.x[i]);
      for (std::size_t i = 0; i < kCount; ++i) a.y[i] = 0.5 * (a.y[i] + b.y[i]);
    };
    constexpr std::size_t kLast = Legs::value - 1;
    for (std::size_t r = 0; r <= kLast; ++r) {
      std::copy_n(pieces_.At(p, r), kCount, leg[r].x);
      std::copy_n(pieces_.At(p, r) + kLanes, kCount, leg[r].y);
    }
    for (std::size_t level = 1; level <= kLast; ++level) {
      for (std::size_t r = 0; r <= kLast - level; ++r) mix(leg[r], leg[r + 1]);
      store(leg[0], pieces_.At(p, level));
      measure(leg[0], level < kLast ? inner : joint);
    }
    for (std::size_t r = 0; r <= kLast; ++r) {
      store(leg[r], pieces_.At(p + count(), r));
      if (r > 0 && r < kLast) measure(leg[r], inner);
    }
    for (std::size_t i = 0; i < kCount; ++i) use(p + i, inner[i], joint[i]);
  }

  template <bool kMeasure, class Use>
  void HalveMany(const Use& use) {
    const std::size_t before = count(), last = pieces_.values() - 1;
    pieces_.Halve();
    if (!kMeasure) return;
    for (std::size_t p = 0; p < before; p += kLanes) {
      const std::size_t lanes = std::min(before, kLanes);
      double inner[kLanes] = {}, joint[kLanes] = {};
      MeasureLanes(pieces_.At(p, last), lanes, joint);
      for (std::size_t r = 1; r < last; ++r) {
        MeasureLanes(pieces_.At(p, r), lanes, inner);
        MeasureLanes(pieces_.At(p + before, r), lanes, inner);
      }
      for (std::size_t i = 0; i < lanes; ++i) use(p + i, inner[i], joint[i]);
    }
  }

  static void MeasureLanes(const double* at, std::size_t lanes, double (&sum)[kLanes]) {
    if (lanes == kLanes) return Measure(at, sum);
    for (std::size_t i = 0; i < lanes; ++i)
      sum[i] += std::sqrt(at[i] * at[i] + at[kLanes + i] * at[kLanes + i]);
  }

  Pieces pieces_;
  double scale_ = 1.0;
  double outer_ = 0.0;  // lengths, without the scale, of first and last legs
  double inner_ = 0.0;  // and of the others
};

}  // namespace kurvo
