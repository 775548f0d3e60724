// Window objects shrunk to an icon: a framed box with the object's first words.
#pragma once

#include "wm/command.hpp"

namespace torve {

/// Shrinks a lifted object to its icon at the same place; false when there is no memory for the
/// icon's background: the object is as it was then.
[[nodiscard]] bool make_icon(int id);

/// Gives a lifted icon its object's size back; false when there is no memory for the background: it
/// is an icon as before then.
[[nodiscard]] bool restore_icon(int id);

/// Paints the icon: put and refresh of an object that is one. False without memory.
[[nodiscard]] bool paint_icon(int id);

/// Serves a press on an icon: a left press gives the object its size back, a right press moves the
/// icon.
[[nodiscard]] Served serve_icon(int id, const PointerEvent& press);

// Not used by the workbench itself.

/// paint_icon; returns -2, or 2 without memory.
int draw_old_icon(int id);

}  // namespace torve
