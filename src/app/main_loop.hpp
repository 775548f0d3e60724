// The main loop: from presses to icon handlers.
#pragma once

#include "app/jump_table.hpp"

namespace torve {

/// Runs until an icon handler ends the program; returns 1. The window objects up to id `first` are
/// put on the canvas before.
int do_edi1_engine(int first, const JumpEntry* table);

}  // namespace torve
