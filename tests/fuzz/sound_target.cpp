// Any bytes as a sound file.

#include <algorithm>
#include <cmath>
#include <fstream>

#include "app/signal/sample_file.hpp"
#include "app/signal/sampling_rate.hpp"
#include "app/signal/sound_import.hpp"
#include "memory_file.hpp"
#include "sound/load_codec.hpp"

extern "C" const torve::SoundCodec* torve_sound_codec();

namespace torve {

namespace {

/// A few bytes may stand for hours of silence.
constexpr std::int64_t many_frames = 1'000'000;

bool is_long(const std::string& name) {
  const SoundReader sound(name);
  return sound.outcome().is_done() && sound.format().frames > many_frames;
}

/// A file with a name of its own, which a result can take the place of; it holds one sample.
class OldResult {
 public:
  OldResult() : name_("/tmp/torve-fuzz-" + std::to_string(getpid()) + ".res") {
    std::ofstream(name_) << "0 5\n";
  }
  ~OldResult() { std::remove(name_.c_str()); }
  OldResult(const OldResult&) = delete;
  OldResult& operator=(const OldResult&) = delete;
  [[nodiscard]] const std::string& name() const { return name_; }

 private:
  std::string name_;
};

}  // namespace

// The first two bytes choose the channel and the times. What is written is finite and as long as it
// is said to be; what is refused leaves the output as it was.
void sound(Bytes input) {
  if (input.size() < 2) return;
  install_codec(torve_sound_codec());
  silence();
  const MemoryFile file(input.subspan(2));
  const OldResult res;
  SoundPart part = {.channel = input[0] % 4, .start = input[1] % 8 * 0.001};
  if (input[1] >= 128 || is_long(file.name())) part.end = 0.01;
  Imported imported;
  const Outcome outcome = import_sound(file.name(), res.name(), part, &imported);
  require(outcome.is_done() || !sentence(outcome).empty());
  const auto values = read_long_sample_file(res.name());
  require(values.has_value());
  if (!outcome.is_done()) return require(*values == std::vector<float>{5});
  require(static_cast<std::int64_t>(values->size()) == imported.samples);
  require(std::ranges::all_of(*values, [](float value) { return std::isfinite(value); }));
  if (part.end) require(imported.samples <= sampling_rate / 100 + 1);
  SoundFormat format;
  require(list_sound(file.name(), &format).is_done());
  require(part.channel <= format.channels);
}

}  // namespace torve
