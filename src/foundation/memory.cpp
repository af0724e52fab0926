// The memory functions: blocks of the process heap, so that callers and library free each other's.
#include <cstdlib>

#include "foundation/error_codes.h"

extern "C" {

void* KurvoMalloc(uint32_t size, GlobalVar* g) noexcept {
  if (size == 0) return nullptr;
  void* block = std::malloc(size);
  if (!block) kurvo::Fail(*g, KURVO_ERR_MEMORY);
  return block;
}

void* KurvoRealloc(void* p, uint32_t size, GlobalVar* g) noexcept {
  if (!p) return KurvoMalloc(size, g);
  if (size == 0) {  // what realloc does with size 0 is left to each C library: say it explicitly
    std::free(p);
    kurvo::Fail(*g, KURVO_ERR_MEMORY);
    return nullptr;
  }
  void* block = std::realloc(p, size);
  if (!block) kurvo::Fail(*g, KURVO_ERR_MEMORY);
  return block;
}

void KurvoFree(void* p) noexcept { std::free(p); }

}  // extern "C"
