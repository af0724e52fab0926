// Reading, resetting and taking apart the pending error code.
#include "foundation/error_codes.h"

extern "C" {

int KurvoErrGet(const GlobalVar* g) noexcept { return g->error; }

void KurvoErrReset(GlobalVar* g) noexcept { g->error = KURVO_ERR_NONE; }

int KurvoOk(const GlobalVar* g) noexcept { return kurvo::ErrorPending(*g) ? 0 : 1; }

int KurvoErrSeverity(int code) noexcept { return code & kurvo::kSeverityMask; }

int KurvoErrModule(int code) noexcept { return (code >> kurvo::kModuleShift) & kurvo::kModuleMask; }

int KurvoErrGroup(int code) noexcept { return (code >> kurvo::kGroupShift) & kurvo::kGroupMask; }

int KurvoErrAction(int code) noexcept { return (code >> kurvo::kActionShift) & kurvo::kActionMask; }

}  // extern "C"
