// The bins of a spectrum that are not proved yet, 32 at a time: by what the roundings of angles
// change, if there is an estimate; by the ends of their sums, or, if they began with close sums, by
// what each addition errs by; then by closer ends. The literal sums decide the rest.
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
  /// Takes a bin whose sums with true angles are known.
  void take(int bin, const TrueSums& sums);
  void add(int bin);
  /// Works out what has been added; before, some bins may still be as they were.
  void finish();

 private:
  enum Way : std::size_t {
    corrected,  // and what follows: part by part
    by_ends = corrected + FourierCorrections::parts,
    refined,
    by_close_ends,
    literally,
    ways
  };
  struct Batch {
    std::array<int, fourier_lanes> bins;
    std::size_t count = 0;
    int straight = 0;  // so many more bins pass it by
  };
  using AllEnds = std::array<FourierEnds, fourier_lanes>;

  bool settle(int bin, const FourierEnds& ends);
  void push(std::size_t way, int bin);
  [[nodiscard]] bool passes_corrections();
  FourierCorrections* corrections();
  [[nodiscard]] std::size_t behind(std::size_t way) const;
  void correct(int bin, std::size_t way, const CorrectedBin& so_far);
  void empty(std::size_t way);
  void leave_way_that_fails(std::size_t way, int certain);
  void find_ends(std::size_t way, std::span<const int> bins, AllEnds& ends);
  void decide(std::span<const int> bins);

  std::span<const float> x_;
  BinTable table_;
  Wanted wanted_;
  std::array<Batch, ways> batches_;  // each way's bins: those that the ways before leave open
  std::array<std::array<CorrectedBin, fourier_lanes>, refined + 1> corrected_;
  bool sums_are_close_ = false;
  int certain_if_corrected_ = 0;                     // since the last part was last tried
  std::unique_ptr<FourierCorrections> corrections_;  // made for the first of them
};

}  // namespace torve
