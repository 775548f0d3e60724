#include "sound/sound_writer.hpp"

#include <algorithm>
#include <cerrno>
#include <cmath>

#include "sound/load_codec.hpp"

namespace torve {

namespace {

/// The nearest of 24 bits, in the highest 24 of a word: 1 becomes the largest there is.
std::int32_t word_of(float sample) {
  constexpr double full_scale = 1 << 23;
  const double value = std::clamp(std::nearbyint(static_cast<double>(sample) * full_scale),
                                  -full_scale, full_scale - 1);
  return static_cast<std::int32_t>(value) * 256;
}

bool copy_all(std::FILE* from, OutputFile& to) {
  std::rewind(from);
  for (;;) {
    char* const room = to.reserve(OutputFile::buffer_size);
    const std::size_t got = std::fread(room, 1, OutputFile::buffer_size, from);
    to.advance(got);
    if (got == 0) return std::ferror(from) == 0;
  }
}

}  // namespace

SoundWriter::SoundWriter(const std::string& name, SoundKind kind, int rate)
    : file_(name), outcome_(file_.outcome()) {
  if (!outcome_.is_done()) return;
  std::string why;
  const SoundCodec* const codec = load_codec(why);
  if (codec == nullptr) {
    outcome_ = {.cause = Cause::no_codec, .reason = why};
    return;
  }
  made_.reset(std::tmpfile());
  if (!made_) {
    fail(errno);
    return;
  }
  output_ = codec->create(fileno(made_.get()), kind, rate, why);
  if (!output_) {
    fail(0);
    outcome_.reason = why;
  }
}

void SoundWriter::fail(int error) {
  outcome_ = {.cause = Cause::not_written, .name = file_.outcome().name, .error = error};
}

void SoundWriter::write(std::span<const float> samples) {
  if (!outcome_.is_done()) return;
  values_.resize(samples.size());
  std::ranges::transform(samples, values_.begin(), word_of);
  errno = 0;
  if (!output_->write(values_)) fail(errno);
}

Outcome SoundWriter::outcome() const {
  return outcome_;
}

Outcome SoundWriter::finish() {
  if (!outcome_.is_done()) return outcome_;
  errno = 0;
  if (!output_->finish() || !copy_all(made_.get(), file_)) {
    fail(errno);
    return outcome_;
  }
  static_cast<void>(file_.finish());
  return outcome_ = file_.outcome();
}

}  // namespace torve
