// Random records: sound ones, and ones that no sane caller makes but whose types are right.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "kurvo.h"
#include "robust/source.h"

namespace kurvo_test {

enum class Mode {
  kBenign,   // what a caller means to pass
  kHostile,  // the right type, and nothing else to rely on
};

constexpr int32_t kTypes[] = {CV_LINE,    CV_ARC,      CV_BEZIER, CV_RBEZIER,
                              CV_BSPLINE, CV_RBSPLINE, CV_SEGCV};
constexpr unsigned kAnyType = 127, kSplines = 16 + 32, kComposites = 64;
bool IsWanted(int32_t type, unsigned wanted);

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

  ::Curve Curve(int level = 0) { return CurveOf(kAnyType, level); }
  // Mostly of one of the wanted types, a bit for each by its place in kTypes.
  ::Curve CurveOf(unsigned wanted, int level = 0);
  ::Curve Arc();
  Cvseq Sequence();
  CvParam Parameters();

  // Fewer control points of the longest splines and pieces of the longest composites. Every piece
  // of two composites may cross every other: that is honest work, which no call can be spared.
  void ShortCurves() {
    long_counts_ = {60, 200};
    long_composite_ = 100;
  }

  double Number();          // a coordinate or a length
  double Parameter();       // of a curve, mostly in [0, 1]
  double* Point(int size);  // `size` numbers in a block

 private:
  // What is wrong with the numbers of a record.
  enum class Taint { kNone, kSome, kAll, kOneValue, kHuge, kTiny };

  bool hostile() const { return mode_ == Mode::kHostile; }
  double Plain();
  double Malicious();
  double Coordinate();
  double Weight();
  int32_t Degree();
  void ChooseTaint();

  double* Points(int32_t count, int size);
  double* Knots(int32_t order, int32_t count);
  void SoundKnots(double* knots, int32_t order, int32_t count);
  void SpoilKnots(double* knots, int32_t total);
  double* Widths(int32_t count);

  ::Curve Line();
  ::Curve Bezier(bool rational);
  ::Curve Spline(bool rational);
  ::Curve Composite(int level);
  ::Curve Nest(int levels);
  ::Curve FreeForm(int32_t type, int32_t size, int32_t count, double* points,
                   double* knots = nullptr);
  ::Curve Unknown();
  ::Curve Between(const double* from, const double* to);
  ::Curve HalfCircle(const double* from, const double* to);
  void Misname(::Curve& curve);

  Source& in_;
  Mode mode_;
  Store& store_;
  Taint taint_ = Taint::kNone;
  double one_value_ = 0;
  int long_composite_ = 400;
  struct {
    int32_t some, few;
  } long_counts_ = {300, 5000};
};

// Records that many threads read.
class Gallery {
 public:
  Gallery(uint64_t seed, int count);
  const Curve& curve(Source& in, Mode mode, unsigned wanted) const;
  const Cvseq& sequence(Source& in, Mode mode) const;
  uint64_t Checksum() const { return store_.Checksum(); }

 private:
  struct Hall {
    std::vector<Curve> curves;
    std::vector<Cvseq> sequences;
  };
  Store store_;
  Hall halls_[2];
};

}  // namespace kurvo_test
