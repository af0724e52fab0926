// Functions of the interface that the library may not have yet: null until it does.
#pragma once

#include "kurvo.h"

extern "C" {
#define KURVO_TO_COME __attribute__((weak))
KURVO_TO_COME void KurvocvMove(Curve* curve, const Coord delta, GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvRotate(Curve* curve, const Coord centre, const Coord axis, double angle,
                                 GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvMirror(Curve* curve, const Coord base, const Coord normal,
                                 GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvScale(Curve* curve, const Coord centre, const Coord dir, double s,
                                GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvMvStartPoint(Curve* curve, const Coord delta, GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvMvEndPoint(Curve* curve, const Coord delta, GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvGenBspl(const double* points, int32_t count, int32_t order, Curve* result,
                                  GlobalVar* g) noexcept;
KURVO_TO_COME void KurvocvOffsetCurve(const Curve* curve, const Coord normal, double distance,
                                      double tolerance, Cvseq* result, GlobalVar* g) noexcept;
KURVO_TO_COME double KurvocvDistCurve(const Curve* a, const Curve* b, double* ta, double* tb,
                                      GlobalVar* g) noexcept;
#undef KURVO_TO_COME
}
