#include "svg/entities.h"

#include <algorithm>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr std::size_t kMostText = 64 << 20;  // bytes

}  // namespace

// <!DOCTYPE svg [ <!ENTITY st0 "fill:none;"> ... ]>
Entities::Entities(const std::string& path, std::string_view bytes) : path_(path) {
  constexpr std::string_view kEntity = "<!ENTITY";
  const std::size_t type = bytes.find("<!DOCTYPE");
  if (type == bytes.npos || type > bytes.find("<svg")) return;
  std::string_view rest = bytes.substr(type);
  rest = rest.substr(0, rest.find("]>"));
  for (std::size_t at = rest.find(kEntity); at != rest.npos; at = rest.find(kEntity)) {
    rest.remove_prefix(at + kEntity.size());
    rest = Trimmed(rest);
    const std::string_view name = rest.substr(0, rest.find_first_of(" \t\r\n\"'>"));
    const std::string_view value = Trimmed(rest.substr(name.size()));
    if (value.empty() || (value.front() != '"' && value.front() != '\'')) continue;
    const std::size_t end = value.find(value.front(), 1);
    if (end != value.npos) texts_.emplace(name, value.substr(1, end - 1));  // the first counts
  }
}

void Entities::Expand(pugi::xml_node element) {
  if (texts_.empty()) return;
  for (pugi::xml_attribute attribute : element.attributes()) {
    const std::string_view value = attribute.value();
    if (value.find('&') != value.npos) attribute.set_value(Expanded(value).c_str());
  }
}

// Entities in entities stay as they are.
std::string Entities::Expanded(std::string_view text) {
  std::string all;
  while (!text.empty()) {
    const std::size_t begin = std::min(text.find('&'), text.size());
    all += text.substr(0, begin);
    text.remove_prefix(begin);
    const std::size_t end = text.find(';');
    if (end == text.npos) break;
    const auto entity = texts_.find(text.substr(1, end - begin - 1));
    if (entity == texts_.end()) {
      all += text.front();
      text.remove_prefix(1);
      continue;
    }
    expanded_ += entity->second.size();
    if (expanded_ > kMostText) {
      throw InputError(OneLine(path_) + ": its entities stand for too much text");
    }
    all += entity->second;
    text.remove_prefix(end - begin + 1);
  }
  return all += text;
}

}  // namespace kurvo::tools
