// Tolerances and the two stacks that save them; error codes taken apart.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstring>

#include "support/basics.h"

namespace {

using kurvo_test::Globals;
using kurvo_test::kNaN;

bool SameBytes(const GlobalVar& a, const GlobalVar& b) {
  return std::memcmp(&a, &b, sizeof(GlobalVar)) == 0;
}

TEST(InitGlobalVar, WritesEveryFieldOfADirtyRecord) {
  GlobalVar g;
  std::memset(&g, 0xFF, sizeof g);
  EXPECT_EQ(KurvoInitGlobalVar(&g), 0);
  EXPECT_EQ(std::bit_cast<uint64_t>(GetEpsilon(&g)), 0x3EB0C6F7A0B5ED8Du);
  EXPECT_EQ(std::bit_cast<uint64_t>(GetEpsilon_1(&g)), 0x3EB0C6F7A0B5ED8Du);
  EXPECT_EQ(std::bit_cast<uint64_t>(GetEpsilon2(&g)), 0x3D719799812DEA11u);
  EXPECT_EQ(std::bit_cast<uint64_t>(GetEpsilon0(&g)), 0x3EB0C6F7A0B5ED8Du);
  for (size_t i = offsetof(GlobalVar, error); i < sizeof g; ++i)
    ASSERT_EQ(reinterpret_cast<const char*>(&g)[i], 0) << "byte " << i;
}

TEST(SetEpsilon, AcceptsTheClosedRangeAndChangesNothingOtherwise) {
  const double above = std::nextafter(.01, 1);
  const double below = std::nextafter(1e-6, 0);
  const struct {
    double eps;
    double eps1;
    bool accepted;
  } rows[] = {
      {1e-6, .01, true},    {.01, 1e-6, true},   {1e-3, 1e-4, true},   {above, 1e-3, false},
      {.02, 1e-3, false},   {1e-3, 5e-7, false}, {below, 1e-3, false}, {1e-3, below, false},
      {1e-3, above, false}, {kNaN, 1e-3, false}, {1e-3, kNaN, false},  {-1e-3, 1e-3, false},
  };
  for (const auto& row : rows) {
    Globals g;
    KurvoclPushEpsilon(2e-3, &g);
    GlobalVar want = g;
    if (row.accepted) {
      want.epsilon = row.eps;
      want.epsilon_1 = row.eps1;
      want.epsilon2 = row.eps * row.eps;
    } else {
      want.error = KURVO_ERR_TOLERANCE;
    }
    KurvoclSetEpsilon(row.eps, row.eps1, &g);
    EXPECT_TRUE(SameBytes(g, want)) << row.eps << ' ' << row.eps1;
    Globals g0;
    want = g0;
    const bool accepted = row.accepted || row.eps == 1e-3;  // eps1 plays no part here
    (accepted ? want.epsilon0 = row.eps : want.error = KURVO_ERR_TOLERANCE);
    KurvoclSetEpsilon0(row.eps, &g0);
    EXPECT_TRUE(SameBytes(g0, want)) << row.eps;
  }
}

// One of the two stacks, and where the record keeps it.
struct Stack {
  const char* name;
  void (*push)(double eps, GlobalVar* g) noexcept;
  double (*pop)(GlobalVar* g) noexcept;
  double GlobalVar::*current;
  int32_t GlobalVar::*depth;
  double (GlobalVar::*saved)[KURVO_STACK_SIZE];
};

const Stack kStacks[] = {
    {"epsilon", KurvoclPushEpsilon, KurvoclPopEpsilon, &GlobalVar::epsilon, &GlobalVar::depth,
     &GlobalVar::stack},
    {"epsilon0", KurvoclPushEpsilon0, KurvoclPopEpsilon0, &GlobalVar::epsilon0, &GlobalVar::depth0,
     &GlobalVar::stack0},
};

// What `g` should be with `eps` in force: epsilon2 follows epsilon alone.
GlobalVar With(const Stack& stack, GlobalVar g, double eps) {
  g.*stack.current = eps;
  if (stack.current == &GlobalVar::epsilon) g.epsilon2 = eps * eps;
  return g;
}

TEST(ToleranceStacks, PushAnyPositiveValueUpToACeiling) {
  const struct {
    double eps;
    double in_force;  // 0 when refused
  } rows[] = {{1e-4, 1e-4}, {1e-9, 1e-9}, {.01, .01}, {.5, .01},
              {kNaN, .01},  {0, 0},       {-1, 0},    {-0.0, 0}};
  for (const Stack& stack : kStacks) {
    for (const auto& row : rows) {
      Globals g;
      GlobalVar want = g;
      if (row.in_force > 0) {
        want = With(stack, want, row.in_force);
        (want.*stack.saved)[0] = 1e-6;
        want.*stack.depth = 1;
      } else {
        want.error = KURVO_ERR_TOLERANCE;
      }
      stack.push(row.eps, &g);
      EXPECT_TRUE(SameBytes(g, want)) << stack.name << ' ' << row.eps;
    }
  }
}

TEST(ToleranceStacks, HoldSixtyThreeValuesAndRefuseTheNextSilently) {
  for (const Stack& stack : kStacks) {
    struct {
      Globals g;
      uint64_t canary = 0x0123456789ABCDEF;
    } record;
    GlobalVar& g = record.g;
    const Globals fresh;
    const auto value = [](int i) { return i == 0 ? 1e-6 : i * 1e-4; };
    for (int i = 1; i <= KURVO_STACK_SIZE; ++i) stack.push(value(i), &g);
    GlobalVar want = With(stack, fresh, value(KURVO_STACK_SIZE));
    want.*stack.depth = KURVO_STACK_SIZE;
    for (int i = 0; i < KURVO_STACK_SIZE; ++i) (want.*stack.saved)[i] = value(i);
    EXPECT_TRUE(SameBytes(g, want)) << stack.name;  // the other stack untouched, too

    for (const double eps : {1e-5, .5, -1.0, 0.0, kNaN}) stack.push(eps, &g);
    EXPECT_TRUE(SameBytes(g, want)) << stack.name << ": fullness comes before the value";
    EXPECT_EQ(record.canary, 0x0123456789ABCDEFu) << stack.name;

    for (int i = KURVO_STACK_SIZE; i > 0; --i) {
      EXPECT_EQ(stack.pop(&g), value(i)) << stack.name;  // the value in force before the pop
      EXPECT_EQ(g.*stack.current, value(i - 1)) << stack.name;
      EXPECT_EQ(g.epsilon2, g.epsilon == 1e-6 ? 1e-12 : g.epsilon * g.epsilon) << stack.name;
    }
    EXPECT_EQ(KurvoErrGet(&g), 0) << stack.name;
    EXPECT_EQ(stack.pop(&g), 1e-6) << stack.name;
    EXPECT_EQ(KurvoErrGet(&g), KURVO_ERR_STACK_EMPTY) << stack.name;
    EXPECT_EQ(g.*stack.depth, 0) << stack.name;
    for (const int32_t depth : {-1, 64, INT32_MIN, INT32_MAX}) {  // which cannot be
      g.*stack.depth = depth;
      stack.push(1e-4, &g);
      EXPECT_EQ(stack.pop(&g), 1e-6) << stack.name << ' ' << depth;
      EXPECT_EQ(g.*stack.depth, depth);
    }
  }
}

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
