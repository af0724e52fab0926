// What the tests of division and extension share.
#pragma once

#include <gtest/gtest.h>

#include "support/generator.h"
#include "support/oracle.h"

namespace kurvo_test {

constexpr double kExact = 2e-11;  // coordinates are up to 10 and weights from .2: 1e-12 of a point

// Checks that `piece` runs over [0, 1] along the stretch [from, to] of `whole`, in own parameters.
inline void ExpectStretch(const Curve& piece, const Curve& whole, Wide from, Wide to,
                          double bound = kExact) {
  ASSERT_NE(piece.data, nullptr);
  ASSERT_EQ(piece.type, whole.type);
  EXPECT_EQ(Domain(piece), std::pair(0., 1.));
  const Oracle part(piece), all(whole);
  for (int i = 0; i <= 40; ++i) {
    const Wide s = (i + .5L) / 41;  // off the knots and joints, which belong to one side
    ASSERT_LE(Gap(part.PointAt(s), all.PointAt(from + s * (to - from))), bound)
        << "at " << static_cast<double>(s) << " of " << static_cast<double>(from) << " to "
        << static_cast<double>(to);
  }
}

}  // namespace kurvo_test
