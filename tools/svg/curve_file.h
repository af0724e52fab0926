// Drawings as JSON that holds their curves as records of the library (docs/json.md).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "geometry/result.h"
#include "svg/reader.h"

namespace kurvo::tools {

// Whether the bytes begin as such a file does, and no SVG file.
bool IsCurveFile(std::string_view bytes);

// `name` is that of the file in messages. Throws InputError.
Drawing ReadCurveFile(Context& context, const std::string& name, std::string_view bytes,
                      const ReadOptions& options);

// The knots of a spline with so many points over the parameters from 0 to 1, over which the
// library's curves run. Throws ElementError when they are none.
std::vector<double> KnotsOver01(std::vector<double> knots, std::size_t points);

// Throws ElementError for a curve that the library cannot work with.
void CheckRecord(Context& context, const Curve& curve);

// Numbers have the fewest digits that read back as the same double.
std::string CurveFileText(Context& context, const Result& result);

}  // namespace kurvo::tools
