#include "sweep/runs.h"

#include <algorithm>

namespace kurvo::outline {
namespace {

constexpr std::size_t kMostLooks = 16;  // at each strand

}  // namespace

Runs::Runs(const Scene& scene, const Array<Strand>& strands, const Array<Cut>& cuts,
           std::size_t operands)
    : scene_(scene), strands_(strands), cuts_(cuts), operands_(operands) {
  CollectLoops();
  left_.resize(Count() * operands_, 0);
  is_known_.resize(loops_.size(), false);
}

void Runs::CollectLoops() {
  loop_of_.reserve(strands_.size());
  std::size_t strand = 0, cut = 0;
  for (std::size_t i = 0; i < scene_.sources.size();) {
    const Source& first = scene_.sources[i];
    SourceLoop loop;
    loop.first_source = i;
    loop.first_strand = strand;
    loop.first_cut = cut;
    loop.operand = first.operand;
    while (i < scene_.sources.size() && scene_.sources[i].loop == first.loop &&
           scene_.sources[i].operand == first.operand)
      ++i;
    while (strand < strands_.size() && static_cast<std::size_t>(strands_[strand].source) < i) {
      ++strand;
      loop_of_.push_back(static_cast<int32_t>(loops_.size()));
    }
    while (cut < cuts_.size() && static_cast<std::size_t>(cuts_[cut].strand) < strand) ++cut;
    loop.sources = i - loop.first_source;
    loop.strands = strand - loop.first_strand;
    loop.cuts = cut - loop.first_cut;
    loops_.push_back(loop);
  }
}

bool Runs::FindWindings() {
  if (operands_ > kMostOperands) return false;
  SortStrands();
  for (std::size_t i = 0; i < loops_.size(); ++i)
    if (!is_known_[i] && !FindFrom(i)) return false;
  return IsConsistent();
}

// A loop and all that hangs together with it.
bool Runs::FindFrom(std::size_t loop) {
  const Place place = RoomiestOf(loop);
  const bool is_whole = !loops_[loop].IsCut();
  if (place.strand < 0 || !WindBeside(place, is_whole)) return false;
  is_known_[loop] = true;
  if (is_whole) return true;
  next_.push_back(place.run);
  while (!next_.empty()) {
    const std::size_t run = next_.back();
    next_.pop_back();
    if (!GoAround(run)) return false;
  }
  return true;
}

Runs::Place Runs::RoomiestOf(std::size_t number) const {
  const SourceLoop& loop = loops_[number];
  Place best;
  std::size_t cut = loop.first_cut;
  std::size_t run = loop.IsCut() ? loop.first_cut + loop.cuts - 1 : WholeRun(number);
  for (std::size_t i = loop.first_strand; i < loop.first_strand + loop.strands; ++i) {
    const auto strand = static_cast<int32_t>(i);
    const Course course(strands_[i]);
    const auto offer = [&](double from, double to) {
      if (strands_[i].is_flat || !(to - from > best.room)) return;
      best = {strand, course.sign * (0.5 * (from + to)), to - from, run};
    };
    double from = course.start;
    for (; cut < loop.first_cut + loop.cuts && cuts_[cut].strand == strand; ++cut) {
      offer(from, cuts_[cut].at);
      from = cuts_[cut].at;
      run = cut;
    }
    offer(from, course.end);
  }
  return best;
}

void Runs::SortStrands() {
  bands_.Build(strands_.size(), [this](std::size_t i, double& low, double& high) {
    low = strands_[i].y_low;
    high = strands_[i].y_high;
    return !strands_[i].is_flat;
  });
}

// What goes up has the inside of its loop to the left: it ends there. A loop that crosses nothing
// goes around one of its sides at most.
bool Runs::WindBeside(const Place& place, bool is_whole) {
  const Strand& at = strand(place.strand);
  const std::size_t loop = LoopOf(place.strand);
  const double side = at.At(place.height);
  int32_t* windings = Windings(place.run);
  const std::span<const int32_t> beside = bands_.At(place.height);
  looks_ += beside.size();
  if (looks_ > kMostLooks * strands_.size()) return false;
  int32_t own = 0;
  for (const int32_t i : beside) {
    const Strand& s = strand(i);
    if (!(s.y_low <= place.height && place.height < s.y_high) || &s == &at) continue;
    if (!(s.most_x < side || (s.least_x < side && s.At(place.height) < side))) continue;
    windings[s.operand] -= s.direction;
    if (LoopOf(i) == loop) own -= s.direction;
  }
  if (is_whole && own != 0 && own != at.direction) return false;
  if (at.direction < 0) ++windings[at.operand];
  return true;
}

// Goes from one run to all others of its loop, and begins the loops that it comes across.
bool Runs::GoAround(std::size_t run) {
  const SourceLoop& loop = loops_[LoopOf(cuts_[run].strand)];
  std::size_t at = run;
  do {
    const std::size_t next = loop.CutAfter(at);
    const Cut& cut = cuts_[next];
    int32_t after[kMostOperands];
    const int32_t* before = Windings(at);
    std::copy(before, before + operands_, after);
    after[OperandOf(cuts_[static_cast<std::size_t>(cut.other)].strand)] += cut.turn;
    const std::size_t other = LoopOf(cuts_[static_cast<std::size_t>(cut.other)].strand);
    if (!is_known_[other]) {
      is_known_[other] = true;
      const auto begun = static_cast<std::size_t>(cut.other);
      WindOther(cut, before, after, Windings(begun));
      next_.push_back(begun);
    }
    if (next == run) return std::equal(after, after + operands_, Windings(run));
    std::copy(after, after + operands_, Windings(next));
    at = next;
  } while (at != run);
  return true;
}

// What lies to the left of the other strand beyond a cut: what goes to the right has there what
// this one has to the right above it, what goes to the left what this one has to the left below.
void Runs::WindOther(const Cut& cut, const int32_t* before, const int32_t* after,
                     int32_t* other) const {
  std::copy(cut.turn > 0 ? after : before, (cut.turn > 0 ? after : before) + operands_, other);
  if (cut.turn > 0) --other[OperandOf(cut.strand)];
}

bool Runs::IsConsistent() const {
  for (const SourceLoop& loop : loops_) {
    for (std::size_t run = loop.first_cut; run < loop.first_cut + loop.cuts; ++run) {
      const std::size_t next = loop.CutAfter(run);
      const Cut& cut = cuts_[next];
      int32_t other[kMostOperands];
      WindOther(cut, &left_[run * operands_], &left_[next * operands_], other);
      if (!std::equal(other, other + operands_,
                      &left_[static_cast<std::size_t>(cut.other) * operands_]))
        return false;
    }
  }
  return true;
}

}  // namespace kurvo::outline
