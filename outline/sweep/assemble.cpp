#include "sweep/assemble.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "sweep/on_strand.h"

namespace kurvo::outline {
namespace {

constexpr double kWide = 0.5;  // of tol: bundles that pass a beam so far may be horizontal there
constexpr double kNearlyAll = 0.999;     // of a horizontal edge
constexpr double kMostly = 0.5;          // of it: what covers less is no source of it
constexpr double kMore = 1e-9;           // of what is covered: a difference that counts
constexpr double kLeastCover = 0x1p-10;  // of tol

}  // namespace

void Assembler::Choice::Offer(Rank other, Vec2 at, int32_t number) {
  const bool is_better = other < rank || (other == rank && number >= 0 && number < vertex);
  if (is_better) *this = {other, at, number};
}

void Assembler::OfferVertex(int32_t number, Choice& choice) const {
  const Vertex& vertex = stage_.scene.vertex(number);
  choice.Offer(vertex.is_given ? kGivenVertex : kVertex, vertex.point, number);
}

// A vertex of a member, or its crossing, stands for a corner only when it lies where the bundle has
// its place.
void Assembler::OfferBundle(const Row& row, const Bundle& bundle, bool is_lower,
                            Choice& choice) const {
  const double tol = stage_.tol();
  for (const int32_t member : row.MembersOf(bundle)) {
    const Strand& strand = stage_.strand(member);
    const int32_t vertex = is_lower ? strand.high : strand.low;
    if (stage_.beams.OfVertex(vertex) == k_) {
      if (tol >= std::fabs(stage_.scene.vertex(vertex).point.x - bundle.place))
        OfferVertex(vertex, choice);
    } else if (choice.rank > kCrossing) {
      const Crossing* crossing = stage_.marks.Of(member, k_);
      if (crossing && tol >= std::fabs(crossing->side - bundle.place))
        choice.Offer(kCrossing, {crossing->side, crossing->height}, -1);
    }
  }
  if (choice.rank > kPlace) choice.Offer(kPlace, {bundle.place, stage_.beams[k_].Middle()}, -1);
}

void Assembler::CollectPositions(std::span<const int32_t> flats) {
  positions_.clear();
  const auto add = [this](const Row& row, Kind kind) {
    for (std::size_t i = 0; i < row.bundles.size(); ++i)
      positions_.push_back({row.bundles[i].place, kind, static_cast<int32_t>(i)});
  };
  add(*lower_, Kind::kLower);
  add(*upper_, Kind::kUpper);
  for (const int32_t flat : flats) {
    const Strand& strand = stage_.strand(flat);
    positions_.push_back({strand.x_low, Kind::kVertex, strand.low});
    positions_.push_back({strand.x_high, Kind::kVertex, strand.high});
  }
  std::sort(positions_.begin(), positions_.end(), [](const Position& a, const Position& b) {
    return std::tuple(a.side, a.kind, a.number) < std::tuple(b.side, b.kind, b.number);
  });
}

void Assembler::Assemble(int32_t k, Row& lower, Row& upper, std::span<const int32_t> flats,
                         Covered covered) {
  k_ = k;
  lower_ = &lower;
  upper_ = &upper;
  below_ = above_ = covered;
  east_ = -1;
  CollectPositions(flats);
  // Clusters of positions at most tol from their first.
  for (std::size_t first = 0; first < positions_.size();) {
    std::size_t last = first + 1;
    while (last < positions_.size() &&
           stage_.tol() >= positions_[last].side - positions_[first].side)
      ++last;
    AddCorner(first, last, last == positions_.size(), flats);
    first = last;
  }
}

// Where inside changes between what lies below and above the beam, a horizontal edge is implied:
// flat edges, bundles that change places in one beam and many crossings need no case of their own.
void Assembler::AddCorner(std::size_t first, std::size_t last, bool is_last,
                          std::span<const int32_t> flats) {
  Choice choice;
  from_below_.clear();
  to_above_.clear();
  for (std::size_t i = first; i < last; ++i) {
    const Position& position = positions_[i];
    if (position.kind == Kind::kVertex) {
      OfferVertex(position.number, choice);
      continue;
    }
    const bool is_lower = position.kind == Kind::kLower;
    const Row& row = is_lower ? *lower_ : *upper_;
    const Bundle& bundle = row.bundles[static_cast<std::size_t>(position.number)];
    (is_lower ? below_ : above_) = bundle.right;
    OfferBundle(row, bundle, is_lower, choice);
    if (bundle.is_kept) (is_lower ? from_below_ : to_above_).push_back(position.number);
  }
  const int32_t west = east_;
  east_ = -1;
  const bool is_inside = fill_.IsInside(above_);
  const bool has_east = !is_last && fill_.IsInside(below_) != is_inside;
  if (from_below_.empty() && to_above_.empty() && west < 0 && !has_east) return;

  const auto corner = CountOf(out_.corners.size());
  out_.corners.push_back({choice.point, choice.vertex});
  out_.first_ray.push_back(out_.rays.size());
  if (has_east) {
    east_ = AddEdge(corner, is_inside, -1, true);
    AddRay(east_, is_inside);
  }
  for (std::size_t i = to_above_.size(); i-- > 0;) {
    Bundle& bundle = upper_->bundles[static_cast<std::size_t>(to_above_[i])];
    const bool leaves = fill_.IsInside(bundle.left);
    bundle.edge = AddEdge(corner, leaves, stage_.strand(bundle.lead).source, false);
    SetParameter(bundle, choice, leaves);
    AddRay(bundle.edge, leaves);
  }
  if (west >= 0) {
    const bool leaves = out_.edge(west).from < 0;
    EndEdge(west, corner);
    AddRay(west, leaves);
    FindSource(west, flats);
  }
  for (const int32_t i : from_below_) {
    const Bundle& bundle = lower_->bundles[static_cast<std::size_t>(i)];
    const bool leaves = out_.edge(bundle.edge).from < 0;
    SetParameter(bundle, choice, leaves);
    EndEdge(bundle.edge, corner);
    AddRay(bundle.edge, leaves);
  }
}

int32_t Assembler::AddEdge(int32_t corner, bool leaves, int32_t source, bool is_horizontal) {
  out_.edges.push_back(
      {leaves ? corner : -1, leaves ? -1 : corner, source, 0, 0, -1, is_horizontal});
  return CountOf(out_.edges.size()) - 1;
}

void Assembler::EndEdge(int32_t number, int32_t corner) {
  Edge& edge = out_.edge(number);
  (edge.from < 0 ? edge.from : edge.to) = corner;
}

void Assembler::SetParameter(const Bundle& bundle, const Choice& at, bool leaves) {
  Edge& edge = out_.edge(bundle.edge);
  (leaves ? edge.u_from : edge.u_to) =
      SourceParameter(stage_.strand(bundle.lead), stage_.tol(), at.vertex, at.point);
}

// The source of a horizontal edge is what covers most of it, the first of several: horizontal
// strands, or those of bundles that pass far along the beam.
void Assembler::FindSource(int32_t number, std::span<const int32_t> flats) {
  Edge& edge = out_.edge(number);
  const Corner &from = out_.corner(edge.from), &to = out_.corner(edge.to);
  const double low = std::min(from.point.x, to.point.x), high = std::max(from.point.x, to.point.x);
  int32_t best = -1;
  double most = 0;
  const auto offer = [&](int32_t strand, double least_side, double most_side) {
    const double cover = std::min(high, most_side) - std::max(low, least_side);
    const bool is_more = cover > most * (1 + kMore) + kLeastCover * stage_.tol();
    const bool is_earlier = best >= 0 && strand < best && cover > most * (1 - kMore);
    if (!is_more && !is_earlier) return;
    most = cover;
    best = strand;
  };
  for (const int32_t flat : flats) {
    const Strand& strand = stage_.strand(flat);
    offer(flat, std::min(strand.x_low, strand.x_high), std::max(strand.x_low, strand.x_high));
  }
  if (most < kNearlyAll * (high - low) - stage_.tol()) {
    for (const Row* row : {lower_, upper_})
      for (const Bundle& bundle : row->bundles) {
        if (!(bundle.high - bundle.low > kWide * stage_.tol())) continue;
        for (const int32_t member : row->MembersOf(bundle)) offer(member, bundle.low, bundle.high);
      }
  }
  if (best < 0 || most < kMostly * (high - low)) {
    out_.worst_bridge = std::max(out_.worst_bridge, high - low);
    return;
  }
  edge.source = stage_.strand(best).source;
  const Strand& strand = stage_.strand(best);
  edge.u_from = SourceParameter(strand, stage_.tol(), from.vertex, from.point);
  edge.u_to = SourceParameter(strand, stage_.tol(), to.vertex, to.point);
}

}  // namespace kurvo::outline
