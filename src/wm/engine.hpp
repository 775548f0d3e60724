// The engine that hands mouse presses to window objects.
//
// One press, from the button going down to its release, has one owner. A press that hits no
// window object is offered to the icons and the canvas once, when it begins; the motion of a held
// button never starts anything.
#pragma once

namespace torve {

/// What one round of the engine asks the main loop to do.
inline constexpr int engine_idle = 0;
inline constexpr int engine_run_action = 1;     // the served object's action callback is to run
inline constexpr int engine_canvas_press = -1;  // a press began that is for no window object

/// Prepares for the first round; the window objects up to id `last` are put on the canvas.
/// Returns 0, or 1 when one of them cannot be put.
[[nodiscard]] int init_engine(int last);

/// One round: waits for an event and handles it.
[[nodiscard]] int do_operations();

/// The press that is going on has done its work: nothing happens until its release.
void spend_press();

}  // namespace torve
