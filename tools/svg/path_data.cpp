#include "svg/path_data.h"

#include "svg/input.h"

namespace kurvo::tools {
namespace {

using Kind = PathStep::Kind;

class PathParser {
 public:
  PathParser(std::string_view attribute, std::string_view text) : in_(attribute, text) {}

  std::vector<PathStep> Parse() {
    in_.SkipSpace();
    if (!in_.AtEnd() && in_.Peek() != 'M' && in_.Peek() != 'm') {
      in_.Fail("path data must begin with M or m, found " + in_.Found());
    }
    while (!in_.AtEnd()) {
      ReadCommand();
      in_.SkipSpace();
    }
    return std::move(steps_);
  }

 private:
  // One command letter with all its argument sets.
  void ReadCommand() {
    const char letter = in_.Peek();
    if (std::string_view("MmZzLlHhVvCcSsQqTtAa").find(letter) == std::string_view::npos) {
      in_.Fail("expected a path command, found " + in_.Found());
    }
    in_.Accept(letter);
    relative_ = 'a' <= letter;
    char command = relative_ ? static_cast<char>(letter - 'a' + 'A') : letter;
    if (command == 'Z') return Append(Kind::kClose, start_);
    in_.SkipSpace();
    bool comma = false;
    do {
      ReadArguments(command);
      if (command == 'M') command = 'L';  // further pairs are lines
      comma = in_.SkipCommaSpace();
    } while (comma || in_.AtNumber());
  }

  void ReadArguments(char command) {
    switch (command) {
      case 'M':
        start_ = ReadPoint();
        return Append(Kind::kMove, start_);
      case 'L':
        return Append(Kind::kLine, ReadPoint());
      case 'H':
        return Append(Kind::kLine, {in_.Number() + (relative_ ? current_.x : 0), current_.y});
      case 'V':
        return Append(Kind::kLine, {current_.x, in_.Number() + (relative_ ? current_.y : 0)});
      case 'A':
        return ReadArc();
      default:
        return ReadBezier(command);
    }
  }

  void ReadBezier(char command) {
    const bool cubic = command == 'C' || command == 'S';
    PathStep step;
    step.kind = cubic ? Kind::kCubic : Kind::kQuadratic;
    if (command == 'S' || command == 'T') {
      step.control1 = ReflectedControl(step.kind);
    } else {
      step.control1 = ReadPoint();
      in_.SkipCommaSpace();
    }
    if (cubic) {
      step.control2 = ReadPoint();
      in_.SkipCommaSpace();
    }
    step.end = ReadPoint();
    Append(step);
  }

  void ReadArc() {
    PathStep step;
    step.kind = Kind::kArc;
    step.arc.rx = ReadNumberAndSeparator();
    step.arc.ry = ReadNumberAndSeparator();
    step.arc.rotation = ReadNumberAndSeparator();
    step.arc.large_arc = in_.Flag();
    in_.SkipCommaSpace();
    step.arc.positive_sweep = in_.Flag();
    in_.SkipCommaSpace();
    step.end = ReadPoint();
    step.arc.to = step.end;
    Append(step);
  }

  double ReadNumberAndSeparator() {
    const double value = in_.Number();
    in_.SkipCommaSpace();
    return value;
  }

  Point ReadPoint() {
    const double x = ReadNumberAndSeparator();
    const Point p = {x, in_.Number()};
    return relative_ ? current_ + p : p;
  }

  // What S and T take for their first control point: the last one mirrored in the current point,
  // when the step before was of the same kind; otherwise the current point.
  Point ReflectedControl(Kind kind) const {
    if (steps_.empty() || steps_.back().kind != kind) return current_;
    const PathStep& last = steps_.back();
    return 2 * current_ - (kind == Kind::kCubic ? last.control2 : last.control1);
  }

  void Append(Kind kind, Point end) {
    PathStep step;
    step.kind = kind;
    step.end = end;
    Append(step);
  }

  void Append(const PathStep& step) {
    steps_.push_back(step);
    current_ = step.end;
  }

  TextScanner in_;
  std::vector<PathStep> steps_;
  bool relative_ = false;
  Point current_;
  Point start_;  // of the subpath
};

}  // namespace

std::vector<PathStep> ParsePathData(std::string_view attribute, std::string_view text) {
  return PathParser(attribute, text).Parse();
}

}  // namespace kurvo::tools
