// The engine that hands mouse presses to window objects.
//
// One press, from the button going down to its release, has one owner: the object served or moved,
// the canvas (icons and diagram), or nobody any more. Hit tests happen when a press begins; held
// motion goes to the owner alone. A non-mouse event changes nothing.
#pragma once

namespace torve {

/// Commands that a kind's serve function returns.
inline constexpr int command_run_action = 0;     // put down, then call the object's action
inline constexpr int command_missing_file = 1;   // put down, report the object's name
inline constexpr int command_no_memory = 2;      // put down, report it
inline constexpr int command_put_down_only = 3;  // any value without a meaning of its own
inline constexpr int command_free = -1;
inline constexpr int command_put_down = -2;  // the press goes on to what lies beneath it
inline constexpr int command_make_icon = -3;
inline constexpr int command_move = -4;  // the kind has set cxoff and cyoff
inline constexpr int command_hide = -5;

/// What one round of the engine asks the main loop to do.
inline constexpr int engine_idle = 0;
inline constexpr int engine_run_action = 1;     // the action callback of `popwindow` is to run
inline constexpr int engine_move_failed = 2;    // a move could not start
inline constexpr int engine_canvas_press = -1;  // the press is for no window object

// State: written by the engine.
extern int popwindow;     // the object being served, 0 for none
extern int moving;        // the object being moved, 0 for none
extern int as_rectangle;  // 1 while a move is shown as an outline
extern int cxoff, cyoff;  // from a moved object's corner to the pointer; set by its kind
extern int markershape, oldmarkershape;  // pointer shapes asked for by resizing
extern int debug311;                     // nonzero: the engine prints what it does

/// What upper rooms want to know: the message window is to be created (init_engine, slot 1 is
/// free), and an object has been put down (errors that waited for it can be shown).
struct EngineHooks {
  void (*create_message_window)() = nullptr;
  void (*object_put_down)() = nullptr;
};
void set_engine_hooks(const EngineHooks& replacement);

/// Prepares for the first round and puts the objects 2 .. last on the canvas. Returns 0, or 1
/// after "fail\n" when one of them cannot be put.
[[nodiscard]] int init_engine(int last);

/// One round: waits for an event and handles it.
[[nodiscard]] int do_operations();

/// Whether the press that do_operations answered with engine_canvas_press has only just begun
/// (icons are asked then only), and whether it is the canvas's at all.
[[nodiscard]] bool canvas_press_began();
[[nodiscard]] bool press_is_for_canvas();

/// The press that is going on has done its work: nothing happens until its release.
void spend_press();

/// An object has been freed: if it was being served or moved, nothing is any more.
void forget_served_object(int id);

/// Whether the object being served is out of the books, so that nothing else may be put.
[[nodiscard]] bool an_object_is_lifted();

/// A double click on the selected line, or a drag to its right: sets bit 1 of that line's flags
/// and returns 1, else returns 0. The first line with bit 0 counts; a button must be down with Y
/// as at the press. Equal X, a first click and a counter at the threshold make a double click (both
/// words are cleared); X right of the press X makes a drag.
int doubleclick_and_submenu(int* line_flags, int line_count, int x, int y, int button, int press_x,
                            int press_y, int* first_click, int* counter, int threshold);

}  // namespace torve
