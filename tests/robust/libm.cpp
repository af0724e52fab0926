// The linker renames the four functions (--wrap), and the one that compilers merge two of them to.
#include "robust/libm.h"

#include <utility>

namespace {
thread_local bool used = false;
}

bool kurvo_test::UsedLibm() { return std::exchange(used, false); }

extern "C" {
double __real_sin(double x);
double __real_cos(double x);
double __real_atan2(double y, double x);
double __real_pow(double x, double y);
void __real_sincos(double x, double* sine, double* cosine);

double __wrap_sin(double x) {
  used = true;
  return __real_sin(x);
}
double __wrap_cos(double x) {
  used = true;
  return __real_cos(x);
}
double __wrap_atan2(double y, double x) {
  used = true;
  return __real_atan2(y, x);
}
double __wrap_pow(double x, double y) {
  used = true;
  return __real_pow(x, y);
}
void __wrap_sincos(double x, double* sine, double* cosine) {
  used = true;
  __real_sincos(x, sine, cosine);
}
}
