// Calls of the tolerance, error and memory functions.
#include <cstdlib>

#include "robust/table.h"

namespace kurvo_test {
namespace {

// A tolerance function: `body` gives what it returns, 0 for nothing.
template <class Body>
void Tolerance(Call& c, Body&& body) {
  const double eps =
      c.in().Below(2) ? c.in().Pick({1e-6, 1e-4, .01, 1e-3, .02, 0., -1e-6}) : c.Number();
  for (uint32_t saved = c.in().Below(4); saved > 0; --saved) {
    KurvoclPushEpsilon(1e-3, &c.g);
    KurvoclPushEpsilon0(1e-4, &c.g);
  }
  c.StateMayChange();
  c.Add(c.Run([&] { return body(eps); }));
  c.AddState();
}

// Takes an error code apart.
template <class Body>
void Field(Call& c, int high, Body&& body) {
  const int code = c.in().Below(2) ? static_cast<int>(c.in().Bits() & 0xFFFFFFFF)
                                   : c.in().Pick({0, 0xE00C47, 0x754C52, -1, INT32_MIN});
  const int field = c.Run([&] { return body(code); });
  c.Expect(field >= 0 && field <= high, "field out of range");
  c.Add(double{1. * field});
}

uint32_t BlockSize(Call& c) {
  return c.in().OneIn(16) ? c.in().Pick({0xFFFFFFFFu, 0x80000000u, 0x40000001u})
                          : c.in().Below(c.in().Below(2) ? 64 : 65536);
}

const Entry kEntries[] = {
    {"KurvoInitGlobalVar",
     [](Call& c) {
       c.StateMayChange();
       c.Code(c.Run([&] { return KurvoInitGlobalVar(&c.g); }), {0});
       c.AddState();
     }},
    {"GetEpsilon", [](Call& c) { c.Add(c.Run([&] { return GetEpsilon(&c.g); })); }},
    {"GetEpsilon_1", [](Call& c) { c.Add(c.Run([&] { return GetEpsilon_1(&c.g); })); }},
    {"GetEpsilon2", [](Call& c) { c.Add(c.Run([&] { return GetEpsilon2(&c.g); })); }},
    {"GetEpsilon0", [](Call& c) { c.Add(c.Run([&] { return GetEpsilon0(&c.g); })); }},
    {"KurvoclSetEpsilon",
     [](Call& c) {
       const double second = c.in().Below(2) ? 1e-5 : c.Number();
       Tolerance(c, [&](double eps) { return KurvoclSetEpsilon(eps, second, &c.g), 0.; });
     }},
    {"KurvoclSetEpsilon0",
     [](Call& c) { Tolerance(c, [&](double eps) { return KurvoclSetEpsilon0(eps, &c.g), 0.; }); }},
    {"KurvoclPushEpsilon",
     [](Call& c) { Tolerance(c, [&](double eps) { return KurvoclPushEpsilon(eps, &c.g), 0.; }); }},
    {"KurvoclPopEpsilon",
     [](Call& c) { Tolerance(c, [&](double) { return KurvoclPopEpsilon(&c.g); }); }},
    {"KurvoclPushEpsilon0",
     [](Call& c) { Tolerance(c, [&](double eps) { return KurvoclPushEpsilon0(eps, &c.g), 0.; }); }},
    {"KurvoclPopEpsilon0",
     [](Call& c) { Tolerance(c, [&](double) { return KurvoclPopEpsilon0(&c.g); }); }},
    {"KurvoErrGet",
     [](Call& c) {
       c.Expect(c.Run([&] { return KurvoErrGet(&c.g); }) == c.g.error, "another code");
     }},
    {"KurvoErrReset",
     [](Call& c) {
       c.Run([&] { KurvoErrReset(&c.g); });
       c.Expect(c.g.error == 0, "not cleared");
     }},
    {"KurvoOk",
     [](Call& c) {
       c.Code(c.Run([&] { return KurvoOk(&c.g); }), {0, 1});
     }},
    {"KurvoErrSeverity", [](Call& c) { Field(c, 3, KurvoErrSeverity); }},
    {"KurvoErrModule", [](Call& c) { Field(c, 255, KurvoErrModule); }},
    {"KurvoErrGroup", [](Call& c) { Field(c, 4095, KurvoErrGroup); }},
    {"KurvoErrAction", [](Call& c) { Field(c, 15, KurvoErrAction); }},
    {"KurvoMalloc",
     [](Call& c) {
       const uint32_t size = BlockSize(c);
       void* const block = c.Run([&] { return KurvoMalloc(size, &c.g); });
       c.Expect(!block == (size == 0 || c.OutOfMemory()), "block and error disagree");
       std::free(block);
     },
     kAsks},
    {"KurvoRealloc",
     [](Call& c) {
       const uint32_t before = c.in().Below(4) ? 1 + c.in().Below(4096) : 0, size = BlockSize(c);
       auto* const old = before ? static_cast<unsigned char*>(std::malloc(before)) : nullptr;
       for (uint32_t i = 0; i < before; ++i) old[i] = static_cast<unsigned char>(i);
       void* const block = c.Run([&] { return KurvoRealloc(old, size, &c.g); });
       const bool failed = size > 0 && !block;
       c.Expect(c.OutOfMemory() == (failed || (old && size == 0)), "block and error disagree");
       const auto* const kept = static_cast<unsigned char*>(failed ? old : block);
       for (uint32_t i = 0; kept && i < before && (failed || i < size); ++i)
         c.Expect(kept[i] == static_cast<unsigned char>(i), "content lost");
       std::free(failed ? old : block);
     },
     kAsks},
    {"KurvoFree",
     [](Call& c) {
       void* const block = c.in().Below(4) ? std::malloc(c.in().Below(256)) : nullptr;
       c.Run([&] { KurvoFree(block); });
     }},
};

}  // namespace

std::span<const Entry> StateEntries() { return kEntries; }

}  // namespace kurvo_test
