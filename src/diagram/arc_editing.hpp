// Drawing and changing arcs with the mouse.
//
// The first press is where an arc begins, each further one on the free canvas a bend, one on a
// figure its end; so is a second press on the same place. A drag takes the point along that the
// press has made, so that one drag from figure to figure is an arc. The next press begins the next
// arc.
#pragma once

#include <cstddef>

#include "display/input.hpp"

namespace torve {

/// Modes of the editor (editor.hpp); what is not armed has cvobj in hand.
inline constexpr int mode_arc_armed = 40;
inline constexpr int mode_arc_going_on = 41;  // points are added to it
inline constexpr int mode_arc_end = 42;       // its second point is moved
inline constexpr int mode_arc_head = 43;      // its first one
inline constexpr int mode_arc_bend = 44;      // one of its bends

/// Whether the mode is one of these.
[[nodiscard]] bool is_arc_mode(int mode);

/// A press or motion in one of these modes.
void edit_arc(const PointerEvent& press);

/// The bend that mode_arc_bend moves, from 0.
void grab_bend(std::size_t bend);

}  // namespace torve
