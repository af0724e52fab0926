// What two curves have in common.
#pragma once

#include <vector>

#include "geometry/library.h"

namespace kurvo::tools {

struct CommonPoint {
  double first;  // parameters
  double second;
};

// A stretch along which both curves run, from the smaller parameter of the first one.
struct CommonStretch {
  CommonPoint from;
  CommonPoint to;
};

struct Common {
  bool overlap = false;
  std::vector<CommonPoint> points;
  // Of curves that overlap; empty when neither ends where they run together, so that no end of a
  // stretch is known.
  std::vector<CommonStretch> stretches;
};

Common CommonOf(Library& library, const OwnedCurve& first, const OwnedCurve& second);

// The length tolerance for points that are compared after both were computed: a point that lies on
// two curves may be off each of them by the library's tolerance. While it lives.
class WiderTolerance {
 public:
  explicit WiderTolerance(Library& library) : library_(library) {
    KurvoclPushEpsilon(2 * library.Tolerance(), library.State());
  }
  WiderTolerance(const WiderTolerance&) = delete;
  WiderTolerance& operator=(const WiderTolerance&) = delete;
  ~WiderTolerance() { KurvoclPopEpsilon(library_.State()); }

 private:
  Library& library_;
};

}  // namespace kurvo::tools
