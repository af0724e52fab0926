// Random records: sound ones, and ones that no sane caller makes but whose types are right.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <vector>

#include "kurvo_outline.h"

namespace kurvo_test {

// Scrambles a number (the finaliser of SplitMix64: Steele, Lea, Flood, "Fast splittable
// pseudorandom number generators", 2014).
constexpr uint64_t Scramble(uint64_t x) {
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
  return x ^ (x >> 31);
}

// Where a random call takes its choices from: a seeded generator, or the bytes of a fuzzer.
class Source {
 public:
  explicit Source(uint64_t seed) : state_(seed) {}
  // Bytes that have run out read as 0, for which every choice is the plainest.
  Source(const uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

  uint64_t Bits() {
    if (!end_) return Scramble(state_ += 0x9E3779B97F4A7C15);
    return Read(8);
  }
  // One of 0 ... n - 1.
  uint32_t Below(uint32_t n) {
    if (n < 2) return 0;
    if (!end_) return static_cast<uint32_t>(((Bits() >> 32) * n) >> 32);
    return static_cast<uint32_t>(Read(n <= 256 ? 1 : n <= 65536 ? 2 : 4) % n);
  }
  int Between(int low, int high) {
    return low + static_cast<int>(Below(static_cast<uint32_t>(high - low + 1)));
  }
  bool OneIn(uint32_t n) { return Below(n) == 1; }
  template <class T, std::size_t kCount>
  T Pick(const T (&values)[kCount]) {
    return values[Below(kCount)];
  }
  template <class T>
  T Pick(std::initializer_list<T> values) {
    return values.begin()[Below(static_cast<uint32_t>(values.size()))];
  }
  template <class T>
  const T& Pick(const std::vector<T>& values) {
    return values[Below(static_cast<uint32_t>(values.size()))];
  }
  // In [0, 1), a multiple of 2^-16: sums and products of such numbers are often exact.
  double Fraction() { return Below(65536) * 0x1p-16; }

 private:
  uint64_t Read(int count) {
    uint64_t value = 0;
    for (int i = 0; i < count && next_ != end_; ++i) value |= uint64_t{*next_++} << (8 * i);
    return value;
  }

  uint64_t state_ = 0;
  const uint8_t* next_ = nullptr;
  const uint8_t* end_ = nullptr;
};

// A running hash of numbers, sensitive to their order.
class Digest {
 public:
  void Add(uint64_t x) { value_ = Scramble(std::rotl(value_, 23) ^ x); }
  // Bit for bit, but one NaN is like another: which operand's payload survives an addition is the
  // compiler's choice.
  void Add(double x) { Add(x != x ? uint64_t{0x7FF8000000000000} : std::bit_cast<uint64_t>(x)); }
  void Add(int32_t x) { Add(static_cast<uint64_t>(static_cast<int64_t>(x))); }
  uint64_t value() const { return value_; }

 private:
  uint64_t value_ = 0x6B7572766F;
};

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
  Cvseq Sequence(bool closed = false);  // by chance unless it is to be
  KurvoRegion Region();
  CvParam Parameters();

  // Fewer control points of the longest splines and pieces of the longest composites. Every piece
  // of two composites may cross every other: that is honest work, which no call can be spared.
  void ShortCurves(int share) {
    long_counts_[0] = 60 / share;
    long_counts_[1] = 200 / share;
    long_composite_ = 100 / share;
  }

  double Number();          // a coordinate or a length
  double Parameter();       // of a curve, mostly in [0, 1]
  double* Point(int size);  // `size` numbers in a block

 private:
  bool hostile() const { return mode_ == Mode::kHostile; }
  bool tainted() const { return taint_.rarity || taint_.scale != 1 || taint_.one_value; }
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
  explicit Gallery(const KurvoRegion& sound);  // its loops, in both modes
  bool empty() const { return curves_[0].empty(); }
  const Curve& curve(Source& in, Mode mode, int32_t wanted) const;
  const Cvseq& sequence(Source& in, Mode mode) const;
  uint64_t Checksum() const { return store_.Checksum(); }

 private:
  Store store_;
  std::vector<Curve> curves_[2];  // by mode
  std::vector<Cvseq> sequences_[2];
};

}  // namespace kurvo_test
