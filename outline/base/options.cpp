#include "base/options.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "base/refusal.h"

namespace kurvo::outline {
namespace {

constexpr double kUsualTolerance = 0x1p-30;  // of the size of the input
constexpr double kLeastTolerance = 0x1p-44;  // of the size: below it there is only rounding

// Callers of newer versions may hand over longer records, as long as they ask for nothing new.
KurvoOptions Known(const KurvoOptions& given) {
  KurvoOptions options = {};
  const auto* bytes = reinterpret_cast<const unsigned char*>(&given);
  Require(given.size >= sizeof given.size, KURVO_ERR_OPTION);
  const std::size_t known = std::min<std::size_t>(given.size, sizeof options);
  Require(std::all_of(bytes + known, bytes + given.size, [](unsigned char b) { return b == 0; }),
          KURVO_ERR_OPTION);
  std::memcpy(&options, bytes, known);
  return options;
}

}  // namespace

void Progress::Tell(double done) {
  if (!proceed_) return;
  told_ = std::max(told_, std::min(done, 1.0));
  Require(proceed_(told_, user_) != 0, KURVO_ERR_STOPPED);
}

Settings ReadOptions(const KurvoOptions* given, double size, double epsilon) {
  const KurvoOptions options = given ? Known(*given) : KurvoOptions{};
  Require((options.flags & ~static_cast<uint32_t>(KURVO_WITH_ORIGINS)) == 0 &&
              options.reserved == 0 && !options.reserved_p,
          KURVO_ERR_OPTION);
  Require(options.tol >= 0 && options.gap >= 0, KURVO_ERR_TOLERANCE);
  RequireFinite(options.tol);
  const double tol = options.tol > 0 ? options.tol : kUsualTolerance * size;
  return {std::max({tol, kLeastTolerance * size, std::numeric_limits<double>::min()}),
          std::max(options.gap, epsilon), options.flags, Progress(options.proceed, options.user)};
}

PenOptions ReadPenOptions(const KurvoOptions* given) {
  constexpr double kUsualMiterLimit = 4;
  const KurvoOptions options = given ? Known(*given) : KurvoOptions{};
  Require(options.join >= KURVO_JOIN_ROUND && options.join <= KURVO_JOIN_BEVEL &&
              options.cap >= KURVO_CAP_BUTT && options.cap <= KURVO_CAP_SQUARE &&
              options.dash_count >= 0 && (options.dash_count == 0 || options.dashes),
          KURVO_ERR_OPTION);
  RequireFinite(options.miter_limit);
  RequireFinite(options.phase);
  Require(options.miter_limit == 0 || options.miter_limit >= 1, KURVO_ERR_RANGE);
  double whole = 0;
  for (int i = 0; i < options.dash_count; ++i) {
    RequireFinite(options.dashes[i]);
    Require(options.dashes[i] >= 0, KURVO_ERR_RANGE);
    whole += options.dashes[i];
  }
  Require(options.dash_count == 0 || whole > 0, KURVO_ERR_RANGE);
  return {options.join,
          options.cap,
          options.miter_limit > 0 ? options.miter_limit : kUsualMiterLimit,
          options.phase,
          options.dash_count,
          options.dashes};
}

}  // namespace kurvo::outline
