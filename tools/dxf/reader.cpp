#include "dxf/reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "dxf/colours.h"
#include "dxf/entities.h"
#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "svg/curve_file.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr std::size_t kMaxDepth = 32;        // blocks in blocks
constexpr std::size_t kMaxNamed = 4;         // of them in the name of a shape
constexpr std::size_t kMaxShown = 1000000;   // entities that blocks show, all together
constexpr std::size_t kMaxPieces = 5000000;  // curves
constexpr double kMaxArray = 1e5;            // blocks in rows and columns
constexpr const char* kUsualLayer = "0";
constexpr int kByBlock = 0, kByLayer = 256;  // colours

// What a block passes on to the entities in it.
struct DxfContext {
  Affine map;  // from the coordinates of the block to those of the drawing
  std::string layer = kUsualLayer;
  int colour = 7;
  std::string users = {};  // names of the INSERT entities around, each with a '/' after it
  std::vector<const DxfBlock*> blocks = {};  // around, outermost first
};

class DxfReader {
 public:
  DxfReader(Context& context, const std::string& name, std::string_view bytes,
            const ReadOptions& options)
      : context_(context), name_(name), options_(options), document_(name, bytes) {}

  Drawing Read() {
    DxfContext inherited;
    Sheet& sheet = drawing_.sheet;
    sheet.physical = true;
    sheet.y_up = true;
    sheet.mm_per_unit = document_.Millimetres();
    if (sheet.mm_per_unit == 0) {
      sheet.mm_per_unit = 1;
      drawing_.notes.push_back("note: says nothing of units; they are taken as millimetres");
    }
    if (options_.mm_per_unit > 0) {
      const double factor = sheet.mm_per_unit / options_.mm_per_unit;
      sheet = sheet.Scaled(factor);
      inherited.map = Scaling(factor, factor);
    }
    Walk(document_.Entities(), inherited);
    if (document_.BrokenAt() > 0) {
      AddFault(fmt::format("line {}: the file breaks off, what follows is missing",
                           document_.BrokenAt()));
    }
    Note();
    FinishShapes();
    return std::move(drawing_);
  }

 private:
  void AddFault(const std::string& fault) {
    if (options_.strict) throw InputError(OneLine(name_) + ": " + fault);
    drawing_.faults.push_back(fault);
  }

  void Walk(const std::vector<DxfEntity>& entities, const DxfContext& inherited) {
    for (std::size_t at = 0; at < entities.size();) {
      const DxfEntity& entity = entities[at++];
      const std::size_t first = at;
      while (at < entities.size() && IsPart(entities[at].Name())) ++at;
      std::size_t vertices = at;
      if (at < entities.size() && entities[at].Name() == "SEQEND") ++at;
      if (entity.Name() == "SEQEND") continue;
      Visit({entity, std::span(entities).subspan(first, vertices - first)}, inherited);
    }
  }

  static bool IsPart(std::string_view name) { return name == "VERTEX" || name == "ATTRIB"; }

  // Its name and number, counted in the file.
  std::string Label(const DxfEntity& entity) {
    const std::string name = Excerpt(entity.Name());
    const auto [place, is_new] = numbers_.emplace(entity.Line(), counts_[name] + 1);
    if (is_new) ++counts_[name];
    return fmt::format("{}[{}]", name, place->second);
  }

  void Visit(const DxfItem& item, const DxfContext& inherited) {
    const std::string label = inherited.users + Label(item.entity);
    try {
      if (!inherited.blocks.empty()) CountShown();
      Read(item, label, inherited);
    } catch (const ElementError& error) {
      const std::string fault =
          fmt::format("{}, line {}: {}", label, item.entity.Line(), error.what());
      if (error.IsLimit()) throw InputError(OneLine(name_) + ": " + fault);
      AddFault(fault);
    }
  }

  // Blocks without entities count too: there may be very many of them in rows and columns.
  void CountShown() {
    if (++shown_ <= kMaxShown) return;
    throw ElementError::Limit(fmt::format("blocks show more than {} entities", kMaxShown));
  }

  void Read(const DxfItem& item, const std::string& label, const DxfContext& inherited) {
    const DxfEntity& entity = item.entity;
    if (entity.Integer(67, 0) != 0) return void(++on_paper_);
    const std::string own = NameText(entity.Text(8));
    const std::string layer = own.empty() || own == kUsualLayer ? inherited.layer : own;
    if (entity.Integer(60, 0) != 0 || !document_.Layer(layer).shown) return void(++hidden_);
    if (entity.Name() == "INSERT") return Insert(item, label, layer, inherited);
    if (!HasOutlines(entity)) return void(++unread_[Excerpt(entity.Name())]);
    Shape shape;
    shape.label = label;
    shape.outlines = DrawDxfEntity(context_, item, inherited.map);
    for (Outline& outline : shape.outlines) Check(outline);
    if (shape.outlines.empty()) return;
    shape.group = GroupOf(layer);
    shape.paint = {"none", ColourText(ColourOf(entity, layer, inherited)), 0};
    drawing_.shapes.push_back(std::move(shape));
  }

  int ColourOf(const DxfEntity& entity, const std::string& layer, const DxfContext& inherited) {
    const int colour = entity.Integer(62, kByLayer);
    if (colour == kByBlock) return inherited.colour;
    return colour == kByLayer ? document_.Layer(layer).colour : colour;
  }

  void Check(Outline& outline) {
    for (const Curve& curve : outline.curves) {
      if (curve.Type() != CV_LINE && curve.Type() != CV_ARC) CheckRecord(context_, curve);
    }
    outline.closed =
        outline.closed || Follows(context_, outline.curves.back(), outline.curves.front());
    pieces_ += outline.curves.size();
    if (pieces_ > kMaxPieces)
      throw ElementError::Limit(fmt::format("the drawing has more than {} curves", kMaxPieces));
  }

  // Layers stand below the drawing itself, in the order in which they are met.
  std::size_t GroupOf(const std::string& layer) {
    const auto [place, is_new] = groups_.emplace(layer, drawing_.groups.size());
    if (is_new) drawing_.groups.push_back({0, {}, layer, true});
    return place->second;
  }

  void Insert(const DxfItem& item, const std::string& label, const std::string& layer,
              const DxfContext& inherited) {
    const DxfEntity& entity = item.entity;
    for (const DxfEntity& part : item.vertices) ++unread_[std::string(part.Name())];
    const std::string_view name = entity.Text(2);
    const DxfBlock* block = document_.Block(name);
    if (block == nullptr) throw ElementError("there is no block '" + Excerpt(NameText(name)) + "'");
    DxfContext inner = inherited;
    if (std::find(inner.blocks.begin(), inner.blocks.end(), block) != inner.blocks.end())
      throw ElementError("the block '" + Excerpt(NameText(name)) + "' shows itself");
    if (inner.blocks.size() == kMaxDepth)
      throw ElementError(fmt::format("blocks are nested more than {} deep", kMaxDepth));
    if (inner.blocks.size() < kMaxNamed) inner.users = label + "/";
    inner.blocks.push_back(block);
    inner.layer = layer;
    inner.colour = ColourOf(entity, layer, inherited);
    const Point at = entity.At(10);
    const Affine turn = Rotation(entity.Number(50, 0));
    const Affine size = Scaling(entity.Number(41, 1), entity.Number(42, 1));
    const Point base = {block->head.Number(10, 0), block->head.Number(20, 0)};
    const Affine outer = inherited.map * ExtrusionMap(entity) * Translation(at.x, at.y) * turn;
    if (!std::isnormal((outer * size).Determinant()))
      throw ElementError("a scale that leaves nothing");
    const double columns = std::max(1, entity.Integer(70, 1));
    const double rows = std::max(1, entity.Integer(71, 1));
    if (columns * rows > kMaxArray)
      throw ElementError(fmt::format("more than {:.0f} rows and columns", kMaxArray));
    const Point step = {entity.Number(44, 0), entity.Number(45, 0)};
    for (double row = 0; row < rows; ++row) {
      for (double column = 0; column < columns; ++column) {
        inner.map = outer * Translation(column * step.x, row * step.y) * size *
                    Translation(-base.x, -base.y);
        CountShown();
        Walk(block->entities, inner);
      }
    }
  }

  // What is left out in silence is named once.
  void Note() {
    const auto note = [&](std::size_t count, const std::string& name, std::string_view what) {
      if (count == 0) return;
      drawing_.notes.push_back(fmt::format("note: {} {}{} not read{}", count, name,
                                           count == 1 ? "entity" : "entities", what));
    };
    for (const auto& [name, count] : unread_) note(count, name + " ", "");
    note(hidden_, "", ": invisible, or on layers that are off or frozen");
    note(on_paper_, "", ": on sheets of paper");
  }

  // Those of a layer stand together. DXF says nothing of the width of strokes that a sheet has.
  void FinishShapes() {
    std::stable_sort(drawing_.shapes.begin(), drawing_.shapes.end(),
                     [](const Shape& a, const Shape& b) { return a.group < b.group; });
    const Bounds box = BoundsOf(context_, drawing_);
    for (Shape& shape : drawing_.shapes)
      shape.paint.stroke_width = box.IsEmpty() ? 1 : ThinStroke(box);
  }

  Context& context_;
  const std::string name_;
  const ReadOptions options_;
  const DxfDocument document_;
  Drawing drawing_;
  std::map<std::string, std::size_t> groups_;   // by layer
  std::map<std::string, std::size_t> unread_;   // entities without outlines, by name
  std::map<std::string, std::size_t> counts_;   // of entities by name, for labels
  std::map<std::size_t, std::size_t> numbers_;  // of entities by line, among those of their name
  std::size_t hidden_ = 0, on_paper_ = 0, shown_ = 0, pieces_ = 0;
};

}  // namespace

Drawing ReadDxf(Context& context, const std::string& name, std::string_view bytes,
                const ReadOptions& options) {
  return DxfReader(context, name, bytes, options).Read();
}

}  // namespace kurvo::tools
