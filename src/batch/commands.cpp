#include "batch/commands.hpp"

#include <array>
#include <charconv>
#include <cstdio>
#include <optional>

#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/report.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/files.hpp"
#include "batch/plot.hpp"
#include "batch/streams.hpp"

namespace torve {

namespace {

/// The whole word as a number.
template <typename Number>
std::optional<Number> number_of(const std::string& word) {
  Number number = {};
  const char* const end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, number);
  if (error != std::errc() || stop != end) return std::nullopt;
  return number;
}

int status(int result) {
  return result == 0 ? exit_done : exit_failed;
}

/// The status of a procedure that has run and written `output`: only then can that be delivered.
int status_of(int result, OutputName& output) {
  const int delivered = output.deliver();
  return status(result != 0 ? result : delivered);
}

/// `result`, after saying which inputs are no files: some procedures keep that to themselves.
int naming_missing(Words inputs, int result) {
  for (const std::string& name : inputs) {
    if (result == exit_done || names_stream(name) || open_regular_file(name, "r")) continue;
    std::fprintf(stderr, "torve-batch: no file %s\n", name.c_str());
  }
  return result;
}

/// Word `i`, or `otherwise` if there are fewer.
std::string word_or(Words words, std::size_t i, const char* otherwise) {
  return i < words.size() ? words[i] : otherwise;
}

int run_report(Words words) {
  if (names_stream(words[0])) return exit_usage;
  return status(analyse(words[0]));
}

int run_to_au(Words words) {
  const InputName res(words[0]);
  OutputName au(words[1]);
  return status_of(make_au_file(res.name(), au.name()), au);
}

int run_cut(Words words) {
  const auto start = number_of<double>(words[2]);
  const auto end = number_of<double>(words[3]);
  if (!start || !end) return exit_usage;
  const InputName au(words[0]);
  OutputName res(words[1]);
  return status_of(cut_part(au.name(), res.name(), *start, *end), res);
}

int run_autocorrelation(Words words) {
  const InputName res(words[0]);
  return naming_missing(words.first(1), status(autocorrelation(res.name(), words[1])));
}

int run_correlation(Words words) {
  const InputName res1(words[0]);
  return naming_missing(words.first(2), status(correlation(res1.name(), words[1], words[2])));
}

int run_match(Words words) {
  const auto start = number_of<int>(word_or(words, 3, "0"));
  auto scale = number_of<float>(word_or(words, 4, "1"));
  if (!start || *start < 0 || !scale) return exit_usage;
  const InputName res1(words[0]);
  OutputName rest(words[2]);
  float mean = 0;
  int offset = 0;
  const int result = my_correlation(res1.name(), words[1], rest.name(), &mean, &offset, &*scale, 1,
                                    *start, word_or(words, 5, "all"));
  return naming_missing(words.first(2), status_of(result, rest));
}

int run_spectrum(Words words) {
  const InputName res(words[0]);
  OutputName spe(words[1]);
  return status_of(power_spectrum(res.name(), spe.name(), word_or(words, 2, "all")), spe);
}

int run_filter(Words words, FilterMode mode) {
  const auto low = number_of<int>(words[3]);
  const auto high = number_of<int>(words[4]);
  if (!low || !high) return exit_usage;
  if (!allocate_work_buffer()) return exit_failed;
  const InputName res(words[0]);
  OutputName out(words[2]);
  const bool done = power_spectrum(res.name(), words[1], word_or(words, 5, "all")) == 0 &&
                    filter_spectrum(out.name(), out.name(), *low, *high, mode) == 0;
  release_work_buffer();
  return done ? status(out.deliver()) : exit_failed;
}

int run_plot(Words words) {
  const auto pane = number_of<int>(words[1]);
  const auto start = number_of<int>(word_or(words, 3, "0"));
  const auto step = number_of<int>(word_or(words, 4, "1"));
  const bool spectrum = words[0].ends_with(".spe");
  const auto xsc = number_of<double>(word_or(words, 5, spectrum ? "0.4" : "0.02"));
  const auto ysc = number_of<double>(word_or(words, 6, "1"));
  if (!pane || *pane < 1 || *pane > 3 || !start || !step || !xsc || !ysc) return exit_usage;
  if (names_stream(words[0]) || names_stream(words[2])) return exit_usage;
  const PlotRequest request = {.input = words[0],
                               .pane = *pane - 1,
                               .start = *start,
                               .step = *step,
                               .xsc = *xsc,
                               .ysc = *ysc,
                               .samples = word_or(words, 7, "all")};
  return naming_missing(words.first(1), status(plot_to_file(request, words[2])));
}

int run_band_pass(Words words) {
  return run_filter(words, filter_band_pass);
}

int run_out_of_band(Words words) {
  return run_filter(words, filter_out_of_band);
}

constexpr std::array commands = {
    Command{"report", "FILE.au", "list an AU file; answers come from standard input", 1, 1,
            run_report},
    Command{"to-au", "IN.res OUT.au", "write samples as a 32-bit float AU file", 2, 2, run_to_au},
    Command{"cut", "IN.au OUT.res START END",
            "write the samples from START to END seconds; one name for both empties the file", 4, 4,
            run_cut},
    Command{"autocorrelation", "IN.res SUFFIX", "write autocorSUFFIX.res", 2, 2,
            run_autocorrelation},
    Command{"correlation", "ONE.res TWO.res SUFFIX", "write correSUFFIX.res, by lag of TWO", 3, 3,
            run_correlation},
    Command{"match", "ONE.res TWO.res REST.res [START [SCALE [SAMPLES]]]",
            "find TWO in ONE near sample START (0) and SCALE (1), write what is left", 3, 6,
            run_match},
    Command{"spectrum", "IN.res OUT.spe [SAMPLES]", "write the power spectrum", 2, 3, run_spectrum},
    Command{"band-pass", "IN.res OUT.spe BAND.res LOW HIGH [SAMPLES]",
            "write the spectrum, and the signal rebuilt from LOW to HIGH Hz", 5, 6, run_band_pass},
    Command{"out-of-band", "IN.res OUT.spe REST.res LOW HIGH [SAMPLES]",
            "write the spectrum, and the signal rebuilt from all but LOW to HIGH Hz", 5, 6,
            run_out_of_band},
    Command{"plot", "IN PANE OUT [START [STEP [XSC [YSC [SAMPLES]]]]]",
            "draw a .res or .spe file as pane 1, 2 or 3 does, into OUT.eps or OUT.gif", 3, 8,
            run_plot},
};

}  // namespace

std::span<const Command> all_commands() {
  return commands;
}

}  // namespace torve
