// Where along its domain an interpolating B-spline passes the data points, and its knots.
#pragma once

#include <cstdint>

#include "foundation/point.h"

namespace kurvo {

// Below this difference neighbouring parameters are too much alike to tell two points apart: a few
// hundred units in the last place of the end of the domain.
constexpr double kParametersApart = 0x1p-44;

// Writes t[0 .. count - 1], the length of the polygon up to each point as a share of the whole;
// exactly 0 and 1 at the ends. False when they do not ascend by more than kParametersApart. Lengths
// are taken after multiplication of the coordinates by `scale`, so that no square overflows.
bool ChordLengthParameters(const double* points, int32_t count, double scale, double* t);

// Writes t[i] = i / (count - 1).
void EvenParameters(int32_t count, double* t);

// Writes the order + count knots: clamped, each inner one the mean of order - 1 parameters in turn
// (Piegl and Tiller, The NURBS Book, equation 9.8), so that each control point has its own
// parameter inside its support. They ascend if the parameters do.
void AveragedKnots(const double* t, int32_t count, int32_t order, double* knots);

}  // namespace kurvo
