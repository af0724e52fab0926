// Loops from cut to cut, and what goes around there.
#pragma once

#include <span>

#include "sweep/bands.h"
#include "sweep/cuts.h"

namespace kurvo::outline {

// What of a scene belongs to one loop.
struct SourceLoop {
  std::size_t first_source = 0, sources = 0;
  std::size_t first_strand = 0, strands = 0;
  std::size_t first_cut = 0, cuts = 0;
  int32_t operand = 0;

  bool IsCut() const { return cuts > 0; }
  // Modulo the number of cuts, from the first one on.
  std::size_t CutAfter(std::size_t cut) const { return first_cut + (cut - first_cut + 1) % cuts; }
};

// A run begins at a cut, whose number is its own, and goes on along the loop to the next one. Loops
// without cuts are runs whose numbers follow.
class Runs {
 public:
  static constexpr std::size_t kMostOperands = 8;

  Runs(const Scene& scene, const Array<Strand>& strands, const Array<Cut>& cuts,
       std::size_t operands);

  // Finds how often each operand goes around what lies to the left of each run: at one place from
  // all strands to the left of it, and from there on at each cut one more or less. False where that
  // contradicts itself, as a crossing that was missed makes it, and where there are too many parts
  // that do not hang together. Cost: O(n), and a look at each strand as high as the place.
  bool FindWindings();

  const Array<SourceLoop>& loops() const { return loops_; }
  std::size_t Count() const { return cuts_.size() + loops_.size(); }
  std::size_t WholeRun(std::size_t loop) const { return cuts_.size() + loop; }
  // By operand.
  std::span<const int32_t> LeftOf(std::size_t run) const {
    return {&left_[run * operands_], operands_};
  }
  std::size_t LoopOf(int32_t strand) const {
    return static_cast<std::size_t>(loop_of_[static_cast<std::size_t>(strand)]);
  }

 private:
  // The place in the middle of the longest stretch of a loop that nothing is near.
  struct Place {
    int32_t strand = -1;
    double height = 0, room = 0;
    std::size_t run = 0;
  };

  const Strand& strand(int32_t i) const { return strands_[static_cast<std::size_t>(i)]; }
  int32_t OperandOf(int32_t i) const { return strand(i).operand; }
  int32_t* Windings(std::size_t run) { return &left_[run * operands_]; }
  void CollectLoops();
  bool FindFrom(std::size_t loop);
  Place RoomiestOf(std::size_t loop) const;
  void SortStrands();
  bool WindBeside(const Place& place, bool is_whole);
  bool GoAround(std::size_t run);
  void WindOther(const Cut& cut, const int32_t* before, const int32_t* after, int32_t* other) const;
  bool IsConsistent() const;

  const Scene& scene_;
  const Array<Strand>& strands_;
  const Array<Cut>& cuts_;
  const std::size_t operands_;
  Array<SourceLoop> loops_;
  Bands bands_;              // of strands
  std::size_t looks_ = 0;    // at these
  Array<int32_t> loop_of_;   // by strand
  Array<int32_t> left_;      // by run and operand
  Array<char> is_known_;     // by loop
  Array<std::size_t> next_;  // runs of loops that have a winding and were not gone around
};

}  // namespace kurvo::outline
