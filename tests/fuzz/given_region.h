// Curves and chains that come from the fuzzer's bytes.
#pragma once

#include <span>

#include "robust/records.h"

namespace kurvo_test {

// The curves and chains that the first of the bytes stand for, which are taken away; null when they
// stand for none. Of the second library alone.
const Gallery* TakeGiven(std::span<const uint8_t>& bytes);

}  // namespace kurvo_test
