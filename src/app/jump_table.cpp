#include "app/jump_table.hpp"

namespace torve {

JumpEntry c_table[jump_table_size];

void fill_jmptable(JumpEntry& entry, int x, int y, int width, int height, IconHandler handler) {
  entry = {.x1 = x, .x2 = x + width, .y1 = y, .y2 = y + height, .handler = handler};
}

const JumpEntry* find_icon(const JumpEntry* table, int x, int y) {
  for (const JumpEntry* entry = table; entry->handler != nullptr; ++entry) {
    if (entry->x1 < x && x < entry->x2 && entry->y1 < y && y < entry->y2) return entry;
  }
  return nullptr;
}

}  // namespace torve
