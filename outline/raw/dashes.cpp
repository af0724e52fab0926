#include "raw/dashes.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/refusal.h"
#include "base/sum.h"
#include "chain/measured.h"
#include "chain/speed.h"

namespace kurvo::outline {
namespace {

// Walks along the spans, from stop to stop.
class DashWalk {
 public:
  explicit DashWalk(const Array<Span>& spans) : spans_(spans) {
    Sum sum;
    before_.push_back(0);
    for (const Span& span : spans) {
      sum.Add(Speed(span).Whole());
      before_.push_back(sum.Value());
    }
  }

  double length() const { return before_.back(); }

  // A place on a span; the later one at a joint, as long as there is one.
  struct Stop {
    std::size_t span;
    double u;
  };
  // Lengths ascend from call to call.
  Stop At(double length) {
    while (span_ + 1 < spans_.size() && before_[span_ + 1] <= length) {
      ++span_;
      walk_.reset();
    }
    const double whole = before_[span_ + 1] - before_[span_];
    if (!walk_) walk_.emplace(spans_[span_], whole);
    const double here = length - before_[span_];
    return {span_, here >= whole ? 1 : walk_->At(std::max(here, 0.0))};
  }

  double LengthBetween(std::size_t span, double u0, double u1) const {
    if (u0 == 0 && u1 == 1) return before_[span + 1] - before_[span];
    return Speed(spans_[span]).Integral(u0, u1);
  }

 private:
  const Array<Span>& spans_;
  Array<double> before_;
  std::size_t span_ = 0;
  std::optional<SpanWalk> walk_;
};

class Dasher {
 public:
  Dasher(const Array<Span>& spans, double least, FunctionRef<void(const Dash&)> visit)
      : spans_(spans), walk_(spans), least_(least), visit_(visit) {}

  double length() const { return walk_.length(); }

  void Add(double from, double to) {
    arena_.Clear();
    dash_.spans.clear();
    const DashWalk::Stop start = walk_.At(from);
    const Span& first = spans_[start.span];
    dash_.point = PointAt(first, start.u);
    dash_.direction = TangentAt(first, start.u);
    dash_.curve = first.curve;
    dash_.parameter = first.ParameterAt(start.u);
    if (to > from) AddParts(start, walk_.At(to));
    visit_(dash_);
  }

 private:
  void AddParts(const DashWalk::Stop& start, const DashWalk::Stop& end) {
    for (std::size_t i = start.span; i <= end.span; ++i) {
      const double u0 = i == start.span ? start.u : 0, u1 = i == end.span ? end.u : 1;
      if (!(u1 > u0 && walk_.LengthBetween(i, u0, u1) > least_)) continue;
      dash_.spans.push_back(PartOf(spans_[i], u0, u1, arena_));
    }
  }

  const Array<Span>& spans_;
  DashWalk walk_;
  const double least_;
  FunctionRef<void(const Dash&)> visit_;
  Arena arena_;
  Dash dash_;
};

}  // namespace

void ForEachDash(const Array<Span>& spans, const DashPattern& pattern, double least, double reach,
                 FunctionRef<void(const Dash&)> visit) {
  Dasher dasher(spans, least, visit);
  const std::size_t count = pattern.lengths.size();
  double whole = 0;
  for (const double length : pattern.lengths) whole += length;
  const double length = dasher.length();
  const double dashes = length / whole * static_cast<double>(count);
  const double met = reach / whole * static_cast<double>(count);  // by one of them
  Require(kMostDashes >= dashes && kMostMeetings >= dashes * std::min(dashes, met),
          KURVO_ERR_TOO_LARGE);
  double phase = std::fmod(pattern.phase, whole);
  if (phase < 0) phase += whole;
  // Rounds begin at multiples of the pattern, so that nothing adds up.
  for (double round = 0; round * whole - phase <= length; ++round) {
    double at = round * whole - phase;
    for (std::size_t i = 0; i < count; i += 2) {
      const double from = at, to = at + pattern.lengths[i];
      at = to + pattern.lengths[i + 1];
      const bool is_dot = from == to;
      if (is_dot ? from >= 0 && from <= length : to > 0 && from < length)
        dasher.Add(std::max(from, 0.0), std::min(to, length));
    }
  }
}

}  // namespace kurvo::outline
