#include "geometry/chain.h"

namespace kurvo::tools {
Chain::Chain(const std::vector<OwnedCurve>& curves) {
  curves_.reserve(curves.size());
  for (const OwnedCurve& curve : curves) curves_.push_back(*curve.Get());
}

double LengthOf(Library& library, const Chain& chain) {
  const Cvseq seq = chain.Seq();
  double length = 0;
  const WiderTolerance wider(library);
  KurvoChainLength(&seq, &length, library.State());
  library.Check();
  return length;
}

Bounds BoundsOf(Library& library, const Chain& chain) {
  if (chain.IsEmpty()) return {};
  const Cvseq seq = chain.Seq();
  Box box = {0, 0, 0, 0, 0, 0};
  const WiderTolerance wider(library);
  KurvoChainTightBox(&seq, box, library.State());
  library.Check();
  return {box[0], box[1], box[3], box[4]};
}

KurvoMoments MomentsOf(Library& library, const Chain& chain) {
  const Cvseq seq = chain.Seq();
  KurvoMoments moments = {};
  const WiderTolerance wider(library);
  KurvoChainMoments(&seq, &moments, library.State());
  library.Check();
  return moments;
}

NearestPoint NearestOn(Library& library, const OwnedCurve& curve, Point p) {
  const Chain chain(curve);
  const Cvseq seq = chain.Seq();
  const double point[] = {p.x, p.y, 0};
  KurvoPlace place = {};
  double distance = 0;
  KurvoChainNearest(&seq, point, 1, &place, &distance, library.State());
  library.Check();
  return {place.t, {place.point[0], place.point[1]}, distance};
}

namespace {

std::vector<KurvoPlace> Places(Library& library, const Chain& chain,
                               const std::vector<double>& lengths) {
  std::vector<KurvoPlace> places(lengths.size());
  const Cvseq seq = chain.Seq();
  const WiderTolerance wider(library);
  KurvoChainPlaces(&seq, lengths.data(), static_cast<std::int32_t>(lengths.size()), places.data(),
                   library.State());
  library.Check();
  return places;
}

}  // namespace

KurvoPlace PlaceAt(Library& library, const Chain& chain, double length) {
  return Places(library, chain, {length}).front();
}

std::vector<KurvoPlace> EqualSteps(Library& library, const Chain& chain, std::size_t count) {
  const double whole = LengthOf(library, chain);
  std::vector<double> lengths(count + 1, whole);
  for (std::size_t i = 0; i < count; ++i)
    lengths[i] = whole * static_cast<double>(i) / static_cast<double>(count);
  return Places(library, chain, lengths);
}

std::vector<OwnedCurve> Trimmed(Library& library, const Chain& chain, const KurvoPlace& from,
                                const KurvoPlace& to) {
  const Cvseq seq = chain.Seq();
  Cvseq part = {0, nullptr};
  const WiderTolerance wider(library);
  KurvoChainTrim(&seq, &from, &to, &part, library.State());
  return OwnedCurve::TakeAll(library, part);
}

std::vector<OwnedCurve> Flattened(Library& library, const Chain& chain, double deviation) {
  const Cvseq seq = chain.Seq();
  Coord* points = nullptr;
  std::int32_t count = 0;
  const WiderTolerance wider(library);
  KurvoChainFlatten(&seq, deviation, &points, nullptr, &count, library.State());
  library.Check();
  std::vector<OwnedCurve> lines;
  for (std::int32_t i = 1; i < count; ++i) {
    lines.push_back(
        OwnedCurve::Line({points[i - 1][0], points[i - 1][1]}, {points[i][0], points[i][1]}));
  }
  KurvoFree(points);
  return lines;
}

std::vector<OwnedCurve> Fitted(Library& library, const Chain& chain, int form, double deviation) {
  const Cvseq seq = chain.Seq();
  Cvseq fitted = {0, nullptr};
  const WiderTolerance wider(library);
  KurvoChainFit(&seq, form, deviation, &fitted, library.State());
  return OwnedCurve::TakeAll(library, fitted);
}

}  // namespace kurvo::tools
