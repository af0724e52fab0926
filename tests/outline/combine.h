// Combining as tests ask for it, and pairs of letters to combine.
#pragma once

#include "outline/combined.h"
#include "support/glyphs.h"

namespace kurvo_test {

inline double SizeOf(const Inputs& inputs) {
  double low[2] = {kInfinity, kInfinity}, high[2] = {-kInfinity, -kInfinity};
  for (const KurvoRegion* input : inputs)
    ForEachCurve(*input, [&](const Curve& cv) {
      const auto add = [&](const double* p) {
        for (int c = 0; c < 2; ++c) {
          low[c] = std::min(low[c], p[c]);
          high[c] = std::max(high[c], p[c]);
        }
      };
      ForEachPoint(cv, add, [](double) {});
    });
  return std::max({high[0] - low[0], high[1] - low[1], 0.});
}

struct Combined {
  Region region;
  KurvoReport report = {};
  int code = 0;
};

constexpr int32_t kSimplify = -1;  // of one region

inline Combined Combine(int32_t operation, const Inputs& inputs, double gap = 0, double tol = 0) {
  Globals g(std::max(0x1p-44 * SizeOf(inputs), 1e-300));  // the joints of arcs are rounded
  const KurvoOptions options = OptionsOf(tol, gap);
  Combined made;
  KurvoRegion* const out = made.region.get();
  if (operation == kSimplify)
    KurvoRegionSimplify(inputs[0], &options, out, &made.report, &g);
  else if (inputs.size() == 2)
    KurvoRegionCombine(operation, inputs[0], inputs[1], &options, out, &made.report, &g);
  else
    KurvoRegionCombineMany(operation, inputs.data(), static_cast<int32_t>(inputs.size()), &options,
                           out, &made.report, &g);
  made.code = KurvoErrGet(&g);
  return made;
}
inline Region Made(int32_t operation, const Inputs& inputs) {
  Combined made = Combine(operation, inputs);
  EXPECT_EQ(made.code, 0);
  return std::move(made.region);
}

inline KurvoMoments MomentsOf(const KurvoRegion& region) {
  Globals g(std::max(0x1p-44 * SizeOf({&region}), 1e-300));
  KurvoMoments moments = {};
  EXPECT_EQ(KurvoRegionMoments(&region, &moments, &g), 1) << KurvoErrGet(&g);
  return moments;
}
inline double AreaOf(const KurvoRegion& region) { return MomentsOf(region).area; }

// All that must hold of any result; '' if it does.
inline std::string Judge(Probes& probes, int32_t operation, const Inputs& inputs,
                         const Combined& made, Wide off) {
  if (made.code != 0) return "refused " + std::to_string(made.code);
  const double tol = 0x1p-30 * SizeOf(inputs), kept = 4 * tol + 2 * made.report.moved;
  const int32_t set = operation == kSimplify ? KURVO_UNION : operation;
  // So much for the most that is excused below.
  if (made.report.gaps == 0 && !(0x1p-14 * SizeOf(inputs) >= made.report.moved))
    return "moved by " + std::to_string(made.report.moved);
  return probes.Wrong(set, *made.region, off) + Invalid(*made.region, tol) +
         Strays(*made.region, inputs, kept);
}

// The same set of points, told by areas and lengths of the boundaries and by the difference.
inline void ExpectSame(const Region& a, const Region& b, double size, const char* what) {
  const KurvoMoments of_a = MomentsOf(*a), of_b = MomentsOf(*b);
  const double tol = 0x1p-27 * size;
  EXPECT_NEAR(of_a.area, of_b.area, tol * (of_a.length + size)) << what;
  EXPECT_NEAR(AreaOf(*Made(KURVO_XOR, {a.get(), b.get()})), 0, tol * (of_a.length + size)) << what;
}

// ---- Pairs of letters

struct Family {
  const char* name;
  Placed place;
  bool same;
};
// clang-format off
constexpr Family kFamilies[] = {
    {"shifted", {0, 370, 210}, false}, {"turned", {.5, 60, -30}, false}, {"overlaid", {}, false},
    {"identical", {}, true}, {"slid by 1", {0, 1, .7}, true}, {"slid by 1e-3", {0, 1e-3, -7e-4}, true},
    {"slid by 1e-7", {0, 1e-7, 7e-8}, true}, {"turned by 1e-4", {1e-4}, true}, {"turned by 1e-7", {1e-7}, true}};
// clang-format on

// A size and a place, in units of the em / 1000.
constexpr struct { double scale, far; } kScales[] = {{1, 0}, {1e-9, 0}, {1e6, 0}, {1, 1e6}};
inline const auto& ScaleOf(int round) {
  return kScales[std::size_t(round) / std::size(kFamilies) % std::size(kScales)];
}

struct GlyphPair {
  Region a, b;
  std::string name;
};
template <class Glyphs>
GlyphPair PairOf(Random& random, int round, const Glyphs& glyphs) {
  const Family& family = kFamilies[std::size_t(round) % std::size(kFamilies)];
  const auto& [scale, far] = ScaleOf(round);
  const auto some = [&] {
    return static_cast<std::size_t>(RandomInt(random, 0, static_cast<int>(std::size(glyphs)) - 1));
  };
  const std::size_t first = some();
  const std::size_t second = family.same ? first : some();
  Placed place = family.place;
  place.scale = scale;
  place.far = scale * far;
  return {GlyphRegion(glyphs[first], {0, 0, 0, scale, scale * far}),
          GlyphRegion(glyphs[second], place),
          Text(family.name, {double(first), double(second), scale, far})};
}

inline GlyphPair PairOf(Random& random, int round) { return PairOf(random, round, kGlyphs); }

}  // namespace kurvo_test
