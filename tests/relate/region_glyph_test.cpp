// Points in the outlines of a real font.
#include <ft2build.h>
#include <gtest/gtest.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include "relate/closed_chains.h"

namespace kurvo_test {
namespace {

// The contours of a glyph as curves, in font units.
class Contours {
 public:
  std::vector<std::vector<Owned>> curves;

  explicit Contours(FT_Outline& outline) {
    FT_Outline_Funcs funcs{};
    funcs.move_to = [](const FT_Vector* to, void* self) { return Self(self).Start(*to); };
    funcs.line_to = [](const FT_Vector* to, void* self) { return Self(self).Add({*to}); };
    funcs.conic_to = [](const FT_Vector* c, const FT_Vector* to, void* self) {
      return Self(self).Add({*c, *to});
    };
    funcs.cubic_to = [](const FT_Vector* c, const FT_Vector* d, const FT_Vector* to, void* self) {
      return Self(self).Add({*c, *d, *to});
    };
    FT_Outline_Decompose(&outline, &funcs, this);
  }

 private:
  static Contours& Self(void* self) { return *static_cast<Contours*>(self); }
  static XY At(const FT_Vector& v) { return {static_cast<double>(v.x), static_cast<double>(v.y)}; }

  int Start(const FT_Vector& at) {
    curves.emplace_back();
    pen_ = At(at);
    return 0;
  }
  int Add(std::initializer_list<FT_Vector> points) {
    Numbers numbers = {pen_.x, pen_.y};
    for (const FT_Vector& p : points) {
      pen_ = At(p);
      numbers.insert(numbers.end(), {pen_.x, pen_.y});
    }
    if (points.size() == 1)
      curves.back().push_back(LineBetween({numbers[0], numbers[1]}, pen_));
    else
      curves.back().push_back(MakeFreeForm(CV_BEZIER, numbers));
    return 0;
  }

  XY pen_{};
};

class Face {
 public:
  Face() {
    if (FT_Init_FreeType(&library_) != 0 || FT_New_Face(library_, KURVO_TEST_FONT, 0, &face_) != 0)
      throw std::runtime_error("no font");
  }
  ~Face() {
    FT_Done_Face(face_);
    FT_Done_FreeType(library_);
  }
  Face(const Face&) = delete;
  Face& operator=(const Face&) = delete;

  Contours Glyph(FT_ULong letter) {
    EXPECT_EQ(FT_Load_Char(face_, letter, FT_LOAD_NO_SCALE), 0);
    return Contours(face_->glyph->outline);
  }

 private:
  FT_Library library_ = nullptr;
  FT_Face face_ = nullptr;
};

// A grid of whole font units runs through vertices, tangent points and straight runs.
TEST(PntBoundForPlane, GlyphsOfAFont) {
  Face face;
  int inside = 0, outside = 0;
  for (FT_ULong letter = '!'; letter <= '~'; ++letter) {
    for (std::vector<Owned>& contour : face.Glyph(letter).curves) {
      Chain chain(std::move(contour));
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
}

}  // namespace
}  // namespace kurvo_test
