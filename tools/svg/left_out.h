// What of a drawing is not read: named once a file.
#pragma once

#include <cstddef>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "svg/document.h"
#include "svg/input.h"

namespace kurvo::tools {

class LeftOut {
 public:
  explicit LeftOut(const SvgDocument& document) : document_(document) {}

  // Looks for what changes the look of a displayed element and is not looked at: clip paths, masks,
  // markers and filters.
  void LookAt(const pugi::xml_node& element);

  // Lines for people.
  std::vector<std::string> Notes() const;

  std::map<std::string, std::size_t> without_outline;  // elements such as text, by name
  std::size_t hidden_layers = 0;
  std::size_t empty_switches = 0;
  Tally lost_uses;   // that refer to what is not there
  Tally transforms;  // of styles, which are none

 private:
  bool Moves(std::string_view filter) const;

  const SvgDocument& document_;
  std::size_t clipped_ = 0;
  std::size_t marked_ = 0;
  std::size_t moved_ = 0;
};

}  // namespace kurvo::tools
