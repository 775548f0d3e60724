// The sound module, loaded when it is first asked for.
#pragma once

#include <string>

#include "sound/codec.hpp"

namespace torve {

/// The module's functions; null if it cannot be loaded, and then `why` says why. It is taken from
/// the program's own installation alone, by its absolute path, and stays loaded.
[[nodiscard]] const SoundCodec* load_codec(std::string& why);

/// Puts other functions in the module's place, for programs that are linked with them.
void install_codec(const SoundCodec* codec);

}  // namespace torve
