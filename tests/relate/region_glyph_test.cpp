// Points in the outlines of a real font.
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include "support/generator.h"

namespace kurvo_test {
namespace {

// The contours of a glyph as curves, in font units.
struct Contours {
  std::vector<std::vector<Owned>> curves;
  XY pen{};

  int Add(std::initializer_list<const FT_Vector*> points) {
    Numbers numbers = {pen.x, pen.y};
    for (const FT_Vector* p : points) {
      pen = {static_cast<double>(p->x), static_cast<double>(p->y)};
      numbers.insert(numbers.end(), {pen.x, pen.y});
    }
    curves.back().push_back(points.size() == 1 ? LineBetween({numbers[0], numbers[1]}, pen)
                                               : MakeFreeForm(CV_BEZIER, numbers));
    return 0;
  }

  static Contours& Self(void* self) { return *static_cast<Contours*>(self); }
  explicit Contours(FT_Outline& outline) {
    using Vector = const FT_Vector;
    FT_Outline_Funcs funcs{};
    funcs.move_to = [](Vector* to, void* self) {
      Self(self).curves.emplace_back();
      Self(self).pen = {static_cast<double>(to->x), static_cast<double>(to->y)};
      return 0;
    };
    funcs.line_to = [](Vector* to, void* self) { return Self(self).Add({to}); };
    funcs.conic_to = [](Vector* c, Vector* to, void* self) { return Self(self).Add({c, to}); };
    funcs.cubic_to = [](Vector* c, Vector* d, Vector* to, void* self) {
      return Self(self).Add({c, d, to});
    };
    FT_Outline_Decompose(&outline, &funcs, this);
  }
};

// A grid of whole font units runs through vertices, tangent points and straight runs.
TEST(PntBoundForPlane, GlyphsOfAFont) {
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  ASSERT_EQ(FT_Init_FreeType(&library), 0);
  ASSERT_EQ(FT_New_Face(library, KURVO_TEST_FONT, 0, &face), 0);
  int inside = 0, outside = 0;
  for (FT_ULong letter = '!'; letter <= '~'; ++letter) {
    EXPECT_EQ(FT_Load_Char(face, letter, FT_LOAD_NO_SCALE), 0);
    for (std::vector<Owned>& contour : Contours(face->glyph->outline).curves) {
      const Chain chain(std::move(contour));
      const std::vector<XY> polygon = Polyline(chain, 24);
      XY low = polygon[0], high = low;
      for (XY p : polygon) {
        low = {std::min(low.x, p.x), std::min(low.y, p.y)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y)};
      }
      for (int i = -1; i <= 17; ++i)
        for (int j = -1; j <= 17; ++j) {
          const XY p = {std::round(low.x + (high.x - low.x) * i / 16),
                        std::round(low.y + (high.y - low.y) * j / 16)};
          const View view = ViewFrom(p, polygon);
          if (view.dist < .5) continue;  // between the polygon and the curves
          Globals g;
          const uint32_t want = view.turns != 0 ? KURVO_REGION_INSIDE : KURVO_REGION_OUTSIDE;
          EXPECT_EQ(Locate(chain, p, g), want)
              << static_cast<char>(letter) << ' ' << p.x << ' ' << p.y;
          ++(view.turns != 0 ? inside : outside);
        }
    }
  }
  EXPECT_GT(inside, 10000);
  EXPECT_GT(outside, 10000);
  FT_Done_Face(face);
  FT_Done_FreeType(library);
}

}  // namespace
}  // namespace kurvo_test
