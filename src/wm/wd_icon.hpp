// Window objects shrunk to an icon: a framed box with the object's first words.
#pragma once

namespace torve {

/// Shrinks a lifted object to its icon at the same place. Returns 0, or 1 when there is no memory
/// for the icon's background; the object is as it was then.
int make_icon(int id);

/// Gives a lifted icon its object's size back. Returns 0, or 1 when there is no memory for the
/// background; it is an icon as before then.
int restore_icon(int id);

/// Paints the icon: put and refresh of an object that is one. Returns -2, or 2 without memory.
int draw_old_icon(int id);

/// Serves a press on an icon: a left press gives the object its size back, a right press moves the
/// icon. Returns a command.
int serve_icon(int id);

}  // namespace torve
