// The tolerances of a `GlobalVar` and their two save/restore stacks.
#include <cstddef>

#include "foundation/error_codes.h"

static_assert(sizeof(GlobalVar) == 1056);
static_assert(offsetof(GlobalVar, epsilon_1) == 8);
static_assert(offsetof(GlobalVar, epsilon2) == 16);
static_assert(offsetof(GlobalVar, epsilon0) == 24);
static_assert(offsetof(GlobalVar, error) == 32);
static_assert(offsetof(GlobalVar, depth) == 36);
static_assert(offsetof(GlobalVar, stack) == 40);
static_assert(offsetof(GlobalVar, depth0) == 544);
static_assert(offsetof(GlobalVar, stack0) == 552);

namespace kurvo {
namespace {

constexpr double kDefaultTolerance = 1e-6;          // length, and dimensionless
constexpr double kDefaultSquaredTolerance = 1e-12;  // length squared
constexpr double kSmallestTolerance = 1e-6;         // what the setters accept
constexpr double kLargestTolerance = 0.01;          // also the ceiling of a push

// A NaN fails.
bool Settable(double tolerance) {
  return tolerance >= kSmallestTolerance && kLargestTolerance >= tolerance;
}

// Saves `current` and replaces it. Has no lower bound, unlike the setters, and clamps above instead
// of refusing: a caller brackets one operation with whatever tolerance that operation needs.
// Returns false when nothing was pushed.
bool Push(double value, double& current, double (&stack)[KURVO_STACK_SIZE], int32_t& depth,
          GlobalVar& g) {
  if (depth < 0 || depth >= KURVO_STACK_SIZE) return false;  // a full stack refuses silently
  if (0.0 >= value) return Refuse(g, KURVO_ERR_TOLERANCE, false);
  stack[depth++] = current;
  current = kLargestTolerance >= value ? value : kLargestTolerance;  // NaN becomes the ceiling
  return true;
}

// Restores the value saved last. Returns false when there is none.
bool Pop(double& current, const double (&stack)[KURVO_STACK_SIZE], int32_t& depth, GlobalVar& g) {
  if (depth < 1 || depth > KURVO_STACK_SIZE) return Refuse(g, KURVO_ERR_STACK_EMPTY, false);
  current = stack[--depth];
  return true;
}

}  // namespace
}  // namespace kurvo

extern "C" {

int KurvoInitGlobalVar(GlobalVar* g) noexcept {
  *g = GlobalVar{};
  g->epsilon = g->epsilon_1 = g->epsilon0 = kurvo::kDefaultTolerance;
  g->epsilon2 = kurvo::kDefaultSquaredTolerance;
  return 0;
}

double GetEpsilon(const GlobalVar* g) noexcept { return g->epsilon; }

double GetEpsilon_1(const GlobalVar* g) noexcept { return g->epsilon_1; }

double GetEpsilon2(const GlobalVar* g) noexcept { return g->epsilon2; }

double GetEpsilon0(const GlobalVar* g) noexcept { return g->epsilon0; }

void KurvoclSetEpsilon(double eps, double eps1, GlobalVar* g) noexcept {
  if (!kurvo::Settable(eps) || !kurvo::Settable(eps1)) return kurvo::Fail(*g, KURVO_ERR_TOLERANCE);
  g->epsilon = eps;
  g->epsilon_1 = eps1;
  g->epsilon2 = eps * eps;
}

void KurvoclSetEpsilon0(double eps0, GlobalVar* g) noexcept {
  if (!kurvo::Settable(eps0)) return kurvo::Fail(*g, KURVO_ERR_TOLERANCE);
  g->epsilon0 = eps0;
}

void KurvoclPushEpsilon(double eps, GlobalVar* g) noexcept {
  if (kurvo::Push(eps, g->epsilon, g->stack, g->depth, *g)) g->epsilon2 = g->epsilon * g->epsilon;
}

double KurvoclPopEpsilon(GlobalVar* g) noexcept {
  const double before = g->epsilon;
  if (kurvo::Pop(g->epsilon, g->stack, g->depth, *g)) g->epsilon2 = g->epsilon * g->epsilon;
  return before;
}

void KurvoclPushEpsilon0(double eps, GlobalVar* g) noexcept {
  kurvo::Push(eps, g->epsilon0, g->stack0, g->depth0, *g);
}

double KurvoclPopEpsilon0(GlobalVar* g) noexcept {
  const double before = g->epsilon0;
  kurvo::Pop(g->epsilon0, g->stack0, g->depth0, *g);
  return before;
}

}  // extern "C"
