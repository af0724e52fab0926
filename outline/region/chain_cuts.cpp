#include "region/chain_cuts.h"

#include <algorithm>

#include "chain/shared_stretch.h"
#include "pair/box_pairs.h"
#include "strand/place_order.h"

namespace kurvo::outline {
namespace {

// Boxes in an order that keeps neighbours together.
struct Ordered {
  explicit Ordered(const Track& track) {
    const Array<Bounds> given = BoxesOf(track.pieces());
    numbers = InPlaceOrder(given);
    boxes.reserve(given.size());
    for (const int32_t i : numbers) boxes.push_back(given[static_cast<std::size_t>(i)]);
  }

  Array<int32_t> numbers;
  Array<Bounds> boxes;
};

Array<Contact> FindContacts(const Track& chains, const Track& loops, const Nearness& nearness,
                            Progress& progress, SearchLimit& limit) {
  constexpr int64_t kBetweenQuestions = 256;
  constexpr double kShare = 0.6;  // of all that the call does
  Array<Contact> contacts;
  Work work;
  const Ordered of_chains(chains), of_loops(loops);
  int64_t pairs = 0;
  const auto look = [&](int32_t i, int32_t k) {
    work.Grant();
    AddContacts(chains, of_chains.numbers[static_cast<std::size_t>(i)], loops,
                of_loops.numbers[static_cast<std::size_t>(k)], nearness, work, contacts);
    if (++pairs % kBetweenQuestions == 0) progress.Tell(kShare * i / std::max(1, chains.count()));
  };
  PairTree(of_chains.boxes).ForEachPair(PairTree(of_loops.boxes), nearness.tol, look);
  limit.is_used_up = work.IsUsedUp();
  return contacts;
}

class Collector {
 public:
  Collector(const Track& track, double gap) : track_(track), gap_(gap) {}

  void AddJoints(int32_t chain, double tol, Array<Position>& cuts) const {
    for (int32_t i = track_.FirstOf(chain); i < track_.EndOf(chain); ++i) {
      const int32_t next = track_.After(i);
      if (next >= 0 && Length(track_.PointAt({next, 0}) - track_.PointAt({i, 1})) > tol)
        cuts.push_back({next, 0});
    }
  }

  // Cuts that are one place become one, at a vertex if there is one; of an open chain those at its
  // ends are none.
  void Order(int32_t chain, Array<Position>& cuts) const {
    if (cuts.empty()) return;
    for (Position& cut : cuts) cut = track_.OnSide(cut, true);
    std::sort(cuts.begin(), cuts.end());
    std::size_t kept = 0;
    Position reached = cuts[0];
    for (std::size_t i = 1; i < cuts.size(); ++i) {
      if (track_.WayBetween(reached, cuts[i], gap_) > gap_)
        cuts[++kept] = cuts[i];
      else if (!IsVertex(cuts[kept]) && IsVertex(cuts[i]))
        cuts[kept] = cuts[i];
      else
        continue;
      reached = cuts[kept];
    }
    cuts.resize(kept + 1);
    const int32_t first = track_.FirstOf(chain), last = track_.EndOf(chain) - 1;
    if (track_.IsClosed(first)) {
      if (kept > 0 && track_.WayBetween(cuts.back(), cuts.front(), gap_) <= gap_)
        cuts.erase(IsVertex(cuts.front()) ? cuts.end() - 1 : cuts.begin());
      return;
    }
    std::erase_if(cuts, [&](Position cut) {
      return track_.WayBetween({first, 0}, cut, gap_) <= gap_ ||
             track_.WayBetween(cut, {last, 1}, gap_) <= gap_;
    });
  }

 private:
  bool IsVertex(Position at) const { return track_.IsVertex(at); }

  const Track& track_;
  const double gap_;
};

}  // namespace

Array<ChainCuts> CutsOf(const Track& chains, int32_t count, const Track& loops,
                        const Nearness& nearness, Progress& progress, SearchLimit& limit) {
  const double gap = kJoined * nearness.tol;
  Array<Contact> contacts = FindContacts(chains, loops, nearness, progress, limit);
  Array<ChainCuts> all(static_cast<std::size_t>(count));
  for (const ContactGroup& group : GroupContacts(chains, loops, gap, contacts)) {
    const Contact* const first = contacts.data() + group.first;
    ChainCuts& cuts = all[static_cast<std::size_t>(chains.ChainOf(first->a_from.piece))];
    const Extent extent = ExtentOf(chains, first, group.count, gap);
    if (const auto stretch = SharedStretch(chains, loops, first, group.count, extent, nearness)) {
      cuts.at.push_back(stretch->a_from);
      cuts.at.push_back(stretch->a_to);
      cuts.alongside.push_back({stretch->a_from, stretch->a_to});
    } else {
      cuts.at.push_back(ClosestOf(first, group.count, nearness).a);
    }
  }
  const Collector collector(chains, gap);
  for (int32_t i = 0; i < count; ++i) {
    Array<Position>& cuts = all[static_cast<std::size_t>(i)].at;
    collector.AddJoints(i, nearness.tol, cuts);
    collector.Order(i, cuts);
  }
  return all;
}

}  // namespace kurvo::outline
