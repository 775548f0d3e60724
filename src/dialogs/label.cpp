#include "dialogs/label.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/errors.hpp"
#include "dialogs/popup_menu.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int bad_id_code = 9;
constexpr int paper = 15;
constexpr int ink = 0;

}  // namespace

int make_label(int id, int x, int y, const char* text) {
  if (!is_wd_id(id)) return 1;
  const int length = std::min(static_cast<int>(std::strlen(text)), wd_name_size - 1);
  WdObject& label =
      start_wd_object(id, kind_label, {x, y, x + std::max(length, 1) * cs, y + cr}, WdFlags::none);
  std::snprintf(label.name, sizeof label.name, "%s", text);
  zero_over(id - 1);
  if (change_background(id) == 0) return 0;
  free_one_wd_object(id);
  return 1;
}

bool paint_label(int id, int mode) {
  WdObject& label = wd(id);
  if (make_background(label, mode != mode_put) != 0) return false;
  open_drawing_area();
  truncate1 = 1;
  clearwin(label.x, label.y, label.x + label.width, label.y + label.height, paper);
  xkoord = label.x;
  ykoord = label.y;
  textn(label.name, ink, paper);
  return true;
}

int draw_label(int id, int mode) {
  if (!is_wd_id(id)) {
    illegal_pointer(bad_id_code);
    return 1;
  }
  if (mode == mode_serve) return static_cast<int>(ask_to_move(wd(id), present_pointer()).command);
  return static_cast<int>(paint_label(id, mode) ? Command::put_down : Command::no_memory);
}

int free_label(int id) {
  if (!is_wd_id(id)) return 1;
  free_one_wd_object(id);
  return 0;
}

}  // namespace torve
