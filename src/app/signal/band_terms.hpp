// What a sample of a band is the sum of, and an estimate of it.
#pragma once

#include <array>
#include <span>

namespace torve {

/// Bins from first to last; empty if last < first.
struct BinRange {
  int first;
  int last;
};

/// Sample t is about the offset plus the sum over the bins of the ranges, in order, of
/// A cos(angle) + B sin(angle); a and b: A and B of the bins 0 .. size - 1.
struct BandTerms {
  std::span<const double> a;
  std::span<const double> b;
  int size;
  double offset;
  std::array<BinRange, 2> ranges;
};

/// How far `value` is off the stated one at most.
struct BandEstimate {
  double value;
  double angle_error;     // what the roundings of the stated angles do
  double addition_error;  // what those of the stated additions do
  double error;           // all else
};

}  // namespace torve
