// kurvo.hpp - Kurvo for C++20: the functions of kurvo.h and kurvo_outline.h, on values that free
// themselves.
//
// Header only; what a function does, its units and its limits stand in those two, beside the one
// named here. Works with and without exceptions. A program that asks nothing of regions, and of
// chains nothing that takes or gives a Place, links the kernel alone.
//
//   kurvo::Context context;  // tolerances and the last code; one a thread
//   auto curve = kurvo::Curve::Bezier({{0, 0}, {1, 2}, {3, 2}, {4, 0}}).value();
//   if (auto p = curve.Position(0.5, context)) Use(p->x, p->y);
//
// Errors: what can fail returns a Result, which holds a value or an Error. Every call clears the
// code of the context, runs and reads it, so that no earlier error silences it; the code of the
// last call stays in the context. After a warning the result stands, and Context::Warning tells of
// it. Nothing throws but `.value()` of a Result without one, which aborts where there are no
// exceptions.
//
// Ownership: Curve, Chain, Region and Parameters own their records. They move and never copy by
// themselves, since copies may fail: Copy does. Moved from they are empty, and every question to an
// empty one is answered. Get gives the record to functions of kurvo.h, Adopt and Release hand it
// over.
//
// Curve and Box are names of kurvo.h too: write kurvo::Curve, not `using namespace kurvo`. Region
// and what it is asked come last, in kurvo_outline.hpp.
#ifndef KURVO_HPP
#define KURVO_HPP

#include <kurvo.h>
#include <kurvo_outline.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <initializer_list>
#include <limits>
#include <memory>
#include <numbers>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>
#include <version>

#if defined(__cpp_lib_expected)
#include <expected>
#endif

// Sources with and without std::expected have different types to the linker, so that they may be
// linked together.
#if defined(__cpp_lib_expected)
namespace kurvo::inline with_std_expected {
#else
namespace kurvo::inline with_own_expected {
#endif

// ---- Errors and results ----

// A code of the library, and the function that gave it.
struct Error {
  int code = KURVO_ERR_NONE;
  const char* function = "";

  const char* Name() const noexcept { return Find().name; }    // of the constant
  const char* Cause() const noexcept { return Find().cause; }  // in words
  int Severity() const noexcept { return KurvoErrSeverity(code); }
  int Module() const noexcept { return KurvoErrModule(code); }
  int Group() const noexcept { return KurvoErrGroup(code); }
  int Action() const noexcept { return KurvoErrAction(code); }

 private:
  struct Row {
    int code;
    const char *name, *cause;
  };
  Row Find() const noexcept {
    // clang-format off
    static constexpr Row kRows[] = {
        {KURVO_ERR_NONE, "KURVO_ERR_NONE", "no error"},
        {KURVO_ERR_MEMORY, "KURVO_ERR_MEMORY", "memory could not be obtained"},
        {KURVO_ERR_CURVE, "KURVO_ERR_CURVE", "a curve of a type not supported here, or that cannot be right"},
        {KURVO_ERR_TOLERANCE, "KURVO_ERR_TOLERANCE", "a tolerance out of range"},
        {KURVO_ERR_STACK_EMPTY, "KURVO_ERR_STACK_EMPTY", "no tolerance is saved"},
        {KURVO_ERR_CHAIN_INDEX, "KURVO_ERR_CHAIN_INDEX", "an insertion outside the chain"},
        {KURVO_ERR_CHAIN_BREAK, "KURVO_ERR_CHAIN_BREAK", "an insertion that would break the chain"},
        {KURVO_ERR_CHAIN_ENDS, "KURVO_ERR_CHAIN_ENDS", "ends of a chain that must meet, or must not"},
        {KURVO_ERR_RANGE, "KURVO_ERR_RANGE", "parameters of a division or an extension out of range"},
        {KURVO_ERR_WEIGHT, "KURVO_ERR_WEIGHT", "an extension to where weights are not positive"},
        {KURVO_ERR_CHAIN_DEGENERATE, "KURVO_ERR_CHAIN_DEGENERATE", "a chain of fewer than two curves, or of points"},
        {KURVO_ERR_CHAIN_CONVERT, "KURVO_ERR_CHAIN_CONVERT", "a curve that no composite can represent"},
        {KURVO_WARN_NO_ORIENTATION, "KURVO_WARN_NO_ORIENTATION", "an empty or straight chain has no orientation"},
        {KURVO_ERR_DERIVATIVE_ORDER, "KURVO_ERR_DERIVATIVE_ORDER", "the order of a derivative out of range"},
        {KURVO_ERR_SCALE, "KURVO_ERR_SCALE", "a scale factor that is not positive"},
        {KURVO_ERR_ROTATED_TYPE, "KURVO_ERR_ROTATED_TYPE", "a curve of a type that cannot be rotated"},
        {KURVO_ERR_FIT_MISSING, "KURVO_ERR_FIT_MISSING", "a spline through fewer than two points"},
        {KURVO_ERR_FIT_POINTS, "KURVO_ERR_FIT_POINTS", "an order or points that no spline can pass"},
        {KURVO_ERR_ZERO_WEIGHT, "KURVO_ERR_ZERO_WEIGHT", "a weight of 0"},
        {KURVO_ERR_SHORT_TANGENT, "KURVO_ERR_SHORT_TANGENT", "a tangent too short to have a curvature"},
        {KURVO_WARN_SHORT_VECTOR, "KURVO_WARN_SHORT_VECTOR", "a vector too short to have a direction"},
        {KURVO_ERR_SAME_POINTS, "KURVO_ERR_SAME_POINTS", "a circle through two points that are the same"},
        {KURVO_ERR_RADIUS_TOO_SMALL, "KURVO_ERR_RADIUS_TOO_SMALL", "a circle through points too far apart"},
        {KURVO_ERR_OPTION, "KURVO_ERR_OPTION", "an option that is not known, or arguments that do not go together"},
        {KURVO_ERR_NOT_FINITE, "KURVO_ERR_NOT_FINITE", "a number that is not finite"},
        {KURVO_ERR_STOPPED, "KURVO_ERR_STOPPED", "stopped by the caller"},
        {KURVO_ERR_TOO_LARGE, "KURVO_ERR_TOO_LARGE", "more than can be counted"},
    };
    // clang-format on
    for (const Row& row : kRows)
      if (row.code == code) return row;
    return {code, "", "a code that this header does not know"};
  }
};

#if defined(__cpp_lib_expected)
template <class T>
using Result = std::expected<T, Error>;
using Unexpected = std::unexpected<Error>;
using BadResult = std::bad_expected_access<Error>;
#else
class Unexpected {
 public:
  explicit Unexpected(Error error) noexcept : error_(error) {}
  const Error& error() const noexcept { return error_; }

 private:
  Error error_;
};

class BadResult : public std::exception {
 public:
  explicit BadResult(Error error) noexcept : error_(error) {}
  const Error& error() const noexcept { return error_; }
  const char* what() const noexcept override { return error_.Cause(); }

 private:
  Error error_;
};

// A value or an Error, with the names of std::expected. Without a value it holds an empty one.
template <class T>
class Result {
  struct Nothing {};
  static constexpr bool kVoid = std::is_void_v<T>;
  using Value = std::conditional_t<kVoid, Nothing, T>;

 public:
  using value_type = T;
  using error_type = Error;

  Result() noexcept {}
  Result(Value value) noexcept : value_(std::move(value)) {}
  Result(Unexpected failure) noexcept : error_(failure.error()), has_value_(false) {}

  bool has_value() const noexcept { return has_value_; }
  explicit operator bool() const noexcept { return has_value_; }
  const Error& error() const noexcept { return error_; }

  auto& operator*() & noexcept { return value_; }
  const auto& operator*() const& noexcept { return value_; }
  auto&& operator*() && noexcept { return std::move(value_); }
  Value* operator->() noexcept { return &value_; }
  const Value* operator->() const noexcept { return &value_; }

  std::add_lvalue_reference_t<T> value() & { return Checked(*this); }
  std::add_lvalue_reference_t<const T> value() const& { return Checked(*this); }
  T value() && { return static_cast<T>(Checked(std::move(*this))); }
  template <class U>
  Value value_or(U&& other) const& {
    return has_value_ ? value_ : static_cast<Value>(std::forward<U>(other));
  }
  template <class U>
  Value value_or(U&& other) && {
    return has_value_ ? std::move(value_) : static_cast<Value>(std::forward<U>(other));
  }

 private:
  template <class Self>
  static decltype(auto) Checked(Self&& self) {
    if (!self.has_value_) {
#if defined(__cpp_exceptions)
      throw BadResult(self.error_);
#else
      std::abort();
#endif
    }
    if constexpr (!kVoid) return (std::forward<Self>(self).value_);
  }

  Value value_{};
  Error error_;
  bool has_value_ = true;
};
#endif

// ---- Points, boxes ----

struct Point {  // or a vector
  double x = 0, y = 0, z = 0;

  double* Data() { return reinterpret_cast<double*>(this); }
  const double* Data() const { return reinterpret_cast<const double*>(this); }
  bool operator==(const Point&) const = default;
};

struct WeightedPoint {
  double x = 0, y = 0, z = 0, w = 1;

  double* Data() { return reinterpret_cast<double*>(this); }
  const double* Data() const { return reinterpret_cast<const double*>(this); }
  bool operator==(const WeightedPoint&) const = default;
};

struct Segment {  // also the line through its ends
  Point start, end;

  const double* Data() const { return reinterpret_cast<const double*>(this); }
};

struct Box {
  Point min, max;

  double* Data() { return reinterpret_cast<double*>(this); }
  const double* Data() const { return reinterpret_cast<const double*>(this); }
};

static_assert(sizeof(Point) == sizeof(Coord) && sizeof(WeightedPoint) == sizeof(HCoord));
static_assert(sizeof(Segment) == sizeof(::Box) && sizeof(Box) == sizeof(::Box));

// ---- Context ----

// The tolerances and the code of the last call. One a thread; neither copied nor moved.
class Context {
 public:
  Context() noexcept { KurvoInitGlobalVar(&state_); }
  Context(const Context&) = delete;
  Context& operator=(const Context&) = delete;

  GlobalVar* Get() { return &state_; }
  const GlobalVar* Get() const { return &state_; }

  double Epsilon() const { return GetEpsilon(&state_); }
  double Epsilon1() const { return GetEpsilon_1(&state_); }
  double Epsilon2() const { return GetEpsilon2(&state_); }
  double Epsilon0() const { return GetEpsilon0(&state_); }
  Result<void> SetEpsilon(double epsilon, double epsilon_1) {
    return Do("KurvoclSetEpsilon", KurvoclSetEpsilon, epsilon, epsilon_1);
  }
  Result<void> SetEpsilon0(double epsilon0) {
    return Do("KurvoclSetEpsilon0", KurvoclSetEpsilon0, epsilon0);
  }

  bool Ok() const { return KurvoOk(&state_) != 0; }
  Error Last() const { return {KurvoErrGet(&state_), function_}; }
  std::optional<Error> Warning() const {  // of the last call
    const Error last = Last();
    return last.Severity() == KURVO_SEVERITY_WARNING ? std::optional(last) : std::nullopt;
  }
  void Clear() { KurvoErrReset(&state_); }

  // The result that a function of the interface writes between its arguments and g.
  template <class T, class F, class... A>
  Result<T> Ask(const char* name, const F& function, A... arguments) {
    return Call<T>(name, [&](T& out, GlobalVar* g) { function(arguments..., Raw(out), g); });
  }
  template <class F, class... A>
  Result<void> Do(const char* name, const F& function, A... arguments) {
    return Call<void>(name, [&](GlobalVar* g) { function(arguments..., g); });
  }

  // Clears the code, runs run(value, g), or run(g) for void, and reads the code. Small values are
  // kept out of the result, in registers; records are written where they will stay.
  template <class T, class Run>
  Result<T> Call(const char* function, Run&& run) {
    Result<T> result;
    Begin(function);
    run(*result, &state_);
    if (Failed()) [[unlikely]]
      result = Unexpected(Last());
    return result;
  }
  template <class T, class Run>
  requires std::is_trivially_copyable_v<T> Result<T> Call(const char* function, Run&& run) {
    T value{};
    Begin(function);
    run(value, &state_);
    if (Failed()) [[unlikely]]
      return Unexpected(Last());
    return value;
  }
  template <class T, class Run>
  requires std::is_void_v<T> Result<T> Call(const char* function, Run&& run) {
    Begin(function);
    run(&state_);
    if (Failed()) [[unlikely]]
      return Unexpected(Last());
    return {};
  }

 private:
  static double* Raw(double& out) { return &out; }
  static auto Raw(auto& out) {
    if constexpr (requires { out.Data(); })
      return out.Data();
    else
      return out.Get();
  }
  void Begin(const char* function) {
    state_.error = KURVO_ERR_NONE;
    function_ = function;
  }
  bool Failed() const { return (state_.error & 3) >= KURVO_SEVERITY_ERROR; }

  GlobalVar state_;
  const char* function_ = "";
};

namespace detail {

struct Epsilon {
  static int32_t Depth(const GlobalVar& g) { return g.depth; }
  static void Push(double value, GlobalVar* g) { KurvoclPushEpsilon(value, g); }
  static void Pop(GlobalVar* g) { KurvoclPopEpsilon(g); }
};
struct Epsilon0 {
  static int32_t Depth(const GlobalVar& g) { return g.depth0; }
  static void Push(double value, GlobalVar* g) { KurvoclPushEpsilon0(value, g); }
  static void Pop(GlobalVar* g) { KurvoclPopEpsilon0(g); }
};

template <class Stack>
class Scope {
 public:
  Scope(Context& context, double value) : g_(context.Get()), depth_(Stack::Depth(*g_)) {
    Stack::Push(value, g_);
  }
  ~Scope() {
    if (Stack::Depth(*g_) > depth_) Stack::Pop(g_);
  }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

 private:
  GlobalVar* g_;
  int32_t depth_;
};

}  // namespace detail

// Other tolerances until the end of the scope. A value that is refused, and one too many for the
// stack, changes nothing.
using EpsilonScope = detail::Scope<detail::Epsilon>;
using Epsilon0Scope = detail::Scope<detail::Epsilon0>;

// ---- Memory ----

struct FreeBlock {
  void operator()(void* block) const noexcept { KurvoFree(block); }
};
using HeapBlock = std::unique_ptr<void, FreeBlock>;

inline Result<HeapBlock> Allocate(uint32_t bytes, Context& context) {
  return context.Call<HeapBlock>(
      "KurvoMalloc", [&](HeapBlock& out, GlobalVar* g) { out.reset(KurvoMalloc(bytes, g)); });
}
// On failure the block stays as it was.
inline Result<void> Reallocate(HeapBlock& block, uint32_t bytes, Context& context) {
  return context.Call<void>("KurvoRealloc", [&](GlobalVar* g) {
    if (bytes == 0) return block.reset();
    if (void* moved = KurvoRealloc(block.get(), bytes, g)) {
      static_cast<void>(block.release());
      block.reset(moved);
    }
  });
}

// ---- Numbers and vectors ----

inline double Fabs(double a) { return KurvoclFabs(a); }
inline int Compare(double a, double b, const Context& c) { return KurvoclCompare(a, b, c.Get()); }
inline bool IsPositive(double a, const Context& c) { return KurvoclPositive(a, c.Get()); }
inline bool IsNegative(double a, const Context& c) { return KurvoclNegative(a, c.Get()); }
inline bool IsZero2(double a, const Context& c) { return KurvoclZero2(a, c.Get()); }
inline bool Same(double a, double b, const Context& c) { return KurvoclSame(a, b, c.Get()); }

namespace detail {

template <class F, class... A>
Point Made(const F& function, A... arguments) {
  Point out;
  function(arguments..., out.Data());
  return out;
}

}  // namespace detail

// To and from the arrays of kurvo.h.
inline Point Load(const Coord from) {
  Point p;
  return KurvoclCopyVector(from, p.Data()), p;
}
inline void Store(Point p, Coord out) { KurvoclSetCoord(out, p.x, p.y, p.z); }
inline void Store(const WeightedPoint& p, HCoord out) { KurvoclSetHCoord(out, p.x, p.y, p.z, p.w); }

inline Point operator-(Point a, Point b) {
  return detail::Made(KurvoclSubVector, a.Data(), b.Data());
}
inline Point operator*(double s, Point v) { return detail::Made(KurvoclSclVector, s, v.Data()); }
inline Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline double Dot(Point a, Point b) { return KurvoclInnerProduct(a.Data(), b.Data()); }
inline Point Cross(Point a, Point b) {
  return detail::Made(KurvoclOuterProduct, a.Data(), b.Data());
}
inline double Size(Point v) { return KurvoclVectorSize(v.Data()); }
inline bool IsZero(Point v, const Context& c) { return KurvoclZeroVector(v.Data(), c.Get()); }
inline bool IsZero2(Point v, const Context& c) { return KurvoclZeroVector2(v.Data(), c.Get()); }
inline bool Same(Point a, Point b, const Context& c) {
  return KurvoclSameCoord(a.Data(), b.Data(), c.Get());
}
inline bool Same(const WeightedPoint& a, const WeightedPoint& b, const Context& c) {
  return KurvoclSameHCoord(a.Data(), b.Data(), c.Get());
}
inline bool SameVector(Point a, Point b, const Context& c) {
  return KurvoclSameVector(a.Data(), b.Data(), c.Get());
}
inline bool Parallel(Point a, Point b, const Context& c) {
  return KurvoclParaVector(a.Data(), b.Data(), c.Get());
}
inline double Angle(Point a, Point b, const Context& c) {
  return KurvoclVectorAngle(a.Data(), b.Data(), c.Get());
}
inline Result<Point> Unit(Point v, Context& c) {
  return c.Call<Point>("KurvoclUnitVector", [&](Point& out, GlobalVar* g) {
    out = v;
    KurvoclUnitVector(out.Data(), g);
  });
}

// ---- Points, lines, circles and boxes ----

inline double Distance(Point p, Point q) { return KurvoclDistPoint(p.Data(), q.Data()); }
inline double Distance(const Box& b, Point p) { return KurvoclDistBoxPoint(b.Data(), p.Data()); }
inline double Distance(const Box& a, const Box& b) { return KurvoclDistBoxBox(a.Data(), b.Data()); }
inline bool Contains(const Box& b, Point p, const Context& c) {
  return KurvoclBoxPoint(b.Data(), p.Data(), c.Get());
}
inline bool Overlap(const Box& a, const Box& b, const Context& c) {
  return KurvoclBoxBox(a.Data(), b.Data(), c.Get());
}

inline Point Rotated(Point v, double angle) {
  return detail::Made(KurvofcRotateVector, v.Data(), angle);
}
inline Point Rotated(Point v, Point axis, double angle) {
  return detail::Made(KurvoclRotateVector, axis.Data(), angle, v.Data());
}
inline Point Rotated(Point p, Point centre, Point axis, double angle) {
  return detail::Made(KurvoclRotatePoint, centre.Data(), axis.Data(), angle, p.Data());
}
inline Point Transformed(Point p, std::span<const double, 16> matrix) {
  return detail::Made(KurvoclTransPoint, matrix.data(), p.Data());
}
inline Point Scaled(Point p, Point centre, Point along, double s, const Context& c) {
  Point out;
  return KurvoclScalePoint(centre.Data(), along.Data(), s, p.Data(), out.Data(), c.Get()), out;
}
inline Result<Point> Mirrored(Point p, Point base, Point normal, Context& c) {
  return c.Ask<Point>("KurvoclMirrorPoint", KurvoclMirrorPoint, base.Data(), normal.Data(),
                      p.Data());
}

// Whether a point lies there, and at which parameter.
struct Incidence {
  bool on = false;
  double t = 0;
};

inline Result<Point> Foot(Point p, const Segment& line, Context& c) {
  return c.Ask<Point>("KurvoclProjLine", KurvoclProjLine, p.Data(), line.Data());
}
inline Result<bool> OnLine(Point p, const Segment& line, Context& c) {
  return c.Call<bool>("KurvoclOnLine", [&](bool& on, GlobalVar* g) {
    on = KurvoclOnLine(p.Data(), line.Data(), g);
  });
}
inline Result<Incidence> OnSegment(Point p, const Segment& segment, Context& c) {
  return c.Call<Incidence>("KurvoclOnLineSeg", [&](Incidence& out, GlobalVar* g) {
    out.on = KurvoclOnLineSeg(p.Data(), segment.Data(), &out.t, g);
  });
}
inline bool OnCircle(Point p, const KurvoArc& arc, const Context& c) {
  return KurvoclOnCirc(p.Data(), &arc, c.Get());
}
inline Result<Incidence> OnArc(Point p, const KurvoArc& arc, Context& c) {
  return c.Call<Incidence>("KurvoclOnArc", [&](Incidence& out, GlobalVar* g) {
    out.on = KurvoclOnArc(p.Data(), &arc, &out.t, g);
  });
}
inline Result<bool> OnRay(Point from, Point p, Point through, Context& c) {
  return c.Call<bool>("KurvoclIsLine", [&](bool& on, GlobalVar* g) {
    on = KurvoclIsLine(from.Data(), p.Data(), through.Data(), g);
  });
}
enum class Side { kLeft = 0, kRight = 1 };
inline Result<Point> CircleCentre(double radius, Point p, Point q, Side side, Context& c) {
  return c.Call<Point>("KurvofcRPPcirc", [&](Point& out, GlobalVar* g) {
    KurvofcRPPcirc(radius, p.Data(), q.Data(), out.Data(), static_cast<int>(side), g);
  });
}

// ---- Records that free themselves ----

namespace detail {

inline void Init(::Curve* record) { KurvocvInitCurve(record); }
inline void Init(Cvseq* record) { KurvocvInitCvseq(record); }
inline void Init(CvParam* record) { KurvocrInitCvParam(record); }
inline void Init(KurvoRegion* record) { KurvoRegionInit(record); }
inline void Free(::Curve* record) { KurvocvFreeCurve(record); }
inline void Free(Cvseq* record) { KurvocvFreeCvseq(record); }
inline void Free(CvParam* record) { KurvocrFreeCvParam(record); }
inline void Free(KurvoRegion* record) { KurvoRegionFree(record); }
inline const void* Held(const ::Curve& record) { return record.data; }
inline const void* Held(const Cvseq& record) { return record.curves; }
inline const void* Held(const CvParam& record) { return record.values; }
inline const void* Held(const KurvoRegion& record) { return record.loops; }

template <class Self, class Record>
class Owner {
 public:
  Owner() noexcept {}  // no default: records are cleared by themselves, not by one long loop
  Owner(Owner&& other) noexcept : record_(std::exchange(other.record_, {})) {}
  Owner& operator=(Owner&& other) noexcept {
    Owner moved(std::move(other));
    std::swap(record_, moved.record_);
    return *this;
  }
  ~Owner() {
    if (Held(record_)) Free(&record_);
  }

  // Takes over what a record holds, or hands it over.
  static Self Adopt(const Record& record) {
    Self self;
    self.record_ = record;
    return self;
  }
  Record Release() noexcept { return std::exchange(record_, {}); }

  Record* Get() { return &record_; }
  const Record* Get() const { return &record_; }
  bool Empty() const { return !Held(record_); }
  void Clear() {
    Free(&record_);
    Init(&record_);
  }

 protected:
  Record record_{};
};

inline bool Failed(const GlobalVar* g) { return (g->error & 3) >= KURVO_SEVERITY_ERROR; }
// For what a function leaves undone without a code.
inline void Refuse(bool undone, GlobalVar* g) {
  if (undone && !Failed(g)) g->error = KURVO_ERR_CURVE;
}

// -1, which the library refuses, for what it cannot count.
inline int32_t Count(std::size_t n) {
  return n > std::numeric_limits<int32_t>::max() ? -1 : static_cast<int32_t>(n);
}
template <class To, class From>
std::span<To> View(From* items, int64_t count) {
  return {reinterpret_cast<To*>(items), items && count > 0 ? static_cast<std::size_t>(count) : 0};
}
template <class T>
void Copy(std::span<const T> from, void* to) {
  if (!from.empty()) std::memcpy(to, from.data(), from.size_bytes());
}

// What an output holds that a function has left untouched: a NaN that no calculation gives.
inline constexpr uint64_t kUnwrittenBits = 0x7FF84B5552564F00;
inline bool Unwritten(double x) { return std::bit_cast<uint64_t>(x) == kUnwrittenBits; }
inline constexpr double kUnwritten = std::bit_cast<double>(kUnwrittenBits);

constexpr int kDeepest = 64;        // levels of composites
constexpr int kHighestDegree = 20;  // that nearest points are found on
constexpr double kTurn = 2 * std::numbers::pi;
constexpr double kAngleTolerance = 1e-6;  // radians: so near to a whole or half turn is one

}  // namespace detail

// A list of curve parameters: a range of doubles.
class Parameters : public detail::Owner<Parameters, CvParam> {
 public:
  static Result<Parameters> Of(std::span<const double> values) {
    Parameters list;
    list.record_.count = detail::Count(values.size());
    KurvocrMallocCvParam(&list.record_);
    if (list.size() != values.size())
      return Unexpected(Error{KURVO_ERR_MEMORY, "KurvocrMallocCvParam"});
    detail::Copy(values, list.record_.values);
    return list;
  }
  std::size_t size() const { return View().size(); }
  double* begin() { return record_.values; }
  double* end() { return begin() + size(); }
  const double* begin() const { return record_.values; }
  const double* end() const { return begin() + size(); }
  double operator[](std::size_t i) const { return record_.values[i]; }

 private:
  std::span<const double> View() const {
    return detail::View<const double>(record_.values, record_.count);
  }
};

// ---- Curves ----

class Chain;
class Curve;

struct Interval {
  double from = 0, to = 0;
};
struct Nearest {
  double distance = 0, t = 0;
};
struct Closest {  // of two curves, and the parameters where they are closest
  double distance = 0, a = detail::kUnwritten, b = detail::kUnwritten;
};
struct Meetings {  // number i of both lists is the same point
  Parameters a, b;
  bool overlap = false;  // the curves share a stretch, and no points are listed
};
enum class Ends { kNeither = 0, kFirst = 1, kSecond = 2, kBoth = 3 };  // which curves end there

// The arrays of data blocks. Those of a block that cannot be right are empty.
inline auto Points(const KurvoBezier& b) {
  return detail::View<Point>(b.points, b.degree + int64_t{1});
}
inline auto Points(const KurvoRBezier& b) {
  return detail::View<WeightedPoint>(b.points, b.degree + int64_t{1});
}
inline auto Points(const KurvoBSpline& b) { return detail::View<Point>(b.points, b.count); }
inline auto Points(const KurvoRBSpline& b) {
  return detail::View<WeightedPoint>(b.points, b.count);
}
template <class Spline>
auto Knots(const Spline& b) -> decltype(b.knots, std::span<double>()) {
  return detail::View<double>(b.knots, int64_t{b.order} + b.count);
}
inline auto Widths(const KurvoSegcv& b) { return detail::View<double>(b.widths, b.count); }

namespace detail {

template <class Data>
constexpr int32_t kTypeOf = 0;
template <>
inline constexpr int32_t kTypeOf<KurvoLine> = CV_LINE;
template <>
inline constexpr int32_t kTypeOf<KurvoArc> = CV_ARC;
template <>
inline constexpr int32_t kTypeOf<KurvoBezier> = CV_BEZIER;
template <>
inline constexpr int32_t kTypeOf<KurvoRBezier> = CV_RBEZIER;
template <>
inline constexpr int32_t kTypeOf<KurvoBSpline> = CV_BSPLINE;
template <>
inline constexpr int32_t kTypeOf<KurvoRBSpline> = CV_RBSPLINE;
template <>
inline constexpr int32_t kTypeOf<KurvoSegcv> = CV_SEGCV;

}  // namespace detail

// CV_LINE ... CV_SEGCV in words, "" for other numbers.
inline const char* TypeName(int32_t type) {
  switch (type) {
    case CV_LINE:
      return "line";
    case CV_ARC:
      return "arc";
    case CV_BEZIER:
      return "Bezier";
    case CV_RBEZIER:
      return "rational Bezier";
    case CV_BSPLINE:
      return "B-spline";
    case CV_RBSPLINE:
      return "rational B-spline";
    case CV_SEGCV:
      return "composite";
    default:
      return "";
  }
}

// One curve of any type: a range of its pieces, a plain one being its only piece.
class Curve : public detail::Owner<Curve, ::Curve> {
 public:
  // -- Makers --

  static Result<Curve> Line(Point start, Point end) {
    return Make<KurvoLine>([&](KurvoLine& line) {
      Store(start, line.start);
      Store(end, line.end);
    });
  }
  // A full circle where the ends are the same: then, and where the end lies up to 1e-6 radians
  // behind the start, a composite of four quarters over [0, 1].
  static Result<Curve> Arc(Point centre, Point start, Point end, bool counter_clockwise = true) {
    const Point a = start - centre, b = end - centre;
    const double sense = counter_clockwise ? 1 : -1;
    const double angle = sense * std::atan2(a.x * b.y - a.y * b.x, a.x * b.x + a.y * b.y);
    const bool full = start == end || (angle < 0 && angle >= -detail::kAngleTolerance);
    if (!full || Distance(start, centre) == 0) return OneArc(centre, start, end, sense);
    return Circle(centre, start, sense);
  }
  // From an angle over a sweep, both in radians; a negative sweep is clockwise.
  static Result<Curve> Arc(Point centre, double radius, double angle, double sweep) {
    const auto at = [&](double a) { return centre + Rotated({radius, 0, 0}, a); };
    if (std::fabs(sweep) >= detail::kTurn - detail::kAngleTolerance)
      return Circle(centre, at(angle), sweep < 0 ? -1 : 1);
    return OneArc(centre, at(angle), at(angle + sweep), sweep < 0 ? -1 : 1);
  }
  // The record as it is: one arc, also where its ends are the same.
  static Result<Curve> Arc(const KurvoArc& record) {
    return Make<KurvoArc>([&](KurvoArc& arc) { arc = record; });
  }
  static Result<Curve> Bezier(std::span<const Point> points) {
    return Make<KurvoBezier>([&](KurvoBezier& b) { detail::Copy(points, b.points); },
                             detail::Count(points.size()) - 1);
  }
  static Result<Curve> Bezier(std::initializer_list<Point> points) {
    return Bezier(std::span(points));
  }
  static Result<Curve> RationalBezier(std::span<const WeightedPoint> points) {
    return Make<KurvoRBezier>([&](KurvoRBezier& b) { detail::Copy(points, b.points); },
                              detail::Count(points.size()) - 1);
  }
  static Result<Curve> RationalBezier(std::initializer_list<WeightedPoint> points) {
    return RationalBezier(std::span(points));
  }
  static Result<Curve> BSpline(int32_t order, std::span<const Point> points,
                               std::span<const double> knots) {
    return Spline<KurvoBSpline>(order, points, knots);
  }
  static Result<Curve> Nurbs(int32_t order, std::span<const WeightedPoint> points,
                             std::span<const double> knots) {
    return Spline<KurvoRBSpline>(order, points, knots);
  }
  // Takes the pieces over and leaves them empty. Without widths each has the width 1.
  static Result<Curve> Composite(std::span<Curve> pieces, std::span<const double> widths = {}) {
    const bool fits = widths.empty() || widths.size() == pieces.size();
    return Make<KurvoSegcv>(
        [&](KurvoSegcv& block) {
          for (std::size_t i = 0; i < pieces.size(); ++i) {
            block.curves[i] = pieces[i].Release();
            block.widths[i] = widths.empty() ? 1 : widths[i];
          }
        },
        fits ? detail::Count(pieces.size()) : -1);
  }
  // The B-spline of an order through points.
  static Result<Curve> Through(std::span<const Point> points, int32_t order, Context& c) {
    return c.Call<Curve>("KurvocvGenBspl", [&](Curve& out, GlobalVar* g) {
      const double* first = points.empty() ? nullptr : points.front().Data();
      KurvocvGenBspl(first, detail::Count(points.size()), order, out.Get(), g);
    });
  }
  // Attribute words are copied too, those of pieces among them.
  Result<Curve> Copy(Context& c) const {
    return c.Call<Curve>("KurvocvCopyCurve", [&](Curve& out, GlobalVar* g) {
      KurvocvCopyCurve(Get(), out.Get(), g);
      if (KurvoOk(g)) CopyAttributes(record_, *out.Get());
    });
  }

  // -- Views --

  int32_t Type() const { return record_.type; }

  // Calls f with the data block, KurvoLine to KurvoSegcv, or with nullptr for an empty curve and
  // one of an unknown type.
  template <class F>
  decltype(auto) Visit(F&& f) const {
    switch (Empty() ? 0 : record_.type) {
      case CV_LINE:
        return f(*Block<const KurvoLine>());
      case CV_ARC:
        return f(*Block<const KurvoArc>());
      case CV_BEZIER:
        return f(*Block<const KurvoBezier>());
      case CV_RBEZIER:
        return f(*Block<const KurvoRBezier>());
      case CV_BSPLINE:
        return f(*Block<const KurvoBSpline>());
      case CV_RBSPLINE:
        return f(*Block<const KurvoRBSpline>());
      case CV_SEGCV:
        return f(*Block<const KurvoSegcv>());
      default:
        return f(nullptr);
    }
  }
  // Null, or empty, for curves of other types.
  template <class Data>  // KurvoLine ... KurvoSegcv
  const Data* As() const {
    return record_.type == detail::kTypeOf<Data> ? Block<const Data>() : nullptr;
  }
  const KurvoLine* AsLine() const { return As<KurvoLine>(); }
  const KurvoArc* AsArc() const { return As<KurvoArc>(); }
  std::span<const Point> ControlPoints() const {
    if (const auto* b = As<KurvoBezier>()) return Points(*b);
    if (const auto* b = As<KurvoBSpline>()) return Points(*b);
    return {};
  }
  std::span<const WeightedPoint> WeightedPoints() const {
    if (const auto* b = As<KurvoRBezier>()) return Points(*b);
    if (const auto* b = As<KurvoRBSpline>()) return Points(*b);
    return {};
  }
  std::span<const double> KnotVector() const {
    if (const auto* b = As<KurvoBSpline>()) return Knots(*b);
    if (const auto* b = As<KurvoRBSpline>()) return Knots(*b);
    return {};
  }
  std::span<const double> PieceWidths() const {
    const auto* b = As<KurvoSegcv>();
    return b ? Widths(*b) : std::span<double>();
  }
  std::span<const Curve> All() const {
    if (const auto* b = As<KurvoSegcv>()) return detail::View<const Curve>(b->curves, b->count);
    return {this, Empty() ? 0U : 1U};
  }
  // Pieces may be moved out; what is left has empty ones.
  Curve* begin() { return const_cast<Curve*>(All().data()); }
  Curve* end() { return begin() + size(); }
  const Curve* begin() const { return All().data(); }
  const Curve* end() const { return begin() + size(); }
  std::size_t size() const { return All().size(); }

  // Where the parameter runs; [0, 0] of a curve that cannot be right.
  Interval Domain() const {
    if (Empty()) return {};
    if (const auto* b = As<KurvoSegcv>()) {
      double sum = 0;
      for (const double width : Widths(*b)) sum += width;
      return {0, sum};
    }
    if (const auto* b = As<KurvoBSpline>()) return SplineDomain(*b);
    if (const auto* b = As<KurvoRBSpline>()) return SplineDomain(*b);
    return {0, 1};
  }

  // -- Questions --

  Result<Point> Start(Context& c) const {
    return c.Call<Point>("KurvocvStartPoint", [&](Point& out, GlobalVar* g) {
      out.x = detail::kUnwritten;
      KurvocvStartPoint(Get(), out.Data(), g);
      detail::Refuse(detail::Unwritten(out.x), g);
    });
  }
  Result<Point> End(Context& c) const {
    return c.Call<Point>("KurvocvEndPoint", [&](Point& out, GlobalVar* g) {
      out.x = detail::kUnwritten;
      KurvocvEndPoint(Get(), out.Data(), g);
      detail::Refuse(detail::Unwritten(out.x), g);
    });
  }
  Result<int> Degree(Context& c) const {
    return c.Call<int>("KurvocvDegree",
                       [&](int& out, GlobalVar* g) { out = KurvocvDegree(Get(), g); });
  }
  Result<int> Shape(Context& c) const {  // KURVO_SHAPE_*
    return c.Call<int>("KurvocvIsLine",
                       [&](int& out, GlobalVar* g) { out = KurvocvIsLine(Get(), g); });
  }
  Result<std::optional<Point>> AsPoint(Context& c) const {  // of a curve that is one
    return c.Call<std::optional<Point>>("KurvocvDegenerate",
                                        [&](std::optional<Point>& out, GlobalVar* g) {
                                          Point p;
                                          if (KurvocvDegenerate(Get(), p.Data(), g)) out = p;
                                        });
  }
  Result<Box> Bounds(Context& c) const {
    return c.Call<Box>("KurvocvBoundBox", [&](Box& out, GlobalVar* g) {
      const Curve* cv = this;  // a composite of one piece has the box of that
      for (int depth = 0; depth < detail::kDeepest && cv->Type() == CV_SEGCV && cv->size() == 1;
           ++depth)
        cv = cv->begin();
      out.min.x = detail::kUnwritten;
      KurvocvBoundBox(cv->Get(), out.Data(), g);
      detail::Refuse(detail::Unwritten(out.min.x), g);
    });
  }
  Result<Point> Position(double t, Context& c) const {
    return c.Ask<Point>("KurvocvPosition", KurvocvPosition, Get(), t);
  }
  Result<Incidence> Parameter(Point p, Context& c) const {
    return c.Call<Incidence>("KurvocvParameter", [&](Incidence& out, GlobalVar* g) {
      out.on = KurvocvParameter(Get(), p.Data(), &out.t, g) == KURVO_ON_CURVE;
    });
  }
  // On the unbounded line or the full circle; of a Bezier curve the first foot point.
  Result<Point> Projected(Point p, Context& c) const {
    return c.Call<Point>("KurvofcPOntoCurve", [&](Point& out, GlobalVar* g) {
      out = p;
      KurvofcPOntoCurve(Get(), out.Data(), g);
    });
  }
  // Of all points of the bounded curve, also where a Bezier curve has several foot points.
  Result<Nearest> NearestTo(Point p, Context& c) const {
    return c.Call<Nearest>("KurvocvDistPoint",
                           [&](Nearest& out, GlobalVar* g) { out = NearestOf(record_, p, g, 0); });
  }
  Result<Closest> ClosestTo(const Curve& other, Context& c) const {
    return c.Call<Closest>("KurvocvDistCurve", [&](Closest& out, GlobalVar* g) {
      out.distance = KurvocvDistCurve(Get(), other.Get(), &out.a, &out.b, g);
      detail::Refuse(detail::Unwritten(out.a), g);
    });
  }
  // By the parameter of the piece, on a composite.
  Result<Point> Derivative(double t, Context& c) const {
    return AtPiece(t, c, "KurvocvDeriv", KurvocvDeriv);
  }
  Result<Point> Derivative(double t, int n, Context& c) const {
    return AtPiece(t, c, "KurvocvNDeriv", KurvocvNDeriv, n);
  }
  Result<Point> Curvature(double t, Context& c) const {
    return AtPiece(t, c, "KurvocvCurvature", KurvocvCurvature);
  }
  Result<double> Length(double from, double to, Context& c) const {
    return c.Ask<double>("KurvocvCurveLen", KurvocvCurveLen, Get(), from, to);
  }
  Result<double> Length(Context& c) const {
    const Interval all = Domain();
    return Length(all.from, all.to, c);
  }
  Result<uint32_t> Match(const Curve& other, Context& c) const {  // KURVO_MATCH_*
    return c.Call<uint32_t>("KurvocvMatch", [&](uint32_t& out, GlobalVar* g) {
      out = KurvocvMatch(Get(), other.Get(), g);
    });
  }
  Result<Meetings> Intersect(const Curve& other, Context& c) const {
    return Intersect(other, Ends::kBoth, c);
  }
  Result<Meetings> Intersect(const Curve& other, Ends ends, Context& c) const {
    return c.Call<Meetings>("KurvocrCurveCurve", [&](Meetings& out, GlobalVar* g) {
      const uint32_t found = KurvocrCurveCurve(Get(), other.Get(), out.a.Get(), out.b.Get(),
                                               static_cast<int32_t>(ends), g);
      out.overlap = found == KURVO_OVERLAP;
      detail::Refuse(found == KURVO_REFUSED, g);
    });
  }

  // -- New curves --

  // The same points in a record of another type; KURVO_ERR_CURVE where there is no exact one. Of
  // an arc of half a turn or more in quarters of it, which a rational Bezier curve has no room for.
  Result<Curve> Converted(int32_t type, Context& c) const;
  // The parts before and after t, of curves of any degree.
  Result<std::pair<Curve, Curve>> Split(double t, Context& c) const;
  // The pieces between ascending parameters.
  Result<Chain> Split(std::span<const double> parameters, Context& c) const;
  Result<Chain> ToChain(Context& c) const;  // copies of the pieces of a composite
  // Positive distances go to the left of travel.
  Result<Chain> Offset(double distance, double tolerance, Context& c) const;
  Result<Curve> Extended(double before, double behind, Context& c) const {
    return c.Ask<Curve>("KurvocvExtendCurve", KurvocvExtendCurve, Get(), before, behind);
  }
  Result<Curve> WithoutKnots(Context& c) const {  // that it does not need
    return c.Ask<Curve>("KurvocvBsplRemoveKnots", KurvocvBsplRemoveKnots, Get());
  }

  // -- Changes in place --

  Result<void> Reverse(Context& c) { return c.Do("KurvocvChgOrder", KurvocvChgOrder, Get()); }
  void NormalizeKnots() {  // of B-splines, to [0, 1]
    const auto normalize = [](const auto& b) {
      KurvoclNormalizeKnot(b.knots, b.count + b.order, b.order);
    };
    if (const auto* b = As<KurvoBSpline>()) normalize(*b);
    if (const auto* b = As<KurvoRBSpline>()) normalize(*b);
  }
  Result<void> Move(Point delta, Context& c) {
    return c.Do("KurvocvMove", KurvocvMove, Get(), delta.Data());
  }
  Result<void> Rotate(Point centre, double angle, Context& c) {
    return c.Do("KurvocvRotate", KurvocvRotate, Get(), centre.Data(), Point{0, 0, 1}.Data(), angle);
  }
  Result<void> Mirror(Point base, Point normal, Context& c) {
    return c.Do("KurvocvMirror", KurvocvMirror, Get(), base.Data(), normal.Data());
  }
  Result<void> Scale(Point centre, double s, Context& c) { return Scale(centre, {}, s, c); }
  // Along a direction only; the null vector stands for all.
  Result<void> Scale(Point centre, Point along, double s, Context& c) {
    return c.Do("KurvocvScale", KurvocvScale, Get(), centre.Data(), along.Data(), s);
  }
  Result<void> MoveStart(Point delta, Context& c) {
    return c.Do("KurvocvMvStartPoint", KurvocvMvStartPoint, Get(), delta.Data());
  }
  Result<void> MoveEnd(Point delta, Context& c) {
    return c.Do("KurvocvMvEndPoint", KurvocvMvEndPoint, Get(), delta.Data());
  }

 private:
  friend class Chain;
  using Parts = std::pair<Curve, Curve>;

  void SplitHighDegree(double t, Parts& out, GlobalVar* g) const;

  template <class Data, class Fill, class... Sizes>
  static Result<Curve> Make(Fill&& fill, Sizes... sizes) {
    Curve curve;
    auto* data =
        static_cast<Data*>(KurvocvMallocCurve(curve.Get(), detail::kTypeOf<Data>, sizes...));
    if (!data) {
      const int code = ((sizes >= 0) && ...) ? KURVO_ERR_MEMORY : KURVO_ERR_CURVE;
      return Unexpected(Error{code, "KurvocvMallocCurve"});
    }
    fill(*data);
    return Result<Curve>(std::move(curve));
  }
  template <class Data, class P>
  static Result<Curve> Spline(int32_t order, std::span<const P> points,
                              std::span<const double> knots) {
    const int32_t count = detail::Count(points.size());
    const bool fits = order >= 1 && count >= order && knots.size() == points.size() + Index(order);
    const auto fill = [&](Data& b) {
      detail::Copy(points, b.points);
      detail::Copy(knots, b.knots);
    };
    return Make<Data>(fill, order, fits ? count : -1);
  }
  static Result<Curve> OneArc(Point centre, Point start, Point end, double sense) {
    return Make<KurvoArc>([&](KurvoArc& arc) {
      arc.radius = Distance(centre, start);
      Store(centre, arc.centre);
      Store(Point{0, 0, sense}, arc.normal);
      Store(start, arc.start);
      Store(end, arc.end);
    });
  }
  static Result<Curve> Circle(Point centre, Point start, double sense) {
    Curve quarters[4];
    Point from = start;
    for (int i = 0; i < 4; ++i) {
      const Point arm = from - centre;
      const Point to = i == 3 ? start : centre + Point{-sense * arm.y, sense * arm.x, 0};
      auto quarter = OneArc(centre, from, to, sense);
      if (!quarter) return quarter;
      quarters[i] = *std::move(quarter);
      from = to;
    }
    return Composite(quarters, kQuarters);
  }

  static std::size_t Index(int32_t i) { return static_cast<std::size_t>(i); }
  template <class Data>
  Data* Block() const {
    return static_cast<Data*>(record_.data);
  }
  template <class Data>
  static Interval SplineDomain(const Data& b) {
    const auto knots = Knots(b);
    if (b.order < 1 || b.count < b.order || knots.empty()) return {};
    return {knots[Index(b.order - 1)], knots[Index(b.count)]};
  }
  // Copies have attribute words of 0; these are put back, those of pieces too.
  static void CopyAttributes(const ::Curve& from, ::Curve& to) {
    to.attr = from.attr;
    to.attr_p1 = from.attr_p1;
    to.attr_p2 = from.attr_p2;
    if (from.type != CV_SEGCV || !from.data || !to.data) return;
    const auto* a = static_cast<const KurvoSegcv*>(from.data);
    const auto* b = static_cast<const KurvoSegcv*>(to.data);
    for (int32_t i = 0; i < a->count; ++i) CopyAttributes(a->curves[i], b->curves[i]);
  }

  // A Bezier curve is asked as the B-spline of one span that it also is: of those the library finds
  // the nearest of all points.
  template <class SplineData, class BezierData>
  static double SplineDistance(int32_t type, const BezierData& b, Point p, double* t,
                               GlobalVar* g) {
    const int32_t order = b.degree + 1;
    double knots[2 * (detail::kHighestDegree + 1)];
    std::fill_n(knots, order, 0.0);
    std::fill_n(knots + order, order, 1.0);
    SplineData spline;
    spline.order = spline.count = order;
    spline.points = b.points;
    spline.knots = knots;
    const ::Curve cv{type, &spline, 0, 0, 0};
    return KurvocvDistPoint(&cv, p.Data(), t, g);
  }
  static Nearest NearestOf(const ::Curve& cv, Point p, GlobalVar* g, int depth) {
    if (cv.type == CV_SEGCV && cv.data) return NearestOfPieces(cv, p, g, depth);
    const auto fits = [](const auto* b) {
      return b && b->degree >= 1 && b->degree <= detail::kHighestDegree;
    };
    Nearest out{0, detail::kUnwritten};
    const auto* bezier = cv.type == CV_BEZIER ? static_cast<const KurvoBezier*>(cv.data) : nullptr;
    const auto* rational =
        cv.type == CV_RBEZIER ? static_cast<const KurvoRBezier*>(cv.data) : nullptr;
    if (fits(bezier))
      out.distance = SplineDistance<KurvoBSpline>(CV_BSPLINE, *bezier, p, &out.t, g);
    else if (fits(rational))
      out.distance = SplineDistance<KurvoRBSpline>(CV_RBSPLINE, *rational, p, &out.t, g);
    else
      out.distance = KurvocvDistPoint(&cv, p.Data(), &out.t, g);
    detail::Refuse(detail::Unwritten(out.t), g);
    return out;
  }
  static Nearest NearestOfPieces(const ::Curve& cv, Point p, GlobalVar* g, int depth) {
    const auto& block = *static_cast<const KurvoSegcv*>(cv.data);
    Nearest best{std::numeric_limits<double>::infinity(), detail::kUnwritten};
    const bool sound = depth < detail::kDeepest && block.curves && block.widths;
    double from = 0;
    for (int32_t i = 0; sound && i < block.count; from += block.widths[i++]) {
      const Nearest piece = NearestOf(block.curves[i], p, g, depth + 1);
      if (detail::Failed(g)) return {};
      if (piece.distance < best.distance) best = {piece.distance, from + piece.t * block.widths[i]};
    }
    detail::Refuse(detail::Unwritten(best.t), g);
    return best;
  }

  // The library tells derivatives on Bezier pieces of a composite; other pieces are asked
  // themselves.
  template <class F, class... A>
  Result<Point> AtPiece(double t, Context& c, const char* name, const F& ask, A... order) const {
    return c.Call<Point>(name, [&](Point& out, GlobalVar* g) {
      out.x = detail::kUnwritten;
      ask(Get(), t, out.Data(), order..., g);
      if (Type() == CV_SEGCV && (detail::Unwritten(out.x) || out == Point()) && !detail::Failed(g))
        if (const ::Curve* piece = PieceAt(t)) ask(piece, t, out.Data(), order..., g);
      detail::Refuse(detail::Unwritten(out.x), g);
    });
  }
  // The innermost piece, null where there is none; t becomes its parameter.
  const ::Curve* PieceAt(double& t) const {
    const ::Curve* cv = Get();
    for (int depth = 0; cv->type == CV_SEGCV; ++depth) {
      const auto* b = static_cast<const KurvoSegcv*>(cv->data);
      if (!b || depth == detail::kDeepest || b->count < 1 || !b->curves || !b->widths)
        return nullptr;
      int32_t i = 0;
      for (; i + 1 < b->count && t >= b->widths[i]; ++i) t -= b->widths[i];
      t /= b->widths[i];
      cv = b->curves + i;
    }
    return cv;
  }

  // An arc that the library would take for the shorter one between its ends, or not convert.
  static bool IsWideArc(const ::Curve& cv, GlobalVar* g) {
    if (cv.type != CV_ARC || !cv.data) return false;
    double length = 0;
    KurvocvCurveLen(&cv, 0, 1, &length, g);
    const double radius = static_cast<const KurvoArc*>(cv.data)->radius;
    return radius > 0 && length >= (detail::kTurn / 2 - detail::kAngleTolerance) * radius;
  }
  static Cvseq Quarters(const ::Curve& arc, GlobalVar* g) {
    double cuts[] = {0.25, 0.5, 0.75};
    const CvParam list = {3, cuts};
    Cvseq pieces;
    KurvocvNDivide(&arc, &list, &pieces, g);
    return pieces;
  }
  static Curve RationalQuarters(const ::Curve& arc, GlobalVar* g);

  static constexpr double kQuarters[4] = {0.25, 0.25, 0.25, 0.25};
};

static_assert(sizeof(Curve) == sizeof(::Curve) && std::is_standard_layout_v<Curve>);

inline auto Pieces(const KurvoSegcv& b) { return detail::View<Curve>(b.curves, b.count); }

// ---- What whole outlines are asked, and what they answer ----

enum class Fill { kNonZero = 0, kEvenOdd = 1, kPositive = 2, kNegative = 3 };
enum class Operation { kUnion = 0, kIntersection = 1, kDifference = 2, kXor = 3 };
enum class Join { kRound = 0, kMiter = 1, kBevel = 2 };
enum class Cap { kButt = 0, kRound = 1, kSquare = 2 };
enum class Meet : int32_t { kCross = 0, kTouch = 1, kRunFrom = 2, kRunTo = 3 };
enum class Form { kArcs = 0, kQuadratics = 1, kCubics = 2 };

using Origin = KurvoOrigin;

struct Options {
  double tol = 0;                  // length; 0: 2^-30 of the size of the input
  double gap = 0;                  // widest joint that is closed; 0: epsilon
  double miter_limit = 0;          // 0: 4
  std::span<const double> dashes;  // on, off, on ...
  double phase = 0;                // of the dashes
  Join join = Join::kRound;
  Cap cap = Cap::kButt;
  bool with_origins = false;
  std::function<bool(double done)> proceed;  // asked now and then; false stops. Must not throw.

  // For functions of kurvo_outline.h, as long as these options live.
  KurvoOptions Record() const;
};

struct Report : KurvoReport {  // all 0
  Report() : KurvoReport{} {}
};

struct Place {  // on a chain
  int32_t index = 0, reserved = 0;
  double t = 0;  // of the curve with that index
  Point point, tangent;

  KurvoPlace* Get() { return reinterpret_cast<KurvoPlace*>(this); }
  const KurvoPlace* Get() const { return reinterpret_cast<const KurvoPlace*>(this); }
};
struct NearestPlace {
  Place place;
  double distance = 0;
};
struct Meeting {  // of two chains
  int32_t index_a = 0, index_b = 0;
  Meet kind = Meet::kCross;
  int32_t reserved = 0;
  double a = 0, b = 0;
  Point point;
};
struct Moments {
  double length = 0, area = 0;
  Point centroid;
  double xx = 0, xy = 0, yy = 0;  // second moments about the centroid

  KurvoMoments* Get() { return reinterpret_cast<KurvoMoments*>(this); }
};

static_assert(sizeof(Place) == sizeof(KurvoPlace) && sizeof(Meeting) == sizeof(KurvoMeeting));
static_assert(sizeof(Moments) == sizeof(KurvoMoments));

// What the library gives many of: a range, freed with it.
template <class T>
class Array {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  Array() noexcept = default;
  Array(Array&& other) noexcept
      : block_(std::move(other.block_)), size_(std::exchange(other.size_, 0)) {}
  Array& operator=(Array&& other) noexcept {
    block_ = std::move(other.block_);
    size_ = std::exchange(other.size_, 0);
    return *this;
  }
  static Array Adopt(void* block, std::size_t size) {
    Array array;
    array.block_.reset(block);
    array.size_ = size;
    return array;
  }
  // Room for the outputs of a call; empty, with a code, where there is none.
  static Array Sized(std::size_t size, GlobalVar* g) {
    if (size > std::numeric_limits<int32_t>::max() / sizeof(T)) g->error = KURVO_ERR_TOO_LARGE;
    if (size == 0 || !KurvoOk(g)) return {};
    void* block = KurvoMalloc(static_cast<uint32_t>(size * sizeof(T)), g);
    return Adopt(block, block ? size : 0);
  }

  T* Data() { return static_cast<T*>(block_.get()); }
  const T* Data() const { return static_cast<const T*>(block_.get()); }
  std::size_t size() const { return size_; }
  T* begin() { return Data(); }
  T* end() { return Data() + size_; }
  const T* begin() const { return Data(); }
  const T* end() const { return Data() + size_; }
  T& operator[](std::size_t i) { return Data()[i]; }
  const T& operator[](std::size_t i) const { return Data()[i]; }

 private:
  HeapBlock block_;
  std::size_t size_ = 0;
};

struct NearestPlaces {
  Array<Place> places;
  Array<double> distances;
};
struct Polyline {  // vertex number i of both lists is the same
  Array<Point> points;
  Array<Place> places;
};

class Region;
struct JoinedChains;

// ---- Chains ----

enum class Where { kOn = 2, kInside = 3, kOutside = 4 };
struct Orientation {
  Point centre, normal;  // (0, 0, 1): counter-clockwise
};

// Curves of any types, each starting where the one before it ends: a range of them.
class Chain : public detail::Owner<Chain, Cvseq> {
 public:
  // Takes the curves over and leaves them empty. Whether they meet is not looked at.
  static Result<Chain> Of(std::span<Curve> curves) {
    Chain chain;
    if (!KurvocvMallocCvseq(chain.Get(), detail::Count(curves.size())) && !curves.empty())
      return Unexpected(Error{KURVO_ERR_MEMORY, "KurvocvMallocCvseq"});
    std::move(curves.begin(), curves.end(), chain.begin());
    return Result<Chain>(std::move(chain));
  }
  // Attribute words are copied too.
  Result<Chain> Copy(Context& c) const {
    return c.Call<Chain>("KurvocvCopyCvseq", [&](Chain& out, GlobalVar* g) {
      KurvocvCopyCvseq(Get(), out.Get(), g);
      out.CopyAttributes(begin());
    });
  }

  std::size_t size() const {
    return detail::View<const Curve>(record_.curves, record_.count).size();
  }
  Curve* begin() { return reinterpret_cast<Curve*>(record_.curves); }
  Curve* end() { return begin() + size(); }
  const Curve* begin() const { return reinterpret_cast<const Curve*>(record_.curves); }
  const Curve* end() const { return begin() + size(); }
  Curve& operator[](std::size_t i) { return begin()[i]; }
  const Curve& operator[](std::size_t i) const { return begin()[i]; }

  // Inserts a copy of a curve, whose ends must meet those of its neighbours.
  Result<void> Insert(const Curve& curve, std::size_t index, Context& c) {
    return c.Call<void>("KurvocvCvseqInsert", [&](GlobalVar* g) {
      const ::Curve source = *curve.Get();  // a curve of the chain would move
      KurvocvCvseqInsert(curve.Get(), Get(), detail::Count(index), g);
      if (!detail::Failed(g)) Curve::CopyAttributes(source, record_.curves[index]);
    });
  }
  Result<void> Append(const Curve& curve, Context& c) { return Insert(curve, size(), c); }

  Result<Box> Bounds(Context& c) const {
    return c.Ask<Box>("KurvocvCvseqBoundBox", KurvocvCvseqBoundBox, Get());
  }
  Result<Orientation> Sense(Context& c) const {
    return c.Call<Orientation>("KurvocvCvseqNormal", [&](Orientation& out, GlobalVar* g) {
      KurvocvCvseqNormal(Get(), out.centre.Data(), out.normal.Data(), g);
    });
  }
  Result<Where> Locate(Point p, Context& c) const {
    return c.Call<Where>("KurvosfPntBoundForPlane", [&](Where& out, GlobalVar* g) {
      uint32_t where = KURVO_REGION_OUTSIDE;
      KurvosfPntBoundForPlane(Point{0, 0, 1}.Data(), Get(), p.Data(), &where, g);
      out = static_cast<Where>(where);
    });
  }
  // One composite over [0, 1] in proportion to arc length. Arcs of half a turn or more go in in
  // quarters.
  Result<Curve> Joined(Context& c) const {
    return c.Call<Curve>("KurvocvCvseqToSegcv", [&](Curve& out, GlobalVar* g) {
      const Chain cut = WithoutWideArcs(g);
      if (!detail::Failed(g)) KurvocvCvseqToSegcv(cut.Empty() ? Get() : cut.Get(), out.Get(), g);
    });
  }

  // -- As a whole, by libkurvo_outline --

  Result<double> Length(Context& c) const;
  Result<Place> PlaceAt(double length, Context& c) const;
  Result<Array<Place>> Places(std::span<const double> lengths, Context& c) const;
  Result<double> LengthAt(const Place& place, Context& c) const;
  Result<Array<double>> Lengths(std::span<const Place> places, Context& c) const;
  Result<NearestPlace> NearestTo(Point p, Context& c) const;
  Result<NearestPlaces> NearestTo(std::span<const Point> points, Context& c) const;
  Result<kurvo::Moments> Moments(Context& c) const;
  Result<Box> TightBox(Context& c) const;
  Result<Array<Meeting>> Meetings(Context& c, const Options& options = {}) const;  // with itself
  Result<Array<Meeting>> Meetings(const Chain& other, Context& c,
                                  const Options& options = {}) const;
  Result<Polyline> Flatten(double deviation, Context& c) const;
  Result<Array<Point>> Vertices(double deviation, Context& c) const;  // those points alone
  Result<Chain> Fit(Form form, double deviation, Context& c) const;
  Result<Chain> Trim(const Place& from, const Place& to, Context& c) const;
  // Of copies of loose curves, in any order and direction.
  static Result<JoinedChains> Join(std::span<const Curve> curves, Context& c,
                                   const Options& options = {}, Report* report = nullptr);
  // What a pen covers that reaches so far to both sides.
  Result<Region> Stroke(double left, double right, Context& c, const Options& options = {},
                        Report* report = nullptr) const;
  static Result<Region> Stroke(std::span<const Chain> chains, double left, double right, Context& c,
                               const Options& options = {}, Report* report = nullptr);

 private:
  friend class Curve;

  void CopyAttributes(const Curve* from) {
    for (Curve& curve : *this) Curve::CopyAttributes(*from++->Get(), *curve.Get());
  }
  // A copy, empty where the chain has no such arcs.
  Chain WithoutWideArcs(GlobalVar* g) const {
    std::size_t count = size();
    for (const Curve& curve : *this) count += Curve::IsWideArc(*curve.Get(), g) ? 3U : 0U;
    Chain out;
    if (detail::Failed(g) || count == size()) return out;
    if (!KurvocvMallocCvseq(out.Get(), detail::Count(count))) g->error = KURVO_ERR_MEMORY;
    Curve* next = out.begin();
    for (const Curve& curve : *this) {
      if (detail::Failed(g)) break;
      if (Curve::IsWideArc(*curve.Get(), g)) {
        Chain quarters = Adopt(Curve::Quarters(*curve.Get(), g));
        next = std::move(quarters.begin(), quarters.end(), next);
      } else {
        KurvocvCopyCurve(curve.Get(), next++->Get(), g);
      }
    }
    return out;
  }
};

// What a chain may be asked, asked of curves that stay where they are, in a vector say, and must
// outlive the view. A composite is its pieces.
class ChainView {
 public:
  template <std::convertible_to<std::span<const Curve>> Curves>
  ChainView(const Curves& curves) {
    const std::span<const Curve> all(curves);
    auto* first = const_cast<Curve*>(all.data());  // only read
    chain_ = Chain::Adopt({detail::Count(all.size()), reinterpret_cast<::Curve*>(first)});
  }
  ~ChainView() { static_cast<void>(chain_.Release()); }
  ChainView(const ChainView&) = delete;
  ChainView& operator=(const ChainView&) = delete;

  const Chain& operator*() const { return chain_; }
  const Chain* operator->() const { return &chain_; }

 private:
  Chain chain_;
};

// ---- Curves that become chains ----

inline Result<Chain> Curve::Split(std::span<const double> parameters, Context& c) const {
  return c.Call<Chain>("KurvocvNDivide", [&](Chain& out, GlobalVar* g) {
    const CvParam list = {detail::Count(parameters.size()), const_cast<double*>(parameters.data())};
    KurvocvNDivide(Get(), &list, out.Get(), g);
    detail::Refuse(out.Empty(), g);
  });
}

inline Result<std::pair<Curve, Curve>> Curve::Split(double t, Context& c) const {
  return c.Call<Parts>("KurvocvDivide", [&](Parts& out, GlobalVar* g) {
    KurvocvDivide(Get(), t, out.first.Get(), out.second.Get(), g);
    if (out.first.Empty() && !detail::Failed(g)) [[unlikely]]
      SplitHighDegree(t, out, g);
  });
}

// Bezier curves of degree 5 and more are cut by the function for many cuts alone.
[[gnu::cold]] inline void Curve::SplitHighDegree(double t, Parts& out, GlobalVar* g) const {
  const CvParam list = {1, &t};
  Chain parts;
  if (Type() == CV_BEZIER || Type() == CV_RBEZIER) KurvocvNDivide(Get(), &list, parts.Get(), g);
  if (parts.size() == 2)
    out = {std::move(parts[0]), std::move(parts[1])};
  else if (out.second.Empty() && !detail::Failed(g))
    g->error = KURVO_ERR_RANGE;
}

inline Result<Chain> Curve::ToChain(Context& c) const {
  return c.Call<Chain>("KurvocvSegcvToCvseq", [&](Chain& out, GlobalVar* g) {
    KurvocvSegcvToCvseq(Get(), out.Get(), g);
    out.CopyAttributes(begin());
  });
}

inline Result<Chain> Curve::Offset(double distance, double tolerance, Context& c) const {
  return c.Ask<Chain>("KurvocvOffsetCurve", KurvocvOffsetCurve, Get(), Point{0, 0, 1}.Data(),
                      distance, tolerance);
}

inline Curve Curve::RationalQuarters(const ::Curve& arc, GlobalVar* g) {
  Chain arcs = Chain::Adopt(Quarters(arc, g));
  for (Curve& quarter : arcs) {
    Curve rational;
    rational.record_.type = CV_RBEZIER;
    KurvocvConvert(quarter.Get(), rational.Get(), g);
    quarter = std::move(rational);
  }
  if (detail::Failed(g)) return {};
  auto composite = Composite({arcs.begin(), arcs.size()}, kQuarters);
  if (!composite) g->error = composite.error().code;
  return composite ? *std::move(composite) : Curve();
}

inline Result<Curve> Curve::Converted(int32_t type, Context& c) const {
  return c.Call<Curve>("KurvocvConvert", [&](Curve& out, GlobalVar* g) {
    const bool bends = type == CV_RBEZIER || type == CV_RBSPLINE || type == CV_SEGCV;
    Curve quarters;
    if (bends && IsWideArc(record_, g)) quarters = RationalQuarters(record_, g);
    if (detail::Failed(g)) return;
    out.record_.type = type;
    const ::Curve* source = quarters.Empty() ? Get() : quarters.Get();
    detail::Refuse(KurvocvConvert(source, out.Get(), g) != KURVO_CONVERTED, g);
  });
}

}  // namespace kurvo

#include <kurvo_outline.hpp>

#endif  // KURVO_HPP
