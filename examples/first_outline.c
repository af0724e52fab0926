#include <kurvo_outline.h>
#include <stdio.h>

/* A slot: two half circles of radius 2; the region closes it by the lines between them. */
static void HalfCircle(Curve *curve, double x, double y, double to_y) {
  KurvoArc *arc = KurvocvMallocCurve(curve, CV_ARC);
  if (!arc) return;
  arc->radius = 2;
  KurvoclSetCoord(arc->centre, x, (y + to_y) / 2, 0);
  KurvoclSetCoord(arc->normal, 0, 0, 1);
  KurvoclSetCoord(arc->start, x, y, 0);
  KurvoclSetCoord(arc->end, x, to_y, 0);
}

int main(void) {
  GlobalVar g;
  KurvoInitGlobalVar(&g);
  KurvoRegion slot;
  KurvoRegionInit(&slot);

  Curve halves[2];
  HalfCircle(&halves[0], 10, 0, 4);
  HalfCircle(&halves[1], 0, 4, 0);
  const Cvseq chain = {2, halves};
  double length;
  if (KurvoRegionAdd(&slot, &chain, 10, &g) && KurvoChainLength(&slot.loops[0], &length, &g))
    printf("%d curves, %.3f long\n", slot.loops[0].count, length);

  const double points[6] = {11, 2, 0, 11, 4, 0};
  int32_t where[2];
  if (KurvoRegionLocate(&slot, points, 2, where, NULL, &g))
    for (int i = 0; i < 2; ++i) printf("%s\n", where[i] == KURVO_REGION_INSIDE ? "in" : "out");
  if (!KurvoOk(&g)) printf("error %06X\n", (unsigned)KurvoErrGet(&g));

  KurvoRegionFree(&slot);
  KurvocvFreeCurve(&halves[0]);
  KurvocvFreeCurve(&halves[1]);
  return !KurvoOk(&g);
}
