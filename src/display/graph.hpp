// The one window of the program: opening and closing it.
#pragma once

namespace torve {

/// Opens the display and the 800 x 600 window "TORVE application", creates the screen image and
/// the colours 0 to 20, sets the drawing state to its start values, maps the window and returns
/// when it has been exposed for the first time. Nothing is drawn. The process ends with status
/// 255 after "X not started\n" (no display, or none that shows 24-bit true colour) or
/// "cannot open font\n" (the server lacks "9x15"). The arguments are those of main.
void initgraph(int argc, char** argv);

/// What is done when the connection to the server is lost, before the process ends with status 1.
/// It must not show anything.
void set_connection_lost_handler(void (*handler)());

/// Says behind the title whether there is work that would be lost: to window managers that read
/// _NET_WM_NAME. Nothing without a window.
void mark_window_unsaved(bool unsaved);

/// Shows what is left to show, then releases all that initgraph took; returns 0. May be called
/// again: then there is nothing to do.
int endgraph();

// Video cards, their memory banks and the mouse are the server's business: these return at once.
inline void cirrusbank(int) {}
inline void check_bank(int) {}
inline void is_it_S3() {}
inline void which_S3() {}
inline void what_vesa_is_supported() {}
inline void initvesagraph() {}
inline void endvesagraph() {}
inline void startmouse() {}
inline void stopmouse() {}

}  // namespace torve
