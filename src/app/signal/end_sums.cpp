#include "app/signal/end_sums.hpp"

#include "app/signal/clones.hpp"

namespace torve {

TORVE_CLONES void add_ends(double* low, double* high, const TermEnds& ends, int count) {
  double lowest[sum_lanes];
  double highest[sum_lanes];
  for (int l = 0; l < sum_lanes; ++l) {
    lowest[l] = low[l];
    highest[l] = high[l];
  }
  for (int r = 0; r < count; ++r) {
    for (int l = 0; l < sum_lanes; ++l) {
      lowest[l] += ends.low[r][l];
      highest[l] += ends.high[r][l];
    }
  }
  for (int l = 0; l < sum_lanes; ++l) {
    low[l] = lowest[l];
    high[l] = highest[l];
  }
}

}  // namespace torve
