#include "report/split_report.h"

#include <string_view>

#include "picture/picture_layout.h"
#include "report/json.h"
#include "report/text_table.h"
#include "svg/curve_path.h"
#include "svg/number_text.h"
#include "svg/svg_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;
constexpr auto kLines = JsonWriter::Layout::kLines;

constexpr double kStrokeWidth = 3;  // pixels
constexpr std::string_view kPieceColours[] = {"#1d5fd1", "#d95f02", "#0b8a5b"};

// The last piece may meet the first.
std::string_view ColourOf(std::size_t piece, std::size_t count) {
  const bool like_the_first = piece > 0 && piece + 1 == count && piece % 3 == 0;
  return kPieceColours[like_the_first ? 1 : piece % 3];
}

void WritePiece(Library& library, std::size_t number, const Piece& piece, JsonWriter& json) {
  json.BeginObject();
  json.Key("piece");
  json.Count(number);
  json.Key("curves");
  json.Count(piece.curves.size());
  json.Key("start");
  json.Coordinates(StartOf(library, piece.curves.front()));
  json.Key("end");
  json.Coordinates(EndOf(library, piece.curves.back()));
  json.Key("length");
  json.Number(piece.length);
  json.EndObject();
}

}  // namespace

std::string SplitTable(Library& library, const SplitReport& report) {
  TextTable table(
      {{"outline"}, {"piece", kRight}, {"curves", kRight}, {"start"}, {"end"}, {"length", kRight}});
  for (const SplitOutline& outline : report.outlines) {
    table.Add({outline.label});
    for (std::size_t i = 0; i < outline.pieces.size(); ++i) {
      const Piece& piece = outline.pieces[i];
      table.Add({"", std::to_string(i + 1), std::to_string(piece.curves.size()),
                 PointText(StartOf(library, piece.curves.front())),
                 PointText(EndOf(library, piece.curves.back())), ShortNumber(piece.length)});
    }
  }
  return table.Text();
}

std::string SplitJson(Library& library, const SplitReport& report) {
  JsonWriter json;
  json.BeginObject(kLines);
  json.Key("file");
  json.String(report.name);
  json.Key("outlines");
  json.BeginArray(kLines);
  for (const SplitOutline& outline : report.outlines) {
    json.BeginObject(kLines);
    json.Key("outline");
    json.String(outline.label);
    json.Key("pieces");
    json.BeginArray(kLines);
    for (std::size_t i = 0; i < outline.pieces.size(); ++i)
      WritePiece(library, i + 1, outline.pieces[i], json);
    json.EndArray();
    json.EndObject();
  }
  json.EndArray();
  json.EndObject();
  return json.Take();
}

std::string SplitPicture(Library& library, const std::vector<SplitOutline>& outlines, double extent,
                         double size) {
  Bounds shown;
  for (const SplitOutline& outline : outlines) {
    for (const Piece& piece : outline.pieces) {
      for (const OwnedCurve& curve : piece.curves) shown.Add(BoundsOf(library, curve));
    }
  }
  const double width = kStrokeWidth * PixelSize(shown, size);
  const PictureLayout layout(shown, PixelSize(shown, size), width, {});
  SvgText out(extent);
  out.Open(layout.View(), size);
  out.OpenGroup("fill=\"none\" " + out.Attribute("stroke-width", width));
  for (const SplitOutline& outline : outlines) {
    for (std::size_t i = 0; i < outline.pieces.size(); ++i) {
      const std::string_view colour = ColourOf(i, outline.pieces.size());
      out.Path(PathData(library, outline.pieces[i].curves),
               "stroke=\"" + std::string(colour) + "\"");
    }
  }
  out.CloseGroup();
  out.Close();
  return out.Take();
}

}  // namespace kurvo::tools
