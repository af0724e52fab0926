// The roles of arguments: each draws one and tells the call what to judge and keep of it
// afterwards.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "robust/table.h"

namespace kurvo_test {

// Null now and then, where the function allows it.
template <class Role>
auto OrNull(Role role) {
  return [role](Call& c) { return c.in().OneIn(16) ? nullptr : role(c); };
}

// One of the first; when hostile, one time in `rarity`, one of the others, or any number.
inline auto Choice(std::initializer_list<int> sound, std::initializer_list<int> other,
                   uint32_t rarity) {
  return [sound = std::vector(sound), other = std::vector(other), rarity](Call& c) {
    return c.in().Pick(c.hostile() && c.in().Below(rarity) == 0 ? other : sound);
  };
}
inline auto Choice(std::initializer_list<double> sound, uint32_t rarity) {
  return [sound = std::vector(sound), rarity](Call& c) {
    return c.hostile() && c.in().Below(rarity) == 0 ? c.Number() : c.in().Pick(sound);
  };
}

// ---- results, which are freed
// A header that may hold anything before it becomes a result. Of a bare one pieces without a block
// are copied as they are.
template <class Record, bool kBare = false>
Record* Fresh(Call& c) {
  Record* const record = c.own_store().Zeroed<Record>();
  if constexpr (std::is_same_v<Record, Curve>)
    *record = {-1, nullptr, 9, 9, 9};
  else
    *record = {9, nullptr};
  c.Afterwards([=, &c] { c.Take(*record, kBare); });
  return record;
}
template <class Record>
constexpr auto Bare = Fresh<Record, true>;

// Nothing is half written.
inline double* Written(Call& c, int size) {
  double* const out = c.Room(size);
  c.Afterwards([=, &c] {
    c.Add(out, size);
    const auto untouched = std::count(out, out + size, Call::kUnwritten);
    c.Expect(untouched == 0 || untouched == size, "partly written");
  });
  return out;
}
inline auto Out(int size) {
  return [size](Call& c) { return Written(c, size); };
}

// (0, 0, 0) without memory.
inline double* ZeroedOut(Call& c) {
  double* const out = Written(c, 3);
  c.Afterwards([=, &c] { c.Neutral(std::count(out, out + 3, 0.) == 3); });
  return out;
}

// Gives the point before the coordinates of `p`.
inline void MovePoint(Call& c, const double* p) {
  if (c.given.point) std::memcpy(c.given.point, p, 3 * sizeof *p);
}

inline double* Vector(Call& c) {
  double* const v = Written(c, 3);
  for (int i = 0; i < 3; ++i) v[i] = c.Number();
  return v;
}

// A point, one in two of them from the curve before.
template <bool kInPlace>
double* Near(Call& c) {
  double* const p = kInPlace ? Vector(c) : c.Point();
  Globals g;
  if (c.in().Below(2)) KurvocvStartPoint(c.given.curve, p, &g);
  return p;
}

// When memory runs out the curve is as it was; a whole one after any failure.
template <bool kWhole>
Curve* Changed(Call& c) {
  Curve* const curve = c.OwnCurve();
  const Curve before = curve ? *curve : Curve{};
  c.Afterwards([=, &c] {
    c.Expect(!curve || (curve->data == before.data && curve->type == before.type), "another block");
    if (c.OutOfMemory() || (kWhole && !KurvoOk(&c.g))) c.Unchanged();
    c.AddOwn();
  });
  return curve;
}

// A curve all of whose blocks the library may free, spoiled where that must not matter.
inline Curve Freeable(Call& c) {
  Store store;
  Maker maker(c.in(), c.hostile() ? Mode::kHostile : Mode::kBenign, store);
  const Curve source = maker.Curve();
  Curve curve;
  Globals g;
  KurvocvCopyCurve(&source, &curve, &g);
  if (!c.hostile() || !curve.data || !c.in().OneIn(4)) return curve;
  auto& block = *static_cast<KurvoSegcv*>(curve.data);  // of free-form curves, with their sizes
  if (curve.type == CV_LINE || curve.type == CV_ARC) return curve;
  for (int32_t i = 0; curve.type == CV_SEGCV && i < block.count; ++i)
    KurvocvFreeCurve(block.curves + i);
  if (curve.type != CV_SEGCV || c.in().Below(2))
    block.count = c.in().Pick({0, -1, INT32_MIN});
  else
    block.curves = nullptr;
  return curve;
}

// Now and then the one before, or next to it.
inline double OneNumber(Call& c) {
  if (c.given.number && c.in().OneIn(4)) return *c.given.number + c.in().Pick({0., 1e-6});
  return *(c.given.number = c.Number());
}

// Now and then the one before.
inline const double* OnePoint(Call& c, int size) {
  if (!c.given.point || !c.in().OneIn(4)) c.given.point = c.Point(size);
  return c.given.point;
}
inline const double* OnePoint(Call& c) { return OnePoint(c, 3); }
inline const Curve* OneCurve(Call& c) {
  if (!c.given.curve || !c.in().OneIn(8)) c.given.curve = c.AnyCurve();
  return c.given.curve;
}

// Now and then with an end at the point before.
inline const KurvoArc* OneArc(Call& c) {
  const KurvoArc* const arc = c.AnyArc();
  if (arc && c.in().Below(2)) MovePoint(c, c.in().Below(2) ? arc->start : arc->end);
  return arc;
}
inline const double* OneLine(Call& c) {
  const double* const line = c.Array(6);
  if (c.in().OneIn(4)) MovePoint(c, line + 3 * c.in().Below(2));
  return line;
}

inline const double* HPoint(Call& c) { return OnePoint(c, 4); }
template <int kCount>
const double* Array(Call& c) {
  return c.Array(kCount);
}
inline const double* SomeBox(Call& c) {
  double* const box = c.Array(6);
  for (int i = 0; i < 3; ++i)
    if (!c.hostile() && box[i] > box[i + 3]) std::swap(box[i], box[i + 3]);
  return box;
}

// Mostly up, and of length 1.
inline const double* Normal(Call& c) {
  double* const normal = c.Array(3);
  normal[0] = normal[1] = 0;
  normal[2] = c.in().Pick({1., 1., 1., 1., 1., -1., 2., 0.});
  if (c.hostile() && c.in().OneIn(4)) normal[c.in().Below(3)] = c.Number();
  return normal;
}

inline const double* Direction(Call& c) {
  static constexpr Coord kZero = {0, 0, 0};
  return c.in().Below(2) ? OnePoint(c) : kZero;
}

template <int32_t kType>
const Curve* CurveOf(Call& c) {
  return c.AnyCurve(kType);
}
inline double Parameter(Call& c) { return c.Parameter(); }
inline double Epsilon(Call& c) {
  return c.in().Below(2) ? c.in().Pick({1e-6, 1e-5, 1e-4, .01, 1e-3, .02, 0., -1e-6}) : c.Number();
}

inline int ErrorCode(Call& c) {
  return c.in().Below(2) ? static_cast<int>(c.in().Bits() & 0xFFFFFFFF)
                         : c.in().Pick({0, 0xE00C47, 0x754C52, -1, INT32_MIN});
}

// Room that the caller asks for: a little, or more than there is.
inline uint32_t Bytes(Call& c) {
  return c.in().OneIn(16) ? c.in().Pick({0xFFFFFFFFu, 0x80000000u, 0x40000001u})
                          : c.in().Below(c.in().Below(2) ? 64 : 65536);
}
inline int32_t Items(Call& c) {
  if (c.hostile() && c.in().OneIn(8)) return c.in().Pick({-1, INT32_MIN, INT32_MAX, 1 << 30});
  return c.in().Between(0, 20);
}

inline void* Block(Call& c) { return c.in().Below(4) ? std::malloc(c.in().Below(256)) : nullptr; }

// Arrays, how many points or knots the call says they hold, and an order.
inline const double* Points(Call& c) {
  c.given.count = c.hostile() && c.in().OneIn(50) ? 4000 : c.in().Between(2, 12);
  return c.hostile() && c.in().OneIn(50) ? nullptr : c.Array(3 * c.given.count);
}
inline double* KnotArray(Call& c) {
  c.given.count = c.in().Between(0, 16);
  if (c.hostile() && c.in().OneIn(50)) return nullptr;
  double* const knots = c.OwnNumbers(c.given.count);
  for (int i = 0; i < c.given.count; ++i)
    knots[i] = c.hostile() ? c.Number() : i * c.in().Fraction();
  c.Afterwards([&c] { c.AddOwn(); });
  return knots;
}
inline int32_t Count(Call& c) {
  return c.hostile() && c.in().OneIn(8) ? c.in().Pick({0, -1, INT32_MIN}) : c.given.count;
}
inline int32_t Order(Call& c) {
  return c.hostile() && c.in().OneIn(4)
             ? c.in().Pick({0, 1, 2, 15, 16, 24, 40, 41, 64, c.given.count, -1, INT32_MAX})
             : c.in().Between(2, std::clamp(c.given.count, 2, 5));
}

// The tolerances.
inline GlobalVar* State(Call& c) {
  for (uint32_t saved = c.in().Below(4); saved > 0; --saved) {
    KurvoclPushEpsilon(1e-3, &c.g);
    KurvoclPushEpsilon0(1e-4, &c.g);
  }
  c.StateMayChange();
  c.Afterwards([&c] { c.AddState(); });
  return &c.g;
}

inline Curve* OwnedCurve(Call& c) {
  Curve* const curve = c.own_store().Zeroed<Curve>();
  *curve = Freeable(c);
  curve->attr = 5;
  return curve;
}

inline Cvseq* OwnedSequence(Call& c) {
  const int count = c.hostile() && c.in().OneIn(8) ? c.in().Pick({0, -1}) : c.in().Between(1, 4);
  Cvseq* const seq = c.own_store().Zeroed<Cvseq>();
  seq->count = count;
  if (count > 0) seq->curves = static_cast<Curve*>(std::calloc(size_t(count), sizeof(Curve)));
  for (int i = 0; i < count; ++i) seq->curves[i] = Freeable(c);
  return seq;
}

// With a count of none, the values are not the list's own.
inline CvParam* OwnedList(Call& c) {
  const int count = c.in().Between(c.hostile() ? -2 : 0, 9);
  CvParam* const list = Fresh<CvParam>(c);
  const auto bytes = static_cast<size_t>(count) * sizeof(double);
  *list = {count, count > 0 ? static_cast<double*>(std::malloc(bytes)) : c.OwnNumbers(1)};
  return list;
}

// Whose count says what room it asks for.
inline CvParam* WantedList(Call& c) {
  CvParam* const list = c.own_store().Zeroed<CvParam>();
  const int32_t count = list->count = Items(c);
  c.Afterwards([=, &c] {
    if (count <= 0) return c.Expect(list->count == count && !list->values, "changed");
    c.Expect(list->count == (list->values ? count : 0), "count without an array");
    c.Add(double(list->count));
    KurvocrFreeCvParam(list);
  });
  return list;
}

// For a function that leaves it alone when an error is pending.
inline Cvseq* Emptied(Call& c) {
  Cvseq* const seq = Bare<Cvseq>(c);
  *seq = {};
  return seq;
}

inline uint32_t* Word(Call& c) { return c.own_store().Zeroed<uint32_t>(2); }

}  // namespace kurvo_test
