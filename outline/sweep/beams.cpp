#include "sweep/beams.h"

#include <algorithm>

namespace kurvo::outline {
namespace {

// Of tol. A beam takes what lies at most so far above its first height, not above the last one
// before: chains of close heights would drift.
constexpr double kBeam = 0.25;

}  // namespace

int32_t Beams::BeamAt(double height) const {
  const auto beam = std::partition_point(beams_.begin(), beams_.end(),
                                         [height](const Beam& b) { return b.high < height; });
  return static_cast<int32_t>(std::min(beam, beams_.end() - 1) - beams_.begin());
}

void Beams::Gather(const Array<Strand>& strands, const Events& events) {
  heights_.clear();
  for (const Strand& strand : strands) {
    heights_.push_back(strand.y_low);
    heights_.push_back(strand.y_high);
  }
  for (const Crossing& crossing : events.crossings) heights_.push_back(crossing.height);
  for (const Together& together : events.together) {
    heights_.push_back(together.low);
    heights_.push_back(together.high);
  }
  std::sort(heights_.begin(), heights_.end());
}

void Beams::Build(const Scene& scene, const Array<Strand>& strands, const Events& events) {
  Gather(strands, events);
  beams_.clear();
  for (const double height : heights_) {
    if (beams_.empty() || height > beams_.back().low + kBeam * scene.tol)
      beams_.push_back({height, height});
    else
      beams_.back().high = height;
  }
  of_vertex_.clear();
  for (const Vertex& vertex : scene.vertices)
    of_vertex_.push_back(beams_.empty() ? 0 : BeamAt(vertex.point.y));
  SortIntoRows(strands, events);
}

void Beams::SortIntoRows(const Array<Strand>& strands, const Events& events) {
  for (Rows* rows : {&starts_, &flats_, &crossings_, &touched_, &of_strand_, &shared_of_})
    rows->Clear();
  tops_.clear();
  for (std::size_t i = 0; i < strands.size(); ++i) {
    const auto number = static_cast<int32_t>(i);
    const int32_t bottom = OfVertex(strands[i].low), top = OfVertex(strands[i].high);
    tops_.push_back(top);
    if (bottom == top) {
      flats_.Add(top, number);
    } else {
      starts_.Add(bottom, number);
      touched_.Add(top, number);
    }
  }
  for (std::size_t i = 0; i < events.crossings.size(); ++i) {
    const Crossing& crossing = events.crossings[i];
    const int32_t beam = BeamAt(crossing.height);
    crossings_.Add(beam, static_cast<int32_t>(i));
    touched_.Add(beam, crossing.a);
    touched_.Add(beam, crossing.b);
  }
  shared_.clear();
  for (const Together& t : events.together) {
    const int32_t from = BeamAt(t.low), to = BeamAt(t.high);
    for (const auto& [own, other] : {std::pair(t.a, t.b), std::pair(t.b, t.a)}) {
      touched_.Add(from, own);
      touched_.Add(to, own);
      shared_of_.Add(own, CountOf(shared_.size()));
      shared_.push_back({other, from, to});
    }
  }
  const auto rows = beams_.size();
  starts_.Sort(rows);
  flats_.Sort(rows);
  crossings_.Sort(rows);
  touched_.Sort(rows);
  shared_of_.Sort(strands.size());
  for (int32_t k = 0; k < count(); ++k)
    for (const int32_t strand : touched_[k]) of_strand_.Add(strand, k);
  of_strand_.Sort(strands.size());
  asked_.assign(strands.size(), 0);
}

int32_t Beams::NextOf(int32_t strand, int32_t k) {
  const std::span<const int32_t> beams = of_strand_[strand];
  int32_t& asked = asked_[static_cast<std::size_t>(strand)];
  const auto all = static_cast<int32_t>(beams.size());
  while (asked < all && beams[static_cast<std::size_t>(asked)] <= k) ++asked;
  if (asked < all) return beams[static_cast<std::size_t>(asked)];
  return tops_[static_cast<std::size_t>(strand)];
}

bool Beams::AreTogether(int32_t a, int32_t b, int32_t k) const {
  for (const int32_t i : shared_of_[a]) {
    const Shared& shared = shared_[static_cast<std::size_t>(i)];
    if (shared.other == b && shared.from <= k && k < shared.to) return true;
  }
  return false;
}

}  // namespace kurvo::outline
