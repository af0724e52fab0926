#include "geometry/chain.h"

#include "geometry/curve_make.h"

namespace kurvo::tools {

double LengthOf(Context& context, const ChainView& chain) {
  const EpsilonScope wider = WiderTolerance(context);
  return chain->Length(context).value();
}

Bounds BoundsOf(Context& context, const ChainView& chain) {
  if (chain->size() == 0) return {};
  const EpsilonScope wider = WiderTolerance(context);
  const Box box = chain->TightBox(context).value();
  return {box.min.x, box.min.y, box.max.x, box.max.y};
}

Moments MomentsOf(Context& context, const ChainView& chain) {
  const EpsilonScope wider = WiderTolerance(context);
  return chain->Moments(context).value();
}

NearestPoint NearestOn(Context& context, const Curve& curve, Point p) {
  const NearestPlace nearest = ChainView(curve)->NearestTo(p, context).value();
  return {nearest.place.t, nearest.place.point, nearest.distance};
}

Place PlaceAt(Context& context, const ChainView& chain, double length) {
  const EpsilonScope wider = WiderTolerance(context);
  return chain->PlaceAt(length, context).value();
}

Array<Place> EqualSteps(Context& context, const ChainView& chain, std::size_t count) {
  const double whole = LengthOf(context, chain);
  std::vector<double> lengths(count + 1, whole);
  for (std::size_t i = 0; i < count; ++i)
    lengths[i] = whole * static_cast<double>(i) / static_cast<double>(count);
  const EpsilonScope wider = WiderTolerance(context);
  return chain->Places(lengths, context).value();
}

std::vector<Curve> Trimmed(Context& context, const ChainView& chain, const Place& from,
                           const Place& to) {
  const EpsilonScope wider = WiderTolerance(context);
  return Taken(chain->Trim(from, to, context).value());
}

std::vector<Curve> Flattened(Context& context, const ChainView& chain, double deviation) {
  const EpsilonScope wider = WiderTolerance(context);
  const Array<kurvo::Point> points = chain->Vertices(deviation, context).value();
  std::vector<Curve> lines;
  for (std::size_t i = 1; i < points.size(); ++i)
    lines.push_back(Curve::Line(points[i - 1], points[i]).value());
  return lines;
}

std::vector<Curve> Fitted(Context& context, const ChainView& chain, Form form, double deviation) {
  const EpsilonScope wider = WiderTolerance(context);
  return Taken(chain->Fit(form, deviation, context).value());
}

}  // namespace kurvo::tools
