// Lists of outlines: as they are, at a distance, in pieces; and the spline through points.
#include <fmt/format.h>

#include <algorithm>
#include <span>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "report/json.h"
#include "report/reports.h"
#include "report/text.h"

namespace kurvo::tools {
namespace {

constexpr auto kRight = TextTable::Align::kRight;

// In the order of the columns; the last two share one.
constexpr int kTypes[] = {CV_LINE, CV_ARC, CV_BEZIER, CV_RBEZIER, CV_BSPLINE, CV_RBSPLINE};
constexpr std::size_t kSplines = 4;  // the first of them

// What is said of one outline and of all.
struct Totals {
  std::size_t counts[std::size(kTypes)] = {};
  int degree = 0;
  Bounds box;

  void Add(Context& context, const Curve& curve) {
    for (std::size_t i = 0; i < std::size(kTypes); ++i) counts[i] += curve.Type() == kTypes[i];
    degree = std::max(degree, curve.Degree(context).value());
    box.Add(BoundsOf(context, curve));
  }
  std::vector<std::string> Row(const std::string& label, const std::string& kind,
                               const std::string& start, const std::string& end,
                               bool splines) const {
    std::vector<std::string> row = {label};
    for (std::size_t i = 0; i < kSplines; ++i) row.push_back(std::to_string(counts[i]));
    if (splines) row.push_back(std::to_string(counts[kSplines] + counts[kSplines + 1]));
    row.insert(row.end(), {std::to_string(degree), kind, start, end, BoundsText(box)});
    return row;
  }
};

}  // namespace

std::string OutlineTable(Context& context, const Drawing& drawing) {
  bool splines = false;
  ForEachCurve(drawing, [&](const Curve& curve) {
    splines = splines || curve.Type() == CV_BSPLINE || curve.Type() == CV_RBSPLINE;
  });
  std::vector<TextTable::Column> columns = {{"outline"},
                                            {"line", kRight},
                                            {"arc", kRight},
                                            {"Bezier", kRight},
                                            {"rational", kRight},
                                            {"degree", kRight},
                                            {""},
                                            {"start"},
                                            {"end"},
                                            {"box"}};
  if (splines) columns.insert(columns.begin() + 1 + kSplines, {"spline", kRight});
  TextTable table(columns);
  std::size_t outlines = 0;
  Totals all;
  ForEachOutline(drawing, [&](const Outline& outline, const std::string& label) {
    Totals own;
    for (const Curve& curve : outline.curves) {
      own.Add(context, curve);
      all.Add(context, curve);
    }
    ++outlines;
    table.Add(own.Row(label, outline.closed ? "closed" : "open",
                      PointText(StartOf(context, outline.curves.front())),
                      PointText(EndOf(context, outline.curves.back())), splines));
  });
  table.Add(all.Row(CountText(outlines, "outline"), "", "", "", splines));
  return table.Text();
}

std::string OutlineJson(Context& context, const std::string& name, const Drawing& drawing) {
  std::vector<Json> records;
  ForEachOutline(drawing, [&](const Outline& outline, const std::string& label) {
    Totals own;
    for (const Curve& curve : outline.curves) own.Add(context, curve);
    Json& record = records.emplace_back();
    record["outline"] = label;
    record["closed"] = outline.closed;
    for (std::size_t i = 0; i < std::size(kTypes); ++i)
      record[std::string(TypeName(kTypes[i]))] = own.counts[i];
    record["degree"] = own.degree;
    record["start"] = StartOf(context, outline.curves.front());
    record["end"] = EndOf(context, outline.curves.back());
    record["box"] = own.box;
  });
  JsonLines json;
  json.Add("file", name);
  json.AddList("outlines", records, [](const Json& record, std::size_t) { return record; });
  return json.Take();
}

std::string OffsetJson(Context& context, const std::string& name,
                       const std::vector<OutlineOffset>& offsets) {
  JsonLines json;
  json.Add("file", name);
  json.AddList("offsets", offsets, [&](const OutlineOffset& offset, std::size_t) -> Json {
    Bounds box;
    for (const Curve& piece : offset.pieces) box.Add(BoundsOf(context, piece));
    return {{"outline", offset.label},
            {"closed", offset.source->closed},
            {"curves", offset.source->curves.size()},
            {"distance", offset.distance},
            {"pieces", offset.pieces.size()},
            {"box", box.IsEmpty() ? Json() : Json(box)}};
  });
  return json.Take();
}

std::string OffsetTable(Context& context, const std::vector<OutlineOffset>& offsets) {
  TextTable table(
      {{"outline"}, {""}, {"curves", kRight}, {"distance", kRight}, {"pieces", kRight}, {"box"}});
  for (const OutlineOffset& offset : offsets) {
    Bounds box;
    for (const Curve& piece : offset.pieces) box.Add(BoundsOf(context, piece));
    table.Add({offset.label, offset.source->closed ? "closed" : "open",
               std::to_string(offset.source->curves.size()), ShortNumber(offset.distance),
               std::to_string(offset.pieces.size()), BoundsText(box)});
  }
  return table.Text();
}

std::string SplitTable(Context& context, const std::vector<SplitOutline>& outlines) {
  TextTable table(
      {{"outline"}, {"piece", kRight}, {"curves", kRight}, {"start"}, {"end"}, {"length", kRight}});
  for (const SplitOutline& outline : outlines) {
    table.Add({outline.label});
    for (std::size_t i = 0; i < outline.pieces.size(); ++i) {
      const Piece& piece = outline.pieces[i];
      table.Add({"", std::to_string(i + 1), std::to_string(piece.curves.size()),
                 PointText(StartOf(context, piece.curves.front())),
                 PointText(EndOf(context, piece.curves.back())), ShortNumber(piece.length)});
    }
  }
  return table.Text();
}

std::string SplitJson(Context& context, const std::string& name,
                      const std::vector<SplitOutline>& outlines) {
  JsonLines json;
  json.Add("file", name);
  json.AddList("outlines", outlines, [&](const SplitOutline& outline, std::size_t) {
    JsonLines lines(2);
    lines.Add("outline", outline.label);
    lines.AddList("pieces", outline.pieces, [&](const Piece& piece, std::size_t i) -> Json {
      return {{"piece", i + 1},
              {"curves", piece.curves.size()},
              {"start", StartOf(context, piece.curves.front())},
              {"end", EndOf(context, piece.curves.back())},
              {"length", piece.length}};
    });
    return lines.Take();
  });
  return json.Take();
}

std::string JoinTable(Context& context, const JoinedCurves& joined) {
  TextTable table({{"chain", kRight},
                   {""},
                   {"curves", kRight},
                   {"start"},
                   {"end"},
                   {"length", kRight},
                   {"box"}});
  const std::vector<Piece>& chains = joined.chains.pieces;
  for (std::size_t i = 0; i < chains.size(); ++i) {
    const std::vector<Curve>& curves = chains[i].curves;
    table.Add({std::to_string(i + 1), chains[i].closed ? "closed" : "open",
               std::to_string(curves.size()), PointText(StartOf(context, curves.front())),
               PointText(EndOf(context, curves.back())), ShortNumber(chains[i].length),
               BoundsText(BoundsOf(context, curves))});
  }
  return table.Text() + fmt::format("{} closed, {} open; {}, {} dropped\n", joined.closed,
                                    chains.size() - joined.closed,
                                    CountText(static_cast<std::size_t>(joined.report.gaps), "gap"),
                                    joined.report.dropped);
}

std::string JoinJson(Context& context, const std::string& name, const JoinedCurves& joined) {
  JsonLines json;
  json.Add("file", name);
  json.Add("gaps", joined.report.gaps);
  json.Add("dropped", joined.report.dropped);
  json.Add("moved", joined.report.moved);
  json.AddList("chains", joined.chains.pieces, [&](const Piece& chain, std::size_t i) -> Json {
    return {{"chain", i + 1},
            {"closed", chain.closed},
            {"curves", chain.curves.size()},
            {"start", StartOf(context, chain.curves.front())},
            {"end", EndOf(context, chain.curves.back())},
            {"length", chain.length},
            {"box", BoundsOf(context, chain.curves)}};
  });
  return json.Take();
}

std::string FitText(Context& context, const Curve& spline) {
  const KurvoBSpline& block = *spline.As<KurvoBSpline>();
  return fmt::format("B-spline of order {} through {} points, length {}\n", block.order,
                     block.count, ShortNumber(LengthOf(context, spline)));
}

std::string FitJson(const Curve& spline) {
  const auto knots = spline.KnotVector();
  JsonLines json;
  json.Add("order", spline.As<KurvoBSpline>()->order);
  json.Add("knots", std::vector<double>(knots.begin(), knots.end()));
  json.AddList("control_points", spline.ControlPoints(),
               [](const kurvo::Point& p, std::size_t) -> Json { return Point(p); });
  return json.Take();
}

}  // namespace kurvo::tools
