#include "dxf/pairs.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "svg/input.h"

namespace kurvo::tools {
namespace {

constexpr int kComment = 999;
constexpr double kLargestInteger = 1e9;

// The next line, without what ends it.
std::string_view NextLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(rest.size(), end + 1));
  return Trimmed(line);
}

}  // namespace

DxfPairs SplitIntoPairs(std::string_view bytes) {
  constexpr std::string_view kByteOrderMark = "\xef\xbb\xbf";
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  DxfPairs result;
  for (std::size_t line = 1; !bytes.empty(); line += 2) {
    const std::string_view code = NextLine(bytes);
    if (code.empty() && Trimmed(bytes).empty()) break;
    DxfPair pair = {0, {}, line};
    const auto [end, error] = std::from_chars(code.data(), code.data() + code.size(), pair.code);
    if (error != std::errc() || end != code.data() + code.size() || bytes.empty()) {
      result.broken_at = line;
      break;
    }
    pair.value = NextLine(bytes);
    if (pair.code != kComment) result.pairs.push_back(pair);
  }
  return result;
}

double NumberOf(const DxfPair& pair) {
  const std::string name = "group " + std::to_string(pair.code);
  TextScanner scanner(name, pair.value);
  const double number = scanner.Number();
  if (!scanner.AtEnd()) scanner.Fail("expected the end, found " + scanner.Found());
  return number;
}

const DxfPair* DxfEntity::Find(int code) const {
  const auto pairs = Pairs();
  const auto found = std::find_if(pairs.begin(), pairs.end(),
                                  [&](const DxfPair& pair) { return pair.code == code; });
  return found == pairs.end() ? nullptr : &*found;
}

std::string_view DxfEntity::Text(int code) const {
  const DxfPair* pair = Find(code);
  return pair == nullptr ? std::string_view() : pair->value;
}

double DxfEntity::Number(int code, double fallback) const {
  const DxfPair* pair = Find(code);
  return pair == nullptr ? fallback : NumberOf(*pair);
}

double DxfEntity::Number(int code) const {
  const DxfPair* pair = Find(code);
  if (pair == nullptr) throw ElementError("group " + std::to_string(code) + " is missing");
  return NumberOf(*pair);
}

int DxfEntity::Integer(int code, int fallback) const {
  const double number = Number(code, fallback);
  return static_cast<int>(std::clamp(std::trunc(number), -kLargestInteger, kLargestInteger));
}

Point DxfEntity::At(int code) const { return {Number(code), Number(code + 10)}; }

std::vector<double> DxfEntity::Numbers(int code) const {
  std::vector<double> numbers;
  for (const DxfPair& pair : Pairs()) {
    if (pair.code == code) numbers.push_back(NumberOf(pair));
  }
  return numbers;
}

std::vector<Point> DxfEntity::Points(int code) const {
  const std::vector<double> x = Numbers(code), y = Numbers(code + 10);
  if (x.size() != y.size()) {
    throw ElementError("not as many groups " + std::to_string(code) + " as " +
                       std::to_string(code + 10));
  }
  std::vector<Point> points(x.size());
  for (std::size_t i = 0; i < points.size(); ++i) points[i] = {x[i], y[i]};
  return points;
}

}  // namespace kurvo::tools
