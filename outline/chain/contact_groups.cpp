#include "chain/contact_groups.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

namespace kurvo::outline {
namespace {

// Along the chain: two pieces may meet in a joint and once more.
bool Joined(const Track& track, const Cover& x, const Cover& y, double gap) {
  const auto apart = [&](Position a, Position b) {
    return Length(track.PointAt(a) - track.PointAt(b));
  };
  if (x.piece == y.piece) {
    return (x.low <= y.high && y.low <= x.high) ||
           apart({x.piece, x.high}, {y.piece, y.low}) <= gap ||
           apart({y.piece, y.high}, {x.piece, x.low}) <= gap;
  }
  const auto meet = [&](const Cover& first, const Cover& next) {
    return track.After(first.piece) == next.piece &&
           apart({first.piece, first.high}, {first.piece, 1}) +
                   apart({next.piece, 0}, {next.piece, next.low}) <=
               gap;
  };
  return meet(x, y) || meet(y, x);
}

using Key = std::pair<int32_t, int32_t>;
Key KeyOf(const Contact& c) { return {c.a_from.piece, c.b_from.piece}; }

// Sets of numbers, each known by its least (Galler and Fischer, 1964, with halved paths).
class Sets {
 public:
  explicit Sets(std::size_t n) : parent_(n) { std::iota(parent_.begin(), parent_.end(), 0); }
  std::size_t Find(std::size_t i) {
    while (parent_[i] != i) i = parent_[i] = parent_[parent_[i]];
    return i;
  }
  void Join(std::size_t i, std::size_t k) {
    i = Find(i);
    k = Find(k);
    parent_[std::max(i, k)] = std::min(i, k);
  }

 private:
  Array<std::size_t> parent_;
};

}  // namespace

Array<ContactGroup> GroupContacts(const Track& a, const Track& b, double gap,
                                  Array<Contact>& contacts) {
  std::sort(contacts.begin(), contacts.end(), [](const Contact& x, const Contact& y) {
    return std::tuple(KeyOf(x), x.a_from.u, x.b_from.u) <
           std::tuple(KeyOf(y), y.a_from.u, y.b_from.u);
  });
  Sets sets(contacts.size());
  const auto before_key = [](const Contact& c, const Key& key) { return KeyOf(c) < key; };
  for (std::size_t i = 0; i < contacts.size(); ++i) {
    const auto [piece_a, piece_b] = KeyOf(contacts[i]);
    for (const int32_t next_a : {piece_a, a.After(piece_a)}) {
      if (next_a < 0) continue;
      for (const int32_t next_b : {piece_b, b.After(piece_b), b.Before(piece_b)}) {
        if (next_b < 0) continue;
        const Key key = {next_a, next_b};
        auto other = std::lower_bound(contacts.begin(), contacts.end(), key, before_key);
        for (; other != contacts.end() && KeyOf(*other) == key; ++other) {
          const auto k = static_cast<std::size_t>(other - contacts.begin());
          if (k != i && sets.Find(k) != sets.Find(i) &&
              Joined(a, OfA(contacts[i]), OfA(*other), gap) &&
              Joined(b, OfB(contacts[i]), OfB(*other), gap))
            sets.Join(i, k);
        }
      }
    }
  }

  // Groups in the order of their first contacts.
  Array<std::pair<std::size_t, std::size_t>> order(contacts.size());
  for (std::size_t i = 0; i < contacts.size(); ++i) order[i] = {sets.Find(i), i};
  std::sort(order.begin(), order.end());
  Array<Contact> sorted;
  sorted.reserve(contacts.size());
  Array<ContactGroup> groups;
  for (std::size_t i = 0; i < order.size(); ++i) {
    if (i == 0 || order[i].first != order[i - 1].first) groups.push_back({i, 0});
    ++groups.back().count;
    sorted.push_back(contacts[order[i].second]);
  }
  contacts.swap(sorted);
  return groups;
}

const Contact& ClosestOf(const Contact* contacts, std::size_t count, const Nearness& nearness) {
  const Contact* best = contacts;
  for (const Contact* c = contacts + 1; c < contacts + count; ++c) {
    const bool as_close = c->distance <= nearness.exact && best->distance <= nearness.exact;
    if (as_close ? c->at_vertex && !best->at_vertex : c->distance < best->distance) best = c;
  }
  return *best;
}

}  // namespace kurvo::outline
