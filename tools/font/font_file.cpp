#include "font/font_file.h"

#include <utf8.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>
#include <stdexcept>

#include "svg/input.h"

#ifdef KURVO_HAS_FONTS
#include <fmt/format.h>

#include "font/face.h"
#include "svg/shapes.h"
#endif

namespace kurvo::tools {
namespace {

using namespace std::string_view_literals;

// What fonts begin with: TrueType, OpenType, of old Macintoshes, collections, and packed ones.
constexpr std::string_view kBeginnings[] = {"\0\1\0\0"sv, "OTTO", "true", "ttcf", "wOFF", "wOF2"};

constexpr std::string_view kNames[] = {".ttf", ".otf", ".ttc", ".woff", ".woff2"};

}  // namespace

bool IsFontFile(std::string_view name, std::string_view bytes) {
  for (const std::string_view beginning : kBeginnings) {
    if (bytes.starts_with(beginning)) return true;
  }
  std::string end = std::filesystem::path(name).extension().string();
  std::transform(end.begin(), end.end(), end.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(std::begin(kNames), std::end(kNames), end) != std::end(kNames);
}

#ifdef KURVO_HAS_FONTS

namespace {

constexpr std::size_t kLongestRow = 16;  // of glyphs, unless there are more than its square

constexpr std::string_view kAll = "all";

// A glyph and where its origin is, in units of the font.
struct PlacedGlyph {
  GlyphIndex glyph;
  Point origin;
};

std::string CharacterText(char32_t character) {
  std::string text;
  utf8::append(character, text);
  return fmt::format("U+{:04X} '{}'", static_cast<std::uint32_t>(character), Excerpt(text));
}

std::u32string CharactersOf(const std::string& option, const std::string& text) {
  if (!utf8::is_valid(text)) throw std::runtime_error(option + ": not UTF-8");
  return utf8::utf8to32(text);
}

// Hexadecimal digits, or any, to the end; nothing else.
std::optional<std::uint32_t> ParseNumber(std::string_view digits, int base) {
  constexpr std::size_t kMostDigits = 7;
  if (digits.empty() || digits.size() > kMostDigits) return std::nullopt;
  const bool are_digits = std::all_of(digits.begin(), digits.end(), [base](unsigned char c) {
    return base == 16 ? std::isxdigit(c) != 0 : std::isdigit(c) != 0;
  });
  if (!are_digits) return std::nullopt;
  return static_cast<std::uint32_t>(std::stoul(std::string(digits), nullptr, base));
}

class FontReader {
 public:
  FontReader(Context& context, const std::string& name, std::string_view bytes,
             const FontOptions& font, const ReadOptions& options)
      : context_(context), name_(name), font_(font), options_(options), face_(name, bytes) {}

  Drawing Read() {
    ReadSheet();
    if (face_.FaceCount() > 1)
      drawing_.notes.push_back(
          fmt::format("note: the first of {} fonts in the file", face_.FaceCount()));
    for (const PlacedGlyph& placed : font_.text.empty() ? Cells() : Lines()) Draw(placed);
    return std::move(drawing_);
  }

 private:
  void ReadSheet() {
    Sheet& sheet = drawing_.sheet;
    sheet.y_up = true;
    sheet.units_per_em = face_.UnitsPerEm();
    sheet.physical = font_.em_mm > 0;
    if (sheet.physical) sheet.mm_per_unit = font_.em_mm / sheet.units_per_em;
    if (options_.mm_per_unit > 0) {
      scale_ = sheet.mm_per_unit / options_.mm_per_unit;
      sheet = sheet.Scaled(scale_);
    }
  }

  void Fault(const std::string& fault) {
    if (options_.strict) throw InputError(OneLine(name_) + ": " + fault);
    drawing_.faults.push_back(fault);
  }

  // The glyphs of a text in lines.
  std::vector<PlacedGlyph> Lines() {
    std::vector<PlacedGlyph> line;
    Point pen;
    GlyphIndex before = 0;
    for (const char32_t character : CharactersOf("--text", font_.text)) {
      if (character == U'\n') {
        pen = {0, pen.y - face_.LineHeight()};
        before = 0;
        continue;
      }
      const GlyphIndex glyph = face_.OfCharacter(character);
      if (glyph == 0) {
        Fault(CharacterText(character) + ": the font has no glyph for it");
        before = 0;
        continue;
      }
      if (before != 0) pen.x += face_.Kerning(before, glyph);
      line.push_back({glyph, pen});
      pen.x += face_.Advance(glyph);
      before = glyph;
    }
    return line;
  }

  // Those that were asked for one by one, in rows of cells as wide as the widest.
  std::vector<PlacedGlyph> Cells() {
    std::vector<PlacedGlyph> cells;
    for (const GlyphIndex glyph : Chosen()) cells.push_back({glyph, {}});
    double width = face_.UnitsPerEm();
    for (const PlacedGlyph& cell : cells) width = std::max(width, face_.Advance(cell.glyph));
    const double root = std::ceil(std::sqrt(static_cast<double>(cells.size())));
    const std::size_t row = std::max(kLongestRow, static_cast<std::size_t>(root));
    for (std::size_t i = 0; i < cells.size(); ++i) {
      cells[i].origin = {static_cast<double>(i % row) * width,
                         -static_cast<double>(i / row) * face_.LineHeight()};
    }
    return cells;
  }

  std::vector<GlyphIndex> Chosen() {
    std::vector<GlyphIndex> chosen;
    if (font_.glyphs == kAll) {
      for (std::size_t i = 0; i < face_.GlyphCount(); ++i)
        chosen.push_back(static_cast<GlyphIndex>(i));
      return chosen;
    }
    for (std::size_t begin = 0; begin <= font_.glyphs.size();) {
      const std::size_t end = std::min(font_.glyphs.find(',', begin), font_.glyphs.size());
      const std::string item = font_.glyphs.substr(begin, end - begin);
      if (const std::optional<GlyphIndex> glyph = Find(item)) {
        chosen.push_back(*glyph);
      } else {
        Fault("glyph '" + Excerpt(item) + "': the font has none of this name");
      }
      begin = end + 1;
    }
    return chosen;
  }

  // By its number, its name, its letter, or its code point.
  std::optional<GlyphIndex> Find(const std::string& item) const {
    if (item.starts_with('#')) {
      const auto number = ParseNumber(std::string_view(item).substr(1), 10);
      return number && *number < face_.GlyphCount() ? number : std::nullopt;
    }
    if (const std::optional<GlyphIndex> named = face_.OfName(item)) return named;
    std::optional<std::uint32_t> character;
    const std::u32string letters = CharactersOf("--glyphs", item);
    if (letters.size() == 1) character = letters.front();
    for (const std::string_view prefix : {"uni"sv, "U+"sv, "u+"sv, "u"sv}) {
      if (!character && item.starts_with(prefix))
        character = ParseNumber(std::string_view(item).substr(prefix.size()), 16);
    }
    const GlyphIndex glyph = character ? face_.OfCharacter(*character) : 0;
    return glyph == 0 ? std::nullopt : std::optional(glyph);
  }

  void Draw(const PlacedGlyph& placed) {
    Shape shape;
    shape.id = face_.NameOf(placed.glyph);
    shape.label = "glyph#" + Excerpt(shape.id);
    shape.origin = scale_ * placed.origin;
    try {
      const GlyphOutline outline = face_.OutlineOf(placed.glyph);
      shape.even_odd = outline.even_odd;
      shape.outlines = OutlinesOf(outline.steps, shape.origin);
    } catch (const ElementError& error) {
      return Fault(shape.label + ": " + error.what());
    }
    if (!shape.outlines.empty()) drawing_.shapes.push_back(std::move(shape));
  }

  // Contours are closed.
  std::vector<Outline> OutlinesOf(const std::vector<PathStep>& steps, Point origin) {
    OutlineBuilder pen(context_, Translation(origin.x, origin.y) * Scaling(scale_, scale_));
    bool is_drawing = false;
    for (const PathStep& step : steps) {
      if (step.kind == PathStep::Kind::kMove) {
        if (is_drawing) pen.Close();
        pen.MoveTo(step.end);
        is_drawing = true;
      } else if (step.kind == PathStep::Kind::kLine) {
        pen.LineTo(step.end);
      } else if (step.kind == PathStep::Kind::kQuadratic) {
        pen.QuadraticTo(step.control1, step.end);
      } else {
        pen.CubicTo(step.control1, step.control2, step.end);
      }
    }
    if (is_drawing) pen.Close();
    return pen.Finish();
  }

  Context& context_;
  const std::string& name_;
  const FontOptions& font_;
  const ReadOptions& options_;
  const Face face_;
  double scale_ = 1;
  Drawing drawing_;
};

}  // namespace

Drawing ReadFontFile(Context& context, const std::string& name, std::string_view bytes,
                     const FontOptions& font, const ReadOptions& options) {
  if (font.text.empty() && font.glyphs.empty()) {
    throw std::runtime_error(OneLine(name) +
                             ": is a font; --text or --glyphs says what to take of it");
  }
  return FontReader(context, name, bytes, font, options).Read();
}

#else

Drawing ReadFontFile(Context&, const std::string& name, std::string_view, const FontOptions&,
                     const ReadOptions&) {
  throw InputError(OneLine(name) + ": is a font; this program was built without FreeType");
}

#endif

}  // namespace kurvo::tools
