#include "app/signal/transforms/cut_sums.hpp"

#include <algorithm>

#include "app/signal/clones.hpp"

namespace torve::transforms {

TORVE_CLONES void sum_to_cut(const float* x, Way way, Cuts& cuts) {
  double count[cut_lanes];
  double cosine[cut_lanes];
  double sine[cut_lanes];
  double turn_cosine[cut_lanes];
  double turn_sine[cut_lanes];
  double re[cut_lanes] = {};
  double im[cut_lanes] = {};
  double last = 0;
  for (int l = 0; l < cut_lanes; ++l) {
    count[l] = cuts.count[l];
    cosine[l] = cuts.start[l].cosine;
    sine[l] = cuts.start[l].sine;
    turn_cosine[l] = cuts.turn[l].cosine;
    turn_sine[l] = cuts.turn[l].sine;
    last = std::max(last, count[l]);
  }
  for (int n = 0; n < static_cast<int>(last); ++n) {
    const double sample = static_cast<double>(x[n * static_cast<int>(way)]);
    for (int l = 0; l < cut_lanes; ++l) {
      const double value = n < count[l] ? sample : 0;
      const double next = cosine[l] * turn_cosine[l] - sine[l] * turn_sine[l];
      re[l] += value * cosine[l];
      im[l] += value * sine[l];
      sine[l] = cosine[l] * turn_sine[l] + sine[l] * turn_cosine[l];
      cosine[l] = next;
    }
  }
  for (int l = 0; l < cut_lanes; ++l) {
    cuts.re[l] = re[l];
    cuts.im[l] = im[l];
  }
}

}  // namespace torve::transforms
