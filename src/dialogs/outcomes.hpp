// What became of something, shown to the user.
#pragma once

#include <initializer_list>

#include "base/outcome.hpp"

namespace torve {

/// Shows what is not done in the message window, with the end of the file's name, and in the strip,
/// whole. The strip also says where old content was kept. Nothing for what is done otherwise.
void show_outcome(const Outcome& outcome);

/// Of several, the first that is not done.
void show_first_failure(std::initializer_list<Outcome> outcomes);

/// The same in the strip alone.
void say_outcome(const Outcome& outcome);

}  // namespace torve
