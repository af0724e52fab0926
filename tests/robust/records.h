// Random records: sound ones, and ones that no sane caller makes but whose types are right.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "kurvo.h"
#include "robust/source.h"

namespace kurvo_test {

enum class Mode {
  kBenign,   // what a caller means to pass
  kHostile,  // the right type, and nothing else to rely on
};

// Owns the blocks of records. Every array has a block of its own, of just its size, so that a step
// beyond it is seen by the address sanitizer.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  ~Store();

  double* Numbers(std::size_t count) {
    return static_cast<double*>(Allocate(count * sizeof(double), true));
  }
  template <class T>
  T* Zeroed(std::size_t count = 1) {
    return static_cast<T*>(Allocate(count * sizeof(T), false));
  }
  template <class T>
  T* Put(const T& record) {
    return &(*Zeroed<T>() = record);
  }
  // A copy of a sound curve.
  Curve Keep(const Curve& cv);
  bool Owns(const void* memory) const;
  void Forget(const void* memory);  // which somebody else has freed
  // Of all blocks, to see whether they change.
  uint64_t Checksum() const;
  // Of the blocks that hold numbers alone.
  void AddNumbers(Digest& digest) const;

 private:
  struct Block {
    void* memory;
    std::size_t size;
    bool numbers;
  };
  void* Allocate(std::size_t size, bool numbers);

  std::vector<Block> blocks_;
};

class Maker {
 public:
  Maker(Source& source, Mode mode, Store& store) : in_(source), mode_(mode), store_(store) {}

  // Mostly of the wanted type, if one is; CV_BSPLINE stands for both kinds of splines.
  ::Curve Curve(int32_t wanted = 0, int level = 0);
  ::Curve Arc();
  Cvseq Sequence();
  CvParam Parameters();

  // Fewer control points of the longest splines and pieces of the longest composites. Every piece
  // of two composites may cross every other: that is honest work, which no call can be spared.
  void ShortCurves() {
    long_counts_[0] = 60;
    long_counts_[1] = 200;
    long_composite_ = 100;
  }

  double Number();          // a coordinate or a length
  double Parameter();       // of a curve, mostly in [0, 1]
  double* Point(int size);  // `size` numbers in a block

 private:
  bool hostile() const { return mode_ == Mode::kHostile; }
  double Plain();
  double Malicious();
  double Coordinate();
  double Weight();
  int32_t Degree();
  void Taint(double* numbers, int32_t count);
  void Misname(::Curve& curve);

  double* Points(int32_t count, int size);
  double* Knots(int32_t order, int32_t count);
  ::Curve Line();
  ::Curve FreeForm(int32_t type);
  ::Curve Composite(int level);
  ::Curve Composite(int32_t count, ::Curve* pieces);
  ::Curve Nest(int levels);
  ::Curve Between(const double* from, const double* to);

  Source& in_;
  Mode mode_;
  Store& store_;
  // What is wrong with the numbers of a record: all are one, or one in so many is malicious and the
  // others have another scale.
  struct {
    uint32_t rarity;
    double scale;
    std::optional<double> one_value;
  } taint_{0, 1, {}};
  bool joined_ = false;  // the next curve is to run over [0, 1], from its first point to its last
  int long_composite_ = 400;
  int32_t long_counts_[2] = {300, 5000};
};

// Records that many threads read.
class Gallery {
 public:
  Gallery(uint64_t seed, int count);
  const Curve& curve(Source& in, Mode mode, int32_t wanted) const;
  const Cvseq& sequence(Source& in, Mode mode) const;
  uint64_t Checksum() const { return store_.Checksum(); }

 private:
  Store store_;
  std::vector<Curve> curves_[2];  // by mode
  std::vector<Cvseq> sequences_[2];
};

}  // namespace kurvo_test
