#include "dxf/writer.h"

#include <fmt/format.h>
#include <utf8.h>

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "dxf/colours.h"
#include "dxf/document.h"
#include "dxf/entity_writer.h"
#include "dxf/pieces.h"
#include "geometry/chain.h"

namespace kurvo::tools {
namespace {

constexpr const char* kUsualLayer = "0";
constexpr std::size_t kLongestName = 255;
constexpr std::size_t kLongestNameR12 = 31;

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
  DxfWriter(Context& context, const Result& result, DxfVersion version,
            const PathAccuracy& accuracy)
      : context_(context),
        result_(result),
        version_(version),
        accuracy_(accuracy),
        entities_(IsOld(), out_) {
    const double mm = result.source.sheet.mm_per_unit;
    unit_ = DxfUnit(mm);
    const double factor = unit_ > 0 ? 1 : mm;
    if (unit_ == 0) unit_ = kMillimetres;
    map_ = Scaling(factor, result.source.sheet.y_up ? factor : -factor);
  }

  std::string Write() {
    NameLayers();
    std::string entities;
    std::swap(out_.text, entities);
    for (const auto& chains : Elements(result_)) WriteElement(chains);
    std::swap(out_.text, entities);
    if (IsOld()) {
      WriteOldHead();
    } else {
      WriteHead();
    }
    out_.BeginSection("ENTITIES");
    out_.text += entities;
    out_.Pair(0, "ENDSEC");
    if (!IsOld()) WriteObjects();
    out_.Pair(0, "EOF");
    return std::move(out_.text);
  }

 private:
  static constexpr int kMillimetres = 4;  // of $INSUNITS

  bool IsOld() const { return version_ == DxfVersion::kR12; }

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
    out_.Pair(9, name);
    out_.Pair(code, value);
  }

  void WriteVariables() {
    out_.BeginSection("HEADER");
    Variable("$ACADVER", 1, IsOld() ? "AC1009" : "AC1015");
    if (!IsOld()) {
      Variable("$DWGCODEPAGE", 3, "ANSI_1252");
      Variable("$HANDSEED", 5, fmt::format("{:X}", static_cast<unsigned>(out_.FirstFree())));
    }
    Variable("$INSUNITS", 70, std::to_string(unit_));
    if (!IsOld()) Variable("$MEASUREMENT", 70, unit_ <= 3 ? "0" : "1");
    out_.Pair(0, "ENDSEC");
  }

  void WriteOldHead() {
    WriteVariables();
    out_.BeginSection("TABLES");
    BeginOldTable("LTYPE", 1);
    out_.Pair(0, "LTYPE");
    WriteLineType("CONTINUOUS");
    out_.Pair(0, "ENDTAB");
    BeginOldTable("LAYER", layers_.size());
    for (const std::string& layer : layers_) {
      out_.Pair(0, "LAYER");
      WriteLayer(layer);
    }
    out_.Pair(0, "ENDTAB");
    out_.Pair(0, "ENDSEC");
  }

  void BeginOldTable(std::string_view name, std::size_t count) {
    out_.Pair(0, "TABLE");
    out_.Pair(2, name);
    out_.Integer(70, static_cast<int>(count));
  }

  void WriteLineType(std::string_view name) {
    out_.Pair(2, name);
    out_.Integer(70, 0);
    out_.Pair(3, "Solid line");
    out_.Integer(72, 65);
    out_.Integer(73, 0);
    out_.Number(40, 0);
  }

  void WriteLayer(const std::string& name) {
    out_.Pair(2, name);
    out_.Integer(70, 0);
    out_.Integer(62, 7);
    out_.Pair(6, IsOld() ? "CONTINUOUS" : "Continuous");
  }

  // A table whose entries are written by write(name).
  template <class Write>
  void Table(std::string_view name, std::string_view record, const std::vector<std::string>& names,
             const Write& write) {
    const auto own = static_cast<DxfHandle>(static_cast<unsigned>(DxfHandle::kTables) + tables_++);
    out_.Pair(0, "TABLE");
    out_.Pair(2, name);
    out_.Handle(5, own);
    out_.Handle(330, DxfHandle::kNone);
    out_.Pair(100, "AcDbSymbolTable");
    out_.Integer(70, static_cast<int>(names.size()));
    for (const std::string& entry : names) {
      out_.Pair(0, name);
      const bool is_block = name == "BLOCK_RECORD";
      const DxfHandle handle =
          is_block ? (entry == "*Model_Space" ? DxfHandle::kModel : DxfHandle::kPaper)
                   : out_.NextHandle();
      out_.Handle(name == "DIMSTYLE" ? 105 : 5, handle);
      out_.Handle(330, own);
      out_.Pair(100, "AcDbSymbolTableRecord");
      out_.Pair(100, record);
      write(entry);
    }
    out_.Pair(0, "ENDTAB");
  }

  void NamedOnly(const std::string& name) {
    out_.Pair(2, name);
    out_.Integer(70, 0);
  }

  void WriteHead() {
    std::string head;
    std::swap(out_.text, head);
    out_.BeginSection("TABLES");
    const auto named = [&](const std::string& name) { NamedOnly(name); };
    Table("VPORT", "AcDbViewportTableRecord", {}, named);
    Table("LTYPE", "AcDbLinetypeTableRecord", {"ByBlock", "ByLayer", "Continuous"},
          [&](const std::string& name) { WriteLineType(name); });
    Table("LAYER", "AcDbLayerTableRecord", layers_,
          [&](const std::string& name) { WriteLayer(name); });
    Table("STYLE", "AcDbTextStyleTableRecord", {"Standard"}, [&](const std::string& name) {
      NamedOnly(name);
      out_.Number(40, 0);
      out_.Number(41, 1);
      out_.Number(50, 0);
      out_.Integer(71, 0);
      out_.Number(42, 1);
      out_.Pair(3, "txt");
      out_.Pair(4, "");
    });
    Table("VIEW", "AcDbViewTableRecord", {}, named);
    Table("UCS", "AcDbUCSTableRecord", {}, named);
    Table("APPID", "AcDbRegAppTableRecord", {"ACAD"}, named);
    Table("DIMSTYLE", "AcDbDimStyleTableRecord", {"Standard"}, named);
    Table("BLOCK_RECORD", "AcDbBlockTableRecord", {"*Model_Space", "*Paper_Space"},
          [&](const std::string& name) { out_.Pair(2, name); });
    out_.Pair(0, "ENDSEC");
    WriteBlocks();
    std::swap(out_.text, head);
    WriteVariables();  // with the next free handle
    out_.BeginSection("CLASSES");
    out_.Pair(0, "ENDSEC");
    out_.text += head;
  }

  void WriteBlocks() {
    out_.BeginSection("BLOCKS");
    WriteBlock("*Model_Space", DxfHandle::kModel, DxfHandle::kModelBlock, DxfHandle::kModelEnd);
    WriteBlock("*Paper_Space", DxfHandle::kPaper, DxfHandle::kPaperBlock, DxfHandle::kPaperEnd);
    out_.Pair(0, "ENDSEC");
  }

  void WriteBlock(std::string_view name, DxfHandle owner, DxfHandle begin, DxfHandle end) {
    const auto head = [&](std::string_view kind, DxfHandle handle, std::string_view record) {
      out_.Pair(0, kind);
      out_.Handle(5, handle);
      out_.Handle(330, owner);
      out_.Pair(100, "AcDbEntity");
      out_.Pair(8, kUsualLayer);
      out_.Pair(100, record);
    };
    head("BLOCK", begin, "AcDbBlockBegin");
    out_.Pair(2, name);
    out_.Integer(70, 0);
    out_.At(10, {});
    out_.Pair(3, name);
    out_.Pair(1, "");
    head("ENDBLK", end, "AcDbBlockEnd");
  }

  void WriteObjects() {
    const auto dictionary = [&](DxfHandle handle, DxfHandle owner) {
      out_.Pair(0, "DICTIONARY");
      out_.Handle(5, handle);
      out_.Handle(330, owner);
      out_.Pair(100, "AcDbDictionary");
      out_.Integer(281, 1);
    };
    out_.BeginSection("OBJECTS");
    dictionary(DxfHandle::kRoot, DxfHandle::kNone);
    out_.Pair(3, "ACAD_GROUP");
    out_.Handle(350, DxfHandle::kGroups);
    dictionary(DxfHandle::kGroups, DxfHandle::kRoot);
    out_.Pair(0, "ENDSEC");
  }

  void WriteElement(std::span<const ResultChain> chains) {
    const std::size_t element = chains.front().element;
    const Paint paint = PaintOf(result_, element, 0);
    entities_.Begin(group_layers_[element == kNoElement ? 0 : result_.source.shapes[element].group],
                    ColourIndex(paint.stroke != "none" ? paint.stroke : paint.fill));
    for (const ResultChain& chain : chains) {
      std::vector<Curve> fitted;
      ResultChain written = chain;
      if (IsOld() && HasFreeForms(chain)) {
        fitted = FittedByArcs(chain);
        written.curves = fitted;
      }
      for (const DxfRun& run : RunsOf(context_, written, map_)) entities_.Write(run);
    }
  }

  static bool HasFreeForms(const ResultChain& chain) {
    return std::any_of(chain.curves.begin(), chain.curves.end(), [](const Curve& curve) {
      return curve.Type() != CV_LINE && curve.Type() != CV_ARC;
    });
  }

  // Pieces of a composite need not meet: curve by curve.
  std::vector<Curve> FittedByArcs(const ResultChain& chain) {
    std::vector<Curve> all;
    for (const Curve& curve : chain.curves) {
      const double size = BoundsOf(context_, curve).LongerSide();
      const double deviation = accuracy_.length > 0 ? accuracy_.length : accuracy_.share * size;
      for (Curve& piece : Fitted(context_, curve, Form::kArcs, deviation))
        all.push_back(std::move(piece));
    }
    return all;
  }

  Context& context_;
  const Result& result_;
  const DxfVersion version_;
  const PathAccuracy accuracy_;
  Affine map_;
  int unit_ = 0;
  std::vector<std::string> group_layers_;  // names, by group
  std::vector<std::string> layers_;        // each once
  unsigned tables_ = 0;
  DxfPairText out_;
  DxfEntityWriter entities_;
};

}  // namespace

std::string DxfText(Context& context, const Result& result, DxfVersion version,
                    const PathAccuracy& accuracy) {
  return DxfWriter(context, result, version, accuracy).Write();
}

}  // namespace kurvo::tools
