// How large the window shows a pixel of the screen image, for screens on which one pixel of theirs
// is too small to be seen.
//
// The scale is a whole number, so that the window shows exactly the image, in larger squares. Only
// the X11 files know it: they divide the positions of events and enlarge what is pushed.
#pragma once

namespace torve {

inline constexpr int largest_scale = 8;

/// The scale that initgraph is to begin with, 1 .. largest_scale. 0, the start value: what the
/// resolution of the screen (the X resource Xft.dpi) asks for, as far as the window then fits on
/// the screen: 1 below 144 dots an inch, 2 below 240, then one more for each 96.
void ask_for_scale(int wanted);

/// Adds `by` to the scale: the window gets its new size, the picture in it is drawn at the next
/// present(). False, and nothing has changed, without a window, when the scale would leave
/// 1 .. largest_scale, and without memory for the larger picture.
[[nodiscard]] bool change_scale(int by);

}  // namespace torve
