// Closer bounds for some lags, from sums of whole numbers of 16 bits.
//
// A value a(i) is alpha + h q(i) + r(i): q whole, of 16 bits, h a power of two, the same for all,
// and r a rest. So is b(i), with beta, g, q' and r'. A sum of a(i) b(i+k) over m terms is then
//   h g D + alpha g Q' + beta h Q + m alpha beta + the rests,
// D the sum of q(i) q'(i+k), Q that of q(i), Q' that of q'(i+k), all exact in whole numbers. The
// rests are sums of r(i) b(i+k) and (a(i) - r(i)) r'(i+k); by Cauchy and Schwarz they are at most
//   E = |r| |b| + (|a| + |r|) |r'|,  |x| = sqrt(sum of squares).
// Recordings of 16 bits are whole numbers but for their mean, which is the offset; the rests are
// roundings then, and the sum is as good as exact. Of other signals the partial sums are known,
// though the proposed sum may be closer to the true one.
//
// D is known every 256 terms, and the partial sums s with it: within K of h g D,
//   K = |alpha| g max |Q'| + |beta| h max |Q| + n |alpha beta| + E.
// With c at least the sum of |p| over a block, by Cauchy and Schwarz, a partial sum differs by at
// most f from the one before the block and by c - f from the one behind it, so that
//   |s| <= v = (|before| + |behind| + c) / 2 + K.
// The roundings of 256 additions are at most 256 halves of a unit in the last place of v, and those
// of the products u c <= 2 u v, at most four such halves. By how much stated partial sums differ
// from true ones is beyond the first order: 1 % in v and 1 % of all is more.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "app/signal/lag_estimate.hpp"

namespace torve {

/// Estimates the sums of a(i) b(i+k), i = 0 .. n-k-1, n the size of both, for some lags k,
/// ascending. All values are finite. Nothing if there is no memory, for fewer than 16 values, and
/// for so many that D is not exact.
[[nodiscard]] std::optional<std::vector<LagEstimate>> narrowed_lags(
    std::span<const double> a, std::span<const double> b, std::span<const std::size_t> lags);

}  // namespace torve
