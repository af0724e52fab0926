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
  if (KurvoRegionAdd(&slot, &chain, 10, &g)) printf("%d curves\n", slot.loops[0].count);
  if (!KurvoOk(&g)) printf("error %06X\n", (unsigned)KurvoErrGet(&g));

  KurvoRegionFree(&slot);
  KurvocvFreeCurve(&halves[0]);
  KurvocvFreeCurve(&halves[1]);
  return !KurvoOk(&g);
}
