#include "app/signal/band_filter.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <span>

#include "app/signal/band_values.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/say.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

constexpr int samples_per_message = 1000;

/// What one filter adds up.
struct Selection {
  bool with_mean;
  std::array<BinRange, 2> ranges;
};

/// Truncated towards zero, and kept where sums with small numbers cannot overflow.
int bin_of(int hertz, int size) {
  const std::int64_t bin = hertz * std::int64_t{size} / sampling_rate;
  return static_cast<int>(std::clamp<std::int64_t>(bin, -1'000'000'000, 1'000'000'000));
}

Selection select_bins(int low, int high, int size, int mode) {
  constexpr BinRange none = {1, 0};
  if (mode == filter_band_pass) {
    return {low <= 0 && high >= 0, {{{std::max(low, 1), std::min(high, size - 1)}, none}}};
  }
  return {true, {{{1, std::min(low - 1, size - 1)}, {std::max(high + 1, 1), size - 1}}}};
}

/// Makes the coefficients of the ranges those that the filter takes. Returns the part of the work
/// that this was: an open bin takes as long as its terms of all samples.
double settle(std::span<const BinRange> ranges) {
  int bins = 0;
  int open = 0;
  for (const BinRange& range : ranges) {
    bins += std::max(range.last - range.first + 1, 0);
    open += open_stored_coefficients(range.first, range.last);
  }
  double done = 0;
  for (const BinRange& range : ranges) {
    const int here = open_stored_coefficients(range.first, range.last);
    if (here == 0) continue;
    const PartOfWork part(done / (open + bins), (done + here) / (open + bins));
    settle_stored_coefficients(range.first, range.last);
    done += here;
  }
  return bins > 0 ? done / (open + bins) : 0;
}

Outcome filter(const std::string& name, int size, const Selection& selection) {
  OutputFile file(name);
  if (!file) return file.outcome();
  const auto bins = static_cast<std::size_t>(size);
  const double mean =
      static_cast<double>(stored_a()[0]) * static_cast<double>(sampling_rate) / size;
  const double settling = settle(selection.ranges);
  const BandSums sums(stored_a().first(bins), stored_b().first(bins), size,
                      selection.with_mean ? mean : 0, selection.ranges);
  const auto report_percent = [size](int t) {
    if (t % samples_per_message != 0) return;
    say("%d percent ready\n", static_cast<int>(std::int64_t{t} * 100 / size));
  };
  const PartOfWork adding(settling, 1);
  int t = 0;
  for (const double value : band_values(sums, 0, size, report_percent))
    write_sample(file, t++, value);
  if (file.finish()) say("done\n");
  return file.outcome();
}

}  // namespace

Outcome filter_stored_spectrum(const std::string& output, int low_hz, int high_hz,
                               FilterMode mode) try {
  const int size = stored_spectrum_size();
  if (size == 0) {
    say("run power spectrum\n");
    return {.cause = Cause::no_spectrum};
  }
  const Selection selection = select_bins(bin_of(low_hz, size), bin_of(high_hz, size), size, mode);
  return watched(output, [&] { return filter(output, size, selection); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

int filter_spectrum(const std::string& band_out, const std::string& rest_out, int low_hz,
                    int high_hz, int mode) {
  const bool is_band = mode == filter_band_pass;
  return filter_stored_spectrum(is_band ? band_out : rest_out, low_hz, high_hz,
                                is_band ? filter_band_pass : filter_out_of_band)
                 .is_done()
             ? 0
             : 1;
}

}  // namespace torve
