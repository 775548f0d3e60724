#include "app/signal/transforms/chirp.hpp"

#include <algorithm>
#include <cstdint>

#include "app/signal/clones.hpp"

namespace torve::transforms {

namespace {

TORVE_CLONES void multiply(const Wave& x, const Wave& y, Wave& z) {
  for (int f = 0; f < points; ++f) {
    z.re[f] = x.re[f] * y.re[f] - x.im[f] * y.im[f];
    z.im[f] = x.re[f] * y.im[f] + x.im[f] * y.re[f];
  }
}

}  // namespace

Chirp::Chirp(int size, int blocks, int tiles)
    : blocks_(blocks),
      turns_(chirp_turns(size, static_cast<std::size_t>((std::max(blocks, tiles) + 1) * half))),
      filters_(static_cast<std::size_t>(blocks + tiles - 1)) {
  for (int d = 1 - blocks; d < tiles; ++d) {
    Wave& wave = filters_[static_cast<std::size_t>(d + blocks - 1)];
    for (int v = 0; v < points; ++v) {
      const SineCosine w = (*this)(d * half + (v < half ? v : v - points));
      wave.re[v] = w.cosine;
      wave.im[v] = -w.sine;
    }
    transform(wave);
  }
}

void Chirp::convolve(const Wave& values, int block, int tile, Wave& sums) const {
  multiply(values, filters_[static_cast<std::size_t>(tile - block + blocks_ - 1)], sums);
  transform_back(sums);
}

}  // namespace torve::transforms
