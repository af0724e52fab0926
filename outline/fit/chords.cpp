#include "fit/chords.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/refusal.h"
#include "fit/cubic.h"

namespace kurvo::outline {
namespace {

constexpr int kDensities = 8;         // stretches of a cell, at least
constexpr int kMostHalvings = 12;     // of such a stretch
constexpr double kUneven = 0.125;     // chords that a linear density may be wrong by on a stretch,
constexpr double kUnevenShare = .03;  // or the share of its density
constexpr double kPerhapsOne = 1.1;   // chords, up to which one is tried
constexpr double kSpare = 1.02;       // the chords that are made for one that is needed
constexpr int kFew = 6;               // chords, of which some may be too many
constexpr int kMostCutHalvings = 60;

// Whether a part of a cell keeps within the deviation of a chord, by the extrema of its distances
// across and along the chord.
bool IsNear(const CubicCell& cell, double low, double high, Vec2 start, Vec2 chord,
            double deviation) {
  const double length = Length(chord);
  if (!(length > 0)) {  // distances from a point, in two directions
    const Extent x = ExtentOf(cell.points, low, high, start, {1, 0});
    const Extent y = ExtentOf(cell.points, low, high, start, {0, 1});
    return deviation >= std::hypot(std::max(-x.least, x.most), std::max(-y.least, y.most));
  }
  const Vec2 along = (1 / length) * chord;
  const Extent across = ExtentOf(cell.points, low, high, start, Left(along));
  const double off = std::max(-across.least, across.most);
  if (!(deviation >= off)) return false;
  const Extent reach = ExtentOf(cell.points, low, high, start, along);
  const double beyond = std::max({-reach.least, reach.most - length, 0.0});
  return deviation * deviation >= off * off + beyond * beyond;
}

}  // namespace

void Chords::Cut(const Array<CubicCell>& cells, double deviation, Array<OnCells>& cuts) {
  cells_ = &cells;
  deviation_ = deviation;
  per_root_ = 1 / std::sqrt(8 * deviation);
  cuts_ = &cuts;
  total_ = 0;
  powers_.clear();
  stretches_.clear();
  stretches_.reserve(kDensities * cells.size());
  for (const CubicCell& cell : cells)
    powers_.push_back(
        {cell.points[0], cell.Velocity(), 0.5 * cell.Bend(), (1.0 / 6) * cell.Jerk()});
  for (std::size_t i = 0; i < cells.size(); ++i) AddStretches(i);
  Require(std::numeric_limits<int32_t>::max() >= kSpare * total_, KURVO_ERR_TOO_LARGE);

  last_ = EndAt(0, 0);
  End end = EndAt(cells.size() - 1, 1);
  end.at.point = cells.back().points[3];
  if (kPerhapsOne >= total_ && IsChord(last_, end, deviation_)) return;
  const int n = static_cast<int>(std::ceil(kSpare * total_));
  const std::size_t first = cuts.size();
  if (n > 2)
    CutEvenly(n);
  else
    CutOnce(end);
  CutUpTo(end, kMostCutHalvings);
  if (n > 2 && n <= kFew) Thin(first, end);
}

// Where a curve bends within less than the deviation its bend says little: while no chord comes
// near the deviation, cuts go that are not needed.
void Chords::Thin(std::size_t first, const End& end) {
  const double quarter = 0.25 * deviation_;
  const auto end_of = [&](std::size_t i) {
    return i < cuts_->size() ? EndAt((*cuts_)[i].cell, (*cuts_)[i].t) : end;
  };
  End from = EndAt(0, 0);
  for (std::size_t i = first; i <= cuts_->size(); ++i) {
    const End to = end_of(i);
    if (!IsChord(from, to, quarter)) return;
    from = to;
  }
  from = EndAt(0, 0);
  for (std::size_t i = first; i < cuts_->size();) {
    if (IsChord(from, end_of(i + 1), deviation_)) {
      cuts_->erase(cuts_->begin() + static_cast<std::ptrdiff_t>(i));
    } else {
      from = end_of(i++);
    }
  }
}

inline Chords::End Chords::EndAt(std::size_t cell, double t) const {
  const Powers& p = powers_[cell];
  return {{cell, t, p.point + t * (p.velocity + t * (p.half_bend + t * p.sixth_jerk))},
          p.velocity + t * (2.0 * p.half_bend + (3 * t) * p.sixth_jerk),
          2.0 * p.half_bend + (6 * t) * p.sixth_jerk};
}

// A chord over a small step h of t is off by h^2/8 |P''| across the curve, and so by d when
// h = sqrt(8 d |P'| / |P' x P''|): the inverse is the number of chords by t.
inline double Chords::DensityAt(std::size_t cell, double t) const {
  constexpr double kLeastSquare = std::numeric_limits<double>::min();  // for a quotient at rest
  const End at = EndAt(cell, t);
  const double speed = std::sqrt(SquaredLength(at.velocity) + kLeastSquare);
  return per_root_ * std::sqrt(std::fabs(Cross(at.velocity, at.bend)) / speed);
}

void Chords::AddStretches(std::size_t cell) {
  constexpr double kWidth = 1.0 / kDensities;
  double densities[kDensities + 1];
  for (int i = 0; i <= kDensities; ++i) densities[i] = DensityAt(cell, i * kWidth);
  for (int i = 0; i < kDensities; i += 2) {
    const double bulge = std::fabs(densities[i + 1] - 0.5 * (densities[i] + densities[i + 2]));
    const bool even = std::max(kUneven / (2 * kWidth), kUnevenShare * densities[i + 1]) >= bulge;
    for (int k = i; k < i + 2; ++k)
      AddStretch({cell, k * kWidth, kWidth, densities[k], densities[k + 1], 0},
                 even ? 0 : kMostHalvings);
  }
}

void Chords::AddStretch(const Stretch& stretch, int halvings_left) {
  if (halvings_left > 0) {
    const double half = 0.5 * stretch.width, middle = stretch.from + half;
    const double density = DensityAt(stretch.cell, middle);
    const double bulge = std::fabs(density - 0.5 * (stretch.first + stretch.last));
    if (!(std::max(kUneven / stretch.width, kUnevenShare * density) >= bulge)) {
      AddStretch({stretch.cell, stretch.from, half, stretch.first, density, 0}, halvings_left - 1);
      AddStretch({stretch.cell, middle, half, density, stretch.last, 0}, halvings_left - 1);
      return;
    }
  }
  stretches_.push_back(stretch);
  stretches_.back().before = total_;
  total_ += 0.5 * stretch.width * (stretch.first + stretch.last);
}

// Where on a stretch the number of chords reaches a value. With the density f + (l - f) s at the
// share s of it, w (f s + (l - f) s^2 / 2) chords precede. A width is a power of two.
inline double Chords::Reach(const Stretch& here, double chords) {
  const double more = (2 * (chords - here.before)) * (1 / here.width);
  const double root = here.first * here.first + more * (here.last - here.first);
  const double positive = 0.5 * (root + std::fabs(root));  // or 0, for a loop without branches
  const double way = more / (here.first + std::sqrt(positive)) * here.width;
  return here.from + (way < here.width ? way : here.width);
}

Chords::End Chords::EndAfter(double chords) const {
  std::size_t i = 0;
  while (i + 1 < stretches_.size() && stretches_[i + 1].before <= chords) ++i;
  return EndAt(stretches_[i].cell, Reach(stretches_[i], chords));
}

// Within one cubic, with second derivatives a and b across the chord at its ends, a step of h is
// off by h^2/6 s (1 - s) ((2 - s) a + (1 + s) b) = h^2/6 s (1 - s) (3/2 (a + b) + (s - 1/2) (b -
// a)). The largest of s (1 - s) |s - 1/2| is 0.0481, and where |b - a| <= |a + b| the gain over the
// middle is at most (b - a)^2 / (36 |a + b|). It runs along the chord where its velocity does, in
// Bernstein form.
inline bool Chords::IsSurelyChord(const End& from, const End& to, double deviation) {
  constexpr double kSameSide = 1.0 / 36, kBothSides = 0.1284;
  const Vec2 chord = to.at.point - from.at.point;
  const double step = to.at.t - from.at.t;
  const double sum = std::fabs(Cross(from.bend + to.bend, chord));
  const double change = std::fabs(Cross(to.bend - from.bend, chord));
  const double off = step * step * (sum + (change <= sum ? kSameSide : kBothSides) * change);
  // Without branches, so that a loop takes several at once.
  return (int{Dot(from.velocity, chord) >= 0} & int{Dot(to.velocity, chord) >= 0} &
          int{Dot(from.velocity + (0.5 * step) * from.bend, chord) >= 0} &
          int{256 * (deviation * deviation) * SquaredLength(chord) >= off * off}) != 0;
}

// Many ends on one cell, as rows of numbers, for loops that take several at once.
struct Chords::Row {
  static constexpr std::size_t kMost = 64;

  void Fill(const Powers& p, double deviation) {
    for (std::size_t i = 0; i < size; ++i) {
      const double t_i = t[i];
      x[i] = p.point.x + t_i * (p.velocity.x + t_i * (p.half_bend.x + t_i * p.sixth_jerk.x));
      y[i] = p.point.y + t_i * (p.velocity.y + t_i * (p.half_bend.y + t_i * p.sixth_jerk.y));
      velocity_x[i] = p.velocity.x + t_i * (2.0 * p.half_bend.x + (3 * t_i) * p.sixth_jerk.x);
      velocity_y[i] = p.velocity.y + t_i * (2.0 * p.half_bend.y + (3 * t_i) * p.sixth_jerk.y);
      bend_x[i] = 2.0 * p.half_bend.x + (6 * t_i) * p.sixth_jerk.x;
      bend_y[i] = 2.0 * p.half_bend.y + (6 * t_i) * p.sixth_jerk.y;
    }
    for (std::size_t i = 1; i < size; ++i)
      is_chord[i] = IsSurelyChord(At(0, i - 1), At(0, i), deviation) ? 1 : 0;
  }
  Vec2 Point(std::size_t i) const { return {x[i], y[i]}; }
  End At(std::size_t cell, std::size_t i) const {
    return {{cell, t[i], {x[i], y[i]}}, {velocity_x[i], velocity_y[i]}, {bend_x[i], bend_y[i]}};
  }

  std::size_t size = 0;
  double t[kMost], x[kMost], y[kMost];
  double velocity_x[kMost], velocity_y[kMost], bend_x[kMost], bend_y[kMost];
  double is_chord[kMost];  // 1 where one surely goes from the end before to this one, else 0
};

void Chords::CutEvenly(int n) {
  cuts_->reserve(cuts_->size() + static_cast<std::size_t>(n));
  const double step = total_ / n;
  Row row;
  int i = 1;
  for (std::size_t k = 0; k < stretches_.size(); ++k) {
    const Stretch here = stretches_[k];
    const bool is_last = k + 1 == stretches_.size();
    const double up_to = is_last ? total_ + step : stretches_[k + 1].before;
    while (i < n && i * step < up_to) {
      const int begin = i, room = static_cast<int>(Row::kMost - row.size);
      while (i < n && i * step < up_to && i - begin < room) ++i;
      double* t = row.t + row.size;
      for (int m = 0; m < i - begin; ++m) t[m] = Reach(here, (begin + m) * step);
      row.size += static_cast<std::size_t>(i - begin);
      if (row.size == Row::kMost) CutAlong(here.cell, row);
    }
    if (is_last || stretches_[k + 1].cell != here.cell) CutAlong(here.cell, row);
  }
}

// Makes the cuts of a row, and empties it.
void Chords::CutAlong(std::size_t cell, Row& row) {
  if (row.size == 0) return;
  row.Fill(powers_[cell], deviation_);
  CutAt(row.At(cell, 0));
  for (std::size_t i = 1; i < row.size; ++i) {
    const std::size_t begin = i, before = cuts_->size();
    while (i < row.size && row.is_chord[i] > 0) ++i;
    cuts_->resize(before + (i - begin));
    for (std::size_t k = begin; k < i; ++k)
      (*cuts_)[before + (k - begin)] = {cell, row.t[k], row.Point(k)};
    last_ = row.At(cell, i - 1);
    if (i < row.size) CutAt(row.At(cell, i));
  }
  row.size = 0;
}

inline void Chords::CutAt(const End& cut) {
  CutUpTo(cut, kMostCutHalvings);
  cuts_->push_back(cut.at);
}

// One cut, where one chord is not enough: a little late, so that the first chord comes near the
// deviation, and later where both would come no nearer than a quarter.
void Chords::CutOnce(const End& end) {
  constexpr double kLargerShare = 0.6;
  constexpr int kMostSteps = 6;
  double low = std::max(0.5 * total_, std::min(kLargerShare * total_, 1 / kSpare)), high = total_;
  End cut = EndAfter(low);
  const double quarter = 0.25 * deviation_;
  if (IsChord(last_, cut, quarter) && IsChord(cut, end, quarter)) {
    for (int i = 0; i < kMostSteps; ++i) {
      const double middle = 0.5 * (low + high);
      const End later = EndAfter(middle);
      const bool fits = IsChord(last_, later, deviation_);
      (fits ? low : high) = middle;
      if (fits) cut = later;
    }
  }
  CutAt(cut);
}

// Makes the chord from the last cut to `end`, or cuts between where that is too far off.
void Chords::CutUpTo(const End& end, int halvings_left) {
  if (halvings_left > 0 && !IsChord(last_, end, deviation_)) {
    const double from = static_cast<double>(last_.at.cell) + last_.at.t;
    const double middle = 0.5 * (from + (static_cast<double>(end.at.cell) + end.at.t));
    const auto cell = std::min(static_cast<std::size_t>(middle), end.at.cell);
    const End cut = EndAt(cell, middle - static_cast<double>(cell));
    CutUpTo(cut, halvings_left - 1);
    cuts_->push_back(cut.at);
    return CutUpTo(end, halvings_left - 1);
  }
  last_ = end;
}

inline bool Chords::IsChord(const End& from, const End& to, double deviation) const {
  return (from.at.cell == to.at.cell && IsSurelyChord(from, to, deviation)) ||
         IsChordExactly(from, to, deviation);
}

bool Chords::IsChordExactly(const End& from, const End& to, double deviation) const {
  const Vec2 start = from.at.point, chord = to.at.point - start;
  for (std::size_t i = from.at.cell; i <= to.at.cell; ++i) {
    const double low = i == from.at.cell ? from.at.t : 0, high = i == to.at.cell ? to.at.t : 1;
    if (low < high && !IsNear((*cells_)[i], low, high, start, chord, deviation)) return false;
  }
  return true;
}

}  // namespace kurvo::outline
