// What the sound module does for the program: files of sound in and out, other sampling rates.
//
// The module is a shared object of its own, the only part that is linked with libsndfile and
// libsamplerate. It is loaded when the first sound is asked for (load_codec.hpp): the libraries
// bring seven others along, and a start that needs none of them does not wait for them. Nothing
// of the program is linked into the module, so what both know is here, and is plain.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace torve {

/// Changes with whatever else changes here: a module of another installation is not used.
inline constexpr int codec_version = 1;

/// The kinds of files that are written, all of them with 24-bit samples.
enum class SoundKind { wav, flac, aiff };

/// What a sound file says of itself.
struct SoundFormat {
  std::int64_t frames = 0;  // samples a channel
  int channels = 0;
  int rate = 0;  // frames a second
  /// "format", "encoding", and what its maker wrote into it ("title", "date" ...): name and value.
  std::vector<std::pair<std::string, std::string>> notes = {};
};

/// A sound file that is being read, from its first frame on.
class SoundInput {
 public:
  SoundInput() = default;
  virtual ~SoundInput() = default;
  SoundInput(const SoundInput&) = delete;
  SoundInput& operator=(const SoundInput&) = delete;

  [[nodiscard]] virtual const SoundFormat& format() const = 0;
  /// The next frame to be read is `frame`; false if that cannot be.
  [[nodiscard]] virtual bool go_to(std::int64_t frame) = 0;
  /// Reads frames, channel by channel side by side, into `samples`, whose size is a multiple of the
  /// channels. Full scale is 1. Returns how many frames; fewer than asked for at the end, or where
  /// the file is damaged.
  [[nodiscard]] virtual std::int64_t read(std::span<float> samples) = 0;
  /// What is wrong with the file, in the library's words; empty for nothing.
  [[nodiscard]] virtual std::string complaint() const = 0;
};

/// A sound file of one channel that is being written.
class SoundOutput {
 public:
  SoundOutput() = default;
  virtual ~SoundOutput() = default;
  SoundOutput(const SoundOutput&) = delete;
  SoundOutput& operator=(const SoundOutput&) = delete;

  /// Appends samples, the highest 24 bits of each.
  [[nodiscard]] virtual bool write(std::span<const std::int32_t> samples) = 0;
  /// Completes the file; false if not all of it could be written.
  [[nodiscard]] virtual bool finish() = 0;
};

/// One channel on its way to another sampling rate.
class Resampler {
 public:
  struct Step {
    std::size_t taken = 0;  // of the input
    std::size_t given = 0;  // to the output
    bool is_fine = true;
  };

  Resampler() = default;
  virtual ~Resampler() = default;
  Resampler(const Resampler&) = delete;
  Resampler& operator=(const Resampler&) = delete;

  /// Takes what it can of `in` and gives what it can. The last samples come out when as many zeros
  /// have followed as the filter is long.
  [[nodiscard]] virtual Step step(std::span<const float> in, std::span<float> out) = 0;
};

/// The module's functions. Files are open descriptors at their beginning that can seek; they stay
/// the caller's. Whatever returns nothing says why in `why`.
struct SoundCodec {
  int version = codec_version;
  std::unique_ptr<SoundInput> (*open)(int descriptor, std::string& why) = nullptr;
  std::unique_ptr<SoundOutput> (*create)(int descriptor, SoundKind kind, int rate,
                                         std::string& why) = nullptr;
  /// `ratio`: the new rate divided by the old one, 1/256 to 256.
  std::unique_ptr<Resampler> (*resampler)(double ratio, std::string& why) = nullptr;
};

/// The one name that the module gives: it returns the functions.
inline constexpr const char* codec_entry = "torve_sound_codec";

}  // namespace torve
