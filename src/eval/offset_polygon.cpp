// Control polygons moved sideways.
#include "eval/offset_polygon.h"

#include <cmath>

namespace kurvo {
namespace {

constexpr double kSharpestChecked = -0.8660254037844386;  // cosine of 150 degrees
constexpr double kSharpestUnchecked = 0.5;                // cosine of 60 degrees

double CosineOf(SharpestTurn sharpest) {
  return sharpest == SharpestTurn::kChecked ? kSharpestChecked : kSharpestUnchecked;
}

constexpr int32_t kNone = -1;

// The unit normal to the left of the leg, if it has a direction.
bool LeftNormal(Vec2 leg, double length_tol, Vec2& normal) {
  if (length_tol >= std::fabs(leg.x) && length_tol >= std::fabs(leg.y)) return false;
  const double length = Length(leg);
  normal = {-leg.y / length, leg.x / length};
  return true;
}

// The leg with a direction that comes next after leg i in steps of `step`.
int32_t NextWithDirection(const bool* has_direction, int32_t n, int32_t i, int32_t step) {
  for (int32_t k = i + step; 0 <= k && k < n; k += step)
    if (has_direction[k]) return k;
  return kNone;
}

// The nearest leg with a direction, seen from the end of the polygon that leg i is nearer to:
// inwards first.
int32_t Neighbour(const bool* has_direction, int32_t n, int32_t i) {
  const int32_t inwards = 2 * i < n ? 1 : -1;
  const int32_t inner = NextWithDirection(has_direction, n, i, inwards);
  return inner != kNone ? inner : NextWithDirection(has_direction, n, i, -inwards);
}

// The unit left normals of all legs; false when no leg has a direction.
bool LeftNormals(const Vec2* points, int32_t n, double length_tol, Vec2* normals) {
  bool has_direction[kMaxOffsetPoints];
  int32_t missing = 0;
  for (int32_t i = 0; i < n; ++i) {
    has_direction[i] = LeftNormal(points[i + 1] - points[i], length_tol, normals[i]);
    if (!has_direction[i]) ++missing;
  }
  if (missing == n) return false;
  for (int32_t i = 0; missing > 0 && i < n; ++i)
    if (!has_direction[i]) normals[i] = normals[Neighbour(has_direction, n, i)];
  return true;
}

// Where the lines through the tips of the unit normals a and b, each at right angles to it, cross:
// (a + b) / (1 + a b). The tip of a when they do not.
Vec2 Corner(Vec2 a, Vec2 b, double angle_tol, double least_cosine) {
  const double cosine = Dot(a, b);
  if (angle_tol >= std::fabs(Cross(a, b)) || least_cosine > cosine) return a;
  return (1.0 / (1.0 + cosine)) * (a + b);
}

}  // namespace

bool MovePolygon(const Vec2* points, int32_t n, double distance, double length_tol,
                 double angle_tol, SharpestTurn sharpest, Vec2* moves) {
  Vec2* normals = moves + 1;  // each is there until the move in its place is known
  if (!LeftNormals(points, n, length_tol, normals)) return false;
  moves[0] = distance * normals[0];
  for (int32_t i = 1; i < n; ++i)
    moves[i] = distance * Corner(normals[i - 1], normals[i], angle_tol, CosineOf(sharpest));
  moves[n] = distance * normals[n - 1];
  return true;
}

}  // namespace kurvo
