#include "font/face.h"

#include <fmt/format.h>
#include <freetype/ftadvanc.h>
#include <freetype/ftoutln.h>

#include <exception>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr double kLineHeight = 1.2;  // ems, where the font does not say

// FreeType is built without its messages as a rule.
std::string ErrorText(FT_Error error) {
  const char* text = FT_Error_String(error);
  return text == nullptr ? fmt::format("error 0x{:02x} of FreeType", error) : text;
}

Point At(const FT_Vector* p) { return {static_cast<double>(p->x), static_cast<double>(p->y)}; }

// What FreeType calls for each step of an outline. Exceptions stay on this side of it.
struct StepTaker {
  std::vector<PathStep> steps;
  std::exception_ptr thrown;

  int Take(PathStep::Kind kind, Point control1, Point control2, Point end) {
    try {
      PathStep step;
      step.kind = kind;
      step.control1 = control1;
      step.control2 = control2;
      step.end = end;
      steps.push_back(step);
      return 0;
    } catch (...) {
      thrown = std::current_exception();
      return FT_Err_Out_Of_Memory;
    }
  }

  static StepTaker& Of(void* user) { return *static_cast<StepTaker*>(user); }
};

FT_Outline_Funcs StepFunctions() {
  using Kind = PathStep::Kind;
  FT_Outline_Funcs functions = {};
  functions.move_to = [](const FT_Vector* to, void* user) {
    return StepTaker::Of(user).Take(Kind::kMove, {}, {}, At(to));
  };
  functions.line_to = [](const FT_Vector* to, void* user) {
    return StepTaker::Of(user).Take(Kind::kLine, {}, {}, At(to));
  };
  functions.conic_to = [](const FT_Vector* control, const FT_Vector* to, void* user) {
    return StepTaker::Of(user).Take(Kind::kQuadratic, At(control), {}, At(to));
  };
  functions.cubic_to = [](const FT_Vector* control1, const FT_Vector* control2, const FT_Vector* to,
                          void* user) {
    return StepTaker::Of(user).Take(Kind::kCubic, At(control1), At(control2), At(to));
  };
  return functions;
}

}  // namespace

Face::Face(const std::string& name, std::string_view bytes) {
  FT_Library library = nullptr;
  if (FT_Init_FreeType(&library) != 0) throw std::bad_alloc();
  library_.reset(library);
  FT_Face face = nullptr;
  const FT_Error error = FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(bytes.data()),
                                            static_cast<FT_Long>(bytes.size()), 0, &face);
  if (error != 0)
    throw InputError(OneLine(name) + ": not a font that can be read: " + ErrorText(error));
  face_.reset(face);
  const bool has_outlines = FT_IS_SCALABLE(face) && face->units_per_EM > 0 && face->num_glyphs > 0;
  if (!has_outlines) throw InputError(OneLine(name) + ": a font without outlines");
  if (face->charmap == nullptr && face->num_charmaps > 0)
    FT_Set_Charmap(face, face->charmaps[0]);  // such as the symbols of old fonts
}

double Face::LineHeight() const {
  return face_->height > 0 ? face_->height : kLineHeight * UnitsPerEm();
}

GlyphIndex Face::OfCharacter(char32_t character) const {
  return FT_Get_Char_Index(face_.get(), character);
}

std::optional<GlyphIndex> Face::OfName(const std::string& name) const {
  if (!FT_HAS_GLYPH_NAMES(face_.get())) return std::nullopt;
  const GlyphIndex glyph = FT_Get_Name_Index(face_.get(), name.c_str());
  if (glyph == 0 && NameOf(0) != name) return std::nullopt;
  return glyph;
}

std::string Face::NameOf(GlyphIndex glyph) const {
  constexpr FT_UInt kLongestName = 256;
  char name[kLongestName] = "";
  if (FT_HAS_GLYPH_NAMES(face_.get()) &&
      FT_Get_Glyph_Name(face_.get(), glyph, name, kLongestName) == 0 && name[0] != '\0')
    return name;
  return fmt::format("glyph{}", glyph);
}

double Face::Advance(GlyphIndex glyph) const {
  FT_Fixed advance = 0;
  if (FT_Get_Advance(face_.get(), glyph, FT_LOAD_NO_SCALE, &advance) != 0) return 0;
  return static_cast<double>(advance);
}

double Face::Kerning(GlyphIndex left, GlyphIndex right) const {
  FT_Vector kerning = {};
  if (FT_Get_Kerning(face_.get(), left, right, FT_KERNING_UNSCALED, &kerning) != 0) return 0;
  return static_cast<double>(kerning.x);
}

GlyphOutline Face::OutlineOf(GlyphIndex glyph) const {
  const FT_Error error = FT_Load_Glyph(face_.get(), glyph, FT_LOAD_NO_SCALE);
  if (error != 0) throw ElementError("cannot be read: " + ErrorText(error));
  if (face_->glyph->format != FT_GLYPH_FORMAT_OUTLINE) throw ElementError("has no outline");
  FT_Outline& outline = face_->glyph->outline;
  StepTaker taker;
  const FT_Outline_Funcs functions = StepFunctions();
  const FT_Error broken = FT_Outline_Decompose(&outline, &functions, &taker);
  if (taker.thrown) std::rethrow_exception(taker.thrown);
  if (broken != 0) throw ElementError("cannot be read: " + ErrorText(broken));
  return {std::move(taker.steps), (outline.flags & FT_OUTLINE_EVEN_ODD_FILL) != 0};
}

}  // namespace kurvo::tools
