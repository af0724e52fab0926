// Things that reach from one height to another, by bands of heights.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "sweep/rows.h"

namespace kurvo::outline {

class Bands {
 public:
  // reach(i, low, high) tells the heights of thing i below `count`; false where it is to be left
  // out. There are as many bands as let a thing stand in a few of them on average.
  template <class Reach>
  void Build(std::size_t count, const Reach& reach) {
    double high = -std::numeric_limits<double>::infinity(), all = 0;
    low_ = -high;
    for (std::size_t i = 0; i < count; ++i) {
      double from, to;
      if (!reach(i, from, to)) continue;
      low_ = std::min(low_, from);
      high = std::max(high, to);
      all += to - from;
    }
    constexpr double kCopies = 3;
    const auto things = static_cast<double>(count);
    bands_ =
        all > 0 ? std::clamp(std::floor(kCopies * things * (high - low_) / all), 1.0, things) : 1;
    per_height_ = all > 0 ? bands_ / (high - low_) : 0;
    rows_.Clear();
    rows_.Reserve(static_cast<std::size_t>(kCopies + 1) * count);
    for (std::size_t i = 0; i < count; ++i) {
      double from, to;
      if (!reach(i, from, to)) continue;
      for (int32_t band = BandOf(from); band <= BandOf(to); ++band)
        rows_.Add(band, static_cast<int32_t>(i));
    }
    rows_.Sort(static_cast<std::size_t>(bands_));
  }

  // All things at this height, and others near it, in order.
  std::span<const int32_t> At(double height) const { return rows_[BandOf(height)]; }

 private:
  int32_t BandOf(double height) const {
    return static_cast<int32_t>(std::clamp((height - low_) * per_height_, 0.0, bands_ - 1));
  }

  Rows rows_;
  double low_ = 0, bands_ = 1, per_height_ = 0;
};

}  // namespace kurvo::outline
