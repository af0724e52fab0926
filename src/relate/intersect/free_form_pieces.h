// The Bezier pieces of a free-form curve in the form that intersection works on.
#pragma once

#include "foundation/short_vector.h"
#include "relate/bezier_piece.h"

namespace kurvo {

// Which pieces of a composite take part: those that are Bezier or rational Bezier records
// themselves, or the Bezier pieces of whatever it holds.
enum class CompositePieces { kBezierRecords, kAll };

// The pieces of a curve in order, without those that have a coordinate or weight that is not
// finite; none for lines and arcs. Neither copied nor moved.
class FreeFormPieces {
 public:
  // Records the bad-curve error, and is empty, for a record that cannot be right and for a degree
  // above max_degree. Throws std::bad_alloc.
  FreeFormPieces(const Curve& curve, CompositePieces which, int32_t max_degree, GlobalVar& g);
  FreeFormPieces(const FreeFormPieces&) = delete;
  FreeFormPieces& operator=(const FreeFormPieces&) = delete;

  const BezierPiece* begin() const { return pieces_.data(); }
  const BezierPiece* end() const { return pieces_.data() + pieces_.size(); }
  std::size_t size() const { return pieces_.size(); }
  const BezierPiece& operator[](std::size_t i) const { return pieces_[i]; }

 private:
  bool Add(const Curve& curve, double offset, double scale, int32_t max_degree);
  bool AddBezierRecords(const Curve& curve, int32_t max_degree);
  void AddSpan(const BezierSpan& span, double offset, double scale);

  ShortVector<BezierPiece, 1> pieces_;
  ShortVector<WeightedPoint, 10> points_;
};

}  // namespace kurvo
