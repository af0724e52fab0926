#include "geometry/curve_pair.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kurvo::tools {
namespace {

// What the library lists: parameters of common points.
class ParameterList {
 public:
  ParameterList() { KurvocrInitCvParam(&list_); }
  ParameterList(const ParameterList&) = delete;
  ParameterList& operator=(const ParameterList&) = delete;
  ~ParameterList() { KurvocrFreeCvParam(&list_); }

  CvParam* Get() { return &list_; }
  int Count() const { return list_.count; }
  double At(int i) const { return list_.values[i]; }

 private:
  CvParam list_;
};

double Within(double t) { return std::clamp(t, 0.0, 1.0); }

double Between(double from, double to, double part) { return from + part * (to - from); }

// Finds where two curves that overlap begin and cease to do so. Lines, arcs and Bezier curves on
// one carrier run together until one of them ends, so each end of a stretch is an end of one curve
// on the other. Two kinds of stretch have other ends and are not found: a straight Bezier curve
// that turns back before it ends, and curves that only come so close that the tolerance joins them.
class StretchFinder {
 public:
  StretchFinder(Library& library, const OwnedCurve& first, const OwnedCurve& second)
      : library_(library), first_(first), second_(second) {}

  void Run(Common& common) const {
    const std::vector<CommonPoint> ends = CommonEnds();
    bool after_stretch = false;
    for (std::size_t i = 0; i < ends.size(); ++i) {
      std::optional<CommonStretch> stretch;
      if (i + 1 < ends.size()) stretch = StretchBetween(ends[i], ends[i + 1]);
      if (stretch) {
        common.stretches.push_back(*stretch);
      } else if (!after_stretch) {
        common.points.push_back(ends[i]);
      }
      after_stretch = stretch.has_value();
    }
  }

 private:
  // Ascending along the first curve.
  std::vector<CommonPoint> CommonEnds() const {
    std::vector<CommonPoint> ends;
    for (const double t : {0.0, 1.0}) {
      const auto on_second = ParameterOf(library_, second_, PositionOf(library_, first_, t));
      if (on_second) ends.push_back({t, Within(*on_second)});
      const auto on_first = ParameterOf(library_, first_, PositionOf(library_, second_, t));
      if (on_first) ends.push_back({Within(*on_first), t});
    }
    std::sort(ends.begin(), ends.end(),
              [](const CommonPoint& a, const CommonPoint& b) { return a.first < b.first; });
    // Ends of both curves at one point.
    const auto same = [&](const CommonPoint& a, const CommonPoint& b) {
      return AreSame(library_, PositionOf(library_, first_, a.first),
                     PositionOf(library_, first_, b.first)) &&
             b.first - a.first < 0.5;  // not the two ends of a curve that closes
    };
    ends.erase(std::unique(ends.begin(), ends.end(), same), ends.end());
    return ends;
  }

  std::optional<CommonStretch> StretchBetween(const CommonPoint& from,
                                              const CommonPoint& to) const {
    std::array<double, 3> second{};
    for (std::size_t i = 0; i < second.size(); ++i) {
      const double t = Between(from.first, to.first, static_cast<double>(i + 1) / 4);
      const auto on_second = ParameterOf(library_, second_, PositionOf(library_, first_, t));
      if (!on_second) return std::nullopt;
      second[i] = *on_second;
    }
    // The start and the end of a curve that closes are one point with two parameters: the right
    // one lies before or after the points inside.
    const bool forward = second.front() < second.back();
    const auto past = [](double t, double limit, bool above) {
      return above ? (t > limit ? t : 1.0) : (t < limit ? t : 0.0);
    };
    return CommonStretch{{from.first, past(from.second, second.front(), !forward)},
                         {to.first, past(to.second, second.back(), forward)}};
  }

  Library& library_;
  const OwnedCurve& first_;
  const OwnedCurve& second_;
};

}  // namespace

Common CommonOf(Library& library, const OwnedCurve& first, const OwnedCurve& second) {
  constexpr int kBothEnd = 3;
  ParameterList on_first, on_second;
  const std::uint32_t result = KurvocrCurveCurve(first.Get(), second.Get(), on_first.Get(),
                                                 on_second.Get(), kBothEnd, library.State());
  library.Check();
  Common common;
  for (int i = 0; i < on_first.Count(); ++i) {
    common.points.push_back({Within(on_first.At(i)), Within(on_second.At(i))});
  }
  if (result == KURVO_OVERLAP) {
    common.overlap = true;
    const WiderTolerance wider(library);
    StretchFinder(library, first, second).Run(common);
  }
  return common;
}

}  // namespace kurvo::tools
