// What the client prints: tables for people, and the same with all digits as JSON. Curves, pieces
// and the like are counted from 1.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cut/plan.h"
#include "geometry/crossings.h"
#include "geometry/drawing.h"
#include "geometry/links.h"
#include "geometry/locate.h"
#include "geometry/measure.h"
#include "geometry/notches.h"
#include "geometry/pieces.h"
#include "geometry/regions.h"
#include "geometry/tiles.h"

namespace kurvo::tools {

// One line for each outline: name, curves by type, largest degree, start, end, box; then the
// totals.
std::string OutlineTable(Context& context, const Drawing& drawing);
std::string OutlineJson(Context& context, const std::string& name, const Drawing& drawing);

// Two lists of curves, which may be the same one, and what they have in common.
struct CrossingReport {
  // The files; the second is empty when there is one only.
  std::string first_name;
  std::string second_name;
  const CurveList& first;
  const CurveList& second;
  const Crossings& found;
};

// One line for each crossing and each overlap, then how many there are.
std::string CrossingTable(const CrossingReport& report);
std::string CrossingJson(const CrossingReport& report);

// Two lists of curves and the links between their outlines.
struct LinkReport {
  std::string first_name;  // of the file
  std::string second_name;
  const CurveList& first;
  const CurveList& second;
  const std::vector<Link>& links;
};

// One line for each link, then the shortest.
std::string LinkTable(const LinkReport& report);
std::string LinkJson(const LinkReport& report);

struct LocatedPoint {
  Point point;
  Where place;                  // in the drawing
  std::vector<Where> outlines;  // by outline; empty for the points of a grid
};

struct LocateReport {
  std::string name;  // of the file
  std::vector<std::string> outlines;
  std::vector<LocatedPoint> points;
  std::vector<LocatedPoint> grid;
};

// One line for each point with the outlines that it is on or inside of, and one for the grid; as
// JSON every point of the grid.
std::string LocateTable(const LocateReport& report);
std::string LocateJson(const LocateReport& report);

struct MeasureReport {
  std::string name;  // of the file
  std::optional<Point> near;
  const std::vector<OutlineMeasures>& outlines;
};

// One line for each outline, followed by one for each of its curves, and in the end the length of
// all and the nearest point of all.
std::string MeasureTable(const MeasureReport& report);
std::string MeasureJson(const MeasureReport& report);

// One line for each outline and distance: how many curves became how many pieces, and their box.
std::string OffsetTable(Context& context, const std::vector<OutlineOffset>& offsets);
std::string OffsetJson(Context& context, const std::string& name,
                       const std::vector<OutlineOffset>& offsets);

struct RegionReport {
  std::vector<std::string> names;  // of the files
  std::string operation;           // "union", "clean" and the like
  const Drawing& drawing;          // that the elements are of
  const Regions& regions;
  bool with_distances = false;
  std::size_t second = kNoElement;  // the first shape of the second file
};

// One line for each loop, then how many there are and what was done besides.
std::string RegionTable(const RegionReport& report);
std::string RegionJson(const RegionReport& report);

// One line for each outline, followed by one for each of its pieces. `name` is that of the file.
std::string SplitTable(Context& context, const std::vector<SplitOutline>& outlines);
std::string SplitJson(Context& context, const std::string& name,
                      const std::vector<SplitOutline>& outlines);

// One line for each chain, then how many there are and what was done to join them.
std::string JoinTable(Context& context, const JoinedCurves& joined);
std::string JoinJson(Context& context, const std::string& name, const JoinedCurves& joined);

struct CutReport {
  std::string name;  // of the file
  const CutPlan& plan;
  double feed, rapid;  // mm a minute, of cuts and of the ways between
};

// What is cut, how long it is, how long the way between is and how much time both take.
std::string CutTable(const CutReport& report);
std::string CutJson(const CutReport& report);

// One line for each notch, then how many there are.
std::string NotchTable(Context& context, const std::vector<Notch>& notches);
std::string NotchJson(Context& context, const std::string& name, const std::vector<Notch>& notches);

struct PageReport {
  std::string name;  // of the file
  const Drawing& drawing;
  const Pages& pages;
  const Paper& paper;
};

// One line for each page, then how many there are.
std::string PageTable(const PageReport& report);
std::string PageJson(const PageReport& report);

// A spline through points: a line about it, or its knots and control points.
std::string FitText(Context& context, const Curve& spline);
std::string FitJson(const Curve& spline);

}  // namespace kurvo::tools
