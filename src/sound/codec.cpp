// The module: libsndfile behind codec.hpp.

#include "sound/codec.hpp"

#include <array>
#include <sndfile.h>

#include "sound/resampler.hpp"

namespace torve {

namespace {

struct SoundCloser {
  void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundPtr = std::unique_ptr<SNDFILE, SoundCloser>;

constexpr int not_closed_by_library = 0;

/// The library ends its sentences; here they become part of one.
std::string without_point(std::string text) {
  while (!text.empty() && (text.back() == '.' || text.back() == ' ' || text.back() == '\n'))
    text.pop_back();
  return text;
}

std::string format_name(int format) {
  SF_FORMAT_INFO info = {};
  info.format = format;
  if (sf_command(nullptr, SFC_GET_FORMAT_INFO, &info, sizeof info) != 0) return "unknown";
  return info.name;
}

struct Note {
  int number;
  const char* name;
};
constexpr std::array notes = {
    Note{SF_STR_TITLE, "title"},       Note{SF_STR_COPYRIGHT, "copyright"},
    Note{SF_STR_SOFTWARE, "software"}, Note{SF_STR_ARTIST, "artist"},
    Note{SF_STR_COMMENT, "comment"},   Note{SF_STR_DATE, "date"},
    Note{SF_STR_ALBUM, "album"},       Note{SF_STR_LICENSE, "license"},
    Note{SF_STR_TRACKNUMBER, "track"}, Note{SF_STR_GENRE, "genre"},
};

class SndInput : public SoundInput {
 public:
  SndInput(SoundPtr file, const SF_INFO& info) : file_(std::move(file)) {
    format_.frames = info.frames;
    format_.channels = info.channels;
    format_.rate = info.samplerate;
    format_.notes = {{"format", format_name(info.format & SF_FORMAT_TYPEMASK)},
                     {"encoding", format_name(info.format & SF_FORMAT_SUBMASK)}};
    for (const auto& [number, name] : notes) {
      if (const char* const text = sf_get_string(file_.get(), number)) {
        format_.notes.emplace_back(name, text);
      }
    }
  }

  const SoundFormat& format() const override { return format_; }
  bool go_to(std::int64_t frame) override {
    return frame == 0 || sf_seek(file_.get(), frame, SEEK_SET) == frame;
  }
  std::int64_t read(std::span<float> samples) override {
    const auto channels = static_cast<std::size_t>(format_.channels);
    return sf_readf_float(file_.get(), samples.data(),
                          static_cast<sf_count_t>(samples.size() / channels));
  }
  std::string complaint() const override {
    return sf_error(file_.get()) == SF_ERR_NO_ERROR ? std::string()
                                                    : without_point(sf_strerror(file_.get()));
  }

 private:
  SoundPtr file_;
  SoundFormat format_;
};

class SndOutput : public SoundOutput {
 public:
  explicit SndOutput(SoundPtr file) : file_(std::move(file)) {}

  bool write(std::span<const std::int32_t> samples) override {
    const auto count = static_cast<sf_count_t>(samples.size());
    return sf_writef_int(file_.get(), samples.data(), count) == count;
  }
  bool finish() override { return sf_close(file_.release()) == 0; }

 private:
  SoundPtr file_;
};

std::unique_ptr<SoundInput> open_input(int descriptor, std::string& why) {
  SF_INFO info = {};
  SoundPtr file(sf_open_fd(descriptor, SFM_READ, &info, not_closed_by_library));
  if (file && info.channels > 0 && info.samplerate > 0 && info.frames >= 0) {
    return std::make_unique<SndInput>(std::move(file), info);
  }
  why = file ? "it has no channels or no sampling rate" : without_point(sf_strerror(nullptr));
  return nullptr;
}

int format_of(SoundKind kind) {
  switch (kind) {
    case SoundKind::wav:
      return SF_FORMAT_WAV;
    case SoundKind::flac:
      return SF_FORMAT_FLAC;
    case SoundKind::aiff:
      return SF_FORMAT_AIFF;
  }
  return 0;
}

std::unique_ptr<SoundOutput> create_output(int descriptor, SoundKind kind, int rate,
                                           std::string& why) {
  SF_INFO info = {};
  info.samplerate = rate;
  info.channels = 1;
  info.format = format_of(kind) | SF_FORMAT_PCM_24;
  SoundPtr file(sf_open_fd(descriptor, SFM_WRITE, &info, not_closed_by_library));
  if (file) return std::make_unique<SndOutput>(std::move(file));
  why = without_point(sf_strerror(nullptr));
  return nullptr;
}

constexpr SoundCodec codec = {
    .open = open_input, .create = create_output, .resampler = make_resampler};

}  // namespace

}  // namespace torve

extern "C" [[gnu::visibility("default")]] const torve::SoundCodec* torve_sound_codec() {
  return &torve::codec;
}
