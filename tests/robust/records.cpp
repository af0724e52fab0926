// Blocks, numbers and sequences; the curves are in records_curves.cpp.
#include "robust/records.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include "support/curve_text.h"

namespace kurvo_test {

Store::~Store() {
  for (const Block& block : blocks_) std::free(block.memory);
}

void* Store::Allocate(std::size_t size, bool numbers) {
  void* const memory = std::calloc(1, size);
  if (!memory) throw std::bad_alloc();
  blocks_.push_back({memory, size, numbers});
  return memory;
}

bool Store::Owns(const void* memory) const {
  return std::any_of(blocks_.begin(), blocks_.end(), [=](auto& b) { return b.memory == memory; });
}

void Store::Forget(const void* memory) {
  std::erase_if(blocks_, [=](const Block& block) { return block.memory == memory; });
}

Curve Store::Keep(const Curve& cv) {
  if (!cv.data) return cv;
  const auto kept = [&](const double* from, int count) {
    double* const to = Numbers(static_cast<std::size_t>(count));
    std::copy(from, from + count, to);
    return to;
  };
  if (cv.type == CV_LINE) return {cv.type, Put(*static_cast<KurvoLine*>(cv.data)), 0, 0, 0};
  if (cv.type == CV_ARC) return {cv.type, Put(*static_cast<KurvoArc*>(cv.data)), 0, 0, 0};
  if (cv.type == CV_SEGCV) {
    auto* const block = Zeroed<KurvoSegcv>();
    *block = *static_cast<KurvoSegcv*>(cv.data);
    const Curve* const pieces = block->curves;
    block->curves = Zeroed<Curve>(static_cast<std::size_t>(block->count));
    std::transform(pieces, pieces + block->count, block->curves, [&](auto& p) { return Keep(p); });
    block->widths = kept(block->widths, block->count);
    return {cv.type, block, 0, 0, 0};
  }
  const FreeForm form(cv);
  auto* const block = Zeroed<KurvoRBSpline>();
  block->order = form.knots ? form.order : form.order - 1;
  block->points = reinterpret_cast<HCoord*>(kept(form.points, form.count * form.stride));
  if (!form.knots) return {cv.type, block, 0, 0, 0};
  block->count = form.count;
  block->knots = kept(form.knots, form.order + form.count);
  return {cv.type, block, 0, 0, 0};
}

uint64_t Store::Checksum() const {
  Digest sum;
  for (const Block& block : blocks_) {
    const char* const bytes = static_cast<const char*>(block.memory);
    for (std::size_t i = 0; i < block.size; i += 8) {
      uint64_t word;  // every block is made of words
      std::memcpy(&word, bytes + i, sizeof word);
      sum.Add(word);
    }
  }
  return sum.value();
}

void Store::AddNumbers(Digest& digest) const {
  for (const Block& block : blocks_)
    for (std::size_t i = 0; block.numbers && i < block.size / sizeof(double); ++i)
      digest.Add(static_cast<const double*>(block.memory)[i]);
}

double Maker::Plain() {
  const uint32_t kind = in_.Below(4);
  if (kind < 2) return in_.Between(-8, 8);
  return kind == 2 ? in_.Between(-512, 512) / 64. : 20 * in_.Fraction() - 10;
}

double Maker::Malicious() {
  using Limits = std::numeric_limits<double>;
  // clang-format off
  constexpr double kValues[] = {
      0., -0., Limits::denorm_min(), -Limits::denorm_min(), Limits::min(), 1e-308, 1e308, -1e308,
      Limits::max(), -Limits::max(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(),
      1e-300, 1e-160, 1e-16, 1e-6, -1e-6, 5e-7, 1e-3, .5, 1, -1, 1e6, 2147483648.,
      9007199254740992., -1e15, 1e19, 1e100, 1e154, -1e160};
  // clang-format on
  const uint32_t kind = in_.Below(4);
  if (kind == 0) return Plain();
  return kind == 1 ? std::bit_cast<double>(in_.Bits()) : in_.Pick(kValues);
}

double Maker::Number() { return hostile() && in_.Below(2) ? Malicious() : Plain(); }

double Maker::Parameter() {
  if (hostile() && in_.OneIn(3)) return Malicious();
  const uint32_t kind = in_.Below(8);
  if (kind == 0) return in_.Below(2);
  if (kind == 1) return 2 * in_.Fraction() - .5;
  return kind < 4 ? in_.Below(9) / 8. : in_.Fraction();
}

double* Maker::Point(int size) {
  double* const p = store_.Numbers(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i) p[i] = Number();
  if (!hostile()) p[size == 4 ? 3 : 2] = size == 4 ? .5 + in_.Fraction() : 0;
  return p;
}

// Joined end to start, closed or not.
Cvseq Maker::Sequence(bool closed) {
  if (hostile() && in_.OneIn(16))
    return {in_.Pick({0, -1, INT32_MIN, 3}), in_.Below(2) ? store_.Zeroed<::Curve>(3) : nullptr};
  const int count = hostile() && in_.OneIn(64) ? 300 : in_.Between(1, 5);
  const Cvseq seq = {count, store_.Zeroed<::Curve>(static_cast<std::size_t>(count))};
  double first[2] = {Plain(), Plain()};
  double from[2] = {first[0], first[1]};
  closed = closed || in_.Below(2) == 0;
  for (int i = 0; i < count; ++i) {
    double to[2] = {Plain(), Plain()};
    if (closed && i == count - 1) std::memcpy(to, first, sizeof to);
    seq.curves[i] = hostile() && in_.OneIn(6) ? Curve(0, 1) : Between(from, to);
    std::memcpy(from, to, sizeof from);
  }
  return seq;
}

KurvoRegion Maker::Region() {
  if (hostile() && in_.OneIn(16))
    return {in_.Pick({0, -1, INT32_MIN, 2}), in_.Pick({0, 1, -1, 4}),
            in_.Below(2) ? store_.Zeroed<Cvseq>(2) : nullptr, nullptr};
  const int count = in_.Between(0, 3);
  const KurvoRegion region = {count, in_.Between(0, 3),
                              store_.Zeroed<Cvseq>(static_cast<std::size_t>(count)), nullptr};
  for (int i = 0; i < count; ++i) region.loops[i] = Sequence(true);
  return region;
}

// Ascending, in [0, 1].
CvParam Maker::Parameters() {
  if (hostile() && in_.OneIn(8))
    return {in_.Pick({0, -1, INT32_MIN, 2}), in_.Below(2) ? store_.Numbers(2) : nullptr};
  const int count = hostile() && in_.OneIn(200) ? 5000 : in_.Between(0, 5);
  const CvParam list = {count, store_.Numbers(static_cast<std::size_t>(count))};
  for (int i = 0; i < count; ++i) list.values[i] = (i + in_.Fraction()) / count;
  if (hostile() && in_.Below(2))
    for (int i = 0; i < count; ++i)
      if (in_.OneIn(3)) list.values[i] = in_.Below(2) ? Malicious() : Parameter();
  return list;
}

Gallery::Gallery(uint64_t seed, int count) {
  Source in(seed);
  for (const int mode : {0, 1}) {
    Maker maker(in, Mode(mode), store_);
    for (int i = 0; i < count; ++i) {
      curves_[mode].push_back(maker.Curve());
      sequences_[mode].push_back(maker.Sequence());
    }
  }
}

Gallery::Gallery(const KurvoRegion& sound) {
  for (int i = 0; i < sound.count; ++i) {
    Cvseq loop = sound.loops[i];
    const Curve* const curves = loop.curves;
    loop.curves = store_.Zeroed<Curve>(static_cast<std::size_t>(loop.count));
    for (int k = 0; k < loop.count; ++k) {
      loop.curves[k] = store_.Keep(curves[k]);
      curves_[0].push_back(loop.curves[k]);
    }
    sequences_[0].push_back(loop);
  }
  curves_[1] = curves_[0];
  sequences_[1] = sequences_[0];
}

const Curve& Gallery::curve(Source& in, Mode mode, int32_t wanted) const {
  const Curve* curve = &in.Pick(curves_[int(mode)]);
  for (int tries = 0; wanted && tries < 20 && curve->type != wanted; ++tries)
    curve = &in.Pick(curves_[int(mode)]);
  return *curve;
}

const Cvseq& Gallery::sequence(Source& in, Mode mode) const {
  return in.Pick(sequences_[int(mode)]);
}

}  // namespace kurvo_test
