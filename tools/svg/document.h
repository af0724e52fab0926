// An SVG file as a tree of elements, with an index of ids and a name for every shape.
#pragma once

#include <cstddef>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "svg/entities.h"
#include "svg/linked_styles.h"
#include "svg/style_sheet.h"

namespace kurvo::tools {

class SvgDocument {
 public:
  // `bytes` are those of the file. Throws InputError when they are no SVG drawing.
  SvgDocument(const std::string& path, std::string_view bytes);

  pugi::xml_node Root() const { return tree_.document_element(); }
  const std::string& Path() const { return path_; }

  // The name of an element without its namespace prefix; empty when it is not of SVG.
  std::string_view LocalName(const pugi::xml_node& element) const;
  // The element with that id; empty when there is none.
  pugi::xml_node ById(std::string_view id) const;
  // What style elements say; their rules are in the style attributes of the elements already.
  const StyleSheet& Style() const { return style_; }
  // Style sheets in other files that were not read.
  const Tally& LostStyles() const { return links_.NotRead(); }
  // Where its tag begins in the file.
  static std::ptrdiff_t Offset(const pugi::xml_node& element) { return element.offset_debug() - 1; }
  // "path#id", or "path[3]" for the third path of the file.
  std::string Label(const pugi::xml_node& element) const;

 private:
  void Parse(std::string_view bytes);
  void IndexElements(Entities& entities);
  void LinkStyle(const pugi::xml_node& instruction);
  void ReadStyle(const pugi::xml_node& element);
  void ApplyStyle();

  std::string path_;
  pugi::xml_document tree_;
  StyleSheet style_;
  LinkedStyles links_;
  std::string prefix_;  // "svg:" where the file names its elements so
  std::map<std::string, pugi::xml_node, std::less<>> by_id_;
  std::map<std::ptrdiff_t, int> ordinals_;  // by offset in the file: among elements of its name
};

}  // namespace kurvo::tools
