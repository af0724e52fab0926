// Length, area, centroid and second moments of chains.
#include "chain/moments.h"

#include <cmath>

#include "base/refusal.h"
#include "chain/gauss.h"
#include "chain/speed.h"
#include "strand/joints.h"
#include "strand/spans.h"

namespace kurvo::outline {
namespace {

// Of the length times the frame's unit, in which no point is far from 1: an area below is rounding.
constexpr double kFlat = 0x1p-48;

// The integral of the points of a span over its length.
class LengthMoment {
 public:
  explicit LengthMoment(const Span& span) : span_(span), speed_(span) {}

  Vec2 Value() {
    const double length = speed_.Whole();
    if (span_.kind == Span::Kind::kLine)
      return (0.5 * length) * (span_.points[0] + span_.points[1]);
    if (span_.kind == Span::Kind::kArc) {
      const double h = 0.5 * span_.sweep;
      const double out = h == 0 ? 1 : std::sin(h) / h;
      const Vec2 e = {std::cos(span_.angle + h), std::sin(span_.angle + h)};
      return length * (span_.centre + (out * span_.radius) * e);
    }
    tolerance_ = kAgree * length;
    return Stretch(0, 1, kMostHalvings);
  }

 private:
  static constexpr double kAgree = 1e-14;
  static constexpr int kMostHalvings = 40;
  static constexpr int kMostWork = 4096;  // stretches times degree^2; then each is taken as it is

  // 16 nodes serve where they give the length that is known.
  Vec2 Stretch(double from, double to, int halvings_left) {
    const double middle = 0.5 * (from + to), half = 0.5 * (to - from);
    Vec2 moment = {0, 0};
    double length = 0;
    for (std::size_t i = 0; i < 8; ++i) {
      for (const double at : {-half * Gauss<16>::kAt[i], half * Gauss<16>::kAt[i]}) {
        const double u = middle + at;
        const double part = half * Gauss<16>::kWeight[i] * Length(VelocityAt(span_, u));
        length += part;
        moment = moment + part * PointAt(span_, u);
      }
    }
    work_ += span_.degree * span_.degree;
    if (halvings_left == 0 || work_ > kMostWork ||
        tolerance_ >= std::fabs(length - speed_.Integral(from, to)))
      return moment;
    const Vec2 low = Stretch(from, middle, halvings_left - 1);
    return low + Stretch(middle, to, halvings_left - 1);
  }

  const Span& span_;
  Speed speed_;
  double tolerance_ = 0;
  int work_ = 0;
};

// The centroid of the length of chains; of points the first of them.
Vec2 CentroidOfLength(std::span<const Cvseq> chains, const Frame& frame, double length) {
  Vec2 moment = {0, 0}, start = {0, 0};
  bool is_first = true;
  for (const Cvseq& chain : chains)
    ForEachSpan(chain, frame, [&](const Span& span) {
      if (is_first) start = span.Start();
      is_first = false;
      if (length > 0) moment = moment + LengthMoment(span).Value();
    });
  return length > 0 ? (1 / length) * moment : start;
}

}  // namespace

bool AddMoments(const Cvseq& chain, const Frame& frame, Sum& length, Fans& fans) {
  Vec2 start = {0, 0}, end = {0, 0};
  bool is_empty = true;
  ForEachSpan(chain, frame, [&](const Span& span) {
    const Vec2 next = span.Start();
    if (is_empty)
      start = next;
    else if (end != next)
      fans.Add(FanOfLine(end, next));  // a joint may gape by epsilon
    is_empty = false;
    end = span.End();
    length.Add(Speed(span).Whole());
    AddFan(span, fans);
  });
  if (!is_empty) fans.Add(FanOfLine(end, start));
  return !is_empty;
}

KurvoMoments MomentsOf(std::span<const Cvseq> chains, const Frame& frame) {
  Sum length;
  Fans fans;
  bool is_empty = true;
  for (const Cvseq& chain : chains) is_empty = !AddMoments(chain, frame, length, fans) && is_empty;
  if (is_empty) return {};
  Fan fan = fans.Value();

  const double total = length.Value();
  const bool is_flat = kFlat * total >= std::fabs(fan.one);
  if (is_flat) fan.one = 0;
  const Vec2 centroid =
      is_flat ? CentroidOfLength(chains, frame, total) : Vec2{fan.x / fan.one, fan.y / fan.one};
  const auto about = [&](double moment, double first, double second, double a, double b) {
    const double shifted = moment - a * second - b * first + a * b * fan.one;
    return frame.AreaOutwards(frame.AreaOutwards(shifted));
  };
  const Vec2 outwards = frame.Outwards(centroid);
  return {frame.LengthOutwards(total),
          frame.AreaOutwards(fan.one),
          {outwards.x, outwards.y, 0},
          about(fan.xx, fan.x, fan.x, centroid.x, centroid.x),
          about(fan.xy, fan.x, fan.y, centroid.x, centroid.y),
          about(fan.yy, fan.y, fan.y, centroid.y, centroid.y)};
}

}  // namespace kurvo::outline

using namespace kurvo::outline;

extern "C" int KurvoChainMoments(const Cvseq* chain, KurvoMoments* moments, GlobalVar* g) noexcept {
  if (moments) *moments = {};
  return Answer(g, [&] {
    Require(moments, KURVO_ERR_OPTION);
    const Frame frame = FrameOf(chain);
    RequireJoined(*chain, GetEpsilon(g));
    *moments = MomentsOf({chain, 1}, frame);
  });
}
