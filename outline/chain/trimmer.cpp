#include "chain/trimmer.h"

#include <algorithm>
#include <utility>

#include "chain/cut.h"
#include "strand/check.h"

namespace kurvo::outline {

Stop StopOf(const Cvseq& chain, const KurvoPlace& place) {
  const Domain domain = DomainOf(chain.curves[place.index]);
  const double slack = kLeastPart * (domain.to - domain.from);
  double t = std::clamp(place.t, domain.from, domain.to);
  if (t - domain.from <= slack) t = domain.from;
  if (domain.to - t <= slack) t = domain.to;
  return {place.index, t, {place.point[0], place.point[1]}};
}

void Trimmer::Add(const Stop* from, const Stop* to) {
  const int32_t first = from ? from->index : 0, last = to ? to->index : chain_.count - 1;
  for (int32_t i = first; i <= last; ++i)
    AddCurve(i, from && i == first ? from : nullptr, to && i == last ? to : nullptr);
}

void Trimmer::AddCircle(const Stop& from) {
  Array<OwnedCurve> parts;
  AppendPart(chain_.curves[0], from.t, from.t + 1, frame_, parts);
  SetStart(*parts.front().Get(), from.point);
  SetEnd(*parts.back().Get(), from.point);
  AddParts(parts, {0, from.t, from.t + 1});
}

void Trimmer::AddCurve(int32_t index, const Stop* from, const Stop* to) {
  const Curve& curve = chain_.curves[index];
  const Domain domain = DomainOf(curve);
  const double start = from ? from->t : domain.from, end = to ? to->t : domain.to;
  if ((from || to) && !(end - start > kLeastPart * (domain.to - domain.from))) return;
  Array<OwnedCurve> parts;
  AppendPart(curve, start, end, frame_, parts);
  if (parts.empty()) return;
  // Parts that share a place share its bits.
  if (start > domain.from) SetStart(*parts.front().Get(), from->point);
  if (end < domain.to) SetEnd(*parts.back().Get(), to->point);
  AddParts(parts, {index, start, end});
}

// The arcs that a curve becomes are equally long.
void Trimmer::AddParts(Array<OwnedCurve>& parts, const Source& source) {
  const auto at = [&](std::size_t i) {
    const double share = static_cast<double>(i) / static_cast<double>(parts.size());
    return i == parts.size() ? source.to : source.from + share * (source.to - source.from);
  };
  for (std::size_t i = 0; i < parts.size(); ++i) {
    sources_.push_back({source.curve, at(i), at(i + 1)});
    trimmed_.Add(std::move(parts[i]));
  }
}

}  // namespace kurvo::outline
