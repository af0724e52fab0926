// Comparison of vectors by direction.
#include "calc/directions.h"

namespace kurvo {
namespace {

// An angle this little below 0, in radians, is not taken for nearly a full turn.
// Fixed behaviour: in UnsignedAngle this slack is epsilon. Do not unify.
constexpr double kParallelSlack = 0.0001;

// The angle from a to b as a plain difference of polar angles, in [-2 pi, 2 pi].
double AngleBetween(Vec2 a, Vec2 b) { return AngleOf(b) - AngleOf(a); }

// Fixed behaviour: the angle is compared with epsilon0 here and with epsilon in Parallel. Do not
// unify.
bool SameVector(Vec3 a, Vec3 b, const GlobalVar& g) {
  if (!(g.epsilon >= std::fabs(Length(a) - Length(b)))) return false;
  const double angle = std::fabs(AngleBetween(Planar(a), Planar(b)));
  return g.epsilon0 >= angle || g.epsilon0 >= std::fabs(angle - kTwoPi);
}

double UnsignedAngle(Vec2 a, Vec2 b, double slack) {
  const double angle = OneTurn(AngleBetween(a, b), slack);
  return angle > kPi ? kTwoPi - angle : angle;
}

}  // namespace

bool Parallel(Vec2 a, Vec2 b, double angle_tol) {
  const double angle = OneTurn(AngleBetween(a, b), kParallelSlack);
  return (-angle_tol <= angle && angle <= angle_tol) ||
         (kPi - angle_tol <= angle && angle <= kPi + angle_tol);
}

}  // namespace kurvo

using kurvo::Planar;
using kurvo::Spatial;

extern "C" {

void KurvoclUnitVector(Coord v, GlobalVar* g) noexcept {
  kurvo::Store(kurvo::UnitVector(Spatial(v), *g), v);
}

int KurvoclSameVector(const Coord a, const Coord b, const GlobalVar* g) noexcept {
  return int{kurvo::SameVector(Spatial(a), Spatial(b), *g)};
}

double KurvoclVectorAngle(const Coord a, const Coord b, const GlobalVar* g) noexcept {
  return kurvo::UnsignedAngle(Planar(a), Planar(b), g->epsilon);
}

int KurvoclParaVector(const Coord a, const Coord b, const GlobalVar* g) noexcept {
  return int{kurvo::Parallel(Planar(a), Planar(b), g->epsilon)};
}

}  // extern "C"
