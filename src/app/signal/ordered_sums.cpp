#include "app/signal/ordered_sums.hpp"

#include "app/signal/clones.hpp"

namespace torve {

TORVE_CLONES bool add_if_certain(double* sums, const TermEnds& ends, int count,
                                 std::uint32_t* doubtful) {
  double sum[sum_lanes];
  for (int l = 0; l < sum_lanes; ++l)
    sum[l] = sums[l];
  bool certain = true;
  for (int r = 0; r < count; ++r) {
    std::uint64_t difference[sum_lanes];
    std::uint64_t any = 0;
    for (int l = 0; l < sum_lanes; ++l) {
      const double low = sum[l] + ends.low[r][l];
      const double high = sum[l] + ends.high[r][l];
      difference[l] = std::bit_cast<std::uint64_t>(low) ^ std::bit_cast<std::uint64_t>(high);
      any |= difference[l];
      sum[l] = low;
    }
    doubtful[r] = 0;
    if (any == 0) continue;
    certain = false;
    for (int l = 0; l < sum_lanes; ++l)
      doubtful[r] |= static_cast<std::uint32_t>(difference[l] != 0) << l;
  }
  if (!certain) return false;
  for (int l = 0; l < sum_lanes; ++l)
    sums[l] = sum[l];
  return true;
}

}  // namespace torve
