// Records of the kernel that free what they hold, until they are handed to the caller.
#pragma once

#include <kurvo.h>

#include <cstddef>
#include <utility>

#include "base/memory.h"
#include "base/vec2.h"

namespace kurvo::outline {

class OwnedCurve {
 public:
  OwnedCurve() { KurvocvInitCurve(&curve_); }
  OwnedCurve(OwnedCurve&& other) noexcept : curve_(other.Release()) {}
  OwnedCurve& operator=(OwnedCurve&& other) noexcept {
    std::swap(curve_, other.curve_);
    return *this;
  }
  ~OwnedCurve() { KurvocvFreeCurve(&curve_); }

  const Curve& operator*() const { return curve_; }
  const Curve* operator->() const { return &curve_; }
  Curve* Get() { return &curve_; }
  // Gives the record away; what is left is empty.
  Curve Release() {
    const Curve released = curve_;
    KurvocvInitCurve(&curve_);
    return released;
  }

  // A new record of this type with arrays of these sizes, as KurvocvMallocCurve takes them. Throws
  // std::bad_alloc.
  template <class Block, class... Sizes>
  static std::pair<OwnedCurve, Block*> New(int32_t type, Sizes... sizes) {
    OwnedCurve curve;
    auto* block = static_cast<Block*>(KurvocvMallocCurve(&curve.curve_, type, sizes...));
    if (!block) throw std::bad_alloc();
    return {std::move(curve), block};
  }

 private:
  Curve curve_;
};

// The line between two points of the caller's coordinates. Throws std::bad_alloc.
OwnedCurve LineBetween(Vec2 start, Vec2 end);

// A deep copy, attribute words included, also of the pieces of composites. Throws Refusal with the
// kernel's code.
OwnedCurve CopyOf(const Curve& curve);

// The attribute words of `from`, also in the pieces of composites that both have.
void TakeAttributes(const Curve& from, Curve& to);

// A chain that grows.
class OwnedChain {
 public:
  OwnedChain() = default;
  OwnedChain(OwnedChain&& other) noexcept : curves_(std::move(other.curves_)) {
    other.curves_.clear();
  }
  OwnedChain& operator=(OwnedChain&& other) noexcept {
    curves_.swap(other.curves_);
    return *this;
  }
  ~OwnedChain() {
    for (Curve& curve : curves_) KurvocvFreeCurve(&curve);
  }

  std::size_t size() const { return curves_.size(); }
  const Curve& operator[](std::size_t i) const { return curves_[i]; }
  void Reserve(std::size_t count) { curves_.reserve(count); }
  void Add(OwnedCurve curve) {
    curves_.emplace_back();  // may throw: the curve is still its owner's
    curves_.back() = curve.Release();
  }
  // As a record of the caller's; this one is empty then. Throws std::bad_alloc.
  Cvseq Release();
  // For reading only.
  Cvseq View() { return {CountOf(curves_.size()), curves_.empty() ? nullptr : curves_.data()}; }

 private:
  Array<Curve> curves_;
};

// A deep copy, attribute words included. Throws Refusal.
OwnedChain CopyOf(const Cvseq& chain);

// Frees a region's loops and origins, and empties it.
void FreeRegion(KurvoRegion& region);

// A region that grows.
class OwnedRegion {
 public:
  OwnedRegion() = default;
  OwnedRegion(OwnedRegion&& other) noexcept : loops_(std::move(other.loops_)) {
    other.loops_.clear();
  }
  ~OwnedRegion() {
    for (Cvseq& loop : loops_) KurvocvFreeCvseq(&loop);
  }

  std::size_t size() const { return loops_.size(); }
  void Add(OwnedChain loop) {
    loops_.emplace_back();
    KurvocvInitCvseq(&loops_.back());
    loops_.back() = loop.Release();
  }
  // As a record of the caller's; this one is empty then. Throws std::bad_alloc.
  KurvoRegion Release(int32_t rule);

 private:
  Array<Cvseq> loops_;
};

}  // namespace kurvo::outline
