// The ways out of the program.
#pragma once

namespace torve {

/// Releases what start-up took, in the reverse order: figures, window objects, work buffer,
/// display, pool, fonts. Returns what free_font returned. May be called again.
int release_everything();

/// The exit tool: releases everything and ends the process with status 1. The window manager's
/// close button takes the same way.
[[noreturn]] int texit_ope(int buttons, int x, int y);

}  // namespace torve
