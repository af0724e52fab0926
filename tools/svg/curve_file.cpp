#include "svg/curve_file.h"

#include <fmt/format.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "geometry/chain.h"
#include "geometry/curve_ask.h"
#include "geometry/curve_make.h"
#include "svg/input.h"

namespace kurvo::tools {
namespace {

using Json = nlohmann::json;

constexpr int kVersion = 1;
constexpr int kDeepest = 64;  // composites in composites, as in the library

[[noreturn]] void Refuse(const std::string& problem) { throw ElementError(problem); }

const Json& Member(const Json& object, const char* name) {
  const auto found = object.is_object() ? object.find(name) : object.end();
  if (!object.is_object() || found == object.end()) Refuse(fmt::format("'{}' is missing", name));
  return *found;
}

double Number(const Json& value, const char* name) {
  const double number = value.is_number() ? value.get<double>() : HUGE_VAL;
  if (!(std::fabs(number) <= kLargestNumber)) Refuse(fmt::format("'{}' is no number", name));
  return number;
}

double NumberOr(double fallback, const Json& object, const char* name) {
  return object.contains(name) ? Number(object[name], name) : fallback;
}

std::string TextOr(const char* fallback, const Json& object, const char* name) {
  if (!object.contains(name)) return fallback;
  if (!object[name].is_string()) Refuse(fmt::format("'{}' is no text", name));
  return object[name].get<std::string>();
}

bool FlagOr(bool fallback, const Json& object, const char* name) {
  if (!object.contains(name)) return fallback;
  if (!object[name].is_boolean()) Refuse(fmt::format("'{}' is neither true nor false", name));
  return object[name].get<bool>();
}

const Json& List(const Json& object, const char* name) {
  const Json& list = Member(object, name);
  if (!list.is_array()) Refuse(fmt::format("'{}' is no list", name));
  return list;
}

std::vector<double> Numbers(const Json& object, const char* name) {
  std::vector<double> numbers;
  for (const Json& value : List(object, name)) numbers.push_back(Number(value, name));
  return numbers;
}

// Reads curves; lengths are taken `scale` times as large.
class CurveReader {
 public:
  CurveReader(Context& context, double scale) : context_(context), scale_(scale) {}

  // Adds one curve, or the pieces of a composite. Throws ElementError.
  void Read(const Json& value, std::vector<Curve>& curves, int depth = 0) {
    const std::string type = TextOr("", value, "type");
    if (type == "composite") {
      if (depth == kDeepest) Refuse("composites are nested too deep");
      for (const Json& piece : List(value, "curves")) Read(piece, curves, depth + 1);
      return;
    }
    Curve curve = ReadOne(type, value);
    if (curve.Type() == CV_ARC) CheckArc(*curve.As<KurvoArc>());
    CheckRecord(context_, curve);
    curves.push_back(std::move(curve));
  }

  Point ReadPoint(const Json& value, const char* name) const {
    if (!value.is_array() || value.size() != 2) Refuse(fmt::format("'{}' is no point", name));
    return scale_ * Point{Number(value[0], name), Number(value[1], name)};
  }

 private:
  Curve ReadOne(const std::string& type, const Json& value) const {
    const auto point = [&](const char* name) { return ReadPoint(Member(value, name), name); };
    // One after the other: faults are named in the same order by every compiler.
    if (type == "line") {
      const Point start = point("start"), end = point("end");
      return Curve::Line(start, end).value();
    }
    if (type == "arc") {
      const Point centre = point("centre");
      const double radius = scale_ * Number(Member(value, "radius"), "radius");
      const bool is_left = !FlagOr(false, value, "clockwise");
      const Point start = point("start"), end = point("end");
      return ArcOf(centre, radius, is_left, start, end);
    }
    const bool is_rational = type.starts_with("rational ");
    const std::string form = is_rational ? type.substr(9) : type;
    if (form != "Bezier" && form != "B-spline") Refuse("no known type '" + Excerpt(type) + "'");
    std::vector<Point> points;
    for (const Json& item : List(value, "points")) points.push_back(ReadPoint(item, "points"));
    std::vector<double> weights, knots;
    if (is_rational) weights = Numbers(value, "weights");
    if (is_rational && weights.size() != points.size()) Refuse("not as many weights as points");
    for (const double weight : weights) {
      if (!(weight > 0)) Refuse("a weight that is not positive");
    }
    if (form == "B-spline") knots = KnotsOver01(Numbers(value, "knots"), points.size());
    if (points.size() < 2) Refuse("fewer than two points");
    return FreeForm(points, weights, knots);
  }

  void CheckArc(const KurvoArc& arc) const {
    const double slack = context_.Epsilon() + kArcRounding * std::fabs(arc.radius);
    for (const auto& end : {arc.start, arc.end}) {
      const double off = Size(Point{end[0] - arc.centre[0], end[1] - arc.centre[1]}) - arc.radius;
      if (!(slack >= std::fabs(off))) Refuse("an end that is not on the arc");
    }
  }

  static constexpr double kArcRounding = 1e-9;

  Context& context_;
  const double scale_;
};

class CurveFileReader {
 public:
  CurveFileReader(Context& context, const std::string& name, const ReadOptions& options)
      : context_(context), name_(name), options_(options) {}

  Drawing Read(std::string_view bytes) {
    const Json file = Parse(bytes);
    try {
      if (!file.is_object() || TextOr("", file, "format") != "kurvo curves") {
        Refuse("not curves of kurvo: 'format' is not \"kurvo curves\"");
      }
      if (Number(Member(file, "version"), "version") != kVersion) Refuse("an unknown version");
      if (file.contains("sheet")) ReadSheet(file["sheet"]);
      if (file.contains("groups")) ReadGroups(List(file, "groups"));
      ReadShapes(List(file, "shapes"));
    } catch (const ElementError& error) {
      throw InputError(OneLine(name_) + ": " + error.what());
    }
    return std::move(drawing_);
  }

 private:
  Json Parse(std::string_view bytes) const {
    try {
      return Json::parse(bytes);
    } catch (const Json::parse_error& error) {
      throw InputError(
          fmt::format("{}: offset {}: not well-formed JSON", OneLine(name_), error.byte));
    } catch (const Json::out_of_range&) {  // without its place
      throw InputError(OneLine(name_) + ": a number is out of range");
    }
  }

  void ReadSheet(const Json& value) {
    Sheet& sheet = drawing_.sheet;
    sheet.physical = value.contains("mm_per_unit") && !FlagOr(false, value, "assumed");
    sheet.mm_per_unit = NumberOr(sheet.mm_per_unit, value, "mm_per_unit");
    sheet.width = NumberOr(0, value, "width");
    sheet.height = NumberOr(0, value, "height");
    sheet.fit = TextOr("", value, "fit");
    sheet.y_up = FlagOr(false, value, "y_up");
    sheet.units_per_em = NumberOr(0, value, "units_per_em");
    if (!(sheet.mm_per_unit > 0)) Refuse("'mm_per_unit' is not positive");
    if (value.contains("view")) {
      const std::vector<double> view = Numbers(value, "view");
      if (view.size() != 4 || !(view[0] < view[2] && view[1] < view[3])) Refuse("'view' is no box");
      sheet.view = {view[0], view[1], view[2], view[3]};
    }
    if (options_.mm_per_unit > 0) {
      scale_ = sheet.mm_per_unit / options_.mm_per_unit;
      sheet = sheet.Scaled(scale_);
    }
  }

  void ReadGroups(const Json& list) {
    for (const Json& value : list) {
      Group group = {ReadGroup(value, "parent"), TextOr("", value, "id"),
                     TextOr("", value, "label"), FlagOr(false, value, "layer")};
      drawing_.groups.push_back(std::move(group));
    }
  }

  std::size_t ReadGroup(const Json& object, const char* name) const {
    const double number = NumberOr(0, object, name);
    const bool is_known = number >= 0 && number < static_cast<double>(drawing_.groups.size()) &&
                          number == std::floor(number);
    if (!is_known) Refuse(fmt::format("'{}' is the number of no group before", name));
    return static_cast<std::size_t>(number);
  }

  void ReadShapes(const Json& list) {
    for (std::size_t i = 0; i < list.size(); ++i) {
      place_ = fmt::format("shapes[{}]", i);
      try {
        Shape shape = ReadShape(list[i], i);
        if (!shape.outlines.empty()) drawing_.shapes.push_back(std::move(shape));
      } catch (const ElementError& error) {
        const std::string fault = place_ + ": " + error.what();
        if (options_.strict) throw InputError(OneLine(name_) + ": " + fault);
        drawing_.faults.push_back(fault);
      }
    }
  }

  Shape ReadShape(const Json& value, std::size_t number) {
    Shape shape;
    shape.id = TextOr("", value, "id");
    shape.label =
        shape.id.empty() ? fmt::format("shape[{}]", number + 1) : "shape#" + Excerpt(shape.id);
    shape.group = ReadGroup(value, "group");
    shape.even_odd = TextOr("nonzero", value, "fill_rule") == "evenodd";
    shape.paint.fill = TextOr("#000", value, "fill");
    shape.paint.stroke = TextOr("none", value, "stroke");
    shape.paint.stroke_width = scale_ * NumberOr(1 / scale_, value, "stroke_width");
    shape.paint.fill_opacity = NumberOr(1, value, "fill_opacity");
    shape.paint.stroke_opacity = NumberOr(1, value, "stroke_opacity");
    if (value.contains("origin"))
      shape.origin = CurveReader(context_, scale_).ReadPoint(value["origin"], "origin");
    const std::string shape_place = place_;
    const Json& outlines = List(value, "outlines");
    for (std::size_t i = 0; i < outlines.size(); ++i) {
      const std::string outline_place = fmt::format("{}.outlines[{}]", shape_place, i);
      place_ = outline_place;
      Outline outline;
      outline.closed = FlagOr(false, outlines[i], "closed");
      const Json& curves = List(outlines[i], "curves");
      CurveReader reader(context_, scale_);
      for (std::size_t k = 0; k < curves.size(); ++k) {
        place_ = fmt::format("{}.curves[{}]", outline_place, k);
        const std::size_t before = outline.curves.size();
        reader.Read(curves[k], outline.curves);
        CheckJoints(outline.curves, before);
      }
      std::erase_if(outline.curves, [&](const Curve& curve) { return IsPoint(context_, curve); });
      if (outline.curves.empty()) continue;
      if (outline.closed && !Follows(context_, outline.curves.back(), outline.curves.front())) {
        place_ = outline_place;
        Refuse("is closed, but its ends do not meet");
      }
      shape.outlines.push_back(std::move(outline));
    }
    return shape;
  }

  void CheckJoints(const std::vector<Curve>& curves, std::size_t from) const {
    for (std::size_t i = std::max<std::size_t>(from, 1); i < curves.size(); ++i) {
      if (!Follows(context_, curves[i - 1], curves[i]))
        Refuse("does not begin where the curve before it ends");
    }
  }

  Context& context_;
  const std::string name_;
  const ReadOptions options_;
  double scale_ = 1;
  Drawing drawing_;
  std::string place_;  // of what is read
};

}  // namespace

std::vector<double> KnotsOver01(std::vector<double> knots, std::size_t points) {
  const std::size_t order = knots.size() - points;
  if (knots.size() < points + 2 || order > points) Refuse("not as many knots as points and order");
  const double begin = knots[order - 1], end = knots[points];
  for (std::size_t i = 1; i < knots.size(); ++i) {
    if (knots[i] < knots[i - 1]) Refuse("knots that do not ascend");
  }
  if (!(begin < end)) Refuse("knots without extent");
  if (begin == 0 && end == 1) return knots;
  for (double& knot : knots) knot = (knot - begin) / (end - begin);
  return knots;
}

void CheckRecord(Context& context, const Curve& curve) {
  try {
    BoundsOf(context, curve);
    LengthOf(context, curve);
  } catch (const BadResult& error) {
    Refuse(ErrorText(error.error()));
  }
}

bool IsCurveFile(std::string_view bytes) { return Trimmed(bytes.substr(0, 64)).starts_with('{'); }

Drawing ReadCurveFile(Context& context, const std::string& name, std::string_view bytes,
                      const ReadOptions& options) {
  return CurveFileReader(context, name, options).Read(bytes);
}

}  // namespace kurvo::tools
