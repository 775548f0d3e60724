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

/// The ends of some terms of each sum, low <= high.
struct TermEnds {
  alignas(64) double low[terms_at_once][sum_lanes];
  alignas(64) double high[terms_at_once][sum_lanes];
};

/// Adds the terms 0 .. count - 1 to the sums if none has a sum between two. Otherwise the sums stay
/// as they are, and in each term's row of `doubtful` these lanes are marked; after the first one of
/// a lane that is a guess.
[[nodiscard]] bool add_if_certain(double* sums, const TermEnds& ends, int count,
                                  std::uint32_t* doubtful);

/// Adds the terms 0 .. count - 1 to the first `used` sums; the others are not what they should be.
/// `term(r, lane)` works out one, which goes into `ends`. Returns how many had to be. Guessing
/// which they are lets the library work out many in a row, while their sums would wait for each.
template <typename Term>
int add_in_order(double* sums, int used, TermEnds& ends, int count, Term term) {
  std::uint32_t doubtful[terms_at_once];
  int worked_out = 0;
  while (!add_if_certain(sums, ends, count, doubtful)) {
    for (int r = 0; r < count; ++r) {
      for (std::uint32_t rest = doubtful[r]; rest != 0; rest &= rest - 1) {
        const int l = std::countr_zero(rest);
        if (l < used) {
          ends.low[r][l] = term(r, l);
          ++worked_out;
        }
        ends.high[r][l] = ends.low[r][l];
      }
    }
  }
  return worked_out;
}

}  // namespace torve
