#include "dialogs/popup_menu.hpp"

#include <algorithm>
#include <cstring>

#include "base/errors.hpp"
#include "dialogs/click_gestures.hpp"
#include "dialogs/menu_commands.hpp"
#include "dialogs/menu_structure.hpp"
#include "dialogs/serve_loop.hpp"
#include "dialogs/strip.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/field_editing.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/engine.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int bad_id_code = 7;
constexpr int outline_area = 3575;            // larger menus move as outlines
constexpr int edge_colour = 18;               // between the frame and the text area
constexpr int inner_inset = 14;               // from the upper left corner to the inner area
constexpr int inner_margin = 7;               // from the inner area to the right edge
constexpr int menu_margin = 3 * window_cell;  // of a menu's height, without its rows of text
constexpr int frame_columns = 3;  // of a menu's width: two left of the text, one right of it

enum Colour { text_area_colour, frame_colour_index, selected_colour, field_colour, text_colour };

void fill_lines_with_blanks(const WdObject& object) {
  if (object.line_size < 1) return;
  const auto last = static_cast<std::size_t>(object.line_size - 1);
  for (int i = 0; i < object.line_count; ++i) {
    char* line = object.menu_lines[i];
    const std::size_t used = strnlen(line, last);
    std::memset(line + used, ' ', last - used);
    line[last] = 0;
  }
}

class MenuWindow : public ServedWindow {
 public:
  explicit MenuWindow(int id) : ServedWindow(id) {
    frame_colour = colour(frame_colour_index);
    scroll.bar_colour = edge_colour;
  }

  void lay_out() override {
    WdObject& menu = object();
    init_popupmenu(menu.line_count, menu.visible_lines, menu.line_size, menu.width,
                   &scroll.column_range, &scroll.line_range);
    keep_scroll_in_range();
    init_menu(menu, scroll);
    truncate1 = 1;
    use_default_font();
    fgcol = colour(text_colour);
    fill_lines_with_blanks(menu);
  }

  void draw() override {
    const Rect all = rect_of(object());
    clearwin(all.x1, all.y1, all.x2, all.y2 - 1, edge_colour);
    clearwin(all.x1 + inner_inset, all.y1 + inner_inset, all.x2 - inner_margin,
             all.y2 - inner_margin - 1, colour(text_area_colour));
    draw_menu_lines(text());
  }

  void draw_scrolled() override { draw_menu_lines(text()); }

  [[nodiscard]] bool scrolls_at_once() const override { return true; }

  void resized(Edge moved) override {
    WdObject& menu = object();
    const int rows = (menu.height - menu_margin) / cr;
    if (has(moved, Edge::taller) && menu.visible_lines < menu.line_count) ++menu.visible_lines;
    // Rows for which there are no lines go first, and the last line never.
    if (has(moved, Edge::shorter) && menu.visible_lines > std::max(rows, 1)) --menu.visible_lines;
  }

  Reply text_area_event(const PointerEvent& event) override {
    const MenuText menu = text();
    const int row = line_at(menu, event.x, event.y);
    const Gesture gesture = gestures_.on_event(event, row);
    if (event.action == PointerAction::release) return Reply::goes_on();
    if (gesture != Gesture::none && row >= 0 && row == selected_line(menu)) {
      menu.flags[row] |= line_double_clicked;
      return Command::run_action;
    }
    if (event.action == PointerAction::press) return press(menu, event);
    if (row >= 0) select_line(menu, row);
    return Reply::goes_on();
  }

 private:
  [[nodiscard]] int colour(Colour which) const { return object().colours[which]; }

  [[nodiscard]] MenuText text() const {
    const WdObject& menu = object();
    return {.items = menu.menu_items,
            .lines = menu.menu_lines,
            .flags = menu.line_flags,
            .coloff = menu.scroll_column,
            .firstline = menu.scroll_line,
            .item_count = menu.item_count,
            .line_count = menu.line_count,
            .visible_lines = std::min(menu.visible_lines, (Y1_max - Y1_min) / cr),
            .background = colour(text_area_colour),
            .selected_background = colour(selected_colour),
            .field_background = colour(field_colour)};
  }

  // The wait for keys has swallowed the release. A press that has ended it before any key came may
  // be the second of a double press.
  Reply press(const MenuText& menu, const PointerEvent& event) {
    const MenuPress done = press_on_menu(menu, event.x, event.y);
    if (done != MenuPress::edited && done != MenuPress::edit_undone) return Reply::goes_on();
    gestures_.missed_release();
    if (last_edit_had_a_key()) gestures_.forget();
    return Reply::press_is_spent();
  }

  ClickGestures gestures_;
};

std::string (*note_of_menu)(int id) = nullptr;

[[nodiscard]] bool is_menu(int id) {
  return is_wd_id(id) && wd(id).kind == kind_popup_menu;
}

}  // namespace

int make_popup_menu(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                    int c5, MenuItem* items, char** lines, int* flags, int nitems, int nlines,
                    int nvisible, int linesize) {
  if (!is_wd_id(id)) return 1;
  x &= ~7;
  width &= ~7;
  WdFlags object_flags = WdFlags::snap;
  if (width * height > outline_area) object_flags = object_flags | WdFlags::outline_move;
  WdObject& menu = start_wd_object(id, kind_popup_menu, {x, y, x + width, y + height}, object_flags,
                                   {c1, c2, c3, c4, c5});
  menu.menu_items = items;
  menu.menu_lines = lines;
  menu.line_flags = flags;
  menu.item_count = nitems;
  menu.line_count = nlines;
  menu.line_size = linesize;
  menu.visible_lines = nvisible;
  zero_over(id - 1);
  fill_lines_with_blanks(menu);
  return 0;
}

bool paint_menu(int id, int mode) {
  if (make_background(wd(id), mode != mode_put) != 0) return false;
  MenuWindow window(id);
  paint_window(window);
  return true;
}

void scroll_menu(int id, int lines) {
  MenuWindow window(id);
  scroll_window(window, lines);
}

Served serve_menu(int id, const PointerEvent& press) {
  if (note_of_menu != nullptr) {
    const std::string note = note_of_menu(id);
    if (!note.empty()) say_in_strip(note);
  }
  MenuWindow window(id);
  return serve_window(window, press);
}

void set_menu_note(std::string (*note_of)(int id)) {
  note_of_menu = note_of;
}

int pop_up_menu(int id, int mode) {
  return is_menu(id) ? popUpMenu(id, mode) : 1;
}

int popUpMenu(int id, int mode) {
  if (mode == mode_serve) return static_cast<int>(serve_menu(id, present_pointer()).command);
  return static_cast<int>(paint_menu(id, mode) ? Command::put_down : Command::no_memory);
}

int free_pop_up_menu(int id) {
  if (id < 1) {
    illegal_pointer(bad_id_code);
    return 1;
  }
  if (is_wd_id(id)) free_one_wd_object(id);
  return 0;
}

int pull_down(int id) {
  if (pop_up_menu(id, mode_put) > 0) return 1;
  setmouse(3 * cs + wd(id).x, cr + wd(id).y);
  return pop_up_menu(id, mode_serve) > 0 ? 1 : 0;
}

void init_popupmenu(int nlines, int nvisible, int linesize, int width, int* column_range,
                    int* line_range) {
  *line_range = std::max(0, nlines - nvisible);
  *column_range = std::max(0, linesize - width / cs - frame_columns);
}

}  // namespace torve
