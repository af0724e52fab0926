// Glyphs of fonts as drawings: TrueType, OpenType and WOFF, by FreeType where the program was built
// with it.
#pragma once

#include <string>
#include <string_view>

#include "geometry/drawing.h"
#include "svg/reader.h"

namespace kurvo::tools {

// Which glyphs are taken: one of the two.
struct FontOptions {
  // UTF-8, laid out in lines from the origin, by the advances and the kerning of the font.
  std::string text = {};
  // With commas between them, in cells beside and below each other, the first with its origin in
  // that of the drawing: letters, names, "uni0041", "#36", or "all".
  std::string glyphs = {};
  double em_mm = 0;  // the size of an em; 0: as many pixels as it has units
};

// Whether the bytes begin as a font does, or the file has the name of one.
bool IsFontFile(std::string_view name, std::string_view bytes);

// One element for each glyph that has an outline, with its name as the id, in units of the font and
// with y pointing up. Glyphs that are not there or cannot be read are faults of the drawing. Throws
// InputError, and std::runtime_error where the options do not say which glyphs.
Drawing ReadFontFile(Context& context, const std::string& name, std::string_view bytes,
                     const FontOptions& font, const ReadOptions& options);

}  // namespace kurvo::tools
