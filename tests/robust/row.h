// An entry of the table from the function's type and the roles of its arguments. A role draws an
// argument and tells the call what to judge and keep of it afterwards.
#pragma once

#include <tuple>
#include <utility>

#include "robust/table.h"

namespace kurvo_test {

// The role that the type of an argument has by itself.
constexpr struct ByType {
} _;

// ---- inputs
double OneNumber(Call& c);        // now and then the one before, or next to it
const double* OnePoint(Call& c);  // now and then the one before
const Curve* OneCurve(Call& c);   // likewise
const KurvoArc* OneArc(Call& c);  // now and then with an end at the point before
const double* Line(Call& c);      // likewise
const double* HPoint(Call& c);
const double* Matrix(Call& c);
const double* SomeBox(Call& c);
const double* FlatPoint(Call& c);
const double* Normal(Call& c);
const double* Up(Call& c);  // (0, 0, 1), now and then another length
const double* Axis(Call& c);
const double* Direction(Call& c);  // or zero
const double* Near(Call& c);       // a point, one in two of them from the curve before
const Curve* Spline(Call& c);
const Curve* Composite(Call& c);
double Parameter(Call& c);  // of a curve
double Epsilon(Call& c);
double Radius(Call& c);
int ErrorCode(Call& c);
uint32_t Bytes(Call& c);  // room that the caller asks for: a little, or more than there is
int32_t Items(Call& c);   // likewise
void* Block(Call& c);
// Arrays, how many points or knots the call says they hold, and an order.
const double* Points(Call& c);
double* Knots(Call& c);
int32_t Count(Call& c);
int32_t Order(Call& c);
// One of the first; when hostile, one time in `rarity`, one of the others, or any number.
inline auto Choice(std::initializer_list<int> sound, std::initializer_list<int> other,
                   uint32_t rarity) {
  return [sound = std::vector(sound), other = std::vector(other), rarity](Call& c) {
    return c.in().Pick(c.hostile() && c.in().Below(rarity) == 0 ? other : sound);
  };
}
inline auto Choice(std::initializer_list<double> sound, uint32_t rarity) {
  return [sound = std::vector(sound), rarity](Call& c) {
    return c.hostile() && c.in().Below(rarity) == 0 ? c.Number() : c.in().Pick(sound);
  };
}

// ---- changed in place
GlobalVar* State(Call& c);      // the tolerances
double* Vector(Call& c);        // three numbers
double* NearInPlace(Call& c);   // a point as above
Curve* Pieces(Call& c);         // when memory runs out, the curve is as it was;
Curve* Whole(Call& c);          // after any failure
Curve* OwnedCurve(Call& c);     // whose blocks the library may free
Cvseq* OwnedSequence(Call& c);  // likewise
CvParam* OwnedList(Call& c);    // likewise
CvParam* WantedList(Call& c);   // whose count says what room it asks for

// ---- results, which are freed
double* Written(Call& c, int size);
inline auto Out(int size) {
  return [size](Call& c) { return Written(c, size); };
}
double* ZeroedOut(Call& c);  // three numbers, (0, 0, 0) without memory
uint32_t* Word(Call& c);
Cvseq* Emptied(Call& c);  // for a function that leaves it alone when an error is pending
// A header that may hold anything before it becomes a result. `bare`: pieces without a block are
// copied as they are.
template <class Record>
Record* Result(Call& c, bool bare) {
  Record* const record = c.own_store().Zeroed<Record>();
  if constexpr (std::is_same_v<Record, Curve>)
    *record = {-1, nullptr, 9, 9, 9};
  else
    *record = {9, nullptr};
  c.Afterwards([=, &c] { c.Take(*record, bare); });
  return record;
}
template <class Record>
Record* Fresh(Call& c) {
  return Result<Record>(c, false);
}
template <class Record>
Record* Bare(Call& c) {
  return Result<Record>(c, true);
}

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
// Null now and then, where the function allows it.
template <class Role>
auto OrNull(Role role) {
  return [role](Call& c) { return c.in().OneIn(16) ? nullptr : role(c); };
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

// Arguments that come after the last role have the roles of their types.
template <class Return, class... Args, class Judge, class... Roles>
Entry Row(const char* name, Return (*function)(Args...) noexcept, Gives<Judge> gives,
          Roles... roles) {
  static_assert(sizeof...(Roles) <= sizeof...(Args));
  const auto draw = [all = std::tuple(roles...)]<std::size_t... kIndex>(
      Call & c, std::index_sequence<kIndex...>) {
    return std::tuple<Args...>{Make<Args>(c, RoleAt<kIndex>(all))...};  // from left to right
  };
  return {name, [=](Call& c) {
            const auto args = draw(c, std::index_sequence_for<Args...>());
            const auto run = [&] { return c.Run([&] { return std::apply(function, args); }); };
            const auto judge = [&](auto... result) {
              std::apply([&](auto... given) { gives.judge(c, result..., given...); }, args);
            };
            if constexpr (std::is_void_v<Return>)
              run(), judge();
            else
              judge(run());
          }};
}
template <class Return, class... Args, class... Roles>
Entry Row(const char* name, Return (*function)(Args...) noexcept, Roles... roles) {
  return Row(name, function, GivesByType<Return>(), roles...);
}
inline Entry With(unsigned traits, Entry entry) {
  entry.traits = traits;
  return entry;
}

// ---- calls that no signature tells
void CallRealloc(Call& c);
void CallMallocCurve(Call& c);
void CallCvseqInsert(Call& c);
void CallConvert(Call& c);

}  // namespace kurvo_test
