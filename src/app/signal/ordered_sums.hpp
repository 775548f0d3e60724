// Sums in a stated order whose terms are known only between two ends, several sums side by side.
//
// Rounding to nearest is monotone: a term between two ends gives a sum between the sums of the
// ends, and where these are the same bits, so is the sum. So a term need not be known exactly, and
// the sum is: only where a rounding boundary lies between the ends must the term itself be worked
// out, as it is stated. A quick sine serves for nearly all terms.
#pragma once

#include <bit>
#include <cstdint>

namespace torve {

/// How many sums stand side by side.
inline constexpr int sum_lanes = 32;
/// How many terms are prepared at a time: two tables of them fit the nearest cache.
inline constexpr int terms_at_once = 16;

/// The ends of some terms of each sum, in either order.
struct TermEnds {
  alignas(64) double one[terms_at_once][sum_lanes];
  alignas(64) double other[terms_at_once][sum_lanes];
};

/// Adds the terms first .. count - 1 to the sums until some have a sum between two, and that term
/// to all others; returns its number, or count, and marks these lanes.
[[nodiscard]] int add_while_certain(double* sums, const TermEnds& ends, int first, int count,
                                    std::uint32_t& between);

/// Adds the terms 0 .. count - 1; `term(r, lane)` works out one. Returns how many had to be.
template <typename Term>
int add_in_order(double* sums, const TermEnds& ends, int count, Term term) {
  int worked_out = 0;
  std::uint32_t between = 0;
  for (int r = 0; (r = add_while_certain(sums, ends, r, count, between)) < count; ++r) {
    for (; between != 0; between &= between - 1) {
      const int l = std::countr_zero(between);
      sums[l] += term(r, l);
      ++worked_out;
    }
  }
  return worked_out;
}

}  // namespace torve
