// Editing the diagram with the mouse.
//
// What a press on the free canvas does depends on vobjmode: 0 nothing; kind + 10 a tool is armed
// and cvobj is its figure, not placed yet; the kind (1 .. 10) its second point is being stretched,
// minus the kind its first point moved; 21 cvobj is being moved; 22 presses pick figures; 27 a
// property menu is open. Releasing the button changes nothing: a later press goes on.
#pragma once

#include <cstdint>

#include "diagram/model/vobj.hpp"
#include "display/input.hpp"

namespace torve {

inline constexpr int mode_idle = 0;
inline constexpr int mode_armed = 10;  // plus the kind
inline constexpr int mode_moving = 21;
inline constexpr int mode_pointer = 22;
inline constexpr int mode_properties = 27;

/// Last column of the diagram area, pixels.
inline constexpr int last_diagram_column = 679;

/// Lets plots go beneath the figures. To be called once.
void install_diagram();

/// Whether the rest of a press means anything.
enum class PressUse : std::uint8_t { goes_on, spent };

/// A press, or the motion of a held button, on the free canvas. A press that opens a menu is spent.
PressUse edit_diagram(const PointerEvent& press);

/// The same for the present press: button (0: nothing happens), pixels.
void vect_ed(int button, int x, int y);

/// Whether a press would go on stretching or moving the current figure.
[[nodiscard]] bool figure_is_in_hand();

/// Arms a tool; nothing happens when it is armed already. Return 0.
int node_ope();
int nodeb_ope();
int nodec_ope();
int queue_ope();
int tele_ope();
int vbox_ope();
int vline_ope();
int arrow_ope();

/// Presses pick figures from now on; no press does anything. A figure that was not placed, or that
/// nobody can see, goes, and so does the menu of a picked figure. Return 0.
int pointer_ope();
int exit_ope();

}  // namespace torve
