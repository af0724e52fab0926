// An entry of the table from the function's type and the roles of its arguments.
#pragma once

#include <tuple>
#include <utility>

#include "robust/roles.h"

namespace kurvo_test {

// The role that the type of an argument has by itself.
constexpr struct ByType {
} _;

template <class T>
T Make(Call& c, ByType) {
  if constexpr (std::is_same_v<T, GlobalVar*> || std::is_same_v<T, const GlobalVar*>)
    return &c.g;
  else if constexpr (std::is_same_v<T, double>)
    return OneNumber(c);
  else if constexpr (std::is_same_v<T, const double*>)
    return OnePoint(c);
  else if constexpr (std::is_same_v<T, double*>)
    return Written(c, 3);
  else if constexpr (std::is_same_v<T, const KurvoArc*>)
    return OneArc(c);
  else if constexpr (std::is_same_v<T, const Curve*>)
    return OneCurve(c);
  else if constexpr (std::is_same_v<T, const Cvseq*>)
    return c.AnySequence();
  else if constexpr (std::is_same_v<T, const CvParam*>)
    return c.AnyList();
  else
    return Fresh<std::remove_pointer_t<T>>(c);
}
template <class T, class Role>
T Make(Call& c, const Role& role) {
  return role(c);
}
// ---- what must hold of a call: judge(call, result unless void, arguments...)
template <class Judge>
struct Gives {
  Judge judge;
};
template <class Judge>
Gives(Judge) -> Gives<Judge>;
inline auto Codes(std::initializer_list<int64_t> codes) {
  return Gives{
      [codes = std::vector(codes)](Call& c, int64_t result, auto...) { c.Code(result, codes); }};
}
inline auto Within(int64_t low, int64_t high) {
  return Gives{[=](Call& c, int64_t result, auto...) {
    c.Expect(low <= result && result <= high, "result out of range");
    c.Add(static_cast<double>(result));
  }};
}
template <class Result>
auto GivesByType() {
  if constexpr (std::is_void_v<Result>)
    return Gives{[](Call&, auto...) {}};
  else if constexpr (std::is_same_v<Result, double>)
    return Gives{[](Call& c, double result, auto...) { c.Add(result); }};
  else if constexpr (std::is_same_v<Result, double*>)  // where it wrote
    return Gives{[](Call& c, double* result, auto... given) {
      const auto is = [=](auto argument) {
        if constexpr (std::is_same_v<decltype(argument), double*>) return argument == result;
        return false;
      };
      c.Expect((is(given) || ...), "another result");
    }};
  else
    return Codes({0, 1});
}

template <std::size_t kIndex, class... Roles>
auto RoleAt(const std::tuple<Roles...>& roles) {
  if constexpr (kIndex < sizeof...(Roles))
    return std::get<kIndex>(roles);
  else
    return _;
}

// A random call. Arguments that come after the last role have the roles of their types.
template <class Return, class... Args, class Judge, class... Roles>
std::function<void(Call&)> Drawn(Return (*function)(Args...) noexcept, Gives<Judge> gives,
                                 Roles... roles) {
  static_assert(sizeof...(Roles) <= sizeof...(Args));
  const auto draw = [all = std::tuple(roles...)]<std::size_t... kIndex>(
      Call & c, std::index_sequence<kIndex...>) {
    return std::tuple<Args...>{Make<Args>(c, RoleAt<kIndex>(all))...};  // from left to right
  };
  return [=](Call& c) {
    const auto args = draw(c, std::index_sequence_for<Args...>());
    const auto run = [&] { return c.Run([&] { return std::apply(function, args); }); };
    const auto judge = [&](auto... result) {
      std::apply([&](auto... given) { gives.judge(c, result..., given...); }, args);
    };
    if constexpr (std::is_void_v<Return>)
      run(), judge();
    else
      judge(run());
  };
}
template <class Return, class... Args, class Judge, class... Roles>
Called Row(const char* name, Return (*function)(Args...) noexcept, Gives<Judge> gives,
           Roles... roles) {
  return {name, Drawn(function, gives, roles...), [=](WrittenCall& c) { return Told(c, function); },
          ((std::is_same_v<Args, GlobalVar*> || std::is_same_v<Args, const GlobalVar*>) || ...)};
}
template <class Return, class... Args, class... Roles>
Called Row(const char* name, Return (*function)(Args...) noexcept, Roles... roles) {
  return Row(name, function, GivesByType<Return>(), roles...);
}

}  // namespace kurvo_test
