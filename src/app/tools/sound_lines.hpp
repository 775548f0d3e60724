// What lines of the read and write tools do with the names of sound files.
//
// A line looks at the ending and calls these instead of what it stands for otherwise; the
// procedures of other files do what they do whatever a name ends in.
#pragma once

#include <string>

#include "base/outcome.hpp"

namespace torve {

/// The sample file that stands for a sound file: its name with .res in place of the ending.
[[nodiscard]] std::string signal_name_of(const std::string& sound_name);

/// Makes that file out of the first channel, unless there is one that is not older than the sound;
/// an older one is kept. `line` becomes what there is to say of it.
Outcome make_signal_of(const std::string& sound_name, std::string* line);

/// Writes the sample file as a sound file, as its name says.
Outcome make_sound_of(const std::string& res_name, const std::string& sound_name,
                      std::string* line);

/// Lists what a sound file says of itself, after it turned out to be no AU file.
Outcome list_sound_facts(const std::string& sound_name, std::string* line);

}  // namespace torve
