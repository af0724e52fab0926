// One face of a font file, and its glyphs in units of the font.
#pragma once

#include <freetype/freetype.h>
#include <ft2build.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "geometry/plane.h"
#include "svg/path_data.h"

namespace kurvo::tools {

using GlyphIndex = FT_UInt;

// A curve of a glyph, as a step of path data has it, or the start or the end of a contour.
struct GlyphOutline {
  std::vector<PathStep> steps;
  bool even_odd = false;
};

class Face {
 public:
  // `bytes` must outlive the face. Throws InputError, which begins with `name`.
  Face(const std::string& name, std::string_view bytes);

  double UnitsPerEm() const { return face_->units_per_EM; }
  // From one line of text to the next.
  double LineHeight() const;
  std::size_t GlyphCount() const { return static_cast<std::size_t>(face_->num_glyphs); }
  std::size_t FaceCount() const { return static_cast<std::size_t>(face_->num_faces); }

  // 0, which is the glyph for missing ones, where there is none.
  GlyphIndex OfCharacter(char32_t character) const;
  // Nothing where the font has no such name.
  std::optional<GlyphIndex> OfName(const std::string& name) const;
  // "glyph36" where the font has no names.
  std::string NameOf(GlyphIndex glyph) const;

  double Advance(GlyphIndex glyph) const;
  // What is added between the two.
  double Kerning(GlyphIndex left, GlyphIndex right) const;
  // Throws ElementError.
  GlyphOutline OutlineOf(GlyphIndex glyph) const;

 private:
  struct DoneLibrary {
    void operator()(FT_Library library) const { FT_Done_FreeType(library); }
  };
  struct DoneFace {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
  };
  std::unique_ptr<FT_LibraryRec_, DoneLibrary> library_;
  std::unique_ptr<FT_FaceRec_, DoneFace> face_;
};

}  // namespace kurvo::tools
