// What the X11 files share. The types are named, not defined: this header needs no X header.
#pragma once

#include <cstdint>
#include <memory>

#include "base/rect.hpp"
#include "display/backend.hpp"

struct _XDisplay;
struct _XGC;
struct _XImage;

namespace torve {

// State: written by initgraph and endgraph alone.
extern _XDisplay* display;
extern int screen;              // default screen of the display
extern unsigned long win;       // the window
extern _XGC* gc;                // the one graphics context
extern unsigned long colormap;  // the colormap of the window's visual
extern _XImage* screenbuf;      // the screen image as X sees it; its data is screen_block()
extern _XImage* staging;        // dirty pixels on their way to the server; null: send planes

/// Protocols of window managers that the window takes part in.
struct WindowProtocols {
  unsigned long protocols = 0, delete_window = 0, ping = 0;  // atoms
};
extern WindowProtocols window_protocols;

/// The event half of the backend (x11_events.cpp).
void wait_x11_event(InputEvent& event);
bool wait_x11_readable(int descriptor, InputEvent& event);
bool x11_event_pending();
bool drop_x11_events(InputEvent::Type type);

/// The picture half (x11_push.cpp).
void create_x11_images(void* visual, int depth);
void destroy_x11_images();
void push_to_x11(const Rect& rect);

}  // namespace torve
