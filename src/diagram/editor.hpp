// Editing the diagram with the mouse.
//
// What a press on the free canvas does depends on vobjmode: 0 nothing; kind + 10 a tool is armed
// and cvobj is its figure, not placed yet; the kind (1 .. 10) its second point is being stretched,
// minus the kind its first point moved; 21 cvobj is being moved; 22 presses pick figures; 27 a
// property menu is open. Releasing the button changes nothing: a later press goes on. Arcs have
// modes of their own from 40 on (arc_editing.hpp), typed texts 17 and 45 (text_editing.hpp).
//
// With Shift, lines, arrows and arcs are level, upright or at 45 degrees; with Control every point
// is one of a grid.
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

/// A key, Latin-1 or a control character; whether it means anything to the diagram. Control and D
/// doubles the figure in hand, Control and Z takes the last change back, Control and Y forth again;
/// others are typed into a text.
bool diagram_key(int key);

/// Whether a press would go on stretching or moving the current figure, or an arc with it.
[[nodiscard]] bool figure_is_in_hand();

/// Whether keys go to a text.
[[nodiscard]] bool is_typing();

/// Arms a tool; nothing happens when it is armed already. Return 0.
int node_ope();
int nodeb_ope();
int nodec_ope();
int queue_ope();
int tele_ope();
int vbox_ope();
int vline_ope();
int arrow_ope();
int arc_ope();
int text_ope();

/// The tool that was used is ready for another figure; its figure before is no longer current.
void arm_again(FigureKind kind);

/// The figure that an armed tool has made goes, as nothing is placed.
void leave_armed_figure();

/// Presses pick figures from now on; no press does anything. A figure that was not placed, or that
/// nobody can see, goes, and so does the menu of a picked figure. Return 0.
int pointer_ope();
int exit_ope();

}  // namespace torve
