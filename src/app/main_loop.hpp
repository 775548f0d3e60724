// The main loop: from presses to icon handlers and action callbacks.
#pragma once

#include "app/jump_table.hpp"

namespace torve {

/// Calls the action callback of window object `id`, or the default one where it has none of its
/// own, and returns its result; 0 where there is neither. Both names do the same.
int edi1_operations(int id);
int edi2_operations(int id);

/// Runs until an icon handler or an action callback ends the program; returns 1. The window objects
/// up to id `first` are put on the canvas before.
int do_edi1_engine(int first, const JumpEntry* table);

}  // namespace torve
