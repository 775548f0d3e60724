#include "app/signal/ordered_sums.hpp"

#include "app/signal/clones.hpp"

namespace torve {

TORVE_CLONES int add_while_certain(double* sums, const TermEnds& ends, int first, int count) {
  double sum[sum_lanes];
  for (int l = 0; l < sum_lanes; ++l)
    sum[l] = sums[l];
  int r = first;
  for (; r < count; ++r) {
    double next[sum_lanes];
    std::uint64_t different = 0;
    for (int l = 0; l < sum_lanes; ++l) {
      next[l] = sum[l] + ends.one[r][l];
      const double other = sum[l] + ends.other[r][l];
      different |= std::bit_cast<std::uint64_t>(next[l]) ^ std::bit_cast<std::uint64_t>(other);
    }
    if (different != 0) break;
    for (int l = 0; l < sum_lanes; ++l)
      sum[l] = next[l];
  }
  for (int l = 0; l < sum_lanes; ++l)
    sums[l] = sum[l];
  return r;
}

}  // namespace torve
