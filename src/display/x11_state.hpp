// What the X11 files share. The types are named, not defined: this header needs no X header.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/rect.hpp"
#include "display/backend.hpp"

struct _XDisplay;
struct _XGC;
struct _XImage;
union _XEvent;

namespace torve {

// State: written by initgraph and endgraph alone, staging and scale by change_x11_scale, too.
extern _XDisplay* display;
extern int screen;               // default screen of the display
extern unsigned long win;        // the window
extern unsigned long hover_win;  // its child, which tells of motions without a button
extern unsigned long requestor;  // the window that was given a text last; it may be gone
extern _XGC* gc;                 // the one graphics context
extern unsigned long colormap;   // the colormap of the window's visual
extern _XImage* screenbuf;       // the screen image as X sees it; its data is screen_block()
extern _XImage* staging;         // dirty pixels on their way to the server; null: send planes
extern int scale;                // window pixels, across and down, for a pixel of the image

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
bool drop_x11_key(unsigned long keysym);

/// What others may have of us (x11_selection.cpp): takes the selections, and answers an event that
/// asks for them or takes them away; whether it was one.
void offer_x11_text(const std::string& text);
bool answer_selection_event(_XEvent& event);

/// change_scale (x11_scale.cpp).
[[nodiscard]] bool change_x11_scale(int by);

/// The picture half (x11_push.cpp).
/// At the scale that is set; where that cannot be, the scale becomes 1.
void create_x11_images(void* visual);
/// Makes the staging for pushes at a scale. False, and everything stays as it was, when there is no
/// memory or the server wants pixels packed otherwise than in words.
[[nodiscard]] bool create_staging(int wanted);
void destroy_x11_images();
void push_to_x11(const Rect& rect);

/// The scale to begin with (x11_scale.cpp).
[[nodiscard]] int start_scale();
/// Gives the window the size of the image at the present scale (x11_window.cpp).
void resize_window();

}  // namespace torve
