#include "sweep/beams.h"

#include <algorithm>

namespace kurvo::outline {
namespace {

// Of tol. A beam takes what lies at most so far above its first height, not above the last one
// before: chains of close heights would drift.
constexpr double kBeam = 0.25;

}  // namespace

void Beams::Gather(const Scene& scene, const Events& events) {
  heights_.clear();
  const auto add = [this](double height) {
    heights_.push_back({height, static_cast<int32_t>(heights_.size())});
  };
  heights_.reserve(scene.vertices.size() + events.crossings.size() + 2 * events.together.size());
  for (const Vertex& vertex : scene.vertices) add(vertex.point.y);
  for (const Crossing& crossing : events.crossings) add(crossing.height);
  for (const Together& together : events.together) {
    add(together.low);
    add(together.high);
  }
  CountOf(heights_.size());
}

void Beams::MakeBeams(double tol) {
  std::sort(heights_.begin(), heights_.end(),
            [](const Height& a, const Height& b) { return a.height < b.height; });
  beams_.clear();
  beams_.reserve(heights_.size());
  beam_of_.resize(heights_.size());
  for (const Height& entry : heights_) {
    if (beams_.empty() || entry.height > beams_.back().low + kBeam * tol)
      beams_.push_back({entry.height, entry.height});
    else
      beams_.back().high = entry.height;
    beam_of_[static_cast<std::size_t>(entry.number)] = count() - 1;
  }
}

void Beams::Build(const Scene& scene, const Array<Strand>& strands, const Events& events) {
  Gather(scene, events);
  MakeBeams(scene.tol);
  first_crossing_ = scene.vertices.size();
  SortIntoRows(strands, events);
}

void Beams::SortIntoRows(const Array<Strand>& strands, const Events& events) {
  for (Rows* rows : {&starts_, &flats_, &crossings_, &touched_, &of_strand_, &shared_of_})
    rows->Clear();
  starts_.Reserve(strands.size());
  crossings_.Reserve(events.crossings.size());
  touched_.Reserve(strands.size() + 2 * events.crossings.size() + 4 * events.together.size());
  shared_of_.Reserve(2 * events.together.size());
  shared_.reserve(2 * events.together.size());
  tops_.clear();
  tops_.reserve(strands.size());
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
    const int32_t beam = beam_of_[first_crossing_ + i];
    crossings_.Add(beam, static_cast<int32_t>(i));
    touched_.Add(beam, crossing.a);
    touched_.Add(beam, crossing.b);
  }
  shared_.clear();
  const int32_t* ends = beam_of_.data() + first_crossing_ + events.crossings.size();
  for (const Together& t : events.together) {
    const int32_t from = *ends++, to = *ends++;
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
  of_strand_.Reserve(touched_.size());
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
