#include "svg/document.h"

#include "svg/entities.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr std::string_view kSvgNamespace = "http://www.w3.org/2000/svg";

// Elements in document order, one after the other; an empty node at the end.
pugi::xml_node NextInDocument(pugi::xml_node node) {
  if (node.first_child()) return node.first_child();
  while (node && !node.next_sibling()) node = node.parent();
  return node.next_sibling();
}

// The prefix, with its colon, that the root binds to SVG.
std::string PrefixOfSvg(const pugi::xml_node& root) {
  constexpr std::string_view kBinding = "xmlns:";
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    if (name.substr(0, kBinding.size()) == kBinding && attribute.value() == kSvgNamespace) {
      return std::string(name.substr(kBinding.size())) + ":";
    }
  }
  return {};
}

// Whether a style sheet with these attributes is one to look at.
bool IsForDrawing(const pugi::xml_node& sheet) {
  const std::string_view type = sheet.attribute("type").value();
  const bool is_css = Trimmed(type).empty() || type.find("css") != type.npos;
  return is_css && IsForScreen(sheet.attribute("media").value());
}

}  // namespace

SvgDocument::SvgDocument(const std::string& path, std::string_view bytes)
    : path_(path), links_(path, style_) {
  Parse(bytes);
  Entities entities(path, bytes);
  entities.Expand(Root());
  prefix_ = PrefixOfSvg(Root());
  if (LocalName(Root()) != "svg") {
    throw InputError(OneLine(path_) + ": not an SVG drawing: the root element is <" +
                     Excerpt(Root().name()) + ">");
  }
  IndexElements(entities);
  if (!style_.IsEmpty()) ApplyStyle();
}

void SvgDocument::Parse(std::string_view bytes) {
  // Attribute values stay as they are written, so that offsets in them are those of the file.
  constexpr unsigned kOptions = pugi::parse_escapes | pugi::parse_cdata | pugi::parse_pi;
  const pugi::xml_parse_result result = tree_.load_buffer(bytes.data(), bytes.size(), kOptions);
  if (!result) {
    throw InputError(OneLine(path_) + ": offset " + std::to_string(result.offset) +
                     ": not well-formed XML: " + result.description());
  }
}

void SvgDocument::IndexElements(Entities& entities) {
  std::map<std::string_view, int> counts;
  for (pugi::xml_node node = tree_.first_child(); node; node = NextInDocument(node)) {
    if (node.type() == pugi::node_pi) {
      LinkStyle(node);
      continue;
    }
    entities.Expand(node);
    ReadStyle(node);
    const std::string_view name = LocalName(node);
    if (name.empty()) continue;
    ordinals_.emplace_hint(ordinals_.end(), Offset(node), ++counts[name]);
    const std::string_view id = node.attribute("id").value();
    if (!id.empty()) by_id_.emplace(id, node);  // of two the first counts
  }
}

// <?xml-stylesheet href="a.css"?>
void SvgDocument::LinkStyle(const pugi::xml_node& instruction) {
  if (instruction.name() != std::string_view("xml-stylesheet")) return;
  pugi::xml_document attributes;
  attributes.load_string((std::string("<link ") + instruction.value() + "/>").c_str());
  const pugi::xml_node link = attributes.first_child();
  const bool is_alternate = link.attribute("alternate").value() == std::string_view("yes");
  if (!is_alternate && IsForDrawing(link)) links_.Link(link.attribute("href").value());
}

// A style element, or a link to a sheet, which belongs to HTML.
void SvgDocument::ReadStyle(const pugi::xml_node& element) {
  if (LocalName(element) == "style") {
    if (!IsForDrawing(element)) return;
    for (const pugi::xml_node& text : element.children()) links_.Read(text.value());
  }
  const std::string_view name = element.name();
  const bool is_link = name == "link" || name.ends_with(":link");
  if (is_link && element.attribute("rel").value() == std::string_view("stylesheet") &&
      IsForDrawing(element)) {
    links_.Link(element.attribute("href").value());
  }
}

void SvgDocument::ApplyStyle() {
  for (pugi::xml_node node = Root(); node; node = NextInDocument(node)) {
    const std::string_view name = LocalName(node);
    if (name.empty()) continue;
    pugi::xml_attribute style = node.attribute("style");
    const std::string styled = style_.Styled(name, node.attribute("id").value(),
                                             node.attribute("class").value(), style.value());
    if (styled.empty()) continue;
    if (!style) style = node.append_attribute("style");
    style.set_value(styled.c_str());
  }
}

std::string_view SvgDocument::LocalName(const pugi::xml_node& element) const {
  const std::string_view name = element.name();
  if (element.type() != pugi::node_element) return {};
  if (name.find(':') == std::string_view::npos) return name;
  if (prefix_.empty() || name.substr(0, prefix_.size()) != prefix_) return {};
  return name.substr(prefix_.size());
}

pugi::xml_node SvgDocument::ById(std::string_view id) const {
  const auto found = by_id_.find(id);
  return found == by_id_.end() ? pugi::xml_node() : found->second;
}

std::string SvgDocument::Label(const pugi::xml_node& element) const {
  const std::string name(LocalName(element));
  const std::string_view id = element.attribute("id").value();
  if (!id.empty()) return name + "#" + Excerpt(id);
  const auto ordinal = ordinals_.find(Offset(element));
  return name + "[" + std::to_string(ordinal == ordinals_.end() ? 0 : ordinal->second) + "]";
}

}  // namespace kurvo::tools
