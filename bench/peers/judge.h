// Which answers are right. Lengths agree within a millionth of a unit unless a tolerance is named.
#pragma once

#include <functional>
#include <vector>

#include "curve.h"
#include "inputs.h"

namespace peers::judge {

// The point at `t` is as near as any, within 1e-6.
bool Nearest(const Bezier& curve, Point p, double t);

// `t` is the parameter of the first foot, within 1e-6 of length.
bool FirstFoot(const Bezier& curve, Point p, double t);

// As many points as there are crossings, and for each of these one that lies there on both curves
// within 2e-6, divided by the sine of the angle of the curves: so far they are that near.
bool Crossings(const Pair<Segment, Bezier>& pair, const std::vector<Common>& found);
bool Crossings(const Pair<Arc, Bezier>& pair, const std::vector<Common>& found);
bool Crossings(const Pair<Bezier, Bezier>& pair, const std::vector<Common>& found);
bool Crossings(const Pair<Spline, Spline>& pair, const std::vector<Common>& found);

bool Length(const Bezier& curve, double length, double tolerance);
bool Length(const Spline& curve, double length, double tolerance);

// Within 1e-12 of the size of the curve, here and below.
bool Position(const Segment& curve, double t, Point p);
bool Position(const Arc& curve, double t, Point p);
bool Position(const Bezier& curve, double t, Point p);

bool Derivative(const Bezier& curve, double t, Point d);

// Both halves run as the curve does, at their ends and in between.
using Half = std::function<Point(int half, double s)>;
bool Split(const Bezier& curve, double t, const Half& half);
bool Split(const Spline& curve, double t, const Half& half);

// Every sample is at the distance from one of its foot points within twice the tolerance, and every
// point of the true offset as near to the samples' polygon.
bool Offset(const Stroke& stroke, double tolerance, const std::vector<Point>& samples);

// Union, intersection, difference and xor by number: at every look it goes around once where it
// should and not at all elsewhere, to one sense or the other.
bool Combined(const Letters& letters, int operation, const Outline& result);

bool Inside(const Glyph& glyph, Point p, bool inside);

}  // namespace peers::judge
