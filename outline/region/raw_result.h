// From raw loops to a region of the caller's.
#pragma once

#include <kurvo_outline.h>

#include <span>
#include <utility>

#include "base/bounds.h"
#include "base/options.h"
#include "raw/offset_loops.h"
#include "strand/frame.h"

namespace kurvo::outline {

// A frame for lengths that may reach far beyond the box.
Frame FrameFor(Bounds box, double reach);

// Makes origins that name curves of the sources, by their `region`, those of what these come from;
// sources without origins are what is named.
void NameThrough(KurvoRegion& made, std::span<const KurvoRegion* const> sources);

// A region that is freed unless it is released.
class KeptRegion {
 public:
  KeptRegion() = default;
  KeptRegion(const KeptRegion&) = delete;
  KeptRegion& operator=(const KeptRegion&) = delete;
  ~KeptRegion() { KurvoRegionFree(&region_); }

  KurvoRegion* Get() { return &region_; }
  const KurvoRegion& operator*() const { return region_; }
  KurvoRegion Release() { return std::exchange(region_, KurvoRegion{}); }

 private:
  KurvoRegion region_ = {};
};

// A call made of others: each has its share of the tolerance and of what `proceed` is told.
class Composition {
 public:
  // `given` may be null; the size is that of the input (length), the reach how far the result goes
  // beyond it.
  Composition(const KurvoOptions* given, double size, double reach, const GlobalVar& g);

  const Settings& settings() const { return settings_; }
  double tol() const { return tol_; }
  double raw_tol() const { return kRawShare * tol_; }
  bool wants_origins() const { return (settings_.flags & KURVO_WITH_ORIGINS) != 0; }

  // KurvoRegionSimplify with a share of the tolerance, telling `proceed` from `from` to `to`.
  // Throws Refusal.
  void Simplify(const KurvoRegion& region, double gap, double from, double to, KeptRegion& out);
  // The same; result: false, and nothing made, where the region is simple as it stands.
  bool SimplifyUnlessSimple(const KurvoRegion& region, double gap, double from, double to,
                            KeptRegion& out);
  Progress ProgressOver(double from, double to);

  // Simplifies raw loops into a result whose origins are those of the raw curves, seen through
  // `source` (null: the raw curves name the input itself).
  void Finish(RawRegion& raw, const Made& made, const Frame& frame, const KurvoRegion* source,
              KeptRegion& out);
  // Adds strips, whose origins name curves of the simple region, to it or takes them off. Origins
  // of the result name those too.
  void Join(const KurvoRegion& region, const KurvoRegion& strips, bool grows, KeptRegion& out);

  // For one of several operations that have a share of the tolerance of a clean-up.
  KurvoOptions OptionsOfPart(double share) const;
  void Count(const KurvoReport& report);
  const KurvoReport& report() const { return report_; }
  void CountGaps(int32_t gaps) { report_.gaps += gaps; }

 private:
  static constexpr double kRawShare = 0.75, kSimplifyShare = 0.125;

  static int Ask(double done, void* user);
  KurvoOptions OptionsOf(double gap, double from, double to);

  Settings settings_;
  double tol_;
  GlobalVar g_;
  int (*proceed_)(double, void*);
  void* user_;
  double from_ = 0, to_ = 1;  // of what proceed is told
  KurvoReport report_ = {};
};

}  // namespace kurvo::outline
