// Points from text files.
#include <utf8.h>

#include <algorithm>
#include <iterator>
#include <string_view>

#include "svg/input.h"
#include "svg/reader.h"

namespace kurvo::tools {
namespace {

// The point on a line that is not empty. Throws ElementError.
Point ParseLine(TextScanner& scanner) {
  const double x = scanner.Number();
  scanner.SkipSpace();
  if (!scanner.Accept(';')) scanner.SkipCommaSpace();
  scanner.SkipSpace();
  const double y = scanner.Number();
  scanner.SkipSpace();
  if (!scanner.AtEnd()) scanner.Fail("expected the end of the line, found " + scanner.Found());
  return {x, y};
}

// Names of two columns.
bool IsHeader(std::string_view line) {
  const std::size_t end = line.find_first_of(",;\t ");
  if (end == line.npos) return false;
  for (const std::string_view name :
       {Trimmed(line.substr(0, end)), Trimmed(line.substr(end + 1))}) {
    const std::string_view bare = name.substr(std::min(name.find_first_not_of("\"'"), name.size()));
    const bool begins_with_letter =
        !bare.empty() && (('a' <= bare[0] && bare[0] <= 'z') || ('A' <= bare[0] && bare[0] <= 'Z'));
    if (!begins_with_letter || name.starts_with("nan") || name.starts_with("inf")) return false;
  }
  return true;
}

}  // namespace

std::vector<Point> ReadPoints(Context& context, const std::string& path) {
  const std::string bytes = ReadWholeFile(path);
  std::string_view rest = bytes;
  if (utf8::starts_with_bom(bytes)) rest.remove_prefix(std::size(utf8::bom));
  std::vector<Point> points;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    const std::string where = "line " + std::to_string(number);
    const auto refuse = [&](const std::string& problem) {
      throw InputError(OneLine(path) + ": " + problem);
    };
    TextScanner scanner(where, line);
    scanner.SkipSpace();
    if (scanner.AtEnd() || scanner.Peek() == '#') continue;
    if (number == 1 && IsHeader(line)) continue;
    try {
      points.push_back(ParseLine(scanner));
    } catch (const ElementError& error) {
      refuse(error.what());
    }
    const std::size_t count = points.size();
    if (count > 1 && Same(points[count - 2], points[count - 1], context)) {
      refuse(where + ": the same point as the one before");
    }
  }
  if (points.size() < 2) throw InputError(OneLine(path) + ": fewer than two points");
  return points;
}

}  // namespace kurvo::tools
