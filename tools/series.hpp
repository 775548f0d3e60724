// e to the power of z without a mathematics library: what is made of it is the same on every
// machine.
#pragma once

#include <complex>

namespace torve {

inline constexpr double pi = 3.141592653589793;

/// By its series; for |z| up to pi or so.
inline std::complex<double> exponential(std::complex<double> z) {
  std::complex<double> sum = 1;
  std::complex<double> term = 1;
  for (int n = 1; n <= 30; ++n) {
    term = term * z / static_cast<double>(n);
    sum += term;
  }
  return sum;
}

}  // namespace torve
