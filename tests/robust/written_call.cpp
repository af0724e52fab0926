#include "robust/written_call.h"

#include <algorithm>
#include <cstring>
#include <sstream>
#include <stdexcept>

#include "support/curve_text.h"

namespace kurvo_test {
namespace {

std::string Before(const std::string& text) { return text.substr(0, text.find('!')); }
std::string Behind(const std::string& text) {
  return text.find('!') == std::string::npos ? "" : text.substr(text.find('!') + 1);
}

void Break(Curve& whole, const std::string& faults) {
  std::istringstream text(faults);
  std::string what;
  Curve* cv = &whole;
  for (int32_t n; text >> what >> n;) {
    auto* const sizes = static_cast<int32_t*>(cv->data);
    auto* const pieces =
        cv->type == CV_SEGCV ? static_cast<KurvoSegcv*>(cv->data)->curves : nullptr;
    // clang-format off
    if (what == "type") cv->type = n;
    else if (what == "data") cv->data = nullptr;
    else if (what == "size") sizes[0] = n;
    else if (what == "count") sizes[1] = n;
    else if (what == "array") std::memset(static_cast<char*>(cv->data) + 8 * n, 0, sizeof(void*));
    else if (what == "in") cv = pieces + sizes[0] - 1;
    else if (what == "loop") std::fill_n(pieces, sizes[0], *cv);
    else if (what == "knot") FreeForm(*cv).knots[n] = kNaN;
    else if (what == "nan" || what == "inf")
      (cv->type == CV_LINE ? static_cast<double*>(cv->data) : FreeForm(*cv).points)[n] = what == "nan" ? kNaN : kInfinity;
    else throw std::invalid_argument(what);
    // clang-format on
  }
}

Curve Broken(Store& store, const std::string& text) {
  Curve cv = store.Keep(*Make(Before(text)));
  Break(cv, Behind(text));
  return cv;
}

}  // namespace

// clang-format off
#define CODE(name) {KURVO_ERR_##name, #name}
const char* NameOf(int code) {
  static constexpr struct { int code; const char* name; } kCodes[] = {
      {KURVO_ERR_NONE, "cleared"}, {KURVO_WARN_NO_ORIENTATION, "NO_ORIENTATION"}, {KURVO_WARN_SHORT_VECTOR, "SHORT_VECTOR"},
      CODE(MEMORY), CODE(CURVE), CODE(TOLERANCE), CODE(STACK_EMPTY), CODE(CHAIN_INDEX), CODE(CHAIN_BREAK), CODE(CHAIN_ENDS),
      CODE(RANGE), CODE(WEIGHT), CODE(CHAIN_DEGENERATE), CODE(CHAIN_CONVERT), CODE(DERIVATIVE_ORDER), CODE(SCALE),
      CODE(ROTATED_TYPE), CODE(FIT_MISSING), CODE(FIT_POINTS), CODE(ZERO_WEIGHT), CODE(SHORT_TANGENT), CODE(SAME_POINTS),
      CODE(RADIUS_TOO_SMALL), CODE(OPTION), CODE(NOT_FINITE), CODE(STOPPED), CODE(TOO_LARGE)};
  const auto* const found = std::find_if(std::begin(kCodes), std::end(kCodes), [=](auto& row) { return row.code == code; });
  return found == std::end(kCodes) ? nullptr : found->name;
}
// clang-format on

// The library may have moved the array of a chain, and put a curve of its own into it.
void Settle(Store& store, const Cvseq& seq, const Cvseq& before) {
  if (seq.count <= before.count) return;
  for (int32_t i = 0; i < seq.count; ++i)
    if (!store.Owns(seq.curves[i].data)) KurvocvFreeCurve(seq.curves + i);
  if (seq.curves == before.curves) return;
  if (before.count > 0) store.Forget(before.curves);
  std::free(seq.curves);
}

std::string Became(const double* x) {
  std::string zeros;
  for (std::size_t i = 0; i < WrittenCall::kRoom; ++i)
    if (x[i] == 0)
      zeros += '0';
    else if (x[i] != WrittenCall::kMark)
      return "*";
  return zeros;
}
std::string Became(const uint32_t* code) { return std::to_string(*code); }
std::string Became(Curve* cv) {
  const bool made = cv->data, clear = !made && !cv->attr && !cv->attr_p1 && !cv->attr_p2;
  const int32_t type = cv->type;
  if (made) KurvocvFreeCurve(cv);
  return clear ? type ? "T" : "0" : "*";
}
std::string Became(Cvseq* seq) {
  const bool empty = seq->count == 0 && !seq->curves;
  return KurvocvFreeCvseq(seq), empty ? "0" : "*";
}
std::string Became(CvParam* list) {
  const bool empty = list->count == 0 && !list->values;
  return KurvocrFreeCvParam(list), empty ? "0" : "*";
}

std::deque<std::string> Parts(const std::string& text, char between) {
  std::deque<std::string> parts;
  std::istringstream in(text);
  for (std::string part; std::getline(in >> std::ws, part, between); parts.push_back(part))
    part.erase(part.find_last_not_of(' ') + 1);
  return parts;
}

std::vector<std::string> Split(const std::string& chain) {
  std::vector<std::string> items;
  std::size_t from = 0;
  int depth = 0;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (chain[i] == '(' && depth++ == 0) from = i + 1;
    if (chain[i] != ')' || --depth > 0) continue;
    if (i > from) items.push_back(chain.substr(from, i - from));
    from = i + 1;
  }
  items.push_back(chain.substr(from));
  return items;
}

template <>
Curve* Read(Store& store, const std::string& text) {
  return store.Put(Broken(store, text));
}
template <>
KurvoArc* Read(Store& store, const std::string& text) {
  return static_cast<KurvoArc*>(Broken(store, text).data);
}
template <>
Cvseq* Read(Store& store, const std::string& text) {
  const std::vector<std::string> items = Split(text);
  const std::size_t count = items.size() - 1;
  Cvseq seq = {static_cast<int32_t>(count), count > 0 ? store.Zeroed<Curve>(count) : nullptr};
  for (std::size_t i = 0; i < count; ++i) seq.curves[i] = Broken(store, items[i]);
  std::istringstream faults(Behind(items[count]));
  std::string what;
  for (int32_t n; faults >> what >> n;)
    what == "count" ? void(seq.count = n) : void(seq.curves = nullptr);
  return store.Put(seq);
}
template <>
CvParam* Read(Store& store, const std::string& text) {
  Numbers numbers;
  const char* p = text.c_str();
  for (char* end;; p = end) {
    const double x = std::strtod(p, &end);
    if (end == p) break;
    numbers.push_back(x);
  }
  if (text == "no values") return store.Put(CvParam{1, nullptr});
  const int32_t count = text == "minus one" ? -1 : static_cast<int32_t>(numbers.size());
  double* const values = store.Numbers(numbers.size());
  std::copy(numbers.begin(), numbers.end(), values);
  return store.Put(CvParam{count, values});
}
template <>
double* Read(Store& store, const std::string& text) {
  return Read<CvParam>(store, text)->values;
}

std::string WrittenCall::Next(std::deque<std::string>& texts) {
  if (texts.empty()) return "out";
  const std::string first = texts.front();
  texts.pop_front();
  return first;
}

std::string WrittenCall::Outcome(std::string result) {
  std::string outputs;
  for (const auto& state : states_) outputs += state();
  const int error = std::exchange(g.error, before_.error);
  if (std::memcmp(&g, &before_, sizeof g) != 0) outputs += "g";
  const char* const name = error == before_.error ? "" : NameOf(error);
  for (const std::string& part : {outputs, std::string(name ? name : "unknown code")})
    if (!part.empty()) result += (result.empty() ? "" : " ") + part;
  return result;
}

}  // namespace kurvo_test
