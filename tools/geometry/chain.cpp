#include "geometry/chain.h"

namespace kurvo::tools {
Chain::Chain(const std::vector<OwnedCurve>& curves) {
  curves_.reserve(curves.size());
  for (const OwnedCurve& curve : curves) curves_.push_back(*curve.Get());
}

double LengthOf(Context& context, const Chain& chain) {
  const Cvseq seq = chain.Seq();
  double length = 0;
  const WiderTolerance wider(context);
  KurvoChainLength(&seq, &length, context.Get());
  Check(context);
  return length;
}

Bounds BoundsOf(Context& context, const Chain& chain) {
  if (chain.IsEmpty()) return {};
  const Cvseq seq = chain.Seq();
  ::Box box = {0, 0, 0, 0, 0, 0};
  const WiderTolerance wider(context);
  KurvoChainTightBox(&seq, box, context.Get());
  Check(context);
  return {box[0], box[1], box[3], box[4]};
}

KurvoMoments MomentsOf(Context& context, const Chain& chain) {
  const Cvseq seq = chain.Seq();
  KurvoMoments moments = {};
  const WiderTolerance wider(context);
  KurvoChainMoments(&seq, &moments, context.Get());
  Check(context);
  return moments;
}

NearestPoint NearestOn(Context& context, const OwnedCurve& curve, Point p) {
  const Chain chain(curve);
  const Cvseq seq = chain.Seq();
  const double point[] = {p.x, p.y, 0};
  KurvoPlace place = {};
  double distance = 0;
  KurvoChainNearest(&seq, point, 1, &place, &distance, context.Get());
  Check(context);
  return {place.t, {place.point[0], place.point[1]}, distance};
}

namespace {

std::vector<KurvoPlace> Places(Context& context, const Chain& chain,
                               const std::vector<double>& lengths) {
  std::vector<KurvoPlace> places(lengths.size());
  const Cvseq seq = chain.Seq();
  const WiderTolerance wider(context);
  KurvoChainPlaces(&seq, lengths.data(), static_cast<std::int32_t>(lengths.size()), places.data(),
                   context.Get());
  Check(context);
  return places;
}

}  // namespace

KurvoPlace PlaceAt(Context& context, const Chain& chain, double length) {
  return Places(context, chain, {length}).front();
}

std::vector<KurvoPlace> EqualSteps(Context& context, const Chain& chain, std::size_t count) {
  const double whole = LengthOf(context, chain);
  std::vector<double> lengths(count + 1, whole);
  for (std::size_t i = 0; i < count; ++i)
    lengths[i] = whole * static_cast<double>(i) / static_cast<double>(count);
  return Places(context, chain, lengths);
}

std::vector<OwnedCurve> Trimmed(Context& context, const Chain& chain, const KurvoPlace& from,
                                const KurvoPlace& to) {
  const Cvseq seq = chain.Seq();
  Cvseq part = {0, nullptr};
  const WiderTolerance wider(context);
  KurvoChainTrim(&seq, &from, &to, &part, context.Get());
  return OwnedCurve::TakeAll(context, part);
}

std::vector<OwnedCurve> Flattened(Context& context, const Chain& chain, double deviation) {
  const Cvseq seq = chain.Seq();
  Coord* points = nullptr;
  std::int32_t count = 0;
  const WiderTolerance wider(context);
  KurvoChainFlatten(&seq, deviation, &points, nullptr, &count, context.Get());
  Check(context);
  std::vector<OwnedCurve> lines;
  for (std::int32_t i = 1; i < count; ++i) {
    lines.push_back(
        OwnedCurve::Line({points[i - 1][0], points[i - 1][1]}, {points[i][0], points[i][1]}));
  }
  KurvoFree(points);
  return lines;
}

std::vector<OwnedCurve> Fitted(Context& context, const Chain& chain, int form, double deviation) {
  const Cvseq seq = chain.Seq();
  Cvseq fitted = {0, nullptr};
  const WiderTolerance wider(context);
  KurvoChainFit(&seq, form, deviation, &fitted, context.Get());
  return OwnedCurve::TakeAll(context, fitted);
}

}  // namespace kurvo::tools
