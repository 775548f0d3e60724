// Mouse and keyboard.
//
// Everything arrives as events of the display backend, one at a time, and the screen is brought
// up to date before each wait. A press is reported once, then a stream of motions with the same
// button while it is held, then a release with button 0. One event record serves all readers.
#pragma once

#include <cstdint>
#include <string>

#include "display/backend.hpp"

namespace torve {

/// Values of `buttons`, and of what handlers get of it.
inline constexpr int first_button = 1;   // left
inline constexpr int second_button = 2;  // middle or right

/// An event of the mouse, as it is handed on.
enum class PointerAction {
  none,  // the event was none of the mouse's, or of a button that does not count
  press,
  motion,   // of the button that is held
  release,  // also a motion when the release has been missed
  wheel,    // turned or tilted by a step; no button is meant
  hover,    // a motion while no button is held
  leave,    // the pointer has gone elsewhere
};
struct PointerEvent {
  PointerAction action = PointerAction::none;
  int button = 0;          // pressed or held: first_button, second_button; 0 after the release
  int x = 0, y = 0;        // inside the clamp, pixels
  std::uint32_t time = 0;  // the server's clock, milliseconds; it may wrap round
  int lines = 0;           // of the wheel: 1 down, -1 up
  int columns = 0;         // of a wheel that tilts: 1 right, -1 left
  Modifiers modifiers = Modifiers::none;  // keys that are held meanwhile
};

// State.
extern int buttons;            // button of the event handled last; 0 for none
extern int X, Y;               // pointer position of that event, pixels, inside the clamp
extern int oldX, oldY;         // position of the last press or release
extern int cur_button;         // button held since the last press, 0 when none
extern int mouse_off;          // 1 while the pointer is hidden during a press
extern int X1mouse, Y1mouse;   // clamp of reported positions, upper left; setmouselim writes it
extern int X2mouse, Y2mouse;   // lower right, inclusive
extern char keybuffer[20];     // characters of the last key press
extern int charcount;          // how many they are
extern unsigned long keysym;   // X name of the last key pressed
extern InputEvent report;      // the event read last; its type is cleared by the flushes
extern InputEvent last_event;  // the same, kept whole: what kind it was, and when

/// Every variable above to its start value, and no close handler.
void reset_input();

/// What a request to close the window does, whoever reads it.
void set_close_handler(void (*handler)());

/// What every press of a button that counts does first, whoever it is for; null: nothing.
void set_press_handler(void (*handler)());

/// Whether somebody wants to know where the pointer is while no button is held. Whoever does not
/// ask waits on.
enum class Hover : std::uint8_t { skipped, reported };

/// Waits for the next event and handles it. A second button while one is held is no event of the
/// mouse. A second press of the held button is a press: its release was lost on
/// the way. `buttons`, X and Y are set as readmouse sets its outputs; the wheel and a pointer
/// that hovers or leaves set none of them.
PointerEvent next_pointer_event(Hover hover = Hover::skipped);

/// A press as `buttons`, X and Y hold one, for procedures that are not handed their event.
[[nodiscard]] PointerEvent present_pointer();

/// next_pointer_event with outputs of the caller's; returns 0. The wheel is ignored, and a pointer
/// without a button is waited out. A press,
/// release or motion sets the three outputs; any other event sets
/// `*button` to the button that is still held and leaves the position.
int readmouse(int* button, int* x, int* y);

/// Waits for a key press and returns its first character, 0 for keys that give none. Mouse events
/// that arrive meanwhile are lost to the caller (a release still ends the held button), keys typed
/// ahead are dropped, modifier keys alone are skipped. Without a window: one byte of standard
/// input, 0 at its end.
int getch();

/// As getch, but a mouse press ends the wait, too: the result is then press_instead_of_key, the
/// press is last_event, and the next readmouse reports it unless it is dropped by flush_mouse.
inline constexpr int press_instead_of_key = -1000;
int getch_or_press();

/// Handles what has arrived without waiting for more: repaints after expose events, notes a new
/// window size, leaves presses and keys for later. Long computations call it at progress lines.
void serve_expose_events();

/// Serves the window until `descriptor` can be read: its picture, its size, the wish to close.
/// Leaves presses and keys for later. Returns at once without a window.
void serve_window_until_readable(int descriptor);

/// Offers a text, UTF-8, to other programs, as what was selected and as what was copied; false when
/// nobody could have it.
bool offer_text(const std::string& text);

/// Always 0: no key is ever reported as waiting.
int kbhit();

/// Takes the waiting presses of a key out of their place among what waits: everything else stays.
/// Whether there was one.
[[nodiscard]] bool take_waiting_key(unsigned long key);

/// Removes waiting press events, or waiting key events.
void flush_mouse();
void flush_key();

/// Shows what has been drawn, then counts n times to 10,000 without sleeping (about 2 ms for
/// n = 100) or reading events.
void delay(int n);

void showmouse();
void hidemouse();
/// Sets the clamp of reported positions: x1 <= x <= x2, y1 <= y <= y2, pixels.
void setmouselim(int x1, int y1, int x2, int y2);

// The pointer's shape and place never change; the names say what callers mean.
inline void setmouseshape(int) {}
inline void DefaultCursor() {
  setmouseshape(0);
}
inline void Arrow4Cursor() {
  setmouseshape(1);
}
inline void ArrowHorCursor() {
  setmouseshape(2);
}
inline void ArrowVerCursor() {
  setmouseshape(3);
}
inline void setmouse(int, int) {}
inline void resetmouse() {}
inline void sound(int) {}
inline void nosound() {}

}  // namespace torve
