#include "dialogs/file_window.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "base/errors.hpp"
#include "base/files.hpp"
#include "dialogs/popup_menu.hpp"
#include "dialogs/serve_loop.hpp"
#include "dialogs/text_lines.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int bad_id_code = 6;
constexpr int columns_beyond_window = 2;  // of a column range that has to be worked out

enum Colour { background_colour, frame_colour_index, kept_colour, text_colour };

// A file of the working directory that may only be read comes last, as with all data files.
FilePtr open_text(const char* name) {
  FilePtr file = open_data_file(name, DataKind::include, "rb+");
  return file ? std::move(file) : open_regular_file(name, "rb");
}

void measure(std::FILE* file, WdObject& window) {
  const TextExtent extent = measure_text(file);
  if (window.column_range < 0) {
    window.column_range = std::max(window.width / cs + columns_beyond_window, extent.columns);
  }
  if (window.line_range < 0) window.line_range = extent.lines;
}

class TextWindow : public ServedWindow {
 public:
  TextWindow(int id, FilePtr file) : ServedWindow(id), file_(std::move(file)) {
    frame_colour = colour(frame_colour_index);
    scroll.bar_colour = colour(background_colour);
  }

  void lay_out() override {
    init_resizable(file_.get(), object(), scroll);
    keep_scroll_in_range();
    init_menu(object(), scroll);
    write_with(colour(text_colour), colour(background_colour));
  }

  void draw() override {
    const Rect all = rect_of(object());
    clearwin(all.x1, all.y1, all.x2, all.y2 - 1, bgcol);
    draw_scrolled();
    if (over_text != nullptr) over_text();
  }

  void draw_scrolled() override {
    move_text(file_.get(), object().scroll_column, object().scroll_line);
  }

  [[nodiscard]] bool scrolls_at_once() const override { return false; }

  Reply text_area_event(const PointerEvent& event) override {
    if (event.action == PointerAction::press && !file_) return Command::missing_file;
    return Reply::goes_on();
  }

  void (*over_text)() = nullptr;

 private:
  [[nodiscard]] int colour(Colour which) const { return object().colours[which]; }

  FilePtr file_;
};

}  // namespace

int make_file_window(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                     const char* name, int columns, int lines) {
  if (!is_wd_id(id)) return 1;
  x &= ~7;
  width &= ~7;
  WdObject& window = start_wd_object(id, kind_file_window, {x, y, x + width, y + height},
                                     WdFlags::snap, {c1, c2, c3, c4});
  std::snprintf(window.name, sizeof window.name, "%s", name);
  window.column_range = columns;
  window.line_range = lines;
  zero_over(id - 1);
  return 0;
}

void init_resizable(std::FILE* file, WdObject& window, ScrollState& scroll) {
  if (file != nullptr && (window.column_range < 0 || window.line_range < 0)) {
    measure(file, window);
  }
  init_menu(window, scroll);
  const int rows = (Y1_max - Y1_min) / cr;
  scroll.column_range = std::max(0, window.column_range);
  scroll.line_range = std::max(0, window.line_range - rows);
}

Command paint_text_window(int id, int mode, void (*over_text)()) {
  FilePtr file = open_text(wd(id).name);
  if (!file && mode == mode_put) return Command::missing_file;
  if (make_background(wd(id), mode != mode_put) != 0) return Command::no_memory;
  TextWindow window(id, std::move(file));
  window.over_text = over_text;
  paint_window(window);
  return Command::put_down;
}

void scroll_text_window(int id, int lines) {
  TextWindow window(id, open_text(wd(id).name));
  scroll_window(window, lines);
}

Served serve_text_window(int id, const PointerEvent& press, Keep keep) {
  TextWindow window(id, open_text(wd(id).name));
  window.stays = keep == Keep::yes;
  return serve_window(window, press);
}

int free_file_window(int id) {
  if (id < 1) {
    illegal_pointer(bad_id_code);
    return 1;
  }
  if (is_wd_id(id)) free_one_wd_object(id);
  return 0;
}

int file_window(int id, int mode, int keep) {
  const bool is_one = is_wd_id(id) && wd(id).kind == kind_file_window;
  return is_one ? resizable_window(id, mode, keep) : 1;
}

int resizable_window(int id, int mode, int keep) {
  if (mode != mode_serve) return static_cast<int>(paint_text_window(id, mode));
  const Keep stays = keep != 0 ? Keep::yes : Keep::no;
  return static_cast<int>(serve_text_window(id, present_pointer(), stays).command);
}

}  // namespace torve
