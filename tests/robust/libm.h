// Tells calls that go through the C library's mathematics, whose last bit may change with its
// version, from those made of correctly rounded operations alone.
#pragma once

namespace kurvo_test {

// Whether this thread has computed a sine, cosine, arc tangent or power since the last question.
bool UsedLibm();

}  // namespace kurvo_test
