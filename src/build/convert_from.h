// Conversion from each type of curve to the others, except to a line and to the same type.
#pragma once

#include "build/convert.h"
#include "records/views.h"

namespace kurvo {

// Each gives an empty handle where `type` cannot represent the curve exactly. `source` is the
// record that the view shows.
OwnedCurve ConvertFrom(const KurvoLine& line, int32_t type, LinePiece line_piece, GlobalVar& g);
OwnedCurve ConvertFrom(const KurvoArc& arc, int32_t type);
OwnedCurve ConvertFrom(const BezierView<3>& bezier, int32_t type);
OwnedCurve ConvertFrom(const BezierView<4>& bezier, int32_t type, const Curve& source,
                       GlobalVar& g);
OwnedCurve ConvertFrom(const SplineView<3>& spline, int32_t type);
OwnedCurve ConvertFrom(const SplineView<4>& spline, int32_t type, const Curve& source,
                       GlobalVar& g);
OwnedCurve ConvertFrom(const CompositeView& composite, int32_t type, const Curve& source,
                       GlobalVar& g);

}  // namespace kurvo
