#include "report.h"

#include <algorithm>
#include <array>
#include <vector>

#include "number_text.h"

namespace kurvo::tools {
namespace {

constexpr std::size_t kColumns = 10;
using Row = std::array<std::string, kColumns>;

constexpr std::size_t kFirstNumber = 1;  // columns that are aligned to the right
constexpr std::size_t kLastNumber = 5;

struct Counts {
  int lines = 0;
  int arcs = 0;
  int beziers = 0;
  int rational = 0;

  void Add(int type) {
    if (type == CV_LINE) ++lines;
    if (type == CV_ARC) ++arcs;
    if (type == CV_BEZIER) ++beziers;
    if (type == CV_RBEZIER) ++rational;
  }
};

std::string PointText(Point p) { return "(" + ShortNumber(p.x) + ", " + ShortNumber(p.y) + ")"; }

std::string BoundsText(const Bounds& box) {
  if (box.IsEmpty()) return "";
  return PointText({box.min_x, box.min_y}) + " - " + PointText({box.max_x, box.max_y});
}

Row MakeRow(const std::string& label, const Counts& counts, int degree) {
  return {label,
          std::to_string(counts.lines),
          std::to_string(counts.arcs),
          std::to_string(counts.beziers),
          std::to_string(counts.rational),
          std::to_string(degree)};
}

// The rows of a drawing and its totals.
class Table {
 public:
  explicit Table(Library& library) : library_(library) {
    rows_.push_back(
        {"outline", "line", "arc", "Bezier", "rational", "degree", "", "start", "end", "box"});
  }

  void Add(const std::string& label, const Outline& outline) {
    Counts counts;
    int degree = 0;
    Bounds box;
    for (const OwnedCurve& curve : outline.curves) {
      counts.Add(curve.Type());
      total_.Add(curve.Type());
      degree = std::max(degree, DegreeOf(library_, curve));
      box.Add(BoundsOf(library_, curve));
    }
    Row row = MakeRow(label, counts, degree);
    row[6] = outline.closed ? "closed" : "open";
    row[7] = PointText(StartOf(library_, outline.curves.front()));
    row[8] = PointText(EndOf(library_, outline.curves.back()));
    row[9] = BoundsText(box);
    rows_.push_back(row);
    total_degree_ = std::max(total_degree_, degree);
    total_box_.Add(box);
  }

  std::string Text() {
    const std::size_t outlines = rows_.size() - 1;
    Row row = MakeRow(std::to_string(outlines) + (outlines == 1 ? " outline" : " outlines"), total_,
                      total_degree_);
    row[9] = BoundsText(total_box_);
    rows_.push_back(row);
    std::array<std::size_t, kColumns> widths{};
    for (const Row& each : rows_) {
      for (std::size_t i = 0; i < kColumns; ++i) widths[i] = std::max(widths[i], each[i].size());
    }
    std::string text;
    for (const Row& each : rows_) text += Line(each, widths);
    return text;
  }

 private:
  static std::string Line(const Row& row, const std::array<std::size_t, kColumns>& widths) {
    std::string line;
    for (std::size_t i = 0; i < kColumns; ++i) {
      const std::string padding(widths[i] - row[i].size(), ' ');
      const bool right = kFirstNumber <= i && i <= kLastNumber;
      if (i > 0) line += "  ";
      line += right ? padding + row[i] : row[i] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
  }

  Library& library_;
  std::vector<Row> rows_;
  Counts total_;
  int total_degree_ = 0;
  Bounds total_box_;
};

}  // namespace

std::string OutlineTable(Library& library, const Drawing& drawing) {
  Table table(library);
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      const bool several = shape.outlines.size() > 1;
      table.Add(several ? shape.label + "." + std::to_string(i + 1) : shape.label,
                shape.outlines[i]);
    }
  }
  return table.Text();
}

}  // namespace kurvo::tools
