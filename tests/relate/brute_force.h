// All common points of two curves by brute force in long double.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "relate/intersection.h"

namespace kurvo_test {

struct WideJet {
  Wide x, y, dx, dy;
};

// A Bezier piece, or a circular arc when it has no points, over [0, 1] of a parameter of its own.
struct WidePiece {
  std::vector<WidePoint> points;
  Wide cx = 0, cy = 0, r = 0, angle = 0, sweep = 0;
  Wide start = 0, width = 1;  // on the whole curve
  Wide low = 0, high = 1;     // what takes part; more than [0, 1] for an unbounded line or arc

  WideJet operator()(Wide t) const {
    if (points.empty()) {
      const Wide a = angle + t * sweep, c = std::cos(a), s = std::sin(a);
      return {cx + r * c, cy + r * s, -r * sweep * s, r * sweep * c};
    }
    WidePoint work[16];
    std::copy(points.begin(), points.end(), work);
    const std::size_t n = points.size() - 1;
    for (std::size_t level = n; level > 1; --level)
      for (std::size_t i = 0; i < level; ++i) work[i] = Between(work[i], work[i + 1], t);
    const WidePoint p = Between(work[0], work[1], t);
    const Wide x = p.x / p.w, y = p.y / p.w, speed = static_cast<Wide>(n) / p.w;
    const Wide dw = work[1].w - work[0].w;
    return {x, y, speed * (work[1].x - work[0].x - dw * x),
            speed * (work[1].y - work[0].y - dw * y)};
  }
};

using WideCurve = std::vector<WidePiece>;

// The pieces of a curve of which each has a parameter span; of composites those that are Bezier
// curves or B-splines. An unbounded line reaches `reach` beyond its start.
inline void AddPieces(const Curve& cv, bool bounded, double reach, Wide offset, Wide scale,
                      WideCurve& pieces) {
  WidePiece piece;
  piece.start = offset;
  piece.width = scale;
  if (cv.type == CV_LINE) {
    const auto& line = *static_cast<KurvoLine*>(cv.data);
    piece.points = {{line.start[0], line.start[1], 1}, {line.end[0], line.end[1], 1}};
    if (!bounded) {
      piece.high =
          reach / std::hypot(L(line.end[0]) - line.start[0], L(line.end[1]) - line.start[1]);
      piece.low = -piece.high;
    }
    pieces.push_back(piece);
  } else if (cv.type == CV_ARC) {
    const auto& arc = *static_cast<KurvoArc*>(cv.data);
    const auto angle_of = [&](const Coord& p) {
      return std::atan2(L(p[1]) - arc.centre[1], L(p[0]) - arc.centre[0]);
    };
    piece.cx = arc.centre[0];
    piece.cy = arc.centre[1];
    piece.r = arc.radius;
    piece.angle = angle_of(arc.start);
    const Wide way = arc.normal[2] < 0 ? -1 : 1;
    piece.sweep = way * (angle_of(arc.end) - piece.angle);
    if (piece.sweep < 0) piece.sweep += 2 * kPiL;
    if (!bounded) piece.high = 2 * kPiL / piece.sweep;
    piece.sweep *= way;
    pieces.push_back(piece);
  } else if (cv.type == CV_SEGCV) {
    const auto& block = *static_cast<KurvoSegcv*>(cv.data);
    for (int i = 0; i < block.count; ++i) {
      if (block.curves[i].type != CV_LINE && block.curves[i].type != CV_ARC)
        AddPieces(block.curves[i], true, reach, offset, scale * block.widths[i], pieces);
      offset += scale * block.widths[i];
    }
  } else if (cv.type == CV_BEZIER || cv.type == CV_RBEZIER) {
    piece.points = Widened(FreeForm(cv), 0);
    pieces.push_back(piece);
  } else {
    const FreeForm form(cv);
    const int p = form.order - 1;
    for (int span = p; span < SplineCount(cv); ++span) {
      const double* u = form.knots + span;
      if (!(u[0] < u[1])) continue;
      piece.points.clear();
      for (int q = 0; q <= p; ++q) {  // the blossom at q times u[1] and p - q times u[0]
        std::vector<WidePoint> work = Widened(form, span - p);
        for (int r = 1; r <= p; ++r)
          for (int j = p; j >= r; --j) {
            const Wide left = u[j - p], right = u[j - r + 1];
            const auto at = static_cast<std::size_t>(j);
            work[at] =
                Between(work[at - 1], work[at], ((r <= q ? u[1] : u[0]) - left) / (right - left));
          }
        piece.points.push_back(work.back());
      }
      piece.start = offset + scale * u[0];
      piece.width = scale * (L(u[1]) - u[0]);
      pieces.push_back(piece);
    }
  }
}

inline WideCurve Pieces(const Curve& cv, bool bounded = true, double reach = 0) {
  WideCurve pieces;
  AddPieces(cv, bounded, reach, 0, 1, pieces);
  return pieces;
}

inline Wide Gap(const WideJet& p, const WideJet& q) { return std::hypot(p.x - q.x, p.y - q.y); }

// Calls use(piece, its own parameter) for each piece that has a parameter of the whole curve: two
// at a joint, the first or the last one beyond an end.
template <class Use>
void AtParameter(const WideCurve& curve, double t, Use&& use) {
  for (const WidePiece& piece : curve) {
    const Wide local = (t - piece.start) / piece.width;
    const bool first = &piece == &curve.front(), last = &piece == &curve.back();
    if ((first || local > -1e-9L) && (last || local < 1 + 1e-9L)) use(piece, local);
  }
}

// The distance of the points at parameters of the whole curves; at a joint that of the pieces which
// are nearer.
inline Wide GapAt(const WideCurve& a, const WideCurve& b, double s, double t) {
  Wide nearest = HUGE_VALL;
  AtParameter(a, s, [&](const WidePiece& p, Wide on_p) {
    AtParameter(b, t, [&](const WidePiece& q, Wide on_q) {
      nearest = std::min(nearest, Gap(p(on_p), q(on_q)));
    });
  });
  return nearest;
}

// How far `p` is from the curve next to a parameter.
inline Wide GapNear(const WideCurve& curve, Wide t, const WideJet& p) {
  const WidePiece& last = curve.back();
  Wide nearest = HUGE_VALL;
  for (int step = 0; step < 16; ++step) {
    Wide move = 0;
    AtParameter(curve, static_cast<double>(t), [&](const WidePiece& piece, Wide local) {
      const WideJet q = piece(local);
      if (!(Gap(p, q) < nearest)) return;
      nearest = Gap(p, q);
      move = piece.width * ((p.x - q.x) * q.dx + (p.y - q.y) * q.dy) / (q.dx * q.dx + q.dy * q.dy);
    });
    if (move == 0) break;
    t = std::clamp(t + move, curve.front().start, last.start + last.width);
  }
  return nearest;
}

// Whether the second curve stays with the first all the way from one place to another.
inline bool StayTogether(const WideCurve& a, const WideCurve& b, const Hit& from, const Hit& to,
                         Wide tol) {
  constexpr int kSteps = 16;
  for (int i = 1; i < kSteps; ++i) {
    const double share = 1.0 * i / kSteps, s = from.a + share * (to.a - from.a);
    Wide gap = HUGE_VALL;
    AtParameter(a, s, [&](const WidePiece& piece, Wide local) {
      gap = std::min(gap, GapNear(b, L(from.b) + share * (L(to.b) - from.b), piece(local)));
    });
    if (!(tol >= gap)) return false;
  }
  return true;
}

struct WideHit {
  Wide a, b;  // parameters on the whole curves
  WideJet at_a, at_b;
  Wide angle;   // between the tangents, 0 to pi / 2
  bool inside;  // on both, and not just on the brink
};

inline Wide Speed(const WideJet& jet) { return std::hypot(jet.dx, jet.dy); }

// Newton's method; true when it settles on a common point of what takes part of both pieces.
inline bool Settles(const WidePiece& a, const WidePiece& b, Wide s, Wide t, WideHit& hit) {
  constexpr Wide kBrink = 1e-6L;  // of a parameter
  for (int step = 0; step < 30; ++step) {
    const WideJet p = a(s), q = b(t);
    const Wide det = p.dx * q.dy - p.dy * q.dx, x = q.x - p.x, y = q.y - p.y;
    const Wide ds = (x * q.dy - y * q.dx) / det, dt = (x * p.dy - y * p.dx) / det;
    s += ds;
    t += dt;
    if (!(s > a.low - 1 && s < a.high + 1 && t > b.low - 1 && t < b.high + 1)) return false;
    if (!(std::fabs(ds) + std::fabs(dt) < 1e-11L)) continue;
    const auto within = [&](Wide margin) {
      return s >= a.low - margin && s <= a.high + margin && t >= b.low - margin &&
             t <= b.high + margin;
    };
    const WideJet on_a = {p.x, p.y, p.dx / a.width, p.dy / a.width};
    const WideJet on_b = {q.x, q.y, q.dx / b.width, q.dy / b.width};
    const Wide sine = std::fabs(det) / (std::hypot(p.dx, p.dy) * std::hypot(q.dx, q.dy));
    hit = {a.start + s * a.width, b.start + t * b.width, on_a, on_b, sine, within(-kBrink)};
    return within(kBrink);
  }
  return false;
}

// Whether there is a crossing steeper than `angle` right at parameters of the whole curves.
inline bool CrossAt(const WideCurve& a, const WideCurve& b, double s, double t, Wide angle) {
  constexpr Wide kRight = 1e-6L;  // of a parameter
  bool found = false;
  AtParameter(a, s, [&](const WidePiece& p, Wide on_p) {
    AtParameter(b, t, [&](const WidePiece& q, Wide on_q) {
      WideHit hit;
      found = found || (Settles(p, q, on_p, on_q, hit) && hit.angle > angle &&
                        std::fabs(hit.a - s) < kRight * std::fabs(p.width) &&
                        std::fabs(hit.b - t) < kRight * std::fabs(q.width));
    });
  });
  return found;
}

// All crossings, from every pair of short chords whose boxes meet.
inline std::vector<WideHit> BruteForce(const WideCurve& curve_a, const WideCurve& curve_b) {
  constexpr int kChords = 64;
  constexpr Wide kSame = 1e-10L;  // of a parameter
  struct Chord {
    Wide t, left, right, bottom, top;
  };
  const auto chords = [](const WidePiece& piece) {
    const int count = piece.points.size() == 2 ? 8 : kChords;
    std::vector<Chord> list;
    WideJet p = piece(piece.low);
    for (int i = 0; i < count; ++i) {
      const Wide step = (piece.high - piece.low) / count;
      const WideJet q = piece(piece.low + (i + 1) * step);
      const Wide slack = 0.1L * Gap(p, q);
      list.push_back({piece.low + (i + 0.5L) * step, std::min(p.x, q.x) - slack,
                      std::max(p.x, q.x) + slack, std::min(p.y, q.y) - slack,
                      std::max(p.y, q.y) + slack});
      p = q;
    }
    return list;
  };
  std::vector<std::vector<Chord>> chords_b;
  for (const WidePiece& b : curve_b) chords_b.push_back(chords(b));
  std::vector<WideHit> hits;
  for (const WidePiece& a : curve_a) {
    const std::vector<Chord> of_a = chords(a);
    for (std::size_t i = 0; i < curve_b.size(); ++i) {
      for (const Chord& p : of_a) {
        for (const Chord& q : chords_b[i]) {
          if (p.right < q.left || q.right < p.left || p.top < q.bottom || q.top < p.bottom)
            continue;
          WideHit hit;
          if (!Settles(a, curve_b[i], p.t, q.t, hit)) continue;
          if (std::none_of(hits.begin(), hits.end(), [&](const WideHit& known) {
                return std::fabs(known.a - hit.a) < kSame && std::fabs(known.b - hit.b) < kSame;
              }))
            hits.push_back(hit);
        }
      }
    }
  }
  return hits;
}

}  // namespace kurvo_test
