#include "app/signal/spectrum.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "app/signal/correlation.hpp"
#include "app/signal/fourier_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/say.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/files.hpp"
#include "base/number_text.hpp"

namespace torve {

namespace {

constexpr int bins_per_message = 1000;

/// One bin, still in double.
struct Bin {
  double a;
  double b;
  double power;
};

Bin make_bin(const FourierSums& sums, int size) {
  const double a = 2 * sums.cosines / size;
  const double b = 2 * sums.sines / size;
  return {a, b, a * a + b * b};
}

/// Whether a power `error` more or less would leave the same text.
bool text_is_certain(double power, double error) {
  const auto low = static_cast<double>(static_cast<float>(std::max(power - error, 0.0)));
  const auto high = static_cast<double>(static_cast<float>(power + error));
  return low == high || same_fixed6(low, high);
}

/// The text of a power within the tolerance of a rounding boundary is settled by the literal sums.
Bin certain_bin(std::span<const float> x, int j, const FourierSums& sums, double tolerance) {
  const int size = static_cast<int>(x.size());
  const Bin bin = make_bin(sums, size);
  const double error = 2 * tolerance / size;
  const double power_error = 2 * error * (std::fabs(bin.a) + std::fabs(bin.b) + error);
  if (text_is_certain(bin.power, power_error)) return bin;
  return make_bin(plain_fourier_sums(x, j), size);
}

void report_percent(int bin, int last) {
  // The first message is at bin 1, then there is one at every full thousand.
  if (bin == 1 || bin % bins_per_message == 0) {
    say("%d percent ready\n", static_cast<int>(std::int64_t{bin} * 100 / last));
  }
}

void store(const Spectrum& spectrum, int size) {
  if (pointer1 == nullptr) return;
  store_spectrum_size(size);
  std::copy(spectrum.a.begin(), spectrum.a.end(), stored_a().begin());
  std::copy(spectrum.b.begin(), spectrum.b.end(), stored_b().begin());
  std::copy(spectrum.power.begin(), spectrum.power.end(), stored_power().begin());
}

/// x(0) = 0 and the values of the file behind it, `budget` in all at most.
std::vector<float> read_shifted(std::FILE* file, int budget) {
  std::vector<float> x(static_cast<std::size_t>(std::max(budget, 1)));
  x.resize(1 + SampleReader(file, analysis_line_size).read(std::span(x).subspan(1)));
  return x;
}

int could_not_open(const std::string& name) {
  say("could not open %s\n", name.c_str());
  return 1;
}

int transform_file(const std::string& res_in, const std::string& spe_out,
                   const std::string& samples) {
  const int budget = sample_budget(samples);
  say("in power_spectrum\n");
  const FilePtr input = open_regular_file(res_in, "rb");
  if (!input) return could_not_open(res_in);
  OutputFile output(spe_out);
  if (!output) return could_not_open(spe_out);
  const std::vector<float> x = read_shifted(input.get(), budget);
  const int size = static_cast<int>(x.size());
  if (size < least_spectrum_size) {
    say("not enough samples\n");
    // What an earlier run left there would pass for this one's spectrum.
    if (!same_file(res_in, spe_out)) static_cast<void>(output.finish());
    return 1;
  }
  const Spectrum spectrum = compute_spectrum(x, report_percent);
  store(spectrum, size);
  write_spectrum(output, size, spectrum.power);
  return output.finish() ? 0 : 1;
}

}  // namespace

Spectrum compute_spectrum(std::span<const float> x, void (*progress)(int bin, int last)) {
  const int size = static_cast<int>(x.size());
  const int last = size / 2;
  const double mean = mean_over(x, x.size());
  Spectrum spectrum;
  const auto add = [&](const Bin& bin) {
    spectrum.a.push_back(static_cast<float>(bin.a));
    spectrum.b.push_back(static_cast<float>(bin.b));
    spectrum.power.push_back(static_cast<float>(bin.power));
  };
  add({mean, 0, mean * mean});
  const double tolerance = fourier_sum_tolerance(x);
  std::array<FourierSums, fourier_lanes> sums;
  for (int first = 1; first <= last; first += fourier_lanes) {
    const int count = std::min(fourier_lanes, last - first + 1);
    for (int j = first; j < first + count; ++j)
      progress(j, last);
    const auto part = std::span(sums).first(static_cast<std::size_t>(count));
    fourier_sums(x, first, part);
    for (int j = first; j < first + count; ++j) {
      add(certain_bin(x, j, part[static_cast<std::size_t>(j - first)], tolerance));
    }
  }
  return spectrum;
}

int power_spectrum(const std::string& res_in, const std::string& spe_out,
                   const std::string& samples) try {
  return transform_file(res_in, spe_out, samples);
} catch (const std::bad_alloc&) {
  say("no memory\n");
  return 1;
}

}  // namespace torve
