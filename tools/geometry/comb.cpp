#include "geometry/comb.h"

#include <algorithm>
#include <utility>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"

namespace kurvo::tools {
namespace {

// Teeth along a stretch as long as the drawing, or fewer so that all curves together have about so
// many; but no fewer and no more on one curve.
constexpr double kTeethPerExtent = 200;
constexpr double kTeethInAll = 50000;
constexpr int kFewestTeeth = 12;
constexpr int kMostTeeth = 400;

// Parts of the extent.
constexpr double kUsualTooth = 0.045;
constexpr double kLongestTooth = 0.08;

constexpr double kUsualShare = 0.75;  // of the length, with teeth up to the usual one

struct Tooth {
  Point foot;
  Point curvature;  // 1 / radius towards the centre
  double length;    // of the curve that it stands for
};

class CombMaker {
 public:
  // `total` is the length of all curves.
  CombMaker(Context& context, double extent, double total)
      : context_(context),
        extent_(extent),
        teeth_per_unit_(std::min(kTeethPerExtent / extent, kTeethInAll / total)) {}

  void Add(const Curve& curve) {
    if (curve.Type() == CV_LINE) return;
    const double length = LengthOf(context_, curve);
    const auto count = static_cast<std::size_t>(
        std::clamp<double>(teeth_per_unit_ * length, kFewestTeeth, kMostTeeth));
    const Array<Place> places = EqualSteps(context_, curve, count);
    combs_.emplace_back();
    for (std::size_t i = 0; i <= count; ++i) {
      const double t = i < count ? places[i].t : 1;  // also where the curve closes
      const auto curvature = CurvatureOf(context_, curve, t);
      if (curvature) {
        combs_.back().push_back(
            {PositionOf(context_, curve, t), *curvature, length / static_cast<double>(count)});
      } else if (!combs_.back().empty()) {
        combs_.emplace_back();
      }
    }
  }

  std::vector<Comb> Take() const {
    std::vector<Comb> combs;
    const double usual = UsualCurvature();
    if (!(usual > 0)) return combs;
    for (const auto& teeth : combs_) {
      combs.emplace_back();
      for (const Tooth& tooth : teeth) {
        combs.back().feet.push_back(tooth.foot);
        combs.back().tips.push_back(tooth.foot - TipOf(tooth, kUsualTooth * extent_ / usual));
      }
    }
    return combs;
  }

 private:
  // The tooth from its tip to its foot.
  Point TipOf(const Tooth& tooth, double scale) const {
    const double length = scale * Size(tooth.curvature);
    const double longest = kLongestTooth * extent_;
    return (length > longest ? scale * longest / length : scale) * tooth.curvature;
  }

  // The curvature that kUsualShare of the length stays below.
  double UsualCurvature() const {
    std::vector<std::pair<double, double>> curvatures;  // and the lengths that have them
    double total = 0;
    for (const auto& teeth : combs_) {
      for (const Tooth& tooth : teeth) {
        curvatures.emplace_back(Size(tooth.curvature), tooth.length);
        total += tooth.length;
      }
    }
    std::sort(curvatures.begin(), curvatures.end());
    double below = 0;
    for (const auto& [curvature, length] : curvatures) {
      below += length;
      if (below >= kUsualShare * total) return curvature;
    }
    return 0;
  }

  Context& context_;
  const double extent_;
  const double teeth_per_unit_;
  std::vector<std::vector<Tooth>> combs_;
};

}  // namespace

std::vector<Comb> CombsOf(Context& context, const Drawing& drawing, double extent) {
  if (!(extent > 0)) return {};
  double total = 0;
  ForEachCurve(drawing, [&](const Curve& curve) { total += LengthOf(context, curve); });
  CombMaker maker(context, extent, total);
  ForEachCurve(drawing, [&](const Curve& curve) { maker.Add(curve); });
  return maker.Take();
}

}  // namespace kurvo::tools
