// One signal out of a sound file of any kind: a channel, a part of its time, a sampling rate.
//
// Everything passes through buffers of a fixed size: a recording of hours takes no more memory than
// one of a second.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/files.hpp"
#include "base/outcome.hpp"
#include "sound/codec.hpp"

namespace torve {

/// As a channel: the mean of all.
inline constexpr int mixed_channels = 0;

/// What is taken of a sound file: the frames round(start x rate) to round(end x rate) - 1.
struct SoundPart {
  int channel = 1;                           // 1 and up, or mixed_channels
  double start = 0;                          // seconds
  std::optional<double> end = std::nullopt;  // seconds; without one, that of the file
};

class SoundReader {
 public:
  /// Opens the file `name`; outcome() says whether that went well.
  explicit SoundReader(const std::string& name);

  /// Why there is nothing (more) to read: no such file, not known as sound, damaged, no memory.
  [[nodiscard]] const Outcome& outcome() const { return outcome_; }

  /// What the file says of itself; only of one that could be opened.
  [[nodiscard]] const SoundFormat& format() const { return input_->format(); }

  /// Chooses what read() gives, at `rate` samples a second. Cause::out_of_range for a channel or
  /// times that the file does not have; nothing has been read then. Once for each reader.
  Outcome select(const SoundPart& part, int rate);

  /// Reads samples of the part, full scale 1. Returns how many: fewer than there is room for at its
  /// end only, or when outcome() has become a failure. A value that is no number is a failure.
  std::size_t read(std::span<float> samples);

 private:
  Outcome refuse(std::string reason);
  void fail(std::string reason);
  /// Puts more of the file into waiting_; false at the end of the part.
  bool read_more();
  [[nodiscard]] float channel_of(std::span<const float> frame) const;
  std::size_t give_as_it_is(std::span<float> samples);
  std::size_t give_resampled(std::span<float> samples);

  std::string name_;
  FilePtr file_;
  const SoundCodec* codec_ = nullptr;
  std::unique_ptr<SoundInput> input_;
  std::unique_ptr<Resampler> resampler_;  // where the rates differ
  Outcome outcome_;
  int channel_ = 1;
  std::int64_t position_ = 0;  // of the next frame
  std::int64_t end_ = 0;       // behind the last one that is taken
  std::int64_t left_ = 0;      // of what is given at another rate
  bool is_over_ = false;
  std::vector<float> frames_;     // as they come from the file
  std::vector<float> waiting_;    // of the chosen channel
  std::span<const float> ahead_;  // what of it has not been taken yet
};

}  // namespace torve
