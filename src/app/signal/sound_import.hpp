// Sound files of any kind into sample files and back; what they say of themselves.
//
// In the other direction than AU files (au_file.hpp), which keep to one layout, these go through
// the sound libraries (sound/), so that channels, rates and encodings come out as they were meant.
#pragma once

#include <cstdint>
#include <string>

#include "base/outcome.hpp"
#include "sound/sound_reader.hpp"

namespace torve {

/// What an import has taken and given.
struct Imported {
  SoundFormat format;        // of the sound file
  int channel = 1;           // or mixed_channels
  std::int64_t samples = 0;  // written, at the sampling rate of all signals
};

/// Whether the content that an output replaces is kept beside it (NAME.bak).
enum class OldContent { replaced, kept };

/// Writes a part of a sound file as a sample file at 44,100 samples a second. `imported` says what
/// it was once that is done. A channel or time that the sound does not have is Cause::out_of_range.
/// If both names mean one file, nothing is touched: the output counts as one that cannot be
/// created. Whatever fails leaves the output as it was.
Outcome import_sound(const std::string& sound_name, const std::string& res_name,
                     const SoundPart& part, Imported* imported,
                     OldContent old_content = OldContent::replaced);

/// "48000 Hz, 2 channels, 97680 samples, 2.035 s" of a sound file.
[[nodiscard]] std::string format_line(const SoundFormat& format);
/// "channel 1 at 44100 Hz, 89744 samples, 2.035 s", and how many of them are taken at a time if
/// that is fewer.
[[nodiscard]] std::string import_line(const Imported& imported);

/// What an export has done.
struct Exported {
  std::int64_t samples = 0;
  double factor = 1;  // that all values were multiplied by; 1 unless the largest was beyond 1
};

/// "89744 samples, 2.035 s", and what they were multiplied by, if they were.
[[nodiscard]] std::string export_line(const Exported& exported);

/// Writes a sample file of any length as a sound file of one channel, 44,100 samples a second, 24
/// bits, of the kind that its name's ending says (sound_names.hpp). Where a value is larger than 1,
/// all are divided by the largest. Cause::unknown_ending for other endings. If both names mean one
/// file, nothing is touched, as for an import. A value that is no number is refused. Whatever fails
/// leaves the output as it was.
Outcome export_sound(const std::string& res_name, const std::string& sound_name,
                     Exported* exported);

/// Lists on standard output what a sound file says of itself, a line "name=value" a fact; `format`
/// is the same.
Outcome list_sound(const std::string& name, SoundFormat* format);

}  // namespace torve
