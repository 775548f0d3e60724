#include "app/icon_bar.hpp"

#include <iterator>

#include "app/jump_table.hpp"
#include "app/shutdown.hpp"
#include "app/tools/tools.hpp"
#include "diagram/editor.hpp"
#include "diagram/figure_menu.hpp"
#include "display/screen_state.hpp"
#include "picture/fn2.hpp"

namespace torve {

namespace {

constexpr int first_icon_column = 1;
constexpr int icon_pitch = 45;       // pixels from an icon to the next
constexpr int icon_bar_height = 45;  // from the icons' upper edge to the last row

struct Icon {
  const char* picture;
  IconHandler handler;
};

// Only the exit icon ends the program: that a tool is open already is no reason to. A tool that
// opens takes the mouse from the diagram.
template <IconHandler opener>
int open_and_stay(int button, int x, int y) {
  close_figure_menu();  // it may have the id of the tool's menu
  if (opener(button, x, y) == 0) exit_ope();
  return 0;
}

constexpr Icon icons[] = {
    {.picture = "texit.fn2", .handler = texit_ope},
    {.picture = "plicon.fn2", .handler = open_and_stay<audio_ope>},
    {.picture = "print.fn2", .handler = open_and_stay<printeps_ope>},
    {.picture = "readic.fn2", .handler = open_and_stay<read_au_ope>},
    {.picture = "writeic.fn2", .handler = open_and_stay<write_au_ope>},
    {.picture = "compile.fn2", .handler = open_and_stay<analysis_ope>},
    {.picture = "start.fn2", .handler = open_and_stay<analysis2_ope>},
};
static_assert(std::size(icons) < jump_table_size, "the table ends in an empty entry");

}  // namespace

void load_icon_bar() {
  int x = first_icon_column;
  const int y = Y__max - icon_bar_height;
  JumpEntry* entry = c_table;
  for (const Icon& icon : icons) {
    int width = 0;
    int height = 0;
    // The picture's error has been shown; its empty size makes the entry unreachable.
    static_cast<void>(getpicture(icon.picture, x, y, &width, &height));
    fill_jmptable(*entry++, x, y, width, height, icon.handler);
    x += icon_pitch;
  }
  *entry = {};
}

}  // namespace torve
