#include "dialogs/install.hpp"

#include "dialogs/file_window.hpp"
#include "dialogs/input_window.hpp"
#include "dialogs/label.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/messages.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/strip.hpp"
#include "wm/engine.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

void free_menu_memory(int id) {
  WdObject& menu = wd(id);
  free_menustructure(&menu.menu_items, &menu.menu_lines, &menu.line_flags, menu.item_count,
                     menu.line_count, menu.line_size);
}

const char* first_menu_line(int id) {
  return wd(id).line_count > 0 ? wd(id).menu_lines[0] : "";
}

const char* text_window_name(int id) {
  return id == message_window_id ? "Messages" : wd(id).name;
}

bool paint_text(int id, int mode) {
  void (*const over_text)() = id == message_window_id ? draw_message_detail : nullptr;
  return paint_text_window(id, mode, over_text) == Command::put_down;
}

constexpr WdKind popup_menus = {
    .put = [](int id) { return paint_menu(id, mode_put); },
    .serve = serve_menu,
    .refresh = [](int id) { return paint_menu(id, mode_refresh); },
    .scroll = scroll_menu,
    .free_memory = free_menu_memory,
    .icon_text = first_menu_line,
};

constexpr WdKind text_windows = {
    .put = [](int id) { return paint_text(id, mode_put); },
    .serve = [](int id, const PointerEvent& press) { return serve_text_window(id, press); },
    .refresh = [](int id) { return paint_text(id, mode_refresh); },
    .scroll = scroll_text_window,
    .icon_text = text_window_name,
};

constexpr WdKind labels = {
    .put = [](int id) { return paint_label(id, mode_put); },
    .serve = [](int id, const PointerEvent& press) { return ask_to_move(wd(id), press); },
    .refresh = [](int id) { return paint_label(id, mode_refresh); },
    .icon_text = [](int id) -> const char* { return wd(id).name; },
};

constexpr WdKind input_windows = {
    .put = paint_input_window,
    .serve = serve_input_window,
    .refresh = paint_input_window,
    .free_memory = end_input_window,
    .icon_text = [](int id) -> const char* { return wd(id).name; },
    .covered = covered_by_input_window,
    .shows_figures = input_window_shows_figures,
};

}  // namespace

void install_dialogs() {
  register_wd_kind(kind_popup_menu, popup_menus);
  register_wd_kind(kind_file_window, text_windows);
  register_wd_kind(kind_label, labels);
  register_wd_kind(kind_input_window, input_windows);
  set_error_reporters(message_reporters());
  set_press_handler(clear_strip);
  set_engine_hooks(
      {.create_message_window = create_message_window, .object_put_down = show_waiting_message});
}

}  // namespace torve
