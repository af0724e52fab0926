// The pieces of a curve of any type in the form that the distance between curves works on.
#pragma once

#include <cstddef>
#include <vector>

#include "calc/boxes.h"
#include "records/pieces.h"
#include "relate/bezier_piece.h"

namespace kurvo {

// Part of a circle: the point at u in [0, 1] has the polar angle `angle` + u `turn`.
struct CirclePart {
  Vec2 centre;
  double radius;
  double angle;
  double turn;  // at most a quarter of a turn

  Vec2 At(double u) const {
    const double at = angle + u * turn;
    return centre + radius * Vec2{std::cos(at), std::sin(at)};
  }
  // The parameter of a direction from the centre, outside [0, 1] when it is not swept; at the
  // centre 0.
  double ParameterOf(Vec2 direction) const;
};

enum class PieceKind { kLine, kArc, kFreeForm };

// Every piece has a Bezier form; that of an arc is rational, with another parameter than its own.
struct DistancePiece {
  PieceKind kind;
  BezierPiece bezier;  // its box encloses it: all of the plane when the control points do not
  CirclePart circle;   // of an arc

  // From a parameter of the piece, and from one of its Bezier form, to that of the whole curve.
  double ToCurve(double u) const { return bezier.ToCurve(u); }
  double BezierToCurve(double s) const { return ToCurve(FromBezier(s)); }

 private:
  double FromBezier(double s) const;
};

// The pieces of a curve in order, without those that have a number that is not finite. Coordinates
// are scaled on request, so that they can be squared.
class DistancePieces {
 public:
  // Refused, and empty, for a record that cannot be right and for a degree above kMaxPieceDegree.
  // Throws std::bad_alloc.
  DistancePieces(const Curve& curve, double length_tol);
  DistancePieces(const DistancePieces&) = delete;
  DistancePieces& operator=(const DistancePieces&) = delete;

  bool refused() const { return refused_; }
  double LargestCoordinate() const;
  void Scale(double scale);
  // Puts the boxes together; once, after scaling.
  void BuildTree();

  std::size_t size() const { return pieces_.size(); }
  const DistancePiece& operator[](std::size_t i) const { return pieces_[i]; }

  // A stretch of consecutive pieces and the box around them. Halves of halves make up a tree.
  struct Range {
    std::size_t node;
    std::size_t begin;
    std::size_t end;

    bool single() const { return end - begin == 1; }
    Range First() const { return {2 * node, begin, begin + (end - begin) / 2}; }
    Range Second() const { return {2 * node + 1, begin + (end - begin) / 2, end}; }
  };
  Range Whole() const { return {1, 0, pieces_.size()}; }
  const PlanarBox& BoxOf(const Range& range) const {
    return range.single() ? pieces_[range.begin].bezier.box : boxes_[range.node];
  }

 private:
  bool Add(const Curve& leaf, const auto& view, LeafStretch on);
  bool Add(const Curve& leaf, const KurvoLine& line, LeafStretch on);
  bool Add(const Curve& leaf, const KurvoArc& arc, LeafStretch on);
  bool Add(const Curve& leaf, Refused, LeafStretch on);
  void AddLine(const KurvoLine& line, double offset, double scale);
  void AddArc(const KurvoArc& arc, double offset, double scale);
  bool AddSpans(const Curve& curve, double offset, double scale);
  void AddPiece(PieceKind kind, bool rational, const CirclePart& circle, double start, double width,
                std::size_t first_point);
  PlanarBox Build(const Range& range);

  const double tol_;
  bool refused_;
  std::vector<DistancePiece> pieces_;
  std::vector<WeightedPoint> points_;
  std::vector<PlanarBox> boxes_;
};

}  // namespace kurvo
