// Fourier sums with true angles, for digits that a proposal leaves open: the angles of sample i and
// bin j are those of a chirp (close_chirp.hpp), in blocks of samples and tiles of bins. The bound
// is that of the chirp; the sums are given as doubles, rounded.
#pragma once

#include <memory>
#include <span>

#include "app/signal/fourier_sums.hpp"

namespace torve::transforms {

class CloseSums {
 public:
  /// Bins that are found at a time.
  static constexpr int tile = 2048;

  /// For the sums of x, which must outlive it and has at most 131072 values, of the bins first to
  /// last. Null if a value is not finite, or there is no memory.
  [[nodiscard]] static std::unique_ptr<CloseSums> make(std::span<const float> x, int first,
                                                       int last);

  virtual ~CloseSums() = default;

  /// The sums of the bins first_bin, the first of all and some tiles, and up; what stands for bins
  /// beyond the last one is of no use.
  virtual void find(int first_bin, std::span<TrueSums, tile> sums) = 0;
};

}  // namespace torve::transforms
