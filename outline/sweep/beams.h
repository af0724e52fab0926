// Beams: the heights at which something happens, gathered into narrow bands, and what happens
// there.
#pragma once

#include "base/memory.h"
#include "sweep/events.h"
#include "sweep/rows.h"
#include "sweep/strand.h"

namespace kurvo::outline {

// Between two beams, in a slab, strands neither begin nor end nor change places.
struct Beam {
  double low, high;
  double Middle() const { return 0.5 * (low + high); }
};

class Beams {
 public:
  void Build(const Scene& scene, const Array<Strand>& strands, const Events& events);

  int32_t count() const { return static_cast<int32_t>(beams_.size()); }
  const Beam& operator[](int32_t k) const { return beams_[static_cast<std::size_t>(k)]; }
  int32_t OfVertex(int32_t vertex) const { return beam_of_[static_cast<std::size_t>(vertex)]; }

  // By beam: strands that begin there; strands that both begin and end there, the horizontal ones
  // and those too low for a slab; crossings; strands that end or have an event there.
  const Rows& starts() const { return starts_; }
  const Rows& flats() const { return flats_; }
  const Rows& crossings() const { return crossings_; }
  const Rows& touched() const { return touched_; }

  // The next beam above k with an event of a strand, at the latest that where it ends. To be asked
  // with ascending k.
  int32_t NextOf(int32_t strand, int32_t k);
  // Whether two strands run together in the slab above beam k.
  bool AreTogether(int32_t a, int32_t b, int32_t k) const;

 private:
  void Gather(const Scene& scene, const Events& events);
  void MakeBeams(double tol);
  void SortIntoRows(const Array<Strand>& strands, const Events& events);

  // By number: vertices, then crossings, then both ends of what is together.
  struct Height {
    double height;
    int32_t number;
  };
  Array<Height> heights_;
  Array<Beam> beams_;
  Array<int32_t> beam_of_;  // by the same numbers
  std::size_t first_crossing_ = 0;
  Rows starts_, flats_, crossings_, touched_;
  Rows of_strand_;        // beams with events, ascending
  Array<int32_t> asked_;  // by strand: how many of these have been passed
  Array<int32_t> tops_;   // by strand: the beam where it ends
  struct Shared {
    int32_t other, from, to;  // beams
  };
  Array<Shared> shared_;  // twice each, by the numbers in:
  Rows shared_of_;        // by strand
};

}  // namespace kurvo::outline
