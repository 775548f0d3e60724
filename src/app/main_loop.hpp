// The main loop: from presses to icon handlers and action callbacks.
#pragma once

#include "app/jump_table.hpp"

namespace torve {

// State.
extern int color_request_flag;  // nonzero: a colour is being asked for, presses are for nobody else
extern int exit_vect_ed;        // nonzero: presses are not for the diagram until one hits an icon

/// Calls the action callback of window object `id`, or the default one where it has none of its
/// own, and returns its result; 0 where there is neither. Both names do the same.
int edi1_operations(int id);
int edi2_operations(int id);

/// One round: waits for an event and handles it. Whether the program is to end.
[[nodiscard]] bool main_loop_round(const JumpEntry* table);

/// Takes away what is shown of where the pointer is or what it chooses: the canvas is about to
/// change, or to be exported.
void end_looking();

/// Runs until an icon handler or an action callback ends the program; returns 1. Without memory to
/// go on it takes the way out of the exit tool.
/// The window objects 2 .. last are put on the canvas before.
int do_edi1_engine(int last, const JumpEntry* table);

}  // namespace torve
