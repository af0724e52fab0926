// Strands: parts of sources that go up all the way, x as a function of y.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "base/memory.h"
#include "base/vec2.h"
#include "pair/graph.h"
#include "sweep/scene.h"

namespace kurvo::outline {

// A point of a strand: its level (below), its side, and the slope there, side over height.
struct StrandPlace {
  double v, side, slope;
};

// From its lower to its upper vertex over v in [0, 1]. Arrays lie in the arena of the scene.
struct Strand {
  Span::Kind kind;
  bool is_flat;                   // both ends are level: it stands for what is horizontal
  int32_t degree;                 // of the Bezier kinds, lines included
  int32_t source;                 // its number
  int32_t operand;                // that of the source
  int32_t place;                  // among the strands of the operand
  int32_t low, high;              // vertices
  int32_t direction;              // 1: the source goes up, -1: down
  double u_low, u_high;           // of the source's span at its ends
  double y_low, y_high;           // of its ends
  double x_low, x_high;           // and their sides
  double least_x, most_x;         // of all of it
  double chord_slope;             // of the chord: side over height
  double least_bend, most_bend;   // side less that of the chord at the same height
  const double *x, *y, *w;        // control points upwards, of a rational one times w; null: none
  double x1, x2, x3, y1, y2, y3;  // x = x_low + x1 v + x2 v^2 + x3 v^3, up to cubics
  Vec2 centre;                    // of an arc, whose circle passes the lower end
  double half_low;                // how far its lower end lies to the side of the centre
  double radius, bulge;           // it lies to the right (1) or left (-1) of its centre

  // The side at a height, that of the nearer end beyond both. The only answer to where a strand is:
  // who asks twice gets the same bits.
  double At(double height) const;
  double ParameterAt(double height) const;
  double ChordAt(double height) const { return x_low + chord_slope * (height - y_low); }
  // What Between takes for a height, also from two that are known: of lines and arcs it needs none.
  double LevelAt(double height) const {
    return kind == Span::Kind::kLine || kind == Span::Kind::kArc ? 0 : ParameterAt(height);
  }
  double LevelAt(double height, KnownLevel below, KnownLevel above, double) const;
  // At(height), where the level is known.
  double SideAt(double height, double level) const {
    return kind == Span::Kind::kLine || kind == Span::Kind::kArc ? At(height) : SideAt(level);
  }
  // Of lines, arcs, and Bezier strands up to cubics.
  StrandPlace PlaceAt(double height) const;
  // Of an arc: the share of it at the direction of a point from its centre.
  double TurnTo(Vec2 point) const;
  Stretch Between(double from, double to, double v_from, double v_to) const;
  Circle circle() const {
    if (kind != Span::Kind::kArc) return {};
    return {centre, radius, bulge};
  }
  Vec2 PointAt(double v) const;
  double SourceAt(double v) const {
    return v >= 1 ? u_high : v <= 0 ? u_low : u_low + v * (u_high - u_low);
  }

 private:
  double SideOfArc(double height) const;
  double SideAt(double v) const;
  double HeightAt(double v, double& slope) const;
  double Solve(double height, double least, double most, double v) const;
  double Turn() const;
};

// The strands of all sources, in their order. Vertices are added where curves turn back.
void CutIntoStrands(Scene& scene, Array<Strand>& strands);

}  // namespace kurvo::outline
