// What the display room needs of a window system, as a table of procedures.
//
// The X11 files fill it in; without a window there is none, drawing then stays in the image and
// getch reads standard input. Tests register one of their own to play events.
#pragma once

#include <cstdint>
#include <string>

#include "base/enum_flags.hpp"
#include "base/rect.hpp"

namespace torve {

/// Keys that were held while an event of the mouse or the keyboard came.
enum class Modifiers : std::uint8_t { none = 0, shift = 1, control = 2, alt = 4 };
template <>
inline constexpr bool is_flag_enum<Modifiers> = true;

struct InputEvent {
  enum class Type {
    none,
    key,
    press,
    release,
    motion,  // while a button is held
    hover,   // a motion while none is
    leave,   // the pointer is elsewhere, without a button
    expose,
    resize,
    close,
    other
  };

  Type type = Type::none;
  int button = 0;             // press and release: 1 left, 2 middle, 3 right, 4 to 7 the wheel
  int x = 0, y = 0;           // press, release, motion, hover, key: position in the window, pixels
  std::uint32_t time = 0;     // the server's clock at any of these, milliseconds
  int width = 0, height = 0;  // resize: the window's new size, pixels
  char characters[20] = {};   // key: what the key stands for, Latin-1
  int character_count = 0;    // key: how many characters, 0 for keys that give none
  unsigned long keysym = 0;   // key: its X name
  bool is_modifier = false;   // key: Shift, Control and their like alone
  Modifiers modifiers = Modifiers::none;  // at any of these: what was held with it
};

struct DisplayBackend {
  /// Waits for the next event.
  void (*wait_event)(InputEvent& event) = nullptr;
  /// Waits until `descriptor` can be read: true. False when an event of the window comes first,
  /// which is then in `event`: its picture, its size, the wish to close. Presses and keys keep
  /// their place. Null where nobody waits in this way.
  bool (*wait_readable)(int descriptor, InputEvent& event) = nullptr;
  /// Whether an event can be had without waiting.
  bool (*event_pending)() = nullptr;
  /// Removes every waiting event of the type and nothing else; whether there was one.
  bool (*drop_events)(InputEvent::Type type) = nullptr;
  /// Removes every waiting press of the key with that X name and nothing else; whether there was
  /// one. Null where no key is looked for.
  bool (*drop_key)(unsigned long keysym) = nullptr;
  /// Shows the pixels of the screen image in `rect` (not empty, inside the screen).
  void (*push)(const Rect& rect) = nullptr;
  /// Offers a text, UTF-8, to other programs until somebody else offers one. Null: nobody can have
  /// it.
  void (*offer_text)(const std::string& text) = nullptr;
  /// change_scale; null where pixels are never enlarged.
  bool (*change_scale)(int by) = nullptr;
};

/// The table in force; null without a window.
[[nodiscard]] const DisplayBackend* display_backend();

/// `replacement` (null for none) must stay alive until it is replaced.
void set_display_backend(const DisplayBackend* replacement);

}  // namespace torve
