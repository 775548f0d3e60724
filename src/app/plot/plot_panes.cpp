#include "app/plot/plot_panes.hpp"

#include <cmath>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <vector>

#include "app/plot/curve.hpp"
#include "app/plot/decibels.hpp"
#include "app/plot/pane_parts.hpp"
#include "app/plot/running_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/errors.hpp"
#include "base/files.hpp"

namespace torve {

char plot1name[pane_name_size];
char plot2name[pane_name_size];
char plot3name[pane_name_size];

namespace {

constexpr int error_colour = 3;

char* const pane_names[pane_count] = {plot1name, plot2name, plot3name};

constexpr double tick_pixels = 50;

AxisNumbers curve_axis(const PlotSettings& settings) {
  constexpr int first_step_in_seconds = 442;
  if (settings.step <= 0) return {};
  const bool in_ms = settings.step < first_step_in_seconds;
  const double units_a_second = in_ms ? 1000 : 1;
  const double start = settings.start < 0 ? 0 : settings.start;
  return {in_ms ? "ms" : "sec", start * units_a_second / sampling_rate,
          settings.step * (tick_pixels / settings.xsc) * units_a_second / sampling_rate};
}

AxisNumbers spectrum_axis(const PlotSettings& settings, int size) {
  constexpr int first_step_in_khz = 1000;
  if (settings.step <= 0) return {};
  constexpr double least_whole_hertz = 20;  // closer ticks would be told apart by a digit or two
  const bool in_hz = settings.step < first_step_in_khz;
  const double units = in_hz ? 1 : 1000;
  const double start = settings.start < 0 ? 0 : settings.start;
  const double tick = settings.step * (tick_pixels / settings.xsc) / units * sampling_rate / size;
  return {in_hz ? "Hz" : "kHz", start + spectrum_origin_shift, tick,
          in_hz && std::fabs(tick) < least_whole_hertz};
}

// Skips the leading lines; false after a word when the file ends first.
bool skip_lines(SampleReader& reader, int count) {
  for (int i = 0; i < count; ++i) {
    if (reader.skip_line()) continue;
    std::printf("file too short\n");
    return false;
  }
  return true;
}

std::optional<std::vector<float>> read_values(SampleReader& reader, int limit) try {
  std::vector<float> values(static_cast<std::size_t>(limit));
  values.resize(reader.read(values));
  return values;
} catch (const std::bad_alloc&) {
  no_memory();
  return std::nullopt;
}

void draw_plot(const std::vector<float>& points, double largest, const PlotSettings& settings,
               PaneParts parts) {
  parts.colour = settings.colour;
  parts.frame_colour = settings.frame_colour;
  parts.target = settings.target;
  parts.grid = settings.grid;
  parts.largest = largest;
  parts.ysc = settings.ysc;
  parts.xsc = settings.xsc;
  parts.shift = settings.start < 0 ? -static_cast<double>(settings.start) * settings.xsc : 0;
  draw_curve(points, draw_pane_parts(parts));
}

Cause draw_signal(std::FILE* file, const PlotSettings& settings, const char* title) {
  set_pane_area(settings.yoff);
  std::rewind(file);
  SampleReader reader(file, pane_line_size);
  if (!skip_lines(reader, settings.start)) return Cause::start_behind_end;
  const std::optional<std::vector<float>> values = read_values(reader, most_samples);
  if (!values) return Cause::no_memory;
  const std::vector<float> points = running_sums(*values, settings.step);
  const Extremes extremes = find_extremes(points);
  std::printf("plot_curve largest absolute value is %f\n", static_cast<double>(extremes.largest));
  draw_plot(points, static_cast<double>(extremes.largest), settings,
            {.axis = curve_axis(settings), .title = title});
  return points.empty() ? Cause::nothing_to_draw : Cause::done;
}

Cause draw_bins(std::FILE* file, const PlotSettings& settings, const char* samples) {
  set_pane_area(settings.yoff);
  std::rewind(file);
  SampleReader reader(file, pane_line_size);
  const auto header = reader.next_line();
  if (!header) return Cause::nothing_to_draw;
  const int stated_size = spectrum_size(*header).value_or(1);
  const int size = stated_size > 0 ? stated_size : 1;
  std::printf("plot_spectrum K=%d\n", size);
  if (!skip_lines(reader, settings.start)) return Cause::start_behind_end;
  const std::optional<std::vector<float>> values = read_values(reader, sample_budget(samples));
  if (!values) return Cause::no_memory;
  const std::vector<float> points = running_sums(*values, settings.step);
  const Extremes extremes = find_extremes(points);
  std::printf("maxi=%d maxf1=%f offset=%d\n", extremes.maximum_index,
              static_cast<double>(extremes.maximum), 0);
  std::printf("plot_curve largest absolute value is %f\n", static_cast<double>(extremes.largest));
  PaneParts parts = {
      .spectrum = true, .axis = spectrum_axis(settings, size), .title = "Power spectrum"};
  if (settings.decibels) parts.decibels = decibel_range(points);
  draw_plot(parts.decibels == 0 ? points : decibel_heights(points, parts.decibels),
            static_cast<double>(extremes.largest), settings, parts);
  return points.empty() ? Cause::nothing_to_draw : Cause::done;
}

PlotSettings settings_of(int yoff, int start, int step, double xsc, double ysc, int target) {
  return {.target = target, .step = step, .start = start, .xsc = xsc, .ysc = ysc, .yoff = yoff};
}

// A procedure that opens a file fails only where there is none.
int result_of(const Outcome& outcome) {
  return outcome.cause == Cause::no_file || outcome.cause == Cause::unreadable ? 1 : 0;
}

Outcome cannot_find(const std::string& path) {
  say_cannot_find_files();
  return input_failure(path);
}

}  // namespace

const char* pane_name(int pane) {
  return pane_names[pane];
}

void set_pane_name(int pane, const std::string& name) {
  std::snprintf(pane_names[pane], pane_name_size, "%s", name.c_str());
}

int plot_curve(std::FILE* file, const PlotSettings& settings, const char* title) {
  return draw_signal(file, settings, title) == Cause::start_behind_end ? 1 : 0;
}

int plot_spectrum(std::FILE* file, const PlotSettings& settings, const char*, const char* samples) {
  const Cause cause = draw_bins(file, settings, samples);
  std::rewind(file);
  const bool is_empty = cause == Cause::nothing_to_draw && std::fgetc(file) == EOF;
  return is_empty || cause == Cause::start_behind_end ? 1 : 0;
}

Outcome plot_signal_file(const std::string& path, const PlotSettings& settings) {
  const FilePtr file = open_regular_file(path, "r");
  if (!file) return cannot_find(path);
  return {.cause = draw_signal(file.get(), settings, path.c_str()), .name = path};
}

Outcome plot_spectrum_file(const std::string& path, const PlotSettings& settings,
                           const std::string& samples) {
  const FilePtr file = open_regular_file(path, "r");
  if (!file) return cannot_find(path);
  return {.cause = draw_bins(file.get(), settings, samples.c_str()), .name = path};
}

int plot_anew(const char* path, int yoff, int start, int step, double xsc, double ysc, int target) {
  return result_of(plot_signal_file(path, settings_of(yoff, start, step, xsc, ysc, target)));
}

int plot_spectrum_anew(const char* path, int yoff, int start, int step, double xsc, double ysc,
                       int target, const char* samples) {
  const PlotSettings settings = settings_of(yoff, start, step, xsc, ysc, target);
  return result_of(plot_spectrum_file(path, settings, samples));
}

void say_cannot_find_files() {
  write_title("Cannot find files", error_colour);
}

}  // namespace torve
