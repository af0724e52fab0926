// The corners and edges that a beam gives a result.
#pragma once

#include <span>

#include "sweep/arrangement.h"
#include "sweep/attach.h"
#include "sweep/winding.h"

namespace kurvo::outline {

class Assembler {
 public:
  Assembler(const Stage& stage, const FillRule& fill, Arrangement& out)
      : stage_(stage), fill_(fill), out_(out) {}

  // Joins a row that ends at beam k with that which begins there; both have their places. `flats`
  // are the strands in the beam beside them, `covered` what lies to the left of both. Bundles of
  // `lower` that are kept have edges; those of `upper` get theirs.
  void Assemble(int32_t k, Row& lower, Row& upper, std::span<const int32_t> flats, Covered covered);

 private:
  enum class Kind { kLower, kUpper, kVertex };
  struct Position {
    double side;
    Kind kind;
    int32_t number;  // of the bundle, or the vertex
  };
  // What may stand for a corner, the best first.
  enum Rank { kGivenVertex, kVertex, kCrossing, kPlace, kNothing };
  struct Choice {
    Rank rank = kNothing;
    Vec2 point = {};
    int32_t vertex = -1;

    void Offer(Rank other, Vec2 at, int32_t number);
  };

  void CollectPositions(std::span<const int32_t> flats);
  void AddCorner(std::size_t first, std::size_t last, bool is_last, std::span<const int32_t> flats);
  void OfferBundle(const Row& row, const Bundle& bundle, bool is_lower, Choice& choice) const;
  void OfferVertex(int32_t vertex, Choice& choice) const;
  void AddRay(int32_t edge, bool leaves) { out_.rays.push_back(2 * edge + (leaves ? 1 : 0)); }
  int32_t AddEdge(int32_t corner, bool leaves, int32_t source, bool is_horizontal);
  void EndEdge(int32_t edge, int32_t corner);
  void SetParameter(const Bundle& bundle, const Choice& at, bool leaves);
  void FindSource(int32_t edge, std::span<const int32_t> flats);

  const Stage& stage_;
  const FillRule& fill_;
  Arrangement& out_;
  int32_t k_ = 0;
  Row *lower_ = nullptr, *upper_ = nullptr;
  Covered below_, above_;  // what lies to the right of the last corner, below and above the beam
  int32_t east_ = -1;      // the edge that leaves the last corner to the right
  Array<Position> positions_;
  Array<int32_t> from_below_, to_above_;  // bundles that meet at a corner
};

}  // namespace kurvo::outline
