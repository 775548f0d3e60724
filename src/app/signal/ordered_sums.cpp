#include "app/signal/ordered_sums.hpp"

#include "app/signal/clones.hpp"

namespace torve {

TORVE_CLONES int add_while_certain(double* sums, const TermEnds& ends, int first, int count,
                                   std::uint32_t& between) {
  double sum[sum_lanes];
  for (int l = 0; l < sum_lanes; ++l)
    sum[l] = sums[l];
  between = 0;
  int r = first;
  for (; r < count; ++r) {
    std::uint64_t difference[sum_lanes];
    std::uint64_t any = 0;
    for (int l = 0; l < sum_lanes; ++l) {
      const double one = sum[l] + ends.one[r][l];
      const double other = sum[l] + ends.other[r][l];
      difference[l] = std::bit_cast<std::uint64_t>(one) ^ std::bit_cast<std::uint64_t>(other);
      any |= difference[l];
      sum[l] = difference[l] == 0 ? one : sum[l];
    }
    if (any == 0) continue;
    for (int l = 0; l < sum_lanes; ++l)
      between |= static_cast<std::uint32_t>(difference[l] != 0) << l;
    break;
  }
  for (int l = 0; l < sum_lanes; ++l)
    sums[l] = sum[l];
  return r;
}

}  // namespace torve
