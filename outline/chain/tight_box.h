// The narrowest box around a span.
#pragma once

#include <kurvo_outline.h>

#include "base/bounds.h"
#include "strand/span.h"

namespace kurvo::outline {

// Widens the box by what holds the span, and no more.
void AddTightBox(const Span& span, Bounds& box);

}  // namespace kurvo::outline
