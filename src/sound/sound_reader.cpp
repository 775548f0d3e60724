#include "sound/sound_reader.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "sound/load_codec.hpp"

namespace torve {

namespace {

constexpr std::size_t values_at_a_time = 1 << 16;
/// Samples are counted in an int elsewhere: 13 hours at 44,100 a second.
constexpr double most_samples_given = std::numeric_limits<std::int32_t>::max();

/// Nothing for what no file can have.
std::optional<std::int64_t> frame_at(double seconds, const SoundFormat& format) {
  const double frame = std::round(seconds * format.rate);
  if (!(frame >= 0) || frame > static_cast<double>(format.frames)) return std::nullopt;
  return static_cast<std::int64_t>(frame);
}

std::string counted(int count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

}  // namespace

SoundReader::SoundReader(const std::string& name)
    : name_(name), file_(open_regular_file(name, "rb")) {
  if (!file_) {
    outcome_ = input_failure(name);
    return;
  }
  std::string why;
  codec_ = load_codec(why);
  if (codec_ == nullptr) {
    outcome_ = {.cause = Cause::no_codec, .reason = why};
    return;
  }
  input_ = codec_->open(fileno(file_.get()), why);
  if (!input_) outcome_ = {.cause = Cause::not_sound, .name = name, .reason = why};
}

Outcome SoundReader::refuse(std::string reason) {
  return {.cause = Cause::out_of_range, .name = name_, .reason = std::move(reason)};
}

void SoundReader::fail(std::string reason) {
  outcome_ = {.cause = Cause::not_sound, .name = name_, .reason = std::move(reason)};
}

Outcome SoundReader::select(const SoundPart& part, int rate) {
  const SoundFormat& format = input_->format();
  if (part.channel < 0 || part.channel > format.channels) {
    return refuse("it has " + counted(format.channels, "channel"));
  }
  const auto first = frame_at(part.start, format);
  const auto end = part.end ? frame_at(*part.end, format) : format.frames;
  if (format.frames == 0) {
    fail("it has no samples");
    return outcome_;
  }
  if (!first || !end || *first >= *end) {
    return refuse("it has " + std::to_string(format.frames) + " samples a channel, " +
                  std::to_string(static_cast<double>(format.frames) / format.rate) + " seconds");
  }
  const double ratio = static_cast<double>(rate) / format.rate;
  if (static_cast<double>(*end - *first) * ratio > most_samples_given) {
    fail("it is too long");
    return outcome_;
  }
  if (!input_->go_to(*first)) fail("it cannot be read from there");
  if (format.rate != rate) {
    std::string why;
    resampler_ = codec_->resampler(ratio, why);
    if (!resampler_) fail(why);
    left_ = std::llround(static_cast<double>(*end - *first) * ratio);
  }
  channel_ = part.channel;
  position_ = *first;
  end_ = *end;
  const auto channels = static_cast<std::size_t>(format.channels);
  frames_.resize(std::max<std::size_t>(values_at_a_time / channels, 1) * channels);
  waiting_.reserve(frames_.size() / channels);
  return outcome_;
}

float SoundReader::channel_of(std::span<const float> frame) const {
  if (channel_ != mixed_channels) return frame[static_cast<std::size_t>(channel_) - 1];
  double sum = 0;
  for (const float value : frame)
    sum += static_cast<double>(value);
  return static_cast<float>(sum / static_cast<double>(frame.size()));
}

bool SoundReader::read_more() {
  const auto channels = static_cast<std::size_t>(input_->format().channels);
  const auto wanted = static_cast<std::size_t>(std::min<std::int64_t>(
      static_cast<std::int64_t>(frames_.size() / channels), end_ - position_));
  const std::int64_t got =
      wanted == 0 ? 0 : input_->read(std::span(frames_).first(wanted * channels));
  waiting_.clear();
  for (std::size_t i = 0; i < static_cast<std::size_t>(std::max<std::int64_t>(got, 0)); ++i) {
    const float value = channel_of(std::span(frames_).subspan(i * channels, channels));
    if (!std::isfinite(value)) {
      fail("sample " + std::to_string(position_ + static_cast<std::int64_t>(i)) + " is no number");
      return false;
    }
    waiting_.push_back(value);
  }
  ahead_ = waiting_;
  position_ += static_cast<std::int64_t>(waiting_.size());
  is_over_ = waiting_.size() < wanted || position_ == end_;
  if (waiting_.size() == wanted) return wanted != 0;
  // A header that promises more than there is, as a recorder's that lost its power.
  const std::string complaint = input_->complaint();
  fail(complaint.empty() ? "it ends after " + std::to_string(position_) + " samples" : complaint);
  return false;
}

std::size_t SoundReader::give_as_it_is(std::span<float> samples) {
  std::size_t given = 0;
  while (given < samples.size() && (!ahead_.empty() || (!is_over_ && read_more()))) {
    const std::size_t part = std::min(ahead_.size(), samples.size() - given);
    std::copy_n(ahead_.begin(), part, samples.begin() + static_cast<std::ptrdiff_t>(given));
    ahead_ = ahead_.subspan(part);
    given += part;
  }
  return given;
}

std::size_t SoundReader::give_resampled(std::span<float> samples) {
  static constexpr std::array<float, 1 << 10> silence = {};
  const auto wanted = static_cast<std::size_t>(
      std::min<std::int64_t>(static_cast<std::int64_t>(samples.size()), left_));
  std::size_t given = 0;
  while (given < wanted) {
    if (ahead_.empty() && is_over_) ahead_ = silence;
    if (ahead_.empty() && !read_more()) break;
    const Resampler::Step step = resampler_->step(ahead_, samples.subspan(given, wanted - given));
    // Between samples near the largest float lie values beyond it.
    const auto made = samples.subspan(given, step.given);
    const auto is_finite = [](float value) { return std::isfinite(value); };
    if (!step.is_fine || !std::ranges::all_of(made, is_finite)) {
      fail("its sampling rate cannot be changed");
      break;
    }
    ahead_ = ahead_.subspan(step.taken);
    given += step.given;
  }
  left_ -= static_cast<std::int64_t>(given);
  return given;
}

std::size_t SoundReader::read(std::span<float> samples) {
  if (!outcome_.is_done()) return 0;
  const std::size_t given = resampler_ ? give_resampled(samples) : give_as_it_is(samples);
  return outcome_.is_done() ? given : 0;
}

}  // namespace torve
