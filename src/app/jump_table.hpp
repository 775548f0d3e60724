// The icon table: what a press on the bar at the bottom of the canvas calls.
#pragma once

namespace torve {

/// Gets the button and the pointer position, pixels. A nonzero result ends the program.
using IconHandler = int (*)(int buttons, int x, int y);

struct JumpEntry {
  int x1 = 0, x2 = 0, y1 = 0, y2 = 0;  // hot rectangle, pixels; its border lines are not hot
  IconHandler handler = nullptr;       // null ends the table
};

inline constexpr int jump_table_size = 30;

// State: written by fill_jmptable alone.
extern JumpEntry c_table[jump_table_size];

/// Sets an entry from a picture's corner and size, pixels.
void fill_jmptable(JumpEntry& entry, int x, int y, int width, int height, IconHandler handler);

/// The first entry whose rectangle holds (x, y) inside its border lines; null for none.
[[nodiscard]] const JumpEntry* find_icon(const JumpEntry* table, int x, int y);

}  // namespace torve
