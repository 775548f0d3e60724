// The engine that hands mouse presses to window objects.
//
// One press, from the button going down to its release, has one owner: the object served or moved,
// the canvas (icons and diagram), or nobody any more. Hit tests happen when a press begins; held
// motion goes to the owner alone. A non-mouse event changes nothing.
#pragma once

#include "display/input.hpp"

namespace torve {

/// What one round of the engine has come to.
struct EngineRound {
  enum class Result {
    nothing,
    run_action,      // the action callback of `object` is to run
    canvas_press,    // `press` is for no window object; its action says whether it has just begun
    put_down,        // an object was put down by a press on itself
    move_failed,     // a move could not start
    key,             // a key that nobody waited for; last_event says which
    canvas_release,  // the canvas's press has ended at `press`
    canvas_wheel,    // the wheel has been turned where no window object lies
    hover,           // the pointer is at `press` without a button, or has left
  };
  Result result = Result::nothing;
  int object = 0;
  PointerEvent press = {};
};

// State: written by the engine.
extern int popwindow;                    // the object being served, 0 for none
extern int moving;                       // the object being moved, 0 for none
extern int as_rectangle;                 // 1 while a move is shown as an outline
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
[[nodiscard]] EngineRound engine_round();

/// The press that is going on has done its work: nothing happens until its release.
void spend_press();

/// The object that is out of the books because it is being served or moved, 0 for none. Nothing
/// else may be put meanwhile.
[[nodiscard]] int lifted_object();

// Not used by the workbench itself.

/// engine_round as a number: 1 an action of `popwindow` is to run, -1 the press is the canvas's or
/// has put an object down, 2 a move could not start, else 0.
[[nodiscard]] int do_operations();

/// A double click on the selected line, or a drag to its right: sets bit 1 of that line's flags
/// and returns 1, else returns 0. The first line with bit 0 counts; a button must be down with Y
/// as at the press. Equal X, a first click and a counter at the threshold make a double click (both
/// words are cleared); X right of the press X makes a drag.
int doubleclick_and_submenu(int* line_flags, int line_count, int x, int y, int button, int press_x,
                            int press_y, int* first_click, int* counter, int threshold);

}  // namespace torve
