// Interrupt, hang-up and termination: the first signal asks the program to leave in good order the
// next time it waits, a second one of the same kind ends it at once.
#pragma once

namespace torve {

/// Catches them from now on; those that the program was started to ignore stay ignored.
void watch_ending_signals();

enum class Waited {
  readable,      // the first descriptor; perhaps the other one, too
  other,         // only the other one
  asked_to_end,  // an ending signal has come; it is forgotten now
};

/// Waits until `descriptor` can be read, or `other` unless that is negative.
[[nodiscard]] Waited wait_unless_asked_to_end(int descriptor, int other = -1);

}  // namespace torve
