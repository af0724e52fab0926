#include "dxf/document.h"

#include <utf8.h>

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <iterator>

#include "geometry/drawing.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr std::string_view kBinary = "AutoCAD Binary DXF";

// Of $INSUNITS, from 1 on: inch, foot, mile, mm, cm, m, km, microinch, mil, yard, angstrom, nm,
// micron, dm, dam, hm.
constexpr double kInch = kMillimetresPerInch;
constexpr double kUnits[] = {kInch, 12 * kInch,   63360 * kInch, 1,          10,   1e3,
                             1e6,   1e-6 * kInch, 1e-3 * kInch,  36 * kInch, 1e-7, 1e-6,
                             1e-3,  100,          1e4,           1e5};

constexpr int kFrozen = 1;  // flag of layers

std::string SmallLetters(std::string_view name) {
  std::string small(name);
  for (char& c : small) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return small;
}

void AppendLetter(unsigned code, std::string& text) {
  const bool is_letter = code >= ' ' && code < 0x110000 && (code < 0xd800 || code >= 0xe000);
  utf8::append(static_cast<char32_t>(is_letter ? code : '?'), std::back_inserter(text));
}

}  // namespace

bool IsDxf(std::string_view bytes) {
  if (bytes.starts_with(kBinary)) return true;
  constexpr std::size_t kLongestHead = 1 << 16;  // of comments before the first section
  const DxfPairs head = SplitIntoPairs(bytes.substr(0, kLongestHead));
  return !head.pairs.empty() && head.pairs[0].code == 0 && head.pairs[0].value == "SECTION";
}

int DxfUnit(double mm_per_unit) {
  constexpr double kSameUnit = 1e-12;  // relative
  for (std::size_t i = 0; i < std::size(kUnits); ++i) {
    if (kSameUnit * kUnits[i] >= std::fabs(mm_per_unit - kUnits[i])) return static_cast<int>(i) + 1;
  }
  return 0;
}

std::string NameText(std::string_view name) {
  constexpr std::string_view kEscape = "\\U+";
  constexpr std::size_t kDigits = 4;
  const bool is_utf8 = utf8::is_valid(name.begin(), name.end());
  std::string text;
  while (!name.empty()) {
    unsigned code = 0;
    const std::string_view digits = name.substr(std::min(name.size(), kEscape.size()), kDigits);
    const char* end = digits.data() + digits.size();
    if (name.starts_with(kEscape) && digits.size() == kDigits &&
        std::from_chars(digits.data(), end, code, 16).ptr == end) {
      AppendLetter(code, text);
      name.remove_prefix(kEscape.size() + kDigits);
      continue;
    }
    if (is_utf8) {
      text += name[0];
    } else {  // of the usual code page, Latin 1 but for a few signs
      AppendLetter(static_cast<unsigned char>(name[0]), text);
    }
    name.remove_prefix(1);
  }
  return text;
}

DxfDocument::DxfDocument(const std::string& name, std::string_view bytes) {
  const auto refuse = [&](const std::string& problem) {
    throw InputError(OneLine(name) + ": " + problem);
  };
  if (bytes.starts_with(kBinary)) refuse("a binary DXF file; only those in ASCII can be read");
  if (!IsDxf(bytes)) refuse("not a DXF drawing: it does not begin with a section");
  DxfPairs read = SplitIntoPairs(bytes);
  pairs_ = std::move(read.pairs);
  broken_at_ = read.broken_at;
  ReadSections();
}

const DxfBlock* DxfDocument::Block(std::string_view name) const {
  const auto found = blocks_.find(SmallLetters(name));
  return found == blocks_.end() ? nullptr : &found->second;
}

DxfLayer DxfDocument::Layer(std::string_view name) const {
  const auto found = layers_.find(SmallLetters(name));
  return found == layers_.end() ? DxfLayer{} : found->second;
}

// Variables of the header are pairs of code 9 with their values behind them.
std::size_t DxfDocument::ReadHeader(std::size_t at) {
  for (; at < pairs_.size() && pairs_[at].code != 0; ++at) {
    if (pairs_[at].code != 9 || pairs_[at].value != "$INSUNITS") continue;
    if (at + 1 == pairs_.size() || pairs_[at + 1].code != 70) continue;
    std::size_t unit = 0;
    const std::string_view value = pairs_[at + 1].value;
    std::from_chars(value.data(), value.data() + value.size(), unit);
    if (unit >= 1 && unit <= std::size(kUnits)) mm_per_unit_ = kUnits[unit - 1];
  }
  return at;
}

void DxfDocument::ReadLayer(const DxfEntity& entity) {
  try {
    DxfLayer layer;
    const int colour = entity.Integer(62, layer.colour);  // negative: the layer is off
    layer.shown = colour >= 0 && (entity.Integer(70, 0) & kFrozen) == 0;
    layer.colour = std::abs(colour);
    layers_.emplace(SmallLetters(entity.Text(2)), layer);
  } catch (const ElementError&) {
    // A layer that is not known is shown.
  }
}

void DxfDocument::ReadSections() {
  std::string_view section;
  DxfBlock* block = nullptr;
  bool is_complete = false;
  for (std::size_t at = 0; at < pairs_.size() && !is_complete;) {
    std::size_t end = at + 1;
    while (end < pairs_.size() && pairs_[end].code != 0) ++end;
    const DxfEntity entity({pairs_.data() + at, end - at});
    const std::string_view name = pairs_[at].code == 0 ? entity.Name() : std::string_view();
    if (name == "SECTION") {
      section = entity.Text(2);
      if (section == "HEADER") ReadHeader(at + 1);
    } else if (name == "ENDSEC") {
      section = {};
      block = nullptr;
    } else if (name == "EOF") {
      is_complete = true;
    } else if (section == "TABLES" && name == "LAYER") {
      ReadLayer(entity);
    } else if (section == "BLOCKS" && name == "BLOCK") {
      block = &blocks_.emplace(SmallLetters(entity.Text(2)), DxfBlock{entity}).first->second;
    } else if (name == "ENDBLK") {
      block = nullptr;
    } else if (section == "BLOCKS" && block != nullptr) {
      block->entities.push_back(entity);
    } else if (section == "ENTITIES") {
      entities_.push_back(entity);
    }
    at = end;
  }
  if (!is_complete && broken_at_ == 0) broken_at_ = pairs_.back().line + 2;
  if (is_complete) broken_at_ = 0;
}

}  // namespace kurvo::tools
