// DXF drawings in ASCII, R12 and later (docs/dxf.md).
#pragma once

#include <string>
#include <string_view>

#include "dxf/document.h"
#include "svg/reader.h"

namespace kurvo::tools {

// `name` is that of the file in messages. y points up in the drawing, as in the file. Layers are
// groups. Throws InputError.
Drawing ReadDxf(Context& context, const std::string& name, std::string_view bytes,
                const ReadOptions& options);

}  // namespace kurvo::tools
