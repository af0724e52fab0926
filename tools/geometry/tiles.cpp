#include "geometry/tiles.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "geometry/chain.h"
#include "geometry/curve_make.h"
#include "geometry/result.h"

namespace kurvo::tools {
namespace {

constexpr double kMostPages = 2000;
constexpr double kSlack = 1e-9;  // of a page: a drawing may be so much larger than those it takes

// Of what marks a page, in millimetres.
constexpr double kCrossArm = 4;
constexpr double kDigitHeight = 6;
constexpr double kMarkWidth = 0.2;
constexpr const char* kMarkColour = "#888";

// Segments of digits: the top and so on clockwise, the middle last.
constexpr std::array<unsigned, 10> kDigits = {0b0111111, 0b0000110, 0b1011011, 0b1001111,
                                              0b1100110, 0b1101101, 0b1111101, 0b0000111,
                                              0b1111111, 0b1101111};
// Corners of a digit of height 2 and width 1, y down: where each segment begins and ends.
constexpr Point kSegments[7][2] = {{{0, 0}, {1, 0}}, {{1, 0}, {1, 1}}, {{1, 1}, {1, 2}},
                                   {{1, 2}, {0, 2}}, {{0, 2}, {0, 1}}, {{0, 1}, {0, 0}},
                                   {{0, 1}, {1, 1}}};

bool Meet(const Bounds& a, const Bounds& b) {
  return a.min_x <= b.max_x && b.min_x <= a.max_x && a.min_y <= b.max_y && b.min_y <= a.max_y;
}

bool IsWithin(const Bounds& inner, const Bounds& outer) {
  return outer.Contains(inner.Min()) && outer.Contains(inner.Max());
}

Outline Copied(Context& context, const Outline& outline) {
  return {Copies(context, outline.curves), outline.closed};
}

// A loop along the sides of a box.
Outline Frame(const Bounds& box) {
  const Point corners[] = {
      box.Min(), {box.max_x, box.min_y}, box.Max(), {box.min_x, box.max_y}, box.Min()};
  Outline frame = {{}, true};
  for (int i = 0; i < 4; ++i)
    frame.curves.push_back(Curve::Line(corners[i], corners[i + 1]).value());
  return frame;
}

// Parts of outlines within a box.
class Clipper {
 public:
  Clipper(Context& context, const Bounds& box) : context_(context), frame_(Frame(box)) {
    region_.Add(*ChainView(frame_.curves), context).value();
  }

  std::vector<Outline> Inside(const Outline& outline) {
    const ChainView chain(outline.curves);
    Clipped clipped = [&] {
      const EpsilonScope wider = WiderTolerance(context_);
      return region_.Clip({&*chain, 1}, context_).value();
    }();
    std::vector<Outline> parts;
    for (Chain& inside : clipped.inside) {
      Outline part = {Taken(std::move(inside)), false};
      part.closed = outline.closed && clipped.outside.size() == 0;
      if (!part.curves.empty()) parts.push_back(std::move(part));
    }
    return parts;
  }

 private:
  Context& context_;
  const Outline frame_;
  Region region_;
};

class Tiler {
 public:
  Tiler(Context& context, const Drawing& drawing, const Paper& paper)
      : context_(context), drawing_(drawing), paper_(paper), box_(BoundsOf(context, drawing)) {
    ForEachOutline(drawing, [&](const Outline& outline, const std::string&) {
      boxes_.push_back(BoundsOf(context, outline.curves));
    });
    thin_ = ThinStroke(ViewOf(context, ResultOf(drawing)));
  }

  Pages Tile(const CurveDone& done) {
    Pages pages;
    if (box_.IsEmpty()) return pages;
    const double width = paper_.width - 2 * paper_.margin;
    const double height = paper_.height - 2 * paper_.margin;
    if (!(width > paper_.overlap && height > paper_.overlap))
      throw std::runtime_error("the page has no room within its margins and overlaps");
    const double columns = Count(box_.Width(), width), rows = Count(box_.Height(), height);
    if (!(columns * rows <= kMostPages)) {
      throw std::runtime_error(
          fmt::format("the drawing would take {} x {} pages; is its unit right?", columns, rows));
    }
    pages.columns = static_cast<std::size_t>(columns);
    pages.rows = static_cast<std::size_t>(rows);
    const double step_x = width - paper_.overlap, step_y = height - paper_.overlap;
    // Centred.
    const double left = box_.min_x - (columns * step_x + paper_.overlap - box_.Width()) / 2;
    const double top = (rows * step_y + paper_.overlap - box_.Height()) / 2;
    for (std::size_t row = 0; row < pages.rows; ++row) {
      for (std::size_t column = 0; column < pages.columns; ++column) {
        const double x = left + static_cast<double>(column) * step_x;
        const double down = static_cast<double>(row) * step_y - top;
        const double y = drawing_.sheet.y_up ? box_.max_y - down - height : box_.min_y + down;
        Page page = {row, column, {}, {x, y, x + width, y + height}, {}, 0};
        page.sheet = page.printed;
        page.sheet.Grow(paper_.margin);
        Fill(page);
        if (page.outlines > 0) pages.pages.push_back(std::move(page));
      }
    }
    ForEachCurve(drawing_, [&](const Curve&) { done(); });
    return pages;
  }

 private:
  double Count(double size, double page) const {
    const double step = page - paper_.overlap;
    return std::max(1.0, std::ceil((size - paper_.overlap) / step - kSlack));
  }

  void Fill(Page& page) {
    Drawing& drawing = page.drawing;
    drawing.groups = drawing_.groups;
    Sheet& sheet = drawing.sheet;
    sheet = drawing_.sheet;
    sheet.view = page.sheet;
    sheet.fit.clear();
    sheet.width = sheet.mm_per_unit * page.sheet.Width();
    sheet.height = sheet.mm_per_unit * page.sheet.Height();
    sheet.physical = true;
    Clipper clipper(context_, page.printed);
    std::size_t number = 0;
    for (const Shape& shape : drawing_.shapes) {
      Shape part = {shape.label, shape.even_odd,       {},          shape.id,
                    shape.group, LinesOf(shape.paint), shape.origin};
      for (const Outline& outline : shape.outlines) {
        const Bounds& box = boxes_[number++];
        if (!Meet(box, page.printed)) continue;
        std::vector<Outline> inside;
        if (IsWithin(box, page.printed)) {
          inside.push_back(Copied(context_, outline));
        } else {
          inside = clipper.Inside(outline);
        }
        for (Outline& piece : inside) part.outlines.push_back(std::move(piece));
      }
      page.outlines += part.outlines.size();
      if (!part.outlines.empty()) drawing.shapes.push_back(std::move(part));
    }
    if (page.outlines > 0) AddMarks(page);
  }

  // Only lines are cut where a page ends.
  Paint LinesOf(const Paint& paint) const {
    if (paint.stroke != "none")
      return {"none", paint.stroke, paint.stroke_width, 1, paint.stroke_opacity};
    return {"none", paint.fill == "none" ? "#000" : paint.fill, thin_, 1, paint.fill_opacity};
  }

  void AddMarks(Page& page) {
    const double mm = 1 / drawing_.sheet.mm_per_unit;
    Shape marks;
    marks.label = marks.id = "page-" + PageName(page);
    marks.paint = {"none", kMarkColour, kMarkWidth * mm};
    const Bounds& frame = page.printed;
    marks.outlines.push_back(Frame(frame));
    const auto add = [&](Point from, Point to) {
      Outline& line = marks.outlines.emplace_back();
      line.curves.push_back(Curve::Line(from, to).value());
    };
    const double in = paper_.overlap / 2;
    for (const double x : {frame.min_x + in, frame.max_x - in}) {
      for (const double y : {frame.min_y + in, frame.max_y - in}) {
        const double arm = paper_.overlap > 0 ? std::min(kCrossArm * mm, in) : kCrossArm * mm;
        add({x - arm, y}, {x + arm, y});
        add({x, y - arm}, {x, y + arm});
      }
    }
    const double down = drawing_.sheet.y_up ? -1 : 1;
    const double unit = kDigitHeight * mm / 2;
    Point pen = {
        frame.min_x + paper_.overlap + unit,
        (drawing_.sheet.y_up ? frame.max_y : frame.min_y) + down * (paper_.overlap + unit)};
    for (const char c : PageName(page)) {
      const unsigned segments = c == '-' ? 1u << 6 : kDigits[static_cast<std::size_t>(c - '0')];
      for (std::size_t i = 0; i < std::size(kSegments); ++i) {
        if ((segments >> i & 1u) == 0) continue;
        const auto at = [&](Point p) { return pen + unit * Point{p.x, down * p.y}; };
        add(at(kSegments[i][0]), at(kSegments[i][1]));
      }
      pen.x += 1.6 * unit;
    }
    page.drawing.shapes.push_back(std::move(marks));
  }

  Context& context_;
  const Drawing& drawing_;
  const Paper& paper_;
  const Bounds box_;
  std::vector<Bounds> boxes_;  // of the outlines
  double thin_ = 1;
};

}  // namespace

std::string PageName(const Page& page) {
  return fmt::format("{}-{}", page.row + 1, page.column + 1);
}

Pages Tiled(Context& context, const Drawing& drawing, const Paper& paper, const CurveDone& done) {
  return Tiler(context, drawing, paper).Tile(done);
}

Drawing OnOneSheet(Context& context, const Drawing& source, const Pages& pages,
                   const Paper& paper) {
  Drawing all;
  Sheet& sheet = all.sheet;
  sheet = source.sheet;
  sheet.fit.clear();
  sheet.physical = true;
  const double width = static_cast<double>(pages.columns) * paper.width;
  const double height = static_cast<double>(pages.rows) * paper.height;
  sheet.view = {0, 0, width, height};
  if (sheet.y_up) sheet.view = sheet.view.TurnedOver();
  sheet.width = sheet.mm_per_unit * width;
  sheet.height = sheet.mm_per_unit * height;
  for (const Page& page : pages.pages) {
    const std::string name = "page-" + PageName(page);
    const std::size_t group = all.groups.size();
    all.groups.push_back({0, name, name, true});
    const double x = static_cast<double>(page.column) * paper.width;
    const double y = static_cast<double>(page.row) * paper.height;
    const Point corner = {x, sheet.y_up ? -y - paper.height : y};
    const Point by = corner - page.sheet.Min();
    Drawing moved = DrawingOf(context, ResultOf(page.drawing));
    for (Shape& shape : moved.shapes) {
      shape.group = group;
      shape.origin = {};
      for (Outline& outline : shape.outlines) {
        for (Curve& curve : outline.curves) curve.Move(by, context).value();
      }
      all.shapes.push_back(std::move(shape));
    }
    Shape& border = all.shapes.emplace_back();
    border.label = name + "-border";
    border.group = group;
    border.paint = {"none", kMarkColour, kMarkWidth / sheet.mm_per_unit};
    border.outlines.push_back(
        Frame({corner.x, corner.y, corner.x + paper.width, corner.y + paper.height}));
  }
  return all;
}

}  // namespace kurvo::tools
