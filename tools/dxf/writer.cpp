#include "dxf/writer.h"

#include <fmt/format.h>
#include <utf8.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>
#include <utility>

#include "dxf/colours.h"
#include "dxf/document.h"
#include "dxf/pieces.h"
#include "geometry/chain.h"
#include "svg/writer.h"

namespace kurvo::tools {
namespace {

constexpr const char* kUsualLayer = "0";
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestNameR12 = 31;
constexpr int kClosed = 1, kRational = 4, kPlanar = 8;  // flags

// The layer of a group, in the letters that names may have.
std::string LayerName(const std::string& name, DxfVersion version) {
  const bool is_old = version == DxfVersion::kR12;
  std::string text;
  for (const char32_t c : utf8::utf8to32(utf8::replace_invalid(name))) {
    const bool is_small = c >= 'a' && c <= 'z';
    const bool is_word = is_small || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '$' ||
                         c == '_' || c == '-';
    constexpr std::u32string_view kForbidden = U"<>/\\\":;?*|=`,";
    const bool is_letter =
        is_word || (!is_old && c >= ' ' && c != 0x7f && kForbidden.find(c) == kForbidden.npos);
    if (!is_letter) {
      text += '_';
    } else if (c < 0x7f) {
      text += static_cast<char>(is_old && is_small ? c - 'a' + 'A' : c);
    } else {
      text += c < 0x10000 ? fmt::format("\\U+{:04X}", static_cast<unsigned>(c)) : "_";
    }
  }
  text.resize(std::min(text.size(), is_old ? kLongestNameR12 : kLongestName));
  return text.empty() ? kUsualLayer : text;
}

class DxfWriter {
 public:
  DxfWriter(Library& library, const Result& result, DxfVersion version,
            const PathAccuracy& accuracy)
      : library_(library), result_(result), version_(version), accuracy_(accuracy) {
    const double mm = result.source.sheet.mm_per_unit;
    unit_ = DxfUnit(mm);
    const double factor = unit_ > 0 ? 1 : mm;
    if (unit_ == 0) unit_ = kMillimetres;
    map_ = Scaling(factor, result.source.sheet.y_up ? factor : -factor);
  }

  std::string Write() {
    NameLayers();
    std::string entities;
    std::swap(text_, entities);
    for (const auto& chains : Elements(result_)) WriteElement(chains);
    std::swap(text_, entities);
    if (IsOld()) {
      WriteOldHead();
    } else {
      WriteHead();
    }
    BeginSection("ENTITIES");
    text_ += entities;
    Pair(0, "ENDSEC");
    if (!IsOld()) WriteObjects();
    Pair(0, "EOF");
    return std::move(text_);
  }

 private:
  static constexpr int kMillimetres = 4;  // of $INSUNITS

  // Handles of what all files have; entities are numbered from kFirstFree on.
  enum Handle : unsigned {
    kRoot = 1,
    kGroups,
    kModel,
    kPaper,
    kModelBlock,
    kModelEnd,
    kPaperBlock,
    kPaperEnd,
    kTables = 0x10,
    kFirstFree = 0x100
  };

  bool IsOld() const { return version_ == DxfVersion::kR12; }

  void Pair(int code, std::string_view value) { text_ += fmt::format("{:>3}\n{}\n", code, value); }
  void Integer(int code, int value) { Pair(code, std::to_string(value)); }
  void Number(int code, double value) {
    std::string text = ExactNumber(value);
    if (text.find_first_of(".e") == text.npos) text += ".0";
    Pair(code, text);
  }
  void At(int code, Point p) {
    Number(code, p.x);
    Number(code + 10, p.y);
    Number(code + 20, 0);
  }
  void HandlePair(int code, unsigned handle) { Pair(code, fmt::format("{:X}", handle)); }
  void BeginSection(std::string_view name) {
    Pair(0, "SECTION");
    Pair(2, name);
  }

  void NameLayers() {
    for (const Group& group : result_.source.groups) {
      const std::string& name = group.layer.empty() ? group.id : group.layer;
      const std::size_t own = group_layers_.size();
      if (own == 0 || name.empty()) {
        group_layers_.push_back(own == 0 ? kUsualLayer : group_layers_[group.parent]);
      } else {
        group_layers_.push_back(LayerName(name, version_));
      }
    }
    layers_ = group_layers_;
    std::sort(layers_.begin(), layers_.end());
    layers_.erase(std::unique(layers_.begin(), layers_.end()), layers_.end());
  }

  void Variable(const char* name, int code, std::string_view value) {
    Pair(9, name);
    Pair(code, value);
  }

  void WriteVariables() {
    BeginSection("HEADER");
    Variable("$ACADVER", 1, IsOld() ? "AC1009" : "AC1015");
    if (!IsOld()) {
      Variable("$DWGCODEPAGE", 3, "ANSI_1252");
      Variable("$HANDSEED", 5, fmt::format("{:X}", next_));
    }
    Variable("$INSUNITS", 70, std::to_string(unit_));
    if (!IsOld()) Variable("$MEASUREMENT", 70, unit_ <= 3 ? "0" : "1");
    Pair(0, "ENDSEC");
  }

  void WriteOldHead() {
    WriteVariables();
    BeginSection("TABLES");
    BeginOldTable("LTYPE", 1);
    Pair(0, "LTYPE");
    WriteLineType("CONTINUOUS");
    Pair(0, "ENDTAB");
    BeginOldTable("LAYER", layers_.size());
    for (const std::string& layer : layers_) {
      Pair(0, "LAYER");
      WriteLayer(layer);
    }
    Pair(0, "ENDTAB");
    Pair(0, "ENDSEC");
  }

  void BeginOldTable(std::string_view name, std::size_t count) {
    Pair(0, "TABLE");
    Pair(2, name);
    Integer(70, static_cast<int>(count));
  }

  void WriteLineType(std::string_view name) {
    Pair(2, name);
    Integer(70, 0);
    Pair(3, "Solid line");
    Integer(72, 65);
    Integer(73, 0);
    Number(40, 0);
  }

  void WriteLayer(const std::string& name) {
    Pair(2, name);
    Integer(70, 0);
    Integer(62, 7);
    Pair(6, IsOld() ? "CONTINUOUS" : "Continuous");
  }

  // A table whose entries are written by write(name).
  template <class Write>
  void Table(std::string_view name, std::string_view record, const std::vector<std::string>& names,
             const Write& write) {
    const unsigned own = kTables + tables_++;
    Pair(0, "TABLE");
    Pair(2, name);
    HandlePair(5, own);
    HandlePair(330, 0);
    Pair(100, "AcDbSymbolTable");
    Integer(70, static_cast<int>(names.size()));
    for (const std::string& entry : names) {
      Pair(0, name);
      const bool is_block = name == "BLOCK_RECORD";
      const unsigned handle = is_block ? (entry == "*Model_Space" ? kModel : kPaper) : next_++;
      HandlePair(name == "DIMSTYLE" ? 105 : 5, handle);
      HandlePair(330, own);
      Pair(100, "AcDbSymbolTableRecord");
      Pair(100, record);
      write(entry);
    }
    Pair(0, "ENDTAB");
  }

  void NamedOnly(const std::string& name) {
    Pair(2, name);
    Integer(70, 0);
  }

  void WriteHead() {
    std::string head;
    std::swap(text_, head);
    BeginSection("TABLES");
    const auto named = [&](const std::string& name) { NamedOnly(name); };
    Table("VPORT", "AcDbViewportTableRecord", {}, named);
    Table("LTYPE", "AcDbLinetypeTableRecord", {"ByBlock", "ByLayer", "Continuous"},
          [&](const std::string& name) { WriteLineType(name); });
    Table("LAYER", "AcDbLayerTableRecord", layers_,
          [&](const std::string& name) { WriteLayer(name); });
    Table("STYLE", "AcDbTextStyleTableRecord", {"Standard"}, [&](const std::string& name) {
      NamedOnly(name);
      Number(40, 0);
      Number(41, 1);
      Number(50, 0);
      Integer(71, 0);
      Number(42, 1);
      Pair(3, "txt");
      Pair(4, "");
    });
    Table("VIEW", "AcDbViewTableRecord", {}, named);
    Table("UCS", "AcDbUCSTableRecord", {}, named);
    Table("APPID", "AcDbRegAppTableRecord", {"ACAD"}, named);
    Table("DIMSTYLE", "AcDbDimStyleTableRecord", {"Standard"}, named);
    Table("BLOCK_RECORD", "AcDbBlockTableRecord", {"*Model_Space", "*Paper_Space"},
          [&](const std::string& name) { Pair(2, name); });
    Pair(0, "ENDSEC");
    WriteBlocks();
    std::swap(text_, head);
    WriteVariables();  // with the next free handle
    BeginSection("CLASSES");
    Pair(0, "ENDSEC");
    text_ += head;
  }

  void WriteBlocks() {
    BeginSection("BLOCKS");
    WriteBlock("*Model_Space", kModel, kModelBlock, kModelEnd);
    WriteBlock("*Paper_Space", kPaper, kPaperBlock, kPaperEnd);
    Pair(0, "ENDSEC");
  }

  void WriteBlock(std::string_view name, unsigned owner, unsigned begin, unsigned end) {
    const auto head = [&](std::string_view kind, unsigned handle, std::string_view record) {
      Pair(0, kind);
      HandlePair(5, handle);
      HandlePair(330, owner);
      Pair(100, "AcDbEntity");
      Pair(8, kUsualLayer);
      Pair(100, record);
    };
    head("BLOCK", begin, "AcDbBlockBegin");
    Pair(2, name);
    Integer(70, 0);
    At(10, {});
    Pair(3, name);
    Pair(1, "");
    head("ENDBLK", end, "AcDbBlockEnd");
  }

  void WriteObjects() {
    const auto dictionary = [&](unsigned handle, unsigned owner) {
      Pair(0, "DICTIONARY");
      HandlePair(5, handle);
      HandlePair(330, owner);
      Pair(100, "AcDbDictionary");
      Integer(281, 1);
    };
    BeginSection("OBJECTS");
    dictionary(kRoot, 0);
    Pair(3, "ACAD_GROUP");
    HandlePair(350, kGroups);
    dictionary(kGroups, kRoot);
    Pair(0, "ENDSEC");
  }

  void WriteElement(std::span<const ResultChain> chains) {
    const std::size_t element = chains.front().element;
    const Paint paint = PaintOf(result_, element, 0);
    colour_ = ColourIndex(paint.stroke != "none" ? paint.stroke : paint.fill);
    layer_ = group_layers_[element == kNoElement ? 0 : result_.source.shapes[element].group];
    for (const ResultChain& chain : chains) {
      std::vector<OwnedCurve> fitted;
      ResultChain written = chain;
      if (IsOld() && HasFreeForms(chain)) {
        fitted = FittedByArcs(chain);
        written.curves = fitted;
      }
      for (const DxfRun& run : RunsOf(library_, written, map_)) WriteRun(run);
    }
  }

  static bool HasFreeForms(const ResultChain& chain) {
    return std::any_of(chain.curves.begin(), chain.curves.end(), [](const OwnedCurve& curve) {
      return curve.Type() != CV_LINE && curve.Type() != CV_ARC;
    });
  }

  // Pieces of a composite need not meet: curve by curve.
  std::vector<OwnedCurve> FittedByArcs(const ResultChain& chain) {
    std::vector<OwnedCurve> all;
    for (const OwnedCurve& curve : chain.curves) {
      const double size = BoundsOf(library_, curve).LongerSide();
      const double deviation = accuracy_.length > 0 ? accuracy_.length : accuracy_.share * size;
      for (OwnedCurve& piece : Fitted(library_, curve, KURVO_FIT_ARCS, deviation))
        all.push_back(std::move(piece));
    }
    return all;
  }

  void BeginEntity(std::string_view name, std::string_view record) {
    Pair(0, name);
    if (!IsOld()) {
      HandlePair(5, next_++);
      HandlePair(330, kModel);
      Pair(100, "AcDbEntity");
    }
    Pair(8, layer_);
    Integer(62, colour_);
    if (!IsOld()) Pair(100, record);
  }

  void WriteRun(const DxfRun& run) {
    if (run.IsSpline()) return WriteSpline(run);
    const DxfSegment& first = run.segments.front();
    if (run.IsCircle()) {
      BeginEntity("CIRCLE", "AcDbCircle");
      At(10, first.centre);
      Number(40, first.radius);
    } else if (run.segments.size() > 1) {
      WritePolyline(run);
    } else if (first.sweep == 0) {
      BeginEntity("LINE", "AcDbLine");
      At(10, first.from);
      At(11, first.to);
    } else {
      WriteArc(first);
    }
  }

  void WriteArc(const DxfSegment& arc) {
    const auto degrees = [&](Point p) {
      const double angle = Degrees(std::atan2(p.y - arc.centre.y, p.x - arc.centre.x));
      return angle < 0 ? angle + 360 : angle;
    };
    BeginEntity("ARC", "AcDbCircle");
    At(10, arc.centre);
    Number(40, arc.radius);
    if (!IsOld()) Pair(100, "AcDbArc");
    Number(50, degrees(arc.sweep > 0 ? arc.from : arc.to));
    Number(51, degrees(arc.sweep > 0 ? arc.to : arc.from));
  }

  void WritePolyline(const DxfRun& run) {
    const int count = static_cast<int>(run.segments.size()) + (run.closed ? 0 : 1);
    BeginEntity(IsOld() ? "POLYLINE" : "LWPOLYLINE", "AcDbPolyline");
    if (IsOld()) {
      Integer(66, 1);
      At(10, {});
    } else {
      Integer(90, count);
    }
    Integer(70, run.closed ? kClosed : 0);
    for (const DxfSegment& segment : run.segments)
      WriteVertex(segment.from, std::tan(segment.sweep / 4));
    if (!run.closed) WriteVertex(run.segments.back().to, 0);
    if (!IsOld()) return;
    Pair(0, "SEQEND");
    Pair(8, layer_);
  }

  void WriteVertex(Point p, double bulge) {
    if (IsOld()) {
      Pair(0, "VERTEX");
      Pair(8, layer_);
      At(10, p);
    } else {
      Number(10, p.x);
      Number(20, p.y);
    }
    if (bulge != 0) Number(42, bulge);
  }

  void WriteSpline(const DxfRun& run) {
    const DxfSpline& spline = run.spline;
    BeginEntity("SPLINE", "AcDbSpline");
    Integer(70, kPlanar + (spline.weights.empty() ? 0 : kRational) + (run.closed ? kClosed : 0));
    Integer(71, spline.degree);
    Integer(72, static_cast<int>(spline.knots.size()));
    Integer(73, static_cast<int>(spline.points.size()));
    Integer(74, 0);
    for (const double knot : spline.knots) Number(40, knot);
    for (const double weight : spline.weights) Number(41, weight);
    for (const Point p : spline.points) At(10, p);
  }

  Library& library_;
  const Result& result_;
  const DxfVersion version_;
  const PathAccuracy accuracy_;
  Affine map_;
  int unit_ = 0;
  std::string text_;
  std::vector<std::string> group_layers_;  // names, by group
  std::vector<std::string> layers_;        // each once
  std::string layer_;                      // of what is written
  int colour_ = 7;
  unsigned next_ = kFirstFree;
  unsigned tables_ = 0;
};

}  // namespace

std::string DxfText(Library& library, const Result& result, DxfVersion version,
                    const PathAccuracy& accuracy) {
  return DxfWriter(library, result, version, accuracy).Write();
}

}  // namespace kurvo::tools
