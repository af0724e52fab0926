// Where a random call takes its choices from: a seeded generator, or the bytes of a fuzzer.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace kurvo_test {

// Scrambles a number (the finaliser of SplitMix64: Steele, Lea, Flood, "Fast splittable
// pseudorandom number generators", 2014).
constexpr uint64_t Scramble(uint64_t x) {
  x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9;
  x = (x ^ (x >> 27)) * 0x94D049BB133111EB;
  return x ^ (x >> 31);
}

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

}  // namespace kurvo_test
