// A reference to something that can be called, for as long as it lives.
#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace kurvo::outline {

template <class Signature>
class FunctionRef;

template <class R, class... A>
class FunctionRef<R(A...)> {
 public:
  template <class F>
  requires(!std::is_same_v<std::remove_cvref_t<F>, FunctionRef>) FunctionRef(F&& f)
      : object_(const_cast<void*>(static_cast<const void*>(std::addressof(f)))),
        call_([](void* object, A... arguments) -> R {
          return (*static_cast<std::remove_reference_t<F>*>(object))(std::forward<A>(arguments)...);
        }) {}

  R operator()(A... arguments) const { return call_(object_, std::forward<A>(arguments)...); }

 private:
  void* object_;
  R (*call_)(void*, A...);
};

}  // namespace kurvo::outline
