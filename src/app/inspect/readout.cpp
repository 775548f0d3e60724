#include "app/inspect/readout.hpp"

#include <charconv>
#include <cmath>

#include "app/plot/decibels.hpp"
#include "app/plot/dense_curve.hpp"
#include "app/signal/sampling_rate.hpp"

namespace torve {

namespace {

std::string fixed(double value, int decimals) {
  char text[400];
  const auto end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
  return {text, end.ptr};
}

// Without an exponent where files have none.
std::string shortest(float value) {
  constexpr float least_plain = 1e-7F, largest_plain = 1e15F;
  const float size = std::fabs(value);
  const bool plain = size == 0 || (size >= least_plain && size < largest_plain);
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value,
                                 plain ? std::chars_format::fixed : std::chars_format::general);
  return {text, end.ptr};
}

std::string six_digits(double value) {
  char text[64];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6);
  return {text, end.ptr};
}

// A sample is 0.0227 ms: three decimals of a millisecond tell any two apart, and so do six of a
// second.
std::string time_text(double seconds) {
  return std::fabs(seconds) < 1 ? fixed(seconds * 1000, 3) + " ms" : fixed(seconds, 6) + " s";
}

std::string decibel_text(double decibels) {
  return std::isfinite(decibels) ? fixed(decibels, 2) + " dB" : "no power";
}

std::string frequency_text(double hertz) {
  return fixed(hertz, 2) + " Hz";
}

void append(std::string& text, const std::string& word) {
  text += ' ';
  text += word;
}

void append_difference(std::string& text, const Reading& reading, const Reading& mark) {
  const double distance = reading.position - mark.position;
  const double value = static_cast<double>(reading.value);
  const double value_there = static_cast<double>(mark.value);
  text += " |";
  if (reading.kind == PaneKind::spectrum) {
    append(text, frequency_text(distance));
    const double ratio = decibels_below(value, value_there);
    if (std::isfinite(ratio)) append(text, decibel_text(ratio));
    return;
  }
  append(text, time_text(distance));
  if (distance != 0) append(text, frequency_text(1 / std::fabs(distance)));
  append(text, six_digits(value - value_there));
}

}  // namespace

Reading read_point(const PaneView& view, const ViewPoints& loaded, int pane, std::size_t index) {
  Reading reading = {.kind = view.kind,
                     .pane = pane,
                     .file = view.file,
                     .index = index,
                     .value = loaded.file->values[index]};
  const double unit = view.kind == PaneKind::spectrum
                          ? static_cast<double>(sampling_rate) / loaded.file->size
                          : 1.0 / sampling_rate;
  reading.position = static_cast<double>(index) * unit;
  if (view.kind != PaneKind::spectrum) return reading;
  const float largest = value_range(loaded.file->values).largest;
  reading.below = decibels_below(static_cast<double>(reading.value), static_cast<double>(largest));
  return reading;
}

std::string text_of(const Reading& reading, const std::optional<Reading>& mark) {
  const bool is_spectrum = reading.kind == PaneKind::spectrum;
  std::string text = std::to_string(reading.pane + 1);
  append(text, reading.file);
  append(text, is_spectrum ? "bin" : "sample");
  append(text, std::to_string(reading.index));
  text += ' ';
  append(text, is_spectrum ? frequency_text(reading.position) : time_text(reading.position));
  text += ' ';
  append(text, shortest(reading.value));
  if (is_spectrum) {
    text += ' ';
    append(text, decibel_text(reading.below));
  }
  if (mark && mark->kind == reading.kind) append_difference(text, reading, *mark);
  return text;
}

}  // namespace torve
