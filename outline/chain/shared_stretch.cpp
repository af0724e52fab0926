#include "chain/shared_stretch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kurvo::outline {
namespace {

constexpr double kExactShare = 0.125;
constexpr double kRoughShare = 1.5;      // of the root of what is exact in the tolerance
constexpr double kLeastWhole = 0x1p-10;  // of the size: length of a span that is followed whole
constexpr double kParting = 0x1p-18;  // of the size: how far from an end rounding hides a parting
constexpr double kFar = std::numeric_limits<double>::infinity();

// Indices into a group, in the order of the first chain; a group that passes the start of a closed
// chain begins where nothing comes before it.
Array<std::size_t> InOrder(const Track& a, const Contact* contacts, std::size_t count, double gap) {
  Array<std::size_t> order(count);
  for (std::size_t i = 0; i < count; ++i) order[i] = i;
  std::sort(order.begin(), order.end(), [contacts](std::size_t x, std::size_t y) {
    return contacts[x].a_from < contacts[y].a_from;
  });
  Position reached = contacts[order[0]].a_to;
  if (!a.IsClosed(reached.piece)) return order;
  for (std::size_t i = 1; i < count; ++i) {
    const Contact& next = contacts[order[i]];
    if (reached < next.a_from && a.WayBetween(reached, next.a_from, gap) > gap) {
      std::rotate(order.begin(), order.begin() + static_cast<std::ptrdiff_t>(i), order.end());
      break;
    }
    if (reached < next.a_to) reached = next.a_to;
  }
  return order;
}

double ChordsBetween(const Track& track, Position from, Position to) {
  const double chords = track.ChordsTo(to) - track.ChordsTo(from);
  return to < from ? chords + track.Chords(from.piece) : chords;
}

// The vertex of a track next to a position, no farther along it than `reach`; whether there is one.
bool VertexNear(const Track& track, Position at, double reach, Position& vertex) {
  double least = reach;
  bool found = false;
  const auto follow = [&](int32_t piece, double end, Position from, double way) {
    for (; piece >= 0 && way <= least; piece = end > 0 ? track.After(piece) : track.Before(piece)) {
      way += Length(track.PointAt({piece, end}) - track.PointAt(from));
      from = {piece, end};
      if (!(way <= least)) return;
      if (!track.IsVertex(from)) continue;
      found = true;
      least = way;
      vertex = from;
      return;
    }
  };
  follow(at.piece, 0, at, 0);
  follow(at.piece, 1, at, 0);
  return found;
}

// Moves an end of a stretch onto a vertex of either chain, the nearer one.
void MoveOntoVertex(const Track& a, const Track& b, double reach, Position& on_a, Position& on_b) {
  Position vertex_a, vertex_b;
  const bool has_a = VertexNear(a, on_a, reach, vertex_a);
  const bool has_b = VertexNear(b, on_b, reach, vertex_b);
  if (!has_a && !has_b) return;
  const double to_a = has_a ? Length(a.PointAt(vertex_a) - a.PointAt(on_a)) : kFar;
  const double to_b = has_b ? Length(b.PointAt(vertex_b) - b.PointAt(on_b)) : kFar;
  if (to_a <= to_b) {
    on_a = vertex_a;
    on_b = b.FootNear(on_b, a.PointAt(on_a));
  } else {
    on_b = vertex_b;
    on_a = a.FootNear(on_a, b.PointAt(on_b));
  }
  // Both end there.
  constexpr double kSame = 0x1p-40;
  if (has_a && Length(a.PointAt(vertex_a) - a.PointAt(on_a)) <= kSame) on_a = vertex_a;
  if (has_b && Length(b.PointAt(vertex_b) - b.PointAt(on_b)) <= kSame) on_b = vertex_b;
}

// A part of a chain that is near the other one everywhere but for gaps, forwards.
struct Run {
  Position from, to;
};

// Whether a run holds all of a span that is not short.
bool HoldsSpan(const Track& track, const Run& run) {
  bool from_start = false;
  double chords = 0;
  Position at = run.from;
  for (int32_t left = track.count(); left >= 0 && at.piece >= 0; --left) {
    const bool is_last = at.piece == run.to.piece && at.u <= run.to.u;
    if (track.IsVertex(at) && at.u == 0) {
      from_start = true;
      chords = 0;
    }
    const Position end = {at.piece, 1};
    chords += track.ChordsTo(end) - track.ChordsTo(at);
    if (is_last && run.to.u < 1) return false;
    if (track.IsVertex(end)) {
      if (from_start && chords > kLeastWhole) return true;
      from_start = false;
    }
    if (is_last) return false;
    at = {track.After(at.piece), 0};
  }
  return false;
}

// Whether what the contacts cover of a chain does. A chain that only comes to the place and goes
// again, in whichever direction, has two runs there, or one that is short, also where it starts.
bool HoldSpan(const Track& track, Cover (*cover_of)(const Contact&), const Contact* contacts,
              std::size_t count, double gap) {
  double chords = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const Cover cover = cover_of(contacts[i]);
    chords += track.ChordsTo({cover.piece, cover.high}) - track.ChordsTo({cover.piece, cover.low});
  }
  if (!(chords > kLeastWhole)) return false;
  Array<Run> runs;
  for (std::size_t i = 0; i < count; ++i) {
    const Cover cover = cover_of(contacts[i]);
    runs.push_back({{cover.piece, cover.low}, {cover.piece, cover.high}});
  }
  std::sort(runs.begin(), runs.end(), [](const Run& x, const Run& y) { return x.from < y.from; });
  const auto goes_on = [&](const Run& run, const Run& next) {
    return !(run.to < next.from) || track.WayBetween(run.to, next.from, gap) <= gap;
  };
  std::size_t kept = 0;
  for (std::size_t i = 1; i < count; ++i) {
    if (!goes_on(runs[kept], runs[i]))
      runs[++kept] = runs[i];
    else if (runs[kept].to < runs[i].to)
      runs[kept].to = runs[i].to;
  }
  runs.resize(kept + 1);
  Run& last = runs.back();
  if (kept > 0 && track.WayBetween(last.to, runs[0].from, gap) <= gap) last.to = runs[0].to;
  return std::any_of(runs.begin(), runs.end(),
                     [&](const Run& run) { return HoldsSpan(track, run); });
}

}  // namespace

Extent ExtentOf(const Track& a, const Contact* contacts, std::size_t count, double gap) {
  const Contact& only = contacts[0];
  Extent extent = {only.a_from, only.a_to, only.b_from, only.b_to, 0, false};
  if (count > 1) {
    const Array<std::size_t> order = InOrder(a, contacts, count, gap);
    const Contact& first = contacts[order[0]];
    const Contact* last = &contacts[order[count - 1]];
    for (const std::size_t i : order)
      if (contacts[i].a_to.piece == last->a_to.piece && last->a_to.u < contacts[i].a_to.u)
        last = &contacts[i];
    extent = {first.a_from, last->a_to, first.b_from, last->b_to, 0, false};
  }
  extent.length = ChordsBetween(a, extent.a_from, extent.a_to);
  const Contact* longest = contacts;
  const auto length = [](const Contact& c) { return std::fabs(c.b_to.u - c.b_from.u); };
  for (const Contact* c = contacts + 1; c < contacts + count; ++c)
    if (length(*c) > length(*longest)) longest = c;
  extent.is_against = longest->b_to < longest->b_from;
  return extent;
}

namespace {

// From the first to the last place where they are the same. Of contacts of one piece the one that
// reaches farther counts: curves that part slowly are the same for a while beyond a joint.
Extent ExactPart(const Track& a, const Contact* contacts, std::size_t count, double gap,
                 const Extent& extent) {
  Extent exact = extent;
  bool is_first = true;
  for (const std::size_t i : InOrder(a, contacts, count, gap)) {
    const Contact& contact = contacts[i];
    if (!(contact.exact_length > 0)) continue;
    const int32_t piece = contact.a_from.piece;
    if (is_first || (piece == exact.a_from.piece && contact.exact_a_from.u < exact.a_from.u)) {
      exact.a_from = contact.exact_a_from;
      exact.b_from = contact.exact_b_from;
    }
    if (is_first || piece != exact.a_to.piece || contact.exact_a_to.u > exact.a_to.u) {
      exact.a_to = contact.exact_a_to;
      exact.b_to = contact.exact_b_to;
    }
    is_first = false;
  }
  return exact;
}

}  // namespace

std::optional<Extent> SharedStretch(const Track& a, const Track& b, const Contact* contacts,
                                    std::size_t count, const Extent& extent,
                                    const Nearness& nearness) {
  const double gap = kJoined * nearness.tol;
  double exact_length = 0;
  for (std::size_t i = 0; i < count; ++i) exact_length += contacts[i].exact_length;
  const double share =
      std::max(kExactShare, kRoughShare * std::sqrt(nearness.exact / nearness.tol));
  if (exact_length >= share * extent.length && exact_length > 0) {
    Extent exact = ExactPart(a, contacts, count, gap, extent);
    MoveOntoVertex(a, b, kParting, exact.a_from, exact.b_from);
    MoveOntoVertex(a, b, kParting, exact.a_to, exact.b_to);
    return exact;
  }
  if (extent.length < kLongStretch && !HoldSpan(a, OfA, contacts, count, gap) &&
      !HoldSpan(b, OfB, contacts, count, gap))
    return std::nullopt;
  Extent near = extent;
  constexpr double kEndShare = 16;  // of the tolerance: what a sharp parting adds
  MoveOntoVertex(a, b, kEndShare * nearness.tol, near.a_from, near.b_from);
  MoveOntoVertex(a, b, kEndShare * nearness.tol, near.a_to, near.b_to);
  return near;
}

}  // namespace kurvo::outline
