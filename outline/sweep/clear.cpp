#include "sweep/clear.h"

#include <algorithm>

#include "sweep/gather.h"
#include "sweep/loops.h"
#include "sweep/nest.h"
#include "sweep/on_strand.h"
#include "sweep/runs.h"
#include "sweep/slivers.h"

namespace kurvo::outline {
namespace {

class Clearing {
 public:
  Clearing(const Scene& scene, const Array<Strand>& strands, const Array<Cut>& cuts,
           const Runs& runs)
      : scene_(scene), strands_(strands), cuts_(cuts), runs_(runs) {}

  // False where a loop that stays whole may be a sliver, or a hole lies in nothing.
  bool Run(const Array<int32_t>& rules, const FillRule& fill, ResultLoops& result) {
    Keep(rules, fill);
    sides_.reserve(strands_.size() + cuts_.size());
    AddEdges();
    if (!FindWholeLoops(result)) return false;
    ForEachLoop(arrangement_, [&](std::span<const int32_t> edges) {
      for (const int32_t edge : edges)
        sides_[static_cast<std::size_t>(edge)].loop = CountOf(result.loops.size());
      edge_loops_.push_back({edges_.size(), edges.size()});
      edges_.insert(edges_.end(), edges.begin(), edges.end());
      result.loops.push_back({});
    });
    return Nest(strands_, sides_, result.loops);
  }

  void Take(double closed, KurvoReport& report, ResultLoops& result) {
    result.parts.reserve(edges_.size() + SourcesOfWholeLoops());
    for (std::size_t i = 0; i < whole_.size(); ++i) {
      ResultLoop& made = result.loops[i];
      made.first_part = result.parts.size();
      const SourceLoop& loop = runs_.loops()[whole_[i]];
      const bool is_turned = kept_[runs_.WholeRun(whole_[i])] < 0;
      AppendWhole(scene_, SourcesOf(loop), is_turned, result.parts);
      made.parts = result.parts.size() - made.first_part;
    }
    PartTaker taker(scene_, arrangement_, closed, report, result);
    for (std::size_t i = 0; i < edge_loops_.size(); ++i) {
      const EdgeLoop& loop = edge_loops_[i];
      taker.Take({edges_.data() + loop.first_edge, loop.edges}, result.loops[whole_.size() + i]);
    }
  }

 private:
  // Edges of a run in order along the source; none where it is not kept.
  struct RunEdges {
    int32_t first = -1, last = -1;
  };
  struct EdgeLoop {
    std::size_t first_edge, edges;
  };

  std::size_t SourcesOfWholeLoops() const {
    std::size_t count = 0;
    for (const std::size_t i : whole_) count += runs_.loops()[i].sources;
    return count;
  }

  std::span<const Source> SourcesOf(const SourceLoop& loop) const {
    return {&scene_.sources[loop.first_source], loop.sources};
  }

  // Of a run: 1 where the inside lies to the left, -1 to the right, 0 on both sides or none.
  void Keep(const Array<int32_t>& rules, const FillRule& fill) {
    kept_.resize(runs_.Count(), 0);
    const auto keep = [&](std::size_t run, int32_t operand) {
      int32_t windings[Runs::kMostOperands];
      const std::span<const int32_t> left = runs_.LeftOf(run);
      std::copy(left.begin(), left.end(), windings);
      const bool inside_left = fill.IsInside(CoveredBy(windings, rules));
      --windings[operand];
      const bool inside_right = fill.IsInside(CoveredBy(windings, rules));
      kept_[run] = inside_left - inside_right;
    };
    for (std::size_t i = 0; i < runs_.loops().size(); ++i) {
      const SourceLoop& loop = runs_.loops()[i];
      if (!loop.IsCut()) keep(runs_.WholeRun(i), loop.operand);
      for (std::size_t k = 0; k < loop.cuts; ++k) keep(loop.first_cut + k, loop.operand);
    }
  }

  static Covered CoveredBy(const int32_t* windings, const Array<int32_t>& rules) {
    Covered covered;
    covered.first = FillRule::Fills(rules[0], windings[0]);
    for (std::size_t i = 1; i < rules.size(); ++i)
      covered.others += FillRule::Fills(rules[i], windings[i]);
    return covered;
  }

  // Corners of crossings come first, each with the number of the first of its cuts among these.
  void AddEdges() {
    if (!cuts_.empty()) Reserve();
    corner_of_.resize(cuts_.size(), -1);
    for (std::size_t i = 0; i < cuts_.size(); ++i) {
      const auto other = static_cast<std::size_t>(cuts_[i].other);
      if (other < i) {
        corner_of_[i] = corner_of_[other];
        continue;
      }
      corner_of_[i] = CountOf(arrangement_.corners.size());
      arrangement_.corners.push_back({cuts_[i].point, -1});
    }
    const std::size_t crossings = arrangement_.corners.size();
    edges_of_.resize(cuts_.size());
    for (const SourceLoop& loop : runs_.loops())
      for (std::size_t k = 0; k < loop.cuts; ++k) AddRun(loop, loop.first_cut + k);
    for (std::size_t i = 0; i < cuts_.size(); ++i)
      if (static_cast<std::size_t>(cuts_[i].other) > i) AddRaysOfCrossing(i);
    for (std::size_t i = 0; i < passed_.size(); ++i) {
      arrangement_.first_ray.push_back(arrangement_.rays.size());
      AddRay(passed_[i], arrangement_.edge(passed_[i]).to != CountOf(crossings + i));
      AddRay(passed_[i] + 1, arrangement_.edge(passed_[i] + 1).to != CountOf(crossings + i));
    }
    arrangement_.first_ray.push_back(arrangement_.rays.size());
  }

  // Of strands as many as may be: each ends one edge, and each cut another.
  void Reserve() {
    const std::size_t edges = strands_.size() + cuts_.size(),
                      corners = strands_.size() + cuts_.size() / 2;
    arrangement_.corners.reserve(corners);
    arrangement_.first_ray.reserve(corners + 1);
    arrangement_.edges.reserve(edges);
    arrangement_.rays.reserve(2 * edges);
    edges_.reserve(edges);
    passed_.reserve(strands_.size());
  }

  void AddRay(int32_t edge, bool leaves) {
    arrangement_.rays.push_back(2 * edge + (leaves ? 1 : 0));
  }

  // A stop of a run: on the course of a strand, and the parameter of its source there.
  struct Stop {
    double at, u;
    int32_t corner;
  };

  Stop StopAt(std::size_t cut) const {
    const Strand& s = strands_[static_cast<std::size_t>(cuts_[cut].strand)];
    return {cuts_[cut].at, SourceParameter(s, scene_.tol, -1, cuts_[cut].point), corner_of_[cut]};
  }

  void AddRun(const SourceLoop& loop, std::size_t run) {
    const std::size_t next = loop.CutAfter(run);
    if (kept_[run] == 0) return;
    edges_of_[run].first = CountOf(arrangement_.edges.size());
    auto number = static_cast<std::size_t>(cuts_[run].strand);
    Stop from = StopAt(run);
    // A run may end on the strand where it began, ahead or once around the loop.
    for (bool is_first = true;; is_first = false) {
      const Strand& s = strands_[number];
      const bool is_last =
          static_cast<std::size_t>(cuts_[next].strand) == number && (!is_first || next > run);
      if (is_last) {
        AddEdge(number, from, StopAt(next), kept_[run]);
        break;
      }
      const bool rises = s.direction > 0;
      const int32_t vertex = rises ? s.high : s.low;
      passed_.push_back(CountOf(arrangement_.edges.size()));
      const int32_t corner = CountOf(arrangement_.corners.size());
      arrangement_.corners.push_back({scene_.vertex(vertex).point, vertex});
      AddEdge(number, from, {Course(s).end, rises ? s.u_high : s.u_low, corner}, kept_[run]);
      if (++number == loop.first_strand + loop.strands) number = loop.first_strand;
      const Strand& t = strands_[number];
      from = {Course(t).start, t.direction > 0 ? t.u_low : t.u_high, corner};
    }
    edges_of_[run].last = CountOf(arrangement_.edges.size()) - 1;
  }

  void AddEdge(std::size_t number, const Stop& from, const Stop& to, int32_t kept) {
    const Strand& s = strands_[number];
    const Stop &a = kept > 0 ? from : to, &b = kept > 0 ? to : from;
    arrangement_.edges.push_back({a.corner, b.corner, s.source, a.u, b.u, -1, s.is_flat});
    AddSide(number, from.at, to.at, kept);
  }

  void AddSide(std::size_t number, double from, double to, int32_t kept) {
    const Strand& s = strands_[number];
    const double sign = Course(s).sign;
    sides_.push_back({static_cast<int32_t>(number), -1, s.is_flat ? 0 : kept * s.direction,
                      std::min(sign * from, sign * to), std::max(sign * from, sign * to)});
  }

  // Counter-clockwise, seen along the first strand: what the other one is to its right, what it is
  // itself ahead, and so on.
  void AddRaysOfCrossing(std::size_t cut) {
    arrangement_.first_ray.push_back(arrangement_.rays.size());
    const auto other = static_cast<std::size_t>(cuts_[cut].other);
    const bool to_right = cuts_[cut].turn > 0;
    const auto add = [this](std::size_t at, bool is_ahead) {
      const std::size_t run = is_ahead ? at : RunBefore(at);
      const RunEdges& edges = edges_of_[run];
      if (edges.first < 0) return;
      AddRay(is_ahead ? edges.first : edges.last, is_ahead == (kept_[run] > 0));
    };
    add(other, to_right);
    add(cut, true);
    add(other, !to_right);
    add(cut, false);
  }

  std::size_t RunBefore(std::size_t cut) const {
    const SourceLoop& loop = runs_.loops()[runs_.LoopOf(cuts_[cut].strand)];
    return cut > loop.first_cut ? cut - 1 : loop.first_cut + loop.cuts - 1;
  }

  bool FindWholeLoops(ResultLoops& result) {
    for (std::size_t i = 0; i < runs_.loops().size(); ++i) {
      const SourceLoop& loop = runs_.loops()[i];
      const std::size_t run = runs_.WholeRun(i);
      if (loop.IsCut() || kept_[run] == 0) continue;
      if (MayBeSliver(scene_, SourcesOf(loop))) return false;
      for (std::size_t k = loop.first_strand; k < loop.first_strand + loop.strands; ++k) {
        const Course course(strands_[k]);
        AddSide(k, course.start, course.end, kept_[run]);
        sides_.back().loop = CountOf(result.loops.size());
      }
      whole_.push_back(i);
      result.loops.push_back({});
    }
    return true;
  }

  const Scene& scene_;
  const Array<Strand>& strands_;
  const Array<Cut>& cuts_;
  const Runs& runs_;
  Array<int32_t> kept_;       // by run
  Array<int32_t> corner_of_;  // by cut
  Array<RunEdges> edges_of_;  // by run
  Array<int32_t> passed_;     // edges that end at vertices where the next edge begins
  Arrangement arrangement_;
  Array<NestSide> sides_;       // of all edges, then of whole loops
  Array<std::size_t> whole_;    // loops that stay as they are, which come first in the result,
  Array<EdgeLoop> edge_loops_;  // and those made of edges
  Array<int32_t> edges_;
};

}  // namespace

bool FindClearLoops(const Scene& scene, const Array<Strand>& strands, const Events& events,
                    const Array<int32_t>& rules, const FillRule& fill, double closed,
                    KurvoReport& report, ResultLoops& result) {
  Array<Cut> cuts;
  if (!FindCuts(scene, strands, events, cuts)) return false;
  Runs runs(scene, strands, cuts, rules.size());
  if (!runs.FindWindings()) return false;
  ResultLoops found;
  Clearing clearing(scene, strands, cuts, runs);
  if (!clearing.Run(rules, fill, found)) return false;
  clearing.Take(closed, report, found);
  result = std::move(found);
  return true;
}

}  // namespace kurvo::outline
