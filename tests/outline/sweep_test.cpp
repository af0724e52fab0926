// What the sweep makes of events that are missing, where every slab is put in order anew, and of
// loops that need none.
// The linker puts these functions under the library's objects.
#include "outline/combine.h"
#include "sweep/beams.h"

namespace {

double g_lost = 0;  // the share of crossings that no one tells of
bool g_everything = false, g_always = false;
int g_sweeps = 0;
kurvo_test::Random* g_random = nullptr;

}  // namespace

namespace kurvo::outline {

// FindEvents and Beams::Build of the library, and what stands in their place.
extern "C" {
using Strands = Array<Strand>;
void KURVO_REAL_FIND_EVENTS(const Scene&, const Strands&, Progress&, Events&);
void KURVO_WRAP_FIND_EVENTS(const Scene&, const Strands&, Progress&, Events&);
void KURVO_REAL_BUILD(Beams*, const Scene&, const Strands&, const Events&);
void KURVO_WRAP_BUILD(Beams*, const Scene&, const Strands&, const Events&);

void KURVO_WRAP_FIND_EVENTS(const Scene& scene, const Strands& strands, Progress& progress,
                            Events& events) {
  KURVO_REAL_FIND_EVENTS(scene, strands, progress, events);
  std::erase_if(events.crossings,
                [](const Crossing&) { return g_random && kurvo_test::Chance(*g_random, g_lost); });
  events.unclear += g_always || g_random;
}

void KURVO_WRAP_BUILD(Beams* beams, const Scene& scene, const Strands& strands,
                      const Events& events) {
  KURVO_REAL_BUILD(beams, scene, strands, events);
  ++g_sweeps;
  if (!g_everything) return;
  auto& touched = const_cast<Rows&>(beams->touched());
  for (int32_t k = 0; k < beams->count(); ++k)
    for (std::size_t s = 0; s < strands.size(); ++s) touched.Add(k, static_cast<int32_t>(s));
  touched.Sort(static_cast<std::size_t>(beams->count()));
}
}

}  // namespace kurvo::outline

namespace kurvo_test {
namespace {

// A star of straight lines that cross each other.
Region RandomStar(Random& random) {
  std::vector<XY> points;
  for (int i = RandomInt(random, 3, 24); i > 0; --i) points.push_back(RandomPlace(random));
  std::vector<Owned> lines;
  for (std::size_t i = 0; i < points.size(); ++i)
    lines.push_back(LineBetween(points[i], points[(i + 1) % points.size()]));
  Region region;
  region.Add(Chain(std::move(lines)));
  return region;
}

Region RandomCircles(Random& random, int count) {
  Region region;
  for (int i = 0; i < count; ++i) {
    const XY c = RandomPlace(random);
    region.Add(Chain(Text("(a", {c.x, c.y, random.Uniform(.1, 1), 0, 6.283185307179586}) + ")"));
  }
  return region;
}

// Strands that cross once between two events of theirs are found where their order contradicts what
// they are at the next one; the two crossings of a lens between events leave no trace, so that a
// letter may lose a lens while straight lines, which make none, lose nothing.
TEST(Sweep, FindsCrossingsThatNobodyTold) {
  int wrong = 0, asked = 0;
  Rounds(Cases(600), [&](Random& random, int round) {
    const bool straight = round % 2;
    GlyphPair pair = PairOf(random, round);
    if (straight) pair = {RandomStar(random), RandomStar(random), "stars"};
    SCOPED_TRACE(pair.name);
    const Inputs inputs = {pair.a.get(), pair.b.get()};
    const Wide off = straight ? 1e-3L : .01L * ScaleOf(round).scale;
    Probes probes(random, inputs, off, 100);
    constexpr double kLost[] = {.02, .2, 1};
    const int32_t operation = kOperations[RandomInt(random, 0, std::size(kOperations) - 1)];
    g_lost = kLost[RandomInt(random, 0, 2)];
    g_random = &random;
    const std::string told = Judge(probes, operation, inputs, Combine(operation, inputs), off);
    g_random = nullptr;
    if (straight) {
      EXPECT_EQ(told, "") << kOperationNames[operation] << " without " << g_lost;
    } else {
      wrong += !told.empty();
      ++asked;
    }
  });
  EXPECT_LE(wrong, asked / 20);
}

// Strands that end in one point do not contradict there that they crossed: their order is looked at
// half-way too. These cross at four tenths of their height.
TEST(Sweep, FindsCrossingsBelowACommonEnd) {
  const Region a("(b 0 0 0 3 2.1 7 0 10)(l 0 10 -5 5)(l -5 5 0 0)");
  const Region b("(l 1 0 0 10)(l 0 10 6 4)(l 6 4 1 0)");
  const Inputs inputs = {a.get(), b.get()};
  Random random;
  Probes probes(random, inputs, .003L, 400);
  g_random = &random;
  g_lost = 1;
  for (const int32_t operation : kOperations)
    EXPECT_EQ(Judge(probes, operation, inputs, Combine(operation, inputs), .003L), "")
        << kOperationNames[operation];
  g_random = nullptr;
}

// Curves that part slowly, at a tolerance so small that the search for where they do gives up: what
// it has not looked at is not together.
TEST(Sweep, IsRightWhereTheSearchGivesUp) {
  constexpr double kTop[] = {1, 4};
  Region wedges[2];
  for (int i = 0; i < 2; ++i) {
    const double start = i * 1e-11, top = kTop[i];
    std::string curve = "(r";
    for (int k = 0; k <= 20; ++k)
      curve +=
          Text("", {k < 9 ? start + (k % 3 - k % 2) : k / 20. * top, .5 * k, 1 + .1 * (k % 4)});
    wedges[i].Add(
        Chain(curve + Text(")(l", {top, 10, -5, 5.}) + Text(")(l", {-5, 5., start, 0}) + ")"));
  }
  const Inputs inputs = {wedges[0].get(), wedges[1].get()};
  Random random;
  Probes probes(random, inputs, .01L, 400);
  for (const int32_t operation : kOperations) {
    const Combined made = Combine(operation, inputs, 0, 1e-12);
    EXPECT_GT(made.report.capped, 0);
    EXPECT_EQ(probes.Wrong(operation, *made.region, .01L), "") << kOperationNames[operation];
  }
}

// Heights that each lie within the tolerance of the next are no single one.
TEST(Sweep, BeamsDoNotGrow) {
  constexpr double kTol = 1e-3, kStep = kTol / 5;
  constexpr int kSteps = 400;
  std::string steps = Text("(l 0 0", {1, 0});
  for (int i = 1; i < kSteps; ++i)
    steps += Text(")(l", {1. * i, (i - 1) * kStep, 1. * i, i * kStep}) +
             Text(")(l", {1. * i, i * kStep, i + 1., i * kStep});
  const double top = (kSteps - 1) * kStep;
  const Region stairs(
      {steps + Text(")(l", {1. * kSteps, top, 0, top}) + Text(")(l", {0, top, 0, 0}) + ")"});
  const Combined made = Combine(kSimplify, {stairs.get()}, 0, kTol);
  EXPECT_NEAR(AreaOf(*made.region), AreaOf(*stairs), kSteps * kTol);
}

// What an event does not touch need not be looked at: the same comes out when all of it is, bit for
// bit but where curves run along each other within the tolerance.
TEST(Sweep, LocalUpdatesAreAsGoodAsAll) {
  int equal = 0, all = 0;
  Rounds(Cases(36), [&](Random& random, int round) {
    const GlyphPair pair = PairOf(random, round);
    SCOPED_TRACE(pair.name);
    const Region a = RandomRegion(random, 1), b = RandomRegion(random, 1);
    for (const Inputs& inputs : {Inputs{pair.a.get(), pair.b.get()}, Inputs{a.get(), b.get()}})
      for (const int32_t operation : kOperations) {
        const Region local = Made(operation, inputs);
        g_everything = true;
        const Region whole = Made(operation, inputs);
        g_everything = false;
        ExpectSame(local, whole, SizeOf(inputs), kOperationNames[operation]);
        equal += Packed(*local) == Packed(*whole);
        ++all;
      }
  });
  EXPECT_GE(equal, all - all / 10) << "of " << all;
}

// Loops that meet in clear crossings or nowhere come out as from a sweep, bit for bit: letters with
// holes, alone, beside and across each other, and chains of all kinds, by every rule.
TEST(Sweep, IsNotNeededWhereAllIsClear) {
  int clear = 0, all = 0;
  Rounds(Cases(200), [&](Random& random, int round) {
    const double scale = std::pow(10, random.Uniform(-2, 0));
    const auto letter = [&random](const Placed& place) {
      const int last = static_cast<int>(std::size(kGlyphs)) - 1;
      return GlyphRegion(kGlyphs[RandomInt(random, 0, last)], place);
    };
    const auto shift = [&] { return random.Uniform(0, 1000) / scale - 500; };
    Region a = letter({}), b = letter({random.Uniform(0, 6), shift(), shift(), scale, 0});
    Region c = RandomRegion(random, 1), d = RandomRegion(random, 1), star = RandomStar(random);
    const Region circles = RandomCircles(random, round % 20 ? 20 : 400);
    for (Region* region : {&a, &b, &c, &d}) (*region)->rule = RandomInt(random, 0, 3);
    const int32_t operation = kOperations[round % 4];
    for (const Inputs& inputs :
         {Inputs{a.get()}, Inputs{a.get(), b.get()}, Inputs{c.get()}, Inputs{c.get(), d.get()},
          Inputs{star.get()}, Inputs{a.get(), b.get(), star.get()}, Inputs{circles.get()},
          Inputs{circles.get(), star.get()}}) {
      g_sweeps = 0;
      const Region plain = Made(operation, inputs);
      clear += g_sweeps == 0;
      ++all;
      g_always = true;
      const Region swept = Made(operation, inputs);
      g_always = false;
      EXPECT_EQ(Packed(*plain), Packed(*swept)) << kOperationNames[operation];
    }
  });
  EXPECT_GE(clear, all / 2) << "of " << all;
}

}  // namespace
}  // namespace kurvo_test
