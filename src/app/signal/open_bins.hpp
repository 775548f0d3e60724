// The bins of a spectrum that are not proved yet, 32 at a time: by what the roundings of angles
// change, if there is an estimate; by the ends of their sums; the literal sums decide the rest.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>

#include "app/signal/fourier_corrections.hpp"
#include "app/signal/fourier_sums.hpp"

namespace torve {

/// What the literal steps make of sums between two ends.
struct BinVerdict {
  bool power_is_certain;          // its text
  bool coefficients_are_certain;  // as floats
  float a;
  float b;
  float power;
};
[[nodiscard]] BinVerdict judge_bin(const FourierEnds& ends, int size);

/// The coefficients and powers of the bins 0 and up; open: a and b are near the literal ones, but
/// not proved to be these floats.
struct BinTable {
  std::span<float> a;
  std::span<float> b;
  std::span<float> power;  // may be empty if only coefficients are wanted
  std::span<std::uint8_t> open;
};

/// Collects open bins and works them out.
class OpenBins {
 public:
  enum class Wanted { power_text, coefficients };

  /// Both must outlive the object.
  OpenBins(std::span<const float> x, const BinTable& table, Wanted wanted);

  /// Takes a bin as it is estimated, if that is enough; otherwise it is open.
  void take(int bin, const FourierEstimate& estimate);
  void add(int bin);
  /// Works out what has been added; before, some bins may still be as they were.
  void finish();

 private:
  struct Batch {
    std::array<int, fourier_lanes> bins;
    std::size_t count = 0;
    int straight = 0;  // so many more bins pass it by
    [[nodiscard]] std::span<const int> all() const { return std::span(bins).first(count); }
    /// Whether the bin made it full.
    bool push(int bin);
    /// Empties it; few certain bins, and the next ones pass it by.
    void clear(int certain);
  };
  bool settle(int bin, const FourierEnds& ends);
  void try_corrections();
  void try_ends();
  void decide();
  void push_undecided(int bin);

  std::span<const float> x_;
  BinTable table_;
  Wanted wanted_;
  Batch estimated_;  // the estimates leave them open
  std::array<FourierEstimate, fourier_lanes> estimates_;
  std::unique_ptr<FourierCorrections> corrections_;  // made for the first that need them
  Batch new_;        // without an estimate, or it is not enough even if corrected
  Batch undecided_;  // the ends leave them open
};

}  // namespace torve
