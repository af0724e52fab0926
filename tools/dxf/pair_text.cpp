#include "dxf/pair_text.h"

#include <fmt/format.h>

#include "svg/writer.h"

namespace kurvo::tools {

void DxfPairText::Pair(int code, std::string_view value) {
  text += fmt::format("{:>3}\n{}\n", code, value);
}

void DxfPairText::Integer(int code, int value) { Pair(code, std::to_string(value)); }

void DxfPairText::Number(int code, double value) {
  std::string number = ExactNumber(value);
  if (number.find_first_of(".e") == number.npos) number += ".0";
  Pair(code, number);
}

void DxfPairText::At(int code, Point p) {
  Number(code, p.x);
  Number(code + 10, p.y);
  Number(code + 20, 0);
}

void DxfPairText::Handle(int code, DxfHandle handle) {
  Pair(code, fmt::format("{:X}", static_cast<unsigned>(handle)));
}

void DxfPairText::BeginSection(std::string_view name) {
  Pair(0, "SECTION");
  Pair(2, name);
}

DxfHandle DxfPairText::NextHandle() {
  const DxfHandle handle = next_;
  next_ = static_cast<DxfHandle>(static_cast<unsigned>(next_) + 1);
  return handle;
}

}  // namespace kurvo::tools
