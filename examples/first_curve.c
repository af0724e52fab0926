#include <kurvo.h>
#include <stdio.h>
#include <string.h>

int main(void) {
  const Coord control_points[4] = {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}};
  GlobalVar g;
  KurvoInitGlobalVar(&g);

  Curve curve;
  KurvoBezier *bezier = KurvocvMallocCurve(&curve, CV_BEZIER, 3);
  if (!bezier) return 1;
  memcpy(bezier->points, control_points, sizeof control_points);

  for (double t = 0.25; t < 1; t += 0.25) {
    Coord p;
    KurvocvPosition(&curve, t, p, &g);
    printf("t = %.2f: %g, %g\n", t, p[0], p[1]);
  }
  if (!KurvoOk(&g)) printf("error %06X\n", (unsigned)KurvoErrGet(&g));
  KurvocvFreeCurve(&curve);
  return !KurvoOk(&g);
}
