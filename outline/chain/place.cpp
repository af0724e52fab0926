#include "chain/place.h"

#include <algorithm>
#include <cmath>

#include "base/refusal.h"

namespace kurvo::outline {

KurvoPlace PlaceAt(const Frame& frame, const Span& span, double u) {
  const Vec2 point = frame.Outwards(PointAt(span, u));
  const Vec2 tangent = TangentAt(span, u);
  return {span.curve, 0, span.ParameterAt(u), {point.x, point.y, 0}, {tangent.x, tangent.y, 0}};
}

OnSpan Find(const Array<Span>& spans, const KurvoPlace& place) {
  RequireFinite(place.t);
  const auto [first, last] =
      std::equal_range(spans.begin(), spans.end(), Span{.curve = place.index},
                       [](const Span& a, const Span& b) { return a.curve < b.curve; });
  Require(first != last, KURVO_ERR_RANGE);
  const double from = first->from, to = (last - 1)->to;
  const double slack = kPlaceSlack * (to - from);
  Require(place.t >= from - slack && place.t <= to + slack, KURVO_ERR_RANGE);
  const double t = std::clamp(place.t, from, to);
  // The last span that starts no later.
  const auto after = std::upper_bound(
      first + 1, last, t, [](double parameter, const Span& span) { return parameter < span.from; });
  const Span& span = *(after - 1);
  return {static_cast<std::size_t>(after - 1 - spans.begin()), std::clamp(span.At(t), 0.0, 1.0)};
}

}  // namespace kurvo::outline
