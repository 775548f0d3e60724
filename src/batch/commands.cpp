#include "batch/commands.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

#include "app/signal/au_file.hpp"
#include "app/signal/band_filter.hpp"
#include "app/signal/correlation.hpp"
#include "app/signal/matching.hpp"
#include "app/signal/report.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/spectrum.hpp"
#include "app/signal/work_buffer.hpp"
#include "base/number_text.hpp"
#include "batch/figure.hpp"
#include "batch/measure_commands.hpp"
#include "batch/model.hpp"
#include "batch/plot.hpp"
#include "batch/sound_commands.hpp"
#include "batch/status.hpp"
#include "batch/streams.hpp"
#include "batch/warnings.hpp"
#include "figure/request/figure_request.hpp"

namespace torve {

namespace {

/// How much of a stream an analysis takes: one line more shows that there are too many.
Enough enough_samples(const Request& request, const std::string& samples = "all") {
  const std::int64_t budget = sample_budget(samples) + std::int64_t{1};
  return enough_lines(std::min<std::int64_t>(request.range.end, request.range.first + budget));
}

void warn_about(const Request& request, const std::string& name,
                const std::string& samples = "all") {
  warn_about_signal(name, request.range, samples == "all" ? Taken::as_analyses_do : Taken::whole);
}

int run_report(const Request& request) {
  const std::string& name = request.words[0];
  if (names_stream(name)) return exit_usage;
  warn_about_au(name);
  return status_of(request, report_au_file(name));
}

int run_to_au(const Request& request) {
  const InputName res(request.words[0]);
  OutputName au(request.words[1]);
  const Outcome& bad = first_failure(res, au);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about_signal(res.name(), {}, Taken::whole);
  return status_of(request, convert_to_au(res.name(), au.name()), au);
}

int run_cut(const Request& request) {
  const auto start = number_of<double>(request.words[2]);
  const auto end = number_of<double>(request.words[3]);
  if (!start || !end || !(*start <= *end) || *end < 0) return exit_usage;
  const InputName au(request.words[0], enough_seconds(*end));
  OutputName res(request.words[1]);
  const Outcome& bad = first_failure(au, res);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about_au(au.name());
  const Outcome outcome = cut_au(au.name(), res.name(), *start, *end);
  if (outcome.is_done()) warn_if_empty(res.name());
  return status_of(request, outcome, res);
}

/// The output of a correlation: a name of its own, or a suffix.
std::string output_of(const std::string& word, std::string (*named)(const std::string& suffix)) {
  return names_stream(word) || has_ending(word, ".res") ? word : named(word);
}

int run_autocorrelation(const Request& request) {
  const InputName res(request.words[0], enough_samples(request));
  OutputName output(output_of(request.words[1], autocorrelation_name));
  const Outcome& bad = first_failure(res, output);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about(request, res.name());
  return status_of(request, autocorrelate_file(res.name(), output.name(), request.range), output);
}

int run_correlation(const Request& request) {
  const std::string& second = request.words[1];
  const InputName res(request.words[0], enough_samples(request));
  OutputName output(output_of(request.words[2], correlation_name));
  const Outcome& bad = first_failure(res, output);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about(request, res.name());
  warn_about(request, second);
  return status_of(request, correlate_files(res.name(), second, output.name(), request.range),
                   output);
}

/// What speaks against a match; null if nothing does.
const char* doubt_about(const Match& match) {
  if (!(match.mean < match.mean_without)) return "the difference is not below that of scale 0";
  if (match.offset_is_last) return "the offset is at the end of its range";
  if (match.scale_is_last) return "the scale is at the end of its range";
  return nullptr;
}

std::string line_of(const Match& match) {
  std::array<char, longest_decimal + 2 * 48 + 3> text;
  char* end = put_decimal(text.data(), match.offset);
  for (const float value : {match.scale, match.mean}) {
    *end++ = ' ';
    end = put_fixed6(end, static_cast<double>(value));
  }
  *end++ = '\n';
  return {text.data(), end};
}

int report_match(const Request& request, const Match& match, const OutputAside* aside) {
  if (const char* const doubt = doubt_about(match)) {
    std::fprintf(stderr, "torve-batch: no match: %s\n", doubt);
  }
  return aside != nullptr ? status_of(request, aside->write(line_of(match))) : exit_done;
}

int run_match(const Request& request) {
  const auto start = number_of<int>(word_or(request, 3, "0"));
  const auto scale = number_of<float>(word_or(request, 4, "1"));
  const std::string samples = word_or(request, 5, "all");
  if (!start || *start < 0 || !scale) return exit_usage;
  if (request.values && names_stream(request.words[2])) return exit_usage;
  const InputName res(request.words[0], enough_samples(request, samples));
  OutputName rest(request.words[2]);
  const Outcome& bad = first_failure(res, rest);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about(request, res.name(), samples);
  warn_about(request, request.words[1], samples);
  std::optional<OutputAside> aside;
  if (request.values) aside.emplace();
  Match match;
  const Outcome outcome = match_files({.path1 = res.name(),
                                       .path2 = request.words[1],
                                       .path3 = rest.name(),
                                       .start = *start,
                                       .scale = *scale,
                                       .samples = samples,
                                       .range = request.range},
                                      &match);
  const int status = status_of(request, outcome, rest);
  return status == exit_done ? report_match(request, match, aside ? &*aside : nullptr) : status;
}

int run_spectrum(const Request& request) {
  if (request.average) return run_average_spectrum(request);
  const std::string samples = word_or(request, 2, "all");
  const InputName res(request.words[0], enough_samples(request, samples));
  OutputName spe(request.words[1]);
  const Outcome& bad = first_failure(res, spe);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about(request, res.name(), samples);
  return status_of(request, transform_file(res.name(), spe.name(), samples, request.range), spe);
}

int run_filter(const Request& request, FilterMode mode) {
  constexpr int highest = sampling_rate / 2;
  const auto low = number_of<int>(request.words[3]);
  const auto high = number_of<int>(request.words[4]);
  const std::string samples = word_or(request, 5, "all");
  if (!low || !high || *low > *high || *high < 0) return exit_usage;
  if (mode == filter_band_pass && *low > highest) return exit_usage;
  if (!allocate_work_buffer()) return status_of(request, {.cause = Cause::no_memory});
  const InputName res(request.words[0], enough_samples(request, samples));
  OutputName out(request.words[2]);
  const Outcome& bad = first_failure(res, out);
  if (!bad.is_done()) return status_of(request, bad);
  warn_about(request, res.name(), samples);
  int status =
      status_of(request, transform_file(res.name(), request.words[1], samples, request.range));
  if (status == exit_done) {
    status = status_of(request, filter_stored_spectrum(out.name(), *low, *high, mode), out);
  }
  release_work_buffer();
  return status;
}

/// What the picture shall be: as --format says, else as the name ends.
std::optional<PictureFormat> format_of(const Request& request, const std::string& output) {
  if (request.format == "eps") return PictureFormat::eps;
  if (request.format == "gif") return PictureFormat::gif;
  if (!request.format.empty()) return std::nullopt;
  if (has_ending(output, ".eps")) return PictureFormat::eps;
  if (has_ending(output, ".gif")) return PictureFormat::gif;
  return std::nullopt;
}

int run_plot(const Request& request) {
  const std::string& input = request.words[0];
  const bool spectrum = has_ending(input, ".spe");
  const auto format = format_of(request, request.words[2]);
  const auto pane = number_of<int>(request.words[1]);
  const auto start = number_of<int>(word_or(request, 3, "0"));
  const auto step = number_of<int>(word_or(request, 4, "1"));
  const auto xsc = number_of<double>(word_or(request, 5, spectrum ? "0.4" : "0.02"));
  const auto ysc = number_of<double>(word_or(request, 6, "1"));
  if (!pane || *pane < 1 || *pane > 3 || !start || !step || !xsc || !ysc) return exit_usage;
  if (names_stream(input) || !format || (request.decibels && !spectrum)) return exit_usage;
  OutputName output(request.words[2]);
  if (!output.outcome().is_done()) return status_of(request, output.outcome());
  if (!spectrum) warn_about_signal(input, {.first = std::max(*start, 0)});
  const PlotRequest plot = {.input = input,
                            .spectrum = spectrum,
                            .pane = *pane - 1,
                            .start = *start,
                            .step = *step,
                            .xsc = *xsc,
                            .ysc = *ysc,
                            .samples = word_or(request, 7, "all"),
                            .decibels = request.decibels};
  return status_of(request, plot_to_file(plot, output.name(), *format), output);
}

int run_band_pass(const Request& request) {
  return run_filter(request, filter_band_pass);
}

int run_out_of_band(const Request& request) {
  return run_filter(request, filter_out_of_band);
}

constexpr Options range = Options::range;

constexpr std::array commands = {
    Command{"report", "FILE.au", "list an AU file; answers come from standard input", 1, 1,
            Options::none, run_report},
    Command{"to-au", "IN.res OUT.au", "write samples as a 32-bit float AU file", 2, 2,
            Options::none, run_to_au},
    Command{"cut", "IN.au OUT.res START END",
            "write the samples from START to END seconds; one name for both empties the file", 4, 4,
            Options::none, run_cut},
    Command{"autocorrelation", "IN.res SUFFIX|OUT.res [RANGE]",
            "write autocorSUFFIX.res, or OUT.res", 2, 2, range, run_autocorrelation},
    Command{"correlation", "ONE.res TWO.res SUFFIX|OUT.res [RANGE]",
            "write correSUFFIX.res, or OUT.res, by lag of TWO", 3, 3, range, run_correlation},
    Command{"match", "ONE.res TWO.res REST.res [START [SCALE [SAMPLES]]] [--values] [RANGE]",
            "find TWO in ONE near sample START (0) and SCALE (1), write what is left", 3, 6,
            range | Options::values, run_match},
    Command{"delay", "ONE.res TWO.res [MAXIMUM] [RANGE]",
            "say how much later TWO is, at most MAXIMUM seconds either way", 2, 3, range,
            run_delay},
    Command{"level", "IN.res [START [END]]", "say how loud a signal is from START to END seconds",
            1, 3, Options::none, run_level},
    Command{"spectrum", "IN.res OUT.spe [SAMPLES] [--average BLOCK] [RANGE]",
            "write the power spectrum, or the average of those of blocks of so many samples", 2, 3,
            range | Options::average, run_spectrum},
    Command{"band-pass", "IN.res OUT.spe BAND.res LOW HIGH [SAMPLES] [RANGE]",
            "write the spectrum, and the signal rebuilt from LOW to HIGH Hz", 5, 6, range,
            run_band_pass},
    Command{"out-of-band", "IN.res OUT.spe REST.res LOW HIGH [SAMPLES] [RANGE]",
            "write the spectrum, and the signal rebuilt from all but LOW to HIGH Hz", 5, 6, range,
            run_out_of_band},
    Command{"import", "SOUND OUT.res [CHANNEL [START [END]]]",
            "write a channel (1; \"mix\": all) of a sound file as samples at 44100 Hz, from START "
            "to END "
            "seconds",
            2, 5, Options::none, run_import},
    Command{"export", "IN.res OUT.wav|OUT.aiff|OUT.flac", "write samples as a 24-bit sound file", 2,
            2, Options::none, run_export},
    Command{"plot", "IN PANE OUT [START [STEP [XSC [YSC [SAMPLES]]]]] [--format eps|gif] [--db]",
            "draw a .res or .spe file as pane 1, 2 or 3 does, into OUT.eps or OUT.gif", 3, 8,
            Options::format | Options::decibels, run_plot},
    Command{
        "figure",
        "OUT IN[,start=N][,step=N][,xsc=X][,ysc=X][,db] ... [--size WxH] [--title TEXT] "
        "[--format pdf|svg|png]",
        "draw up to four .res, .spe or .vob files one above the other, into OUT.pdf, OUT.svg or "
        "OUT.png",
        2, 1 + most_figure_inputs, Options::format | Options::figure, run_figure},
    Command{"model", "FILE.vob [--json]",
            "list a diagram as a queueing network, with what is wrong with it", 1, 1, Options::json,
            run_model},
};

}  // namespace

std::span<const Command> all_commands() {
  return commands;
}

}  // namespace torve
