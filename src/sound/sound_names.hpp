// Which names are those of sound files: what the ending says, in capitals or not.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sound/codec.hpp"

namespace torve {

/// Whether the name ends as that of a sound file that can be read but has no other meaning here
/// (.au files do): .wav, .flac, .aif, .aiff, .ogg, .caf or .snd.
[[nodiscard]] bool names_sound(std::string_view name);

/// The kind of sound file that is written under this name; nothing if its ending is none of .wav,
/// .flac, .aif and .aiff.
[[nodiscard]] std::optional<SoundKind> sound_kind(std::string_view name);

}  // namespace torve
