// Texts that are typed on the canvas.
//
// A press says where a text shall stand, or which one shall be changed; then keys are typed, and
// Return or another press ends it. A text that is put on a figure goes along with it. On a queue or
// a telephone, whose menus have no line for it, it is the name.
#pragma once

#include "display/input.hpp"

namespace torve {

/// Modes of the editor (editor.hpp).
inline constexpr int mode_text_armed = 17;
inline constexpr int mode_typing = 45;  // keys go to cvobj

/// A press while the tool is armed or something is being typed.
void press_with_text(const PointerEvent& press);

/// A key while something is being typed, Latin-1; whether it means anything.
bool type_key(int key);

}  // namespace torve
