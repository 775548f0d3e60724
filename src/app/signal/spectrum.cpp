#include "app/signal/spectrum.hpp"

#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "app/signal/correlation.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"
#include "app/signal/transforms/close_sums.hpp"
#include "app/signal/transforms/fourier_proposal.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/files.hpp"
#include "base/progress.hpp"

namespace torve {

namespace {

Transformed transformed;

constexpr int bins_per_message = 1000;
constexpr int tile = transforms::FourierProposal::tile;

using TileEstimates = std::array<FourierEstimate, tile>;

void report_percent(int bin, int last) {
  // The first message is at bin 1, then there is one at every full thousand.
  if (bin == 1 || bin % bins_per_message == 0) {
    say("%d percent ready\n", static_cast<int>(std::int64_t{bin} * 100 / last));
  }
}

// Sums of fewer open bins take less time than estimates of all.
constexpr int enough_for_proposal = 256;

bool make_room_for_open() try {
  open_coefficients.reserve(open_coefficients.size() + 1);
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

/// Keeps x for the open coefficients; without memory for that they are settled now.
void keep_open(std::vector<float>& x, Spectrum& spectrum) {
  std::erase_if(open_coefficients, [&spectrum](const OpenCoefficients& older) {
    return older.open.size() <= spectrum.open.size();
  });
  if (make_room_for_open()) {
    open_coefficients.push_back({std::move(x), std::move(spectrum.open)});
  } else {
    settle_coefficients(x, {spectrum.a, spectrum.b, {}, spectrum.open}, 1,
                        static_cast<int>(spectrum.a.size()) - 1);
  }
}

void store(std::vector<float>& x, Spectrum& spectrum) {
  if (pointer1 == nullptr) return;
  const Unwatched all_or_nothing;
  store_spectrum_size(static_cast<int>(x.size()));
  keep_open(x, spectrum);
  std::copy(spectrum.a.begin(), spectrum.a.end(), stored_a().begin());
  std::copy(spectrum.b.begin(), spectrum.b.end(), stored_b().begin());
  std::copy(spectrum.power.begin(), spectrum.power.end(), stored_power().begin());
}

/// x(0) = 0 and the values of the file behind it, `budget` in all at most.
std::vector<float> read_shifted(std::FILE* file, int budget, const SampleRange& range) {
  std::vector<float> x = read_samples(file, budget - 1, range);
  x.insert(x.begin(), 0);
  return x;
}

Outcome could_not_open(const Outcome& outcome) {
  say("could not open %s\n", outcome.name.c_str());
  return outcome;
}

Outcome transform(const std::string& res_in, const std::string& spe_out, const std::string& samples,
                  const SampleRange& range) {
  const int budget = sample_budget(samples);
  say("in power_spectrum\n");
  const FilePtr input = open_regular_file(res_in, "rb");
  if (!input) return could_not_open(input_failure(res_in));
  OutputFile output(spe_out);
  if (!output) return could_not_open(output.outcome());
  std::vector<float> x = read_shifted(input.get(), budget, range);
  const int size = static_cast<int>(x.size());
  if (size < least_spectrum_size) {
    say("not enough samples\n");
    // What an earlier run left there would pass for this one's spectrum.
    if (!same_file(res_in, spe_out)) return output.refuse(Cause::too_few_samples, res_in);
    return {.cause = Cause::too_few_samples, .name = res_in};
  }
  Spectrum spectrum = compute_spectrum(x, report_percent);
  store(x, spectrum);
  write_spectrum(output, size, spectrum.power);
  static_cast<void>(output.finish());
  return output.outcome();
}

int count_open(std::span<const std::uint8_t> open, int first, int last) {
  int count = 0;
  for (int j = first; j <= last; ++j)
    count += open[static_cast<std::size_t>(j)] != 0 ? 1 : 0;
  return count;
}

/// Calls `use` for each stored spectrum with those of the bins that it is responsible for.
template <typename Use>
void for_stored_spectra(int first, int last, Use use) {
  int newer_bins = 0;
  for (auto spectrum = open_coefficients.rbegin(); spectrum != open_coefficients.rend();
       ++spectrum) {
    const int bins = static_cast<int>(spectrum->open.size());
    use(*spectrum, std::max(first, newer_bins), std::min(last, bins - 1));
    newer_bins = bins;
  }
}

}  // namespace

Spectrum compute_spectrum(std::span<const float> x, void (*progress)(int bin, int last)) {
  const int last = static_cast<int>(x.size()) / 2;
  const auto bins = static_cast<std::size_t>(last) + 1;
  Spectrum spectrum = {std::vector<float>(bins), std::vector<float>(bins), std::vector<float>(bins),
                       std::vector<std::uint8_t>(bins)};
  const double mean = mean_over(x, x.size());
  spectrum.a[0] = static_cast<float>(mean);
  spectrum.power[0] = static_cast<float>(mean * mean);
  const BinTable table = {spectrum.a, spectrum.b, spectrum.power, spectrum.open};
  OpenBins powers(x, table, OpenBins::Wanted::power_text);
  static TileEstimates estimates;
  const auto proposal = transforms::FourierProposal::make(x);
  for (int first = 0; first <= last; first += tile) {
    const int end = std::min(first + tile, last + 1);
    for (int j = std::max(first, 1); j < end; ++j)
      progress(j, last);
    if (proposal) proposal->propose(first, estimates);
    for (int j = std::max(first, 1); j < end; ++j) {
      if (j % fourier_lanes == 0) tell_done(static_cast<double>(j) / last);
      if (proposal) {
        powers.take(j, estimates[static_cast<std::size_t>(j - first)]);
      } else {
        powers.add(j);
      }
    }
  }
  powers.finish();
  return spectrum;
}

void settle_coefficients(std::span<const float> x, const BinTable& table, int first, int last) {
  OpenBins coefficients(x, table, OpenBins::Wanted::coefficients);
  const int open = count_open(table.open, first, last);
  const auto close =
      open < enough_for_proposal ? nullptr : transforms::CloseSums::make(x, first, last);
  static std::array<TrueSums, tile> sums;
  int found = -1;
  int taken = 0;
  for (int j = first; j <= last; ++j) {
    if (table.open[static_cast<std::size_t>(j)] == 0) continue;
    if (taken++ % fourier_lanes == 0) tell_done(static_cast<double>(taken) / open);
    if (!close) {
      coefficients.add(j);
      continue;
    }
    const int place = j - first;
    if (found != place / tile) close->find(first + (found = place / tile) * tile, sums);
    coefficients.take(j, sums[static_cast<std::size_t>(place % tile)]);
  }
  coefficients.finish();
}

int open_stored_coefficients(int first, int last) {
  int open = 0;
  for_stored_spectra(first, last, [&open](OpenCoefficients& spectrum, int from, int to) {
    open += count_open(spectrum.open, from, to);
  });
  return open;
}

void settle_stored_coefficients(int first, int last) {
  const double all = open_stored_coefficients(first, last);
  double done = 0;
  for_stored_spectra(first, last, [&](OpenCoefficients& spectrum, int from, int to) {
    const int open = count_open(spectrum.open, from, to);
    if (open == 0) return;
    const PartOfWork part(done / all, (done + open) / all);
    settle_coefficients(spectrum.x, {stored_a(), stored_b(), {}, spectrum.open}, from, to);
    done += open;
  });
}

Outcome transform_file(const std::string& res_in, const std::string& spe_out,
                       const std::string& samples, const SampleRange& range) try {
  Outcome outcome = watched(spe_out, [&] { return transform(res_in, spe_out, samples, range); });
  if (outcome.is_done()) transformed = {res_in, spe_out, samples};
  return outcome;
} catch (const std::bad_alloc&) {
  say("no memory\n");
  return {.cause = Cause::no_memory};
}

const Transformed& last_transformed() {
  return transformed;
}

int power_spectrum(const std::string& res_in, const std::string& spe_out,
                   const std::string& samples) {
  return transform_file(res_in, spe_out, samples).is_done() ? 0 : 1;
}

}  // namespace torve
