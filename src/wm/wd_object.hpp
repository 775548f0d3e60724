// Window objects: everything that floats above the canvas.
//
// A window object is a slot of one table, named by an id from 1 to 128 that its creator chooses;
// id 1 is the message window. What an object shows is its kind's business: a kind registers its
// procedures here, and a kind that nobody registered fails cleanly.
//
// An object is in one of these states:
//   fresh      created, never put: flag `fresh`
//   on canvas  painted, booked in the over sets: neither `off_screen` nor `fresh` ("eligible")
//   lifted     painted and above everything, but out of the books: `off_screen`, painted.
//              Only the object being served or moved is.
//   hidden     not painted: `off_screen`, not painted
// A painted object owns the pixels that it covers, its background.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <vector>

#include "base/enum_flags.hpp"
#include "base/rect.hpp"
#include "text/menu_items.hpp"
#include "wm/command.hpp"
#include "wm/object_ids.hpp"

namespace torve {

inline constexpr int wd_name_size = 32;
inline constexpr int default_action_slot = wd_object_count;  // of wd_actions

/// Kinds, field `kind` of the record.
inline constexpr std::uint32_t kind_free = 0;
inline constexpr std::uint32_t kind_popup_menu = 2;
inline constexpr std::uint32_t kind_file_window = 3;
inline constexpr std::uint32_t kind_label = 9;
inline constexpr std::uint32_t kind_input_window = 10;
inline constexpr std::uint32_t kind_icon_bit = 0x8000;  // set while the object is shrunk to an icon

enum class WdFlags : std::uint32_t {
  none = 0,
  background_on_file = 1,  // the background rests in a file while the object lies on the canvas
  off_screen = 2,          // lifted or hidden
  snap = 4,                // x goes down to a multiple of 8 when a move ends
  no_vertical_bar = 8,
  no_horizontal_bar = 16,
  fixed_size = 0x20,             // cannot be resized
  close_puts_down = 0x40,        // the close box puts the object down
  right_close_puts_down = 0x80,  // a right press on the close box puts it down
  permanent = 0x100,             // is not raised, and survives free_wd_objects_gt1
  fresh = 0x200,                 // created, not put yet
  close_hides = 0x400,           // the close box hides the object
  outline_move = 0x800,          // moves as an outline
};
template <>
inline constexpr bool is_flag_enum<WdFlags> = true;

/// Those of the message window when it is made: hidden, without scroll bars, of fixed size.
inline constexpr WdFlags message_window_flags = WdFlags::off_screen | WdFlags::no_vertical_bar |
                                                WdFlags::no_horizontal_bar | WdFlags::fixed_size |
                                                WdFlags::close_puts_down;
static_assert(static_cast<std::uint32_t>(message_window_flags) == 122);

/// A set of objects: bit k - 1 of the 128 stands for id k.
using OverSet = std::array<std::uint32_t, 4>;

/// Draws the inside of an input window, or acts on a press there (dialogs/input_window.hpp).
using InputDraw = void (*)(int id, int mode);

/// A record of the table. Positions and sizes are pixels.
struct WdObject {
  std::uint32_t kind = kind_free;
  char name[wd_name_size] = {};  // file of a file window, text of a label
  int x = 0, y = 0, width = 0, height = 0;
  int scroll_column = 0, scroll_line = 0;    // first shown column and line of a scrolled text
  std::array<std::uint8_t, 5> colours = {};  // c1 .. c5, as the kind uses them
  WdFlags flags = WdFlags::none;
  // The background: h lines of gplanes plane rows; -1: not computed yet.
  int background_row_bytes = -1;       // of a plane row: width / 8 + 1
  int background_line_bytes = -1;      // of a line: row bytes times gplanes
  int background_rows = -1;            // lines held
  std::uint8_t* background = nullptr;  // pool block of rows + 1 lines; owned; null: none
  bool painted = false;  // the canvas shows the object, and the background what it covers
  // Menus. The arrays are owned by the record.
  MenuItem* menu_items = nullptr;
  char** menu_lines = nullptr;
  int* line_flags = nullptr;
  int item_count = 0, line_count = 0, line_size = 0;
  int visible_lines = 0;
  // Texts: ranges of the scroll bars; -1: to be worked out when first drawn.
  int column_range = -1, line_range = -1;
  std::intptr_t kind_word = 0;  // an input window's value, the figure of a property menu
  // Input windows.
  InputDraw input_draw = nullptr;
  bool inside_drawn = false;              // it has been served since it was put
  int plain_width = 0, plain_height = 0;  // figures show in what the window has grown by beyond
  OverSet over = {};                      // the objects that lie above this one and overlap it
  Rect normal_place;                      // an icon's rectangle before it was shrunk
};

/// The callback of an object gets (id - 1, line flags, menu items, menu lines). A result of exactly
/// 1 ends the program.
using WdAction = int (*)(int index, int* line_flags, MenuItem* items, char** lines);

// State.
extern WdObject wd_object[wd_object_count];       // the record of id n is element n - 1
extern WdAction wd_actions[wd_object_count + 1];  // by id - 1; the last one serves all others
extern int cxoff, cyoff;  // from a moved object's corner to the pointer, pixels; set by its kind

/// What a kind does. put paints the object for the first time or anew after it was hidden, refresh
/// repaints it in place; both return whether they could. serve handles the press that is going on
/// and what follows. scroll moves what an uncovered object shows by some lines, as far as there are
/// any, and repaints it. free_memory releases what the record owns beyond its background. icon_text
/// names the object while it is an icon (at most 12 characters are shown).
///
/// A kind with `covered` keeps the pixels under its objects there, and the background in their
/// records is null. An object that `shows_figures` now is repainted after something has been
/// painted beneath it; all others are put back as they looked.
struct WdKind {
  bool (*put)(int id) = nullptr;
  Served (*serve)(int id, const PointerEvent& press) = nullptr;
  bool (*refresh)(int id) = nullptr;
  void (*scroll)(int id, int lines) = nullptr;
  void (*free_memory)(int id) = nullptr;
  const char* (*icon_text)(int id) = nullptr;
  std::vector<std::uint8_t>& (*covered)(int id) = nullptr;
  bool (*shows_figures)(int id) = nullptr;
};

/// Makes a kind (1 .. 10, or any other value without the icon bit) known; at most 16 kinds.
void register_wd_kind(std::uint32_t kind, const WdKind& functions);

/// What the kind of an object does, also while the object is an icon; null for one that nobody
/// registered.
[[nodiscard]] const WdKind* kind_of(const WdObject& object);

/// Stores an action callback; slots outside 0 .. 128 are refused.
void fill_jmptable_b(int slot, WdAction action);

[[nodiscard]] inline bool is_wd_id(int id) {
  return id >= 1 && id <= wd_object_count;
}

/// The record of an id from 1 to 128.
[[nodiscard]] inline WdObject& wd(int id) {
  return wd_object[id - 1];
}

[[nodiscard]] inline Rect rect_of(const WdObject& object) {
  return {object.x, object.y, object.x + object.width, object.y + object.height};
}

/// On canvas and booked: takes part in hit tests, peeling and over sets.
[[nodiscard]] inline bool is_eligible(const WdObject& object) {
  return object.kind != kind_free && !has(object.flags, WdFlags::off_screen) &&
         !has(object.flags, WdFlags::fresh);
}

/// Lifted or hidden.
[[nodiscard]] inline bool is_off_screen(const WdObject& object) {
  return object.kind != kind_free && has(object.flags, WdFlags::off_screen);
}

[[nodiscard]] inline bool is_icon(const WdObject& object) {
  return (object.kind & kind_icon_bit) != 0;
}

/// Brings an object's position inside the canvas; with `to_cell`, x to a multiple of 8.
void keep_on_canvas(WdObject& object, bool to_cell);

/// Starts a record: everything else at its start value, flags `flags` and `fresh`, the colours c1
/// and so on, five at most. An object that is in the slot is hidden and freed before.
WdObject& start_wd_object(int id, std::uint32_t kind, const Rect& place, WdFlags flags,
                          std::initializer_list<int> colours = {});

/// Dispatch to the kind, with the drawing limits, text cursor, colours and truncation as they were
/// afterwards. The first two return 1 when the kind reported a failure, else 0.
int put_one_wd_object(int id);
int refresh_one_wd_object(int id);

/// The kind's answer to a press; an object of an unknown kind is only put down.
Served serve_object(int id, const PointerEvent& press);

/// Scrolls an uncovered object whose kind can.
void scroll_object(int id, int lines);

/// Sets where the pointer holds an object that is about to be moved, and asks for the move.
[[nodiscard]] Served ask_to_move(const WdObject& object, const PointerEvent& press);

/// What an object shows while it is an icon; null when its kind says nothing.
[[nodiscard]] const char* icon_text_of(int id);

/// Takes an object off the canvas for good, in whatever state it is, and frees its slot.
void free_one_wd_object(int id);

/// Who is told of every object that has been freed; null: nobody.
void set_freed_handler(void (*handler)(int id));

/// Puts the objects first .. last: a fresh one on top of everything, a hidden one again, one that
/// lies on the canvas is raised and refreshed, an icon gets its size back. Returns 0, or 1 at once
/// when one cannot be put; the slot of a fresh one is free then.
int put_wd_objects(int first, int last);

/// Frees all objects.
void free_wd_objects();

/// Takes an object that lies on the canvas off it and keeps it; nothing in terminal mode, and
/// nothing for icons.
void hide_wd_object(int id);

/// The same for the message window.
void hide_errormsg();

// Not used by the workbench itself.

/// serve_object for the object of an index, id - 1, and the present press; returns the command as
/// its number.
int serve_wd_objects(int index);

/// Free all objects but the message window and permanent ones; all but the message window. Return
/// 0.
int free_wd_objects_gt1();
int free_wd_objects_gt1_u();

/// Moves an object to (x, y), pixels, or as near as the canvas allows, in whatever state it is:
/// above all others if it lies on the canvas. What it has covered comes back.
void move_object(int id, int x, int y);

}  // namespace torve
