// Loops no wider than the tolerance.
#pragma once

#include <span>

#include "sweep/arrangement.h"
#include "sweep/scene.h"

namespace kurvo::outline {

// Whether a loop of whole sources may be a sliver.
bool MayBeSliver(const Scene& scene, std::span<const Source> sources);

// Whether the loop is no wider than tol: its area is at most tol times its length. `area` is in the
// frame.
bool IsSliver(const Scene& scene, const Arrangement& arrangement, std::span<const int32_t> edges,
              double& area);

}  // namespace kurvo::outline
