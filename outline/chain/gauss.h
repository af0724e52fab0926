// Gauss-Legendre rules on [-1, 1] (Abramowitz and Stegun, table 25.4): n nodes, exact for
// polynomials of degree 2 n - 1.
#pragma once

#include <cstddef>

namespace kurvo::outline {

// The positive nodes, with their weights; the others mirror them.
template <std::size_t kNodes>
struct Gauss;

template <>
struct Gauss<4> {
  static constexpr double kAt[] = {0.33998104358485626, 0.8611363115940526};
  static constexpr double kWeight[] = {0.6521451548625461, 0.34785484513745385};
};

template <>
struct Gauss<6> {
  static constexpr double kAt[] = {0.2386191860831969, 0.6612093864662645, 0.932469514203152};
  static constexpr double kWeight[] = {0.46791393457269104, 0.3607615730481386,
                                       0.17132449237917036};
};

template <>
struct Gauss<8> {
  static constexpr double kAt[] = {0.1834346424956498, 0.525532409916329, 0.7966664774136267,
                                   0.9602898564975363};
  static constexpr double kWeight[] = {0.362683783378362, 0.31370664587788727, 0.22238103445337448,
                                       0.10122853629037626};
};

template <>
struct Gauss<16> {
  static constexpr double kAt[] = {0.09501250983763744, 0.2816035507792589, 0.45801677765722737,
                                   0.6178762444026438,  0.755404408355003,  0.8656312023878318,
                                   0.9445750230732326,  0.9894009349916499};
  static constexpr double kWeight[] = {
      0.1894506104550685,  0.18260341504492358, 0.16915651939500254,  0.14959598881657674,
      0.12462897125553388, 0.09515851168249279, 0.062253523938647894, 0.027152459411754096};
};

}  // namespace kurvo::outline
