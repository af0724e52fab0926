// Numbers of the run as constants of the compiler.
#pragma once

#include <type_traits>

namespace kurvo {

// Calls use(k) with the value k: one of the listed numbers as an integral constant, so that loops
// up to it unroll, any other one as it is.
template <int kFirst, int... kOthers, class Value, class Use>
[[gnu::always_inline]] inline decltype(auto) WithConstant(Value value, Use&& use) {
  constexpr auto kConstant = static_cast<Value>(kFirst);
  if (value == kConstant) return use(std::integral_constant<Value, kConstant>());
  if constexpr (sizeof...(kOthers) > 0)
    return WithConstant<kOthers...>(value, use);
  else
    return use(value);
}

}  // namespace kurvo
