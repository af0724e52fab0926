// Drawings as JSON that holds their curves as records of the library (docs/json.md).
#pragma once

#include <string>
#include <string_view>

#include "geometry/result.h"
#include "svg/reader.h"

namespace kurvo::tools {

// Whether the bytes begin as such a file does, and no SVG file.
bool IsCurveFile(std::string_view bytes);

// `name` is that of the file in messages. Throws InputError.
Drawing ReadCurveFile(Library& library, const std::string& name, std::string_view bytes,
                      const ReadOptions& options);

// Numbers have the fewest digits that read back as the same double.
std::string CurveFileText(Library& library, const Result& result);

}  // namespace kurvo::tools
