// The pictures that the client writes, as SVG in the coordinates of the drawing; the viewBox fits
// what is shown, whose longer side takes `size` pixels. Curves are shown as they are.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "report/reports.h"

namespace kurvo::tools {

struct PictureOptions {
  bool control = true;  // control polygons, and the centres of arcs
  bool points = true;   // end points
  bool boxes = true;    // of each outline
  bool legend = true;
  bool comb = false;         // curvature combs
  bool alternate = false;    // neighbouring arcs in two colours
  bool curves_only = false;  // one thin black stroke and nothing else
  bool fill = false;         // the shapes filled by their fill rule; with curves_only, not stroked
  std::optional<double> stroke_width;  // of the curves, in units of the drawing
};

// The curves of a drawing, coloured by type.
std::string DrawingPicture(Context& context, const Drawing& drawing, const PictureOptions& options,
                           double size);

// Each drawing in a colour of its own, with a ring around each crossing and a band along each
// overlap. `second` is null when there is one drawing only.
std::string CrossingPicture(Context& context, const Drawing& first, const Drawing* second,
                            const CrossingReport& report, double size);

// Each drawing in a colour of its own, the links as thin lines and the shortest one, with rings
// around its ends, as a strong one.
std::string LinkPicture(Context& context, const Drawing& first, const Drawing& second,
                        const LinkReport& report, double size);

// The curves with all points, coloured by where they lie.
std::string LocatePicture(Context& context, const Drawing& drawing, const LocateReport& report,
                          double size);

// Sources and offsets, each in a colour of their own. `name` is that of the drawing.
std::string OffsetPicture(Context& context, const Drawing& drawing,
                          const std::vector<OutlineOffset>& offsets, const std::string& name,
                          double size);

// The regions below the drawings that they are made of, each of these in a colour of its own.
std::string RegionPicture(Context& context, const RegionReport& report, double size);

// What is cut over the drawing, with lead-ins and the ways between, numbered in the order of
// cutting.
std::string CutPicture(Context& context, const Drawing& drawing, const CutReport& report,
                       double size);

// One path for each piece and nothing else, so that it can be read as a drawing of the pieces;
// neighbours have different colours. `drawing` is the one that they come from.
std::string SplitPicture(Context& context, const Drawing& drawing,
                         std::span<const SplitOutline> outlines, double size);

// The drawing with its notches in another colour. `name` is that of the drawing.
std::string NotchPicture(Context& context, const Drawing& drawing,
                         const std::vector<Notch>& notches, const std::string& name, double size);

// The drawing, and over it what each page prints as a frame.
std::string PagePicture(Context& context, const PageReport& report, double size);

// A spline with a ring around each point that it passes through; `control` shows its control
// polygon too.
std::string FitPicture(Context& context, const std::vector<Point>& points, const Curve& spline,
                       bool control, double size);

}  // namespace kurvo::tools
