// What the sweep makes of events that are missing, and where every slab is put in order anew.
// The linker puts these functions under the library's objects.
#include "outline/combine.h"
#include "sweep/beams.h"

namespace {

double g_lost = 0;  // the share of crossings that no one tells of
bool g_everything = false;
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
}

void KURVO_WRAP_BUILD(Beams* beams, const Scene& scene, const Strands& strands,
                      const Events& events) {
  KURVO_REAL_BUILD(beams, scene, strands, events);
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

// Strands that cross once between two events of theirs are found where their order contradicts what
// they are at the next one; the two crossings of a lens between events leave no trace, so that a
// letter may lose a lens while straight lines, which make none, lose nothing.
TEST(Sweep, FindsCrossingsThatNobodyTold) {
  int wrong = 0, asked = 0;
  Rounds(Cases(60), [&](Random& random, int round) {
    const bool straight = round % 2;
    GlyphPair pair = PairOf(random, round);
    if (straight) pair = {RandomStar(random), RandomStar(random), "stars"};
    SCOPED_TRACE(pair.name);
    const Inputs inputs = {pair.a.get(), pair.b.get()};
    const Wide off = straight ? 1e-3L : .01L * ScaleOf(round).scale;
    Probes probes(random, inputs, off, 100);
    g_random = &random;
    for (const double lost : {.02, .2, 1.}) {
      g_lost = lost;
      for (const int32_t operation : kOperations) {
        const std::string told = Judge(probes, operation, inputs, Combine(operation, inputs), off);
        if (straight) {
          EXPECT_EQ(told, "") << kOperationNames[operation] << " without " << lost;
          continue;
        }
        wrong += !told.empty();
        ++asked;
      }
    }
    g_random = nullptr;
  });
  EXPECT_LE(wrong, asked / 20);
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

}  // namespace
}  // namespace kurvo_test
