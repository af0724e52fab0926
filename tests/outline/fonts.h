// Letters of the fonts that are installed, where FreeType is there to read them.
#pragma once

#ifdef KURVO_HAS_FREETYPE
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#endif

#include <string>
#include <vector>

#include "support/glyphs.h"

namespace kurvo_test {

// As kGlyphs has them; none where there is no font or nothing to read it.
inline std::vector<std::string> FontGlyphs() {
  std::vector<std::string> glyphs;
#ifdef KURVO_HAS_FREETYPE
  constexpr const char* kFonts[] = {
      "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf",
      "/usr/share/fonts/truetype/dejavu/DejaVuSerif-Italic.ttf",
      "/usr/share/fonts/truetype/dejavu/DejaVuSansMono-Bold.ttf",
      "/usr/share/fonts/opentype/cantarell/Cantarell-Regular.otf",  // in cubics, as the next
      "/usr/share/texmf/fonts/opentype/public/lm/lmroman10-italic.otf"};
  struct Path {
    std::string text;
    double scale;

    int Add(const char* command, std::initializer_list<const FT_Vector*> points) {
      text += command;
      for (const FT_Vector* p : points)
        text += Text("", {scale * double(p->x), scale * double(p->y)});
      return 0;
    }
  };
  FT_Outline_Funcs functions = {};
  functions.move_to = [](const FT_Vector* a, void* p) {
    return static_cast<Path*>(p)->Add("M", {a});
  };
  functions.line_to = [](const FT_Vector* a, void* p) {
    return static_cast<Path*>(p)->Add("L", {a});
  };
  functions.conic_to = [](const FT_Vector* a, const FT_Vector* b, void* p) {
    return static_cast<Path*>(p)->Add("Q", {a, b});
  };
  functions.cubic_to = [](const FT_Vector* a, const FT_Vector* b, const FT_Vector* c, void* p) {
    return static_cast<Path*>(p)->Add("C", {a, b, c});
  };
  FT_Library library;
  if (FT_Init_FreeType(&library) != 0) return glyphs;
  for (const char* font : kFonts) {
    FT_Face face;
    if (FT_New_Face(library, font, 0, &face) != 0) continue;
    for (char letter = '!'; letter <= '~'; ++letter) {
      if (FT_Load_Char(face, static_cast<FT_ULong>(letter), FT_LOAD_NO_SCALE) != 0) continue;
      Path outline = {"", 1000. / face->units_per_EM};
      FT_Outline_Decompose(&face->glyph->outline, &functions, &outline);
      glyphs.push_back(outline.text);
    }
    FT_Done_Face(face);
  }
  FT_Done_FreeType(library);
#endif
  return glyphs;
}

// The same outline in cubics, within a unit.
inline Region InCubics(const Region& region) {
  Region cubics;
  for (int i = 0; i < region->count; ++i) {
    Globals g(1e-9);
    Chain fitted;
    EXPECT_EQ(KurvoChainFit(&region->loops[i], KURVO_FIT_CUBICS, 1, fitted.get(), &g), 1);
    cubics.Add(fitted);
  }
  return cubics;
}

}  // namespace kurvo_test
