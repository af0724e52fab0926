// Entities that the document type of a drawing declares, as old drawing programs use for styles.
#pragma once

#include <map>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace kurvo::tools {

class Entities {
 public:
  // `bytes` are those of the file at `path`, whose document type stands before the root element.
  Entities(const std::string& path, std::string_view bytes);

  // Puts what "&name;" stands for into the attributes of an element. Throws InputError when that
  // would be too much text.
  void Expand(pugi::xml_node element);

 private:
  std::string Expanded(std::string_view text);

  const std::string path_;
  std::map<std::string, std::string, std::less<>> texts_;
  std::size_t expanded_ = 0;  // bytes, all together
};

}  // namespace kurvo::tools
