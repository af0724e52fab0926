// One operation on any number of operands by one sweep.
#pragma once

#include "base/options.h"
#include "sweep/emit.h"

namespace kurvo::outline {

// What a sweep is asked for. The loops are checked, `box` holds their control points.
struct Request {
  int32_t operation;  // KURVO_UNION ...
  const Array<Operand>& operands;
  Bounds box;
  Settings settings;
  double epsilon;
  bool keeps_given = false;  // a result that is the loops of the only operand needs no records
};

// Throws Refusal: KURVO_ERR_CHAIN_ENDS, KURVO_ERR_WEIGHT, KURVO_ERR_STOPPED.
Emitted Combine(Request& request, KurvoReport& report);

}  // namespace kurvo::outline
