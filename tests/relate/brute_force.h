// Common points and distances of two curves by brute force in long double.
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
struct WidePiece : Oracle::Part {
  Wide low = 0, high = 1;  // what takes part; more than [0, 1] for an unbounded line or arc

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

// The pieces of a curve of which each has a parameter span. An unbounded line reaches `reach`
// beyond its start.
inline WideCurve Pieces(const Curve& cv, bool bounded = true, double reach = 0) {
  WideCurve pieces;
  for (const Oracle::Part& part : Oracle(cv).Parts()) {
    WidePiece piece{part};
    if (!bounded && cv.type == CV_ARC) piece.high = 2 * kPiL / std::fabs(part.sweep);
    if (!bounded && cv.type == CV_LINE) {
      const WidePoint &a = part.points[0], &b = part.points[1];
      piece.high = reach / std::hypot(b.x - a.x, b.y - a.y);
      piece.low = -piece.high;
    }
    pieces.push_back(piece);
  }
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

inline Wide GapFrom(const WideCurve& curve, const WideJet& p) {
  constexpr int kStarts = 16;
  const Wide start = curve.front().start, length = curve.back().start + curve.back().width - start;
  Wide nearest = HUGE_VALL;
  for (int i = 0; i <= kStarts; ++i)
    nearest = std::min(nearest, GapNear(curve, start + length * i / kStarts, p));
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
  Wide a, b;    // parameters on the whole curves
  Wide angle;   // between the tangents, 0 to pi / 2
  bool inside;  // on both, and not just on the brink
};

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
    const Wide sine = std::fabs(det) / (std::hypot(p.dx, p.dy) * std::hypot(q.dx, q.dy));
    hit = {a.start + s * a.width, b.start + t * b.width, sine, within(-kBrink)};
    return within(kBrink);
  }
  return false;
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
  for (const WidePiece& a : curve_a)
    for (const Chord& p : chords(a))
      for (std::size_t i = 0; i < curve_b.size(); ++i)
        for (const Chord& q : chords_b[i]) {
          if (p.right < q.left || q.right < p.left || p.top < q.bottom || q.top < p.bottom)
            continue;
          WideHit hit;
          if (Settles(a, curve_b[i], p.t, q.t, hit) &&
              std::none_of(hits.begin(), hits.end(), [&](const WideHit& known) {
                return std::fabs(known.a - hit.a) < kSame && std::fabs(known.b - hit.b) < kSame;
              }))
            hits.push_back(hit);
        }
  return hits;
}

// The least distance, from the nearest of many samples by search on ever smaller grids.
inline Wide LeastDistance(const WideCurve& curve_a, const WideCurve& curve_b) {
  constexpr int kSamples = 160, kSeeds = 12, kRounds = 40;
  struct Sample {
    const WidePiece* on;
    Wide t;
    WideJet p;
  };
  struct Seed {
    Wide gap;
    Sample a, b;
  };
  const auto samples = [](const WideCurve& curve) {
    std::vector<Sample> all;
    for (const WidePiece& piece : curve)
      for (int i = 0; i <= kSamples; ++i)
        all.push_back({&piece, L(i) / kSamples, piece(L(i) / kSamples)});
    return all;
  };
  const std::vector<Sample> of_a = samples(curve_a), of_b = samples(curve_b);
  std::vector<Seed> seeds;
  for (const Sample& a : of_a) {
    Seed nearest{HUGE_VALL, a, a};
    for (const Sample& b : of_b)
      if (const Wide gap = Gap(a.p, b.p); gap < nearest.gap) nearest = {gap, a, b};
    seeds.push_back(nearest);
  }
  std::sort(seeds.begin(), seeds.end(), [](const Seed& p, const Seed& q) { return p.gap < q.gap; });
  if (seeds.size() > kSeeds) seeds.resize(kSeeds);
  Wide least = HUGE_VALL;
  for (Seed& seed : seeds) {
    Wide step = 1.0L / kSamples;
    for (int round = 0; round < kRounds; ++round, step *= .6L) {
      const Wide s0 = seed.a.t, t0 = seed.b.t;
      for (int i = -2; i <= 2; ++i)
        for (int j = -2; j <= 2; ++j) {
          const Wide s = std::clamp(s0 + step * i / 2, 0.0L, 1.0L),
                     t = std::clamp(t0 + step * j / 2, 0.0L, 1.0L);
          const Wide gap = Gap((*seed.a.on)(s), (*seed.b.on)(t));
          if (gap >= seed.gap) continue;
          seed.gap = gap;
          seed.a.t = s;
          seed.b.t = t;
        }
    }
    least = std::min(least, seed.gap);
  }
  return least;
}

}  // namespace kurvo_test
