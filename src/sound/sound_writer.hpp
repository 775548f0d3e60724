// A sound file of one channel being written: nothing of it counts until finish() says that all of
// it arrived, as for every output (base/output_file.hpp).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/files.hpp"
#include "base/output_file.hpp"
#include "sound/codec.hpp"

namespace torve {

class SoundWriter {
 public:
  /// Prepares the file `name` of that kind, `rate` samples a second of 24 bits.
  SoundWriter(const std::string& name, SoundKind kind, int rate);

  /// Appends samples, full scale 1; beyond that they are clipped.
  void write(std::span<const float> samples);

  /// Whether it can be written so far.
  [[nodiscard]] Outcome outcome() const;

  /// Completes the file and puts it in its place. Ends the object's use.
  Outcome finish();

 private:
  void fail(int error);

  OutputFile file_;
  FilePtr made_;  // header and samples; the library goes back to the header in the end
  std::unique_ptr<SoundOutput> output_;
  Outcome outcome_;
  std::vector<std::int32_t> values_;
};

}  // namespace torve
