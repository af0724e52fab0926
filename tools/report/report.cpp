#include "report/report.h"

#include <algorithm>
#include <vector>

#include "report/text_table.h"
#include "svg/number_text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

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

std::vector<std::string> MakeRow(const std::string& label, const Counts& counts, int degree) {
  return {label,
          std::to_string(counts.lines),
          std::to_string(counts.arcs),
          std::to_string(counts.beziers),
          std::to_string(counts.rational),
          std::to_string(degree)};
}

// The rows of a drawing and its totals.
class Report {
 public:
  explicit Report(Library& library) : library_(library) {}

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
    std::vector<std::string> row = MakeRow(label, counts, degree);
    row.push_back(outline.closed ? "closed" : "open");
    row.push_back(PointText(StartOf(library_, outline.curves.front())));
    row.push_back(PointText(EndOf(library_, outline.curves.back())));
    row.push_back(BoundsText(box));
    table_.Add(std::move(row));
    ++outlines_;
    total_degree_ = std::max(total_degree_, degree);
    total_box_.Add(box);
  }

  std::string Text() {
    std::vector<std::string> row =
        MakeRow(std::to_string(outlines_) + (outlines_ == 1 ? " outline" : " outlines"), total_,
                total_degree_);
    row.insert(row.end(), {"", "", "", BoundsText(total_box_)});
    table_.Add(std::move(row));
    return table_.Text();
  }

 private:
  Library& library_;
  TextTable table_{{{"outline"},
                    {"line", kRight},
                    {"arc", kRight},
                    {"Bezier", kRight},
                    {"rational", kRight},
                    {"degree", kRight},
                    {""},
                    {"start"},
                    {"end"},
                    {"box"}}};
  int outlines_ = 0;
  Counts total_;
  int total_degree_ = 0;
  Bounds total_box_;
};

}  // namespace

std::string OutlineTable(Library& library, const Drawing& drawing) {
  Report report(library);
  for (const Shape& shape : drawing.shapes) {
    for (std::size_t i = 0; i < shape.outlines.size(); ++i) {
      report.Add(OutlineLabel(shape, i), shape.outlines[i]);
    }
  }
  return report.Text();
}

}  // namespace kurvo::tools
