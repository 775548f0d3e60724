#include "app/signal/sound_import.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <new>

#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/say.hpp"
#include "base/files.hpp"
#include "base/number_text.hpp"
#include "base/output_file.hpp"
#include "base/progress.hpp"
#include "sound/sound_names.hpp"
#include "sound/sound_writer.hpp"

namespace torve {

namespace {

constexpr double extent_part = 0.5;  // of an export: to find the largest value

using Block = std::array<float, 1 << 13>;

std::string seconds_of(std::int64_t samples, int rate) {
  std::array<char, 64> text;
  std::snprintf(text.data(), text.size(), "%.3f s",
                static_cast<double>(samples) / static_cast<double>(rate));
  return text.data();
}

/// Samples, rate and length; a file that is no regular one may not know its length.
std::string length_of(std::int64_t samples, int rate) {
  return std::to_string(samples) + " samples, " + seconds_of(samples, rate);
}

/// Without the sign of what is written as zero: 24 bits do not keep it, so that a file that went
/// out and in again would differ.
double as_written(float value) {
  const auto exact = static_cast<double>(value);
  const bool is_near = std::signbit(value) && value > -1e-6F;
  return is_near && same_fixed6(exact, -0.0) ? 0 : exact;
}

/// About how many samples a part gives.
double samples_of(const SoundFormat& format, const SoundPart& part) {
  const double seconds = static_cast<double>(format.frames) / format.rate;
  return (std::min(part.end.value_or(seconds), seconds) - part.start) * sampling_rate;
}

Outcome import_part(const std::string& sound_name, const std::string& res_name,
                    const SoundPart& part, Imported* imported, OldContent old_content) {
  SoundReader sound(sound_name);
  if (!sound.outcome().is_done()) return sound.outcome();
  Outcome selected = sound.select(part, sampling_rate);
  if (!selected.is_done()) return selected;
  if (same_file(sound_name, res_name)) return {.cause = Cause::not_created, .name = res_name};
  OutputFile res(res_name);
  if (!res) return res.outcome();
  static Block block;
  std::int64_t index = 0;
  const double wanted = samples_of(sound.format(), part);
  for (std::size_t got; (got = sound.read(block)) > 0;) {
    tell_done(static_cast<double>(index) / wanted);
    for (const float value : std::span(block).first(got))
      write_sample(res, index++, as_written(value));
    if (!res.outcome().is_done()) break;
  }
  if (!sound.outcome().is_done()) return sound.outcome();
  *imported = {.format = sound.format(), .channel = part.channel, .samples = index};
  if (old_content == OldContent::kept) res.keep_old_content();
  static_cast<void>(res.finish());
  return res.outcome();
}

/// The largest absolute value, and how many there are.
struct Extent {
  std::int64_t samples = 0;
  double largest = 0;
  bool is_finite = true;
};

Extent extent_of(std::FILE* res) {
  SampleReader reader(res, analysis_line_size);
  Extent extent;
  static Block block;
  const PartOfWork reading(0, extent_part);
  for (std::size_t got; (got = reader.read(block)) > 0;) {
    tell_read(res);
    for (const float value : std::span(block).first(got)) {
      extent.is_finite = extent.is_finite && std::isfinite(value);
      extent.largest = std::max(extent.largest, std::fabs(static_cast<double>(value)));
    }
    extent.samples += static_cast<std::int64_t>(got);
  }
  return extent;
}

void write_scaled(std::FILE* res, double factor, SoundWriter& sound) {
  std::rewind(res);
  SampleReader reader(res, analysis_line_size);
  static Block block;
  const PartOfWork writing(extent_part, 1);
  for (std::size_t got; sound.outcome().is_done() && (got = reader.read(block)) > 0;) {
    tell_read(res);
    const auto values = std::span(block).first(got);
    if (factor != 1) {
      for (float& value : values)
        value = static_cast<float>(static_cast<double>(value) * factor);
    }
    sound.write(values);
  }
}

Outcome export_all(const std::string& res_name, const std::string& sound_name, Exported* exported) {
  const auto kind = sound_kind(sound_name);
  if (!kind) return {.cause = Cause::unknown_ending, .name = sound_name};
  const FilePtr res = open_regular_file(res_name, "rb");
  if (!res) return input_failure(res_name);
  if (same_file(res_name, sound_name)) return {.cause = Cause::not_created, .name = sound_name};
  const Extent extent = extent_of(res.get());
  if (extent.samples == 0) return {.cause = Cause::too_few_samples, .name = res_name};
  if (!extent.is_finite) {
    return {.cause = Cause::unreadable, .name = res_name, .reason = "a value is no number"};
  }
  *exported = {.samples = extent.samples, .factor = extent.largest > 1 ? 1 / extent.largest : 1};
  SoundWriter sound(sound_name, *kind, sampling_rate);
  write_scaled(res.get(), exported->factor, sound);
  return sound.finish();
}

}  // namespace

Outcome import_sound(const std::string& sound_name, const std::string& res_name,
                     const SoundPart& part, Imported* imported, OldContent old_content) try {
  return watched(res_name,
                 [&] { return import_part(sound_name, res_name, part, imported, old_content); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

std::string format_line(const SoundFormat& format) {
  return std::to_string(format.rate) + " Hz, " + std::to_string(format.channels) +
         (format.channels == 1 ? " channel, " : " channels, ") +
         length_of(format.frames, format.rate);
}

std::string import_line(const Imported& imported) {
  const std::string channel = imported.channel == mixed_channels
                                  ? "all channels mixed"
                                  : "channel " + std::to_string(imported.channel);
  std::string line = channel + " at " + std::to_string(sampling_rate) + " Hz, " +
                     length_of(imported.samples, sampling_rate);
  if (imported.samples > most_samples) {
    line += "; panes and analyses take " + std::to_string(most_samples) + " samples at a time";
  }
  return line;
}

Outcome export_sound(const std::string& res_name, const std::string& sound_name,
                     Exported* exported) try {
  return watched(sound_name, [&] { return export_all(res_name, sound_name, exported); });
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

std::string export_line(const Exported& exported) {
  std::string line = length_of(exported.samples, sampling_rate);
  if (exported.factor == 1) return line;
  std::array<char, 128> text;
  std::snprintf(text.data(), text.size(), "; all values times %.6g, the largest was %.6g",
                exported.factor, 1 / exported.factor);
  return line + text.data();
}

Outcome list_sound(const std::string& name, SoundFormat* format) try {
  const SoundReader sound(name);
  if (!sound.outcome().is_done()) return sound.outcome();
  *format = sound.format();
  for (const auto& [what, value] : format->notes)
    say("%s=%s\n", what.c_str(), value.c_str());
  say("sampling rate=%d\nchannels=%d\nsamples a channel=%lld\nseconds=%f\n", format->rate,
      format->channels, static_cast<long long>(format->frames),
      static_cast<double>(format->frames) / static_cast<double>(format->rate));
  return {};
} catch (const std::bad_alloc&) {
  return {.cause = Cause::no_memory};
}

}  // namespace torve
