// Error codes taken apart.
#include <gtest/gtest.h>

#include "kurvo.h"

namespace {

TEST(ErrorCodes, ComeApartIntoTheirFields) {
  const struct {
    int code, severity, module, group, action;
  } rows[] = {
      {0, 0, 0, 0, 0},
      {KURVO_ERR_MEMORY, 3, 17, 2051, 3},
      {KURVO_ERR_CURVE, 2, 20, 3411, 1},
      {KURVO_ERR_TOLERANCE, 2, 20, 3415, 1},
      {KURVO_ERR_STACK_EMPTY, 2, 20, 3797, 1},
      {KURVO_WARN_SHORT_VECTOR, 1, 20, 3817, 1},
      {KURVO_ERR_SAME_POINTS, 2, 20, 2295, 1},
      {KURVO_ERR_RADIUS_TOO_SMALL, 2, 29, 2298, 2},
      {0x764C51, 1, 20, 3475, 1},
      {0xD53, 3, 84, 3, 0},
      {0x3FC, 0, 255, 0, 0},
      {0x400, 0, 0, 1, 0},
      {0x3FFC00, 0, 0, 4095, 0},
      {0x3C00000, 0, 0, 0, 15},
      {-1, 3, 255, 4095, 15},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(KurvoErrSeverity(row.code), row.severity) << row.code;
    EXPECT_EQ(KurvoErrModule(row.code), row.module) << row.code;
    EXPECT_EQ(KurvoErrGroup(row.code), row.group) << row.code;
    EXPECT_EQ(KurvoErrAction(row.code), row.action) << row.code;
    GlobalVar g;
    KurvoInitGlobalVar(&g);
    g.error = row.code;
    EXPECT_EQ(KurvoOk(&g), int{row.severity < 2}) << row.code;
    EXPECT_EQ(KurvoErrGet(&g), row.code);
    KurvoErrReset(&g);
    EXPECT_EQ(KurvoErrGet(&g), 0);
  }
}

}  // namespace
