// Where to cut a smooth run of cubics into chords.
#pragma once

#include "fit/cubic_cells.h"

namespace kurvo::outline {

// A place on a run of cells: of the cell `cell` at t in [0, 1], and its point.
struct OnCells {
  std::size_t cell;
  double t;
  Vec2 point;
};

// Cuts a run of cells, each of which goes on where the one before ended and in its direction, so
// that no point of it is farther than `deviation` (> 0) from the chord of its part.
class Chords {
 public:
  // Appends the inner ends of the chords, in order, none for a single chord. Throws Refusal with
  // KURVO_ERR_TOO_LARGE where they are too many to count.
  void Cut(const Array<CubicCell>& cells, double deviation, Array<OnCells>& cuts);

 private:
  // Point, velocity and second derivative.
  struct End {
    OnCells at;
    Vec2 velocity, bend;
  };
  // By powers of t, which are quicker than Bernstein's form.
  struct Powers {
    Vec2 point, velocity, half_bend, sixth_jerk;
  };
  // A stretch of one cell, along which the number of chords grows by a density that is linear in t.
  struct Stretch {
    std::size_t cell;
    double from, width;
    double first, last;  // densities: chords by t
    double before;       // chords up to its start
  };

  struct Row;

  End EndAt(std::size_t cell, double t) const;
  double DensityAt(std::size_t cell, double t) const;
  void AddStretches(std::size_t cell);
  void AddStretch(const Stretch& stretch, int halvings_left);
  void CutEvenly(int n);
  void CutAlong(std::size_t cell, Row& row);
  void CutOnce(const End& end);
  void Thin(std::size_t first, const End& end);
  void CutAt(const End& cut);
  static double Reach(const Stretch& here, double chords);
  End EndAfter(double chords) const;
  void CutUpTo(const End& end, int halvings_left);
  static bool IsSurelyChord(const End& from, const End& to, double deviation);
  bool IsChord(const End& from, const End& to, double deviation) const;
  bool IsChordExactly(const End& from, const End& to, double deviation) const;

  const Array<CubicCell>* cells_ = nullptr;
  double deviation_ = 0;
  double per_root_ = 0;  // chords by the root of the bend across
  Array<Powers> powers_;
  Array<Stretch> stretches_;
  double total_ = 0;
  End last_ = {};
  Array<OnCells>* cuts_ = nullptr;
};

}  // namespace kurvo::outline
