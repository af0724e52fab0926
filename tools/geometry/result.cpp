#include "geometry/result.h"

#include "geometry/chain.h"

namespace kurvo::tools {

Result ResultOf(const Drawing& drawing) {
  Result result = {drawing, {}};
  for (std::size_t i = 0; i < drawing.shapes.size(); ++i) {
    for (const Outline& outline : drawing.shapes[i].outlines)
      result.chains.push_back({outline.curves, outline.closed, i});
  }
  return result;
}

Result OneByOne(const Drawing& source, std::span<const OwnedCurve> curves) {
  Result result = {source, {}, true};
  for (const OwnedCurve& curve : curves) result.chains.push_back({{&curve, 1}});
  return result;
}

void AddRuns(Library& library, std::span<const OwnedCurve> curves, std::size_t element,
             std::vector<ResultChain>& chains) {
  for (std::size_t begin = 0, end; begin < curves.size(); begin = end) {
    end = begin + 1;
    while (end < curves.size() &&
           AreSame(library, EndOf(library, curves[end - 1]), StartOf(library, curves[end])))
      ++end;
    const bool closed =
        AreSame(library, EndOf(library, curves[end - 1]), StartOf(library, curves[begin]));
    chains.push_back({curves.subspan(begin, end - begin), closed, element});
  }
}

Bounds BoundsOf(Library& library, const Result& result) {
  Bounds box;
  for (const ResultChain& chain : result.chains) {
    for (const OwnedCurve& curve : chain.curves) box.Add(BoundsOf(library, curve));
  }
  return box;
}

}  // namespace kurvo::tools
