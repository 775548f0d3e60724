// Interrupt, hang-up and termination: the first signal asks the program to leave in good order the
// next time it waits, a second one of the same kind ends it at once.
#pragma once

namespace torve {

/// Catches them from now on; those that the program was started to ignore stay ignored.
void watch_ending_signals();

/// Waits until `descriptor` can be read. False when an ending signal has come instead; it is
/// forgotten then.
[[nodiscard]] bool wait_unless_asked_to_end(int descriptor);

}  // namespace torve
