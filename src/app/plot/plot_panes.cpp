#include "app/plot/plot_panes.hpp"

#include <cmath>
#include <cstring>
#include <new>
#include <optional>
#include <span>
#include <vector>

#include "app/plot/curve.hpp"
#include "app/plot/plot_frame.hpp"
#include "app/plot/running_sums.hpp"
#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "base/errors.hpp"
#include "base/files.hpp"
#include "base/saturate.hpp"
#include "display/screen_state.hpp"
#include "draw/lines.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

char plot1name[pane_name_size];
char plot2name[pane_name_size];
char plot3name[pane_name_size];

namespace {

constexpr int pane_right = 795;   // last column that a pane draws on
constexpr int pane_top = 12;      // from a pane's first row to its drawing area
constexpr int pane_bottom = 170;  // to the area's last row
constexpr int title_column = 12;  // cells
constexpr int title_row = 3;      // pixels below the top
constexpr int y_label_row = 20;
constexpr int unit_row = 13;  // pixels above the bottom
constexpr int label_colour = 0;
constexpr int error_colour = 3;
constexpr int label_background = 15;
constexpr std::size_t title_size = 180;

char* const pane_names[pane_count] = {plot1name, plot2name, plot3name};

// What is written along the x axis.
struct TimeAxis {
  const char* unit = "";
  double origin = 0;
  double tick = 0;  // per PlotFrame::tick_distance pixels
  bool close_ticks = false;
};

constexpr double tick_pixels = 50;

TimeAxis curve_axis(const PlotSettings& settings) {
  constexpr int first_step_in_seconds = 442;
  if (settings.step <= 0) return {};
  const bool in_ms = settings.step < first_step_in_seconds;
  const double units_a_second = in_ms ? 1000 : 1;
  const double start = settings.start < 0 ? 0 : settings.start;
  return {in_ms ? "ms" : "sec", start * units_a_second / sampling_rate,
          settings.step * (tick_pixels / settings.xsc) * units_a_second / sampling_rate};
}

TimeAxis spectrum_axis(const PlotSettings& settings, int size) {
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

void set_pane_area(int yoff) {
  set_drawing_area({0, yoff + pane_top, pane_right, yoff + pane_bottom});
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

void write_label(int x, int y, const char* text, int target) {
  xkoord = x;
  ykoord = y;
  textn1(label_font, target, text, label_colour, label_background);
}

void write_labels(const char* unit, const char* y_label, const char* title, int target) {
  char copy[title_size];
  std::snprintf(copy, sizeof copy, "%s", title);
  const int unit_width = static_cast<int>(std::strlen(unit)) * cs;
  write_label(X1_max / 8 * 8 - unit_width, Y1_max - unit_row, unit, target);
  write_label(X1_min + cs, Y1_min + y_label_row, y_label, target);
  write_label(X1_min + title_column * cs, Y1_min + title_row, copy, target);
}

void draw_plot(const std::vector<float>& points, const Extremes& extremes,
               const PlotSettings& settings, const TimeAxis& axis, bool spectrum,
               const char* title) {
  const double largest = static_cast<double>(extremes.largest);
  PlotFrame frame = {.x1 = X1_min, .y1 = Y1_min, .x2 = X1_max, .y2 = Y1_max};
  const double scale = largest == 0 ? 0 : frame.half_height * settings.ysc / largest;
  frame.colour = settings.colour;
  frame.number_background = settings.frame_colour;
  frame.tick_value = axis.tick;
  frame.top_value = largest / settings.ysc;
  frame.grid = settings.grid;
  frame.origin_value = axis.origin;
  frame.bottom_value = -largest / settings.ysc;
  frame.spectrum = spectrum;
  frame.close_ticks = axis.close_ticks;
  frame.target = settings.target;
  draw_frame2(frame);
  write_labels(axis.unit, spectrum ? "" : "num", title, settings.target);
  draw_curve(points,
             {.left = X1_min + axis_column,
              .right = X1_max,
              .top = Y1_min,
              .bottom = Y1_max - frame.bottom_margin,
              .shift = settings.start < 0 ? -static_cast<double>(settings.start) * settings.xsc : 0,
              .spacing = settings.xsc,
              .zero = Y1_max - frame.bottom_margin - (spectrum ? 0 : frame.half_height),
              .scale = scale,
              .magnification = spectrum ? spectrum_magnification : 1,
              .colour = settings.colour,
              .target = settings.target});
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
  draw_plot(points, extremes, settings, curve_axis(settings), false, title);
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
  draw_plot(points, extremes, settings, spectrum_axis(settings, size), true, "Power spectrum");
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
  xkoord = X1_min + title_column * cs;
  ykoord = Y1_min + title_row;
  textn1(label_font, target_screen, "Cannot find files", error_colour, label_background);
}

}  // namespace torve
