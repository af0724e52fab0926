#include <cstdio>
#include <kurvo.hpp>
int main() {
  kurvo::Context context;
  auto curve = kurvo::Curve::Bezier({{0, 0}, {1, 2}, {3, 2}, {4, 0}}).value();
  auto line = kurvo::Curve::Line({0, 1}, {4, 1}).value();
  auto meetings = curve.Intersect(line, context).value();
  for (double t : meetings.a) {
    auto p = curve.Position(t, context).value();
    std::printf("t = %.4f: %g, %g\n", t, p.x, p.y);
  }
}
