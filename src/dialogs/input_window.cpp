#include "dialogs/input_window.hpp"

#include <algorithm>
#include <array>
#include <cstdio>

#include "dialogs/popup_menu.hpp"
#include "dialogs/serve_loop.hpp"
#include "display/screen_state.hpp"
#include "draw/plane_copy.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/canvas_paint.hpp"
#include "wm/stacking.hpp"

namespace torve {

namespace {

constexpr int inside_start = 11;  // from a window's upper and left edge to its inside
constexpr int inside_end = 5;     // from its inside to the lower and right edge
constexpr int strip_end = 4;      // from a strip that it has grown by to the right edge

enum Colour { background_colour, frame_colour_index, kept_colour, text_colour };

// By id - 1.
std::array<std::vector<std::uint8_t>, wd_object_count> covered;
std::array<int, wd_object_count> windows_ended;  // tells a window from a later one with its id
int draws_going_on = 0;

[[nodiscard]] bool is_input_window(int id) {
  return is_wd_id(id) && wd(id).kind == kind_input_window;
}

Rect inside_of(const WdObject& window) {
  const Rect all = rect_of(window);
  return {all.x1 + inside_start, all.y1 + inside_start, all.x2 - inside_end, all.y2 - inside_end};
}

// The creator's limits. Whole cells only: where text ends would depend on the window's place.
Rect text_area_of(const WdObject& window) {
  const Rect all = rect_of(window);
  const int x1 = all.x1 + 2 * window_cell;
  const int columns = (all.x2 - window_cell - x1) / cs;
  return {x1, all.y1 + 2 * window_cell, x1 + columns * cs, all.y2 - window_cell};
}

bool has_grown(const WdObject& window) {
  return window.width > window.plain_width || window.height > window.plain_height;
}

// What the creator's function may change and others rely on.
struct KeptState {
  Kept<int, int, int, int> limits = kept_drawing_area();
  Kept<int, int, int, int> figure_limits = kept_figure_area();
  Kept<int, int> inks = Kept(fgcol, fg1col);
  KeptFont font;
};

class InputWindow : public ServedWindow {
 public:
  explicit InputWindow(int id) : ServedWindow(id), ended_before_(times_ended()) {
    frame_colour = colour(frame_colour_index);
    scroll.bar_colour = colour(background_colour);
  }

  void lay_out() override {
    WdObject& window = object();
    init_input_resizable(window, scroll);
    keep_scroll_in_range();
    init_input_resizable(window, scroll);
    write_with(colour(text_colour), colour(background_colour));
  }

  void draw() override {
    const Rect all = rect_of(object());
    clearwin(all.x1, all.y1, all.x2, all.y2, colour(background_colour));
    put_kept_back();
    call_creator(mode_refresh);
    show_figures();
  }

  void draw_scrolled() override {
    if (has_ended()) return;
    kept_.clear();  // by a step that has moved nothing
    forget_growth();
    paint_window(*this);
  }

  [[nodiscard]] bool scrolls_at_once() const override { return true; }

  void before_resizing() override {
    if (is_off_canvas_) return;  // by an earlier step
    kept_place_ = text_area_of(object());
    kept_.resize(static_cast<std::size_t>(kept_place_.height() * kept_layout().row_stride));
    save_buf2c(kept_place_.x1, kept_place_.y1, kept_place_.width(), kept_place_.height(),
               kept_layout(), kept_);
  }

  void resized(Edge moved) override {
    if (moved != Edge::none) is_off_canvas_ = true;
    WdObject& window = object();
    window.plain_width = std::min(window.plain_width, window.width);
    window.plain_height = std::min(window.plain_height, window.height);
  }

  Reply scroll_bar_press(const PointerEvent&) override { return press(); }

  Reply text_area_event(const PointerEvent& event) override {
    return event.action == PointerAction::release ? Reply::goes_on() : press();
  }

  /// No figures show from the next drawing on.
  void forget_growth() {
    object().plain_width = object().width;
    object().plain_height = object().height;
  }

  /// The creator has freed the window.
  [[nodiscard]] bool has_ended() const { return times_ended() != ended_before_; }

 private:
  [[nodiscard]] int colour(Colour which) const { return object().colours[which]; }
  [[nodiscard]] int times_ended() const {
    return windows_ended[static_cast<std::size_t>(id() - 1)];
  }

  [[nodiscard]] PlaneLayout kept_layout() const {
    const int row_bytes = plane_row_bytes(kept_place_.width());
    return {gplanes, row_bytes, row_bytes * gplanes};
  }

  // What resizing steps have taken off the canvas, as far as there is still room for it.
  void put_kept_back() {
    const Rect part = intersection(kept_place_, text_area_of(object()));
    if (!kept_.empty()) {
      draw_buf2c(part.x1, part.y1, part.width(), part.height(), kept_layout(), kept_);
    }
    kept_.clear();
    is_off_canvas_ = false;
  }

  void show_figures() {
    const WdObject& window = object();
    const Rect all = rect_of(window);
    if (window.width > window.plain_width) {
      refresh_figures({all.x1 + window.plain_width - strip_end, all.y1 + inside_start,
                       all.x2 - strip_end, all.y2 - inside_end});
    }
    if (window.height > window.plain_height) {
      refresh_figures({all.x1 + inside_start, all.y1 + window.plain_height - inside_end,
                       all.x2 - strip_end, all.y2 - inside_end});
    }
  }

  Reply press() {
    lay_out();
    call_creator(mode_serve);
    if (has_ended()) return Command::put_down_only;
    show_figures();
    // A line of text that begins inside the limits may end below them.
    draw_window_frame(object(), scroll, frame_colour, 0);
    return Reply::goes_on();
  }

  void call_creator(int mode) {
    WdObject& window = object();
    if (window.input_draw == nullptr) return;
    const KeptState kept;
    set_figure_area(inside_of(window));
    xkoord = X1_min;
    ykoord = Y1_min;
    if (mode == mode_serve) return window.input_draw(id(), mode);
    const Kept flags(window.flags);
    const Kept depth(draws_going_on);
    window.flags = WdFlags::fresh;
    ++draws_going_on;
    window.input_draw(id(), mode);
  }

  int ended_before_;
  std::vector<std::uint8_t> kept_;  // the text area as it was before a resizing step
  Rect kept_place_;
  bool is_off_canvas_ = false;  // since a step that has moved an edge
};

bool draw(InputWindow& drawn) {
  WdObject& window = drawn.object();
  if (!window.painted) drawn.forget_growth();
  if (make_background(window, window.painted) != 0) return false;
  paint_window(drawn);
  return true;
}

Served serve(InputWindow& served, const PointerEvent& press) {
  served.object().inside_drawn = true;
  Served answer = serve_window(served, press);
  if (served.has_ended()) answer.command = Command::put_down_only;
  // The figures of this place do not go with the window to another one.
  if (answer.command == Command::move && has_grown(served.object())) served.draw_scrolled();
  return answer;
}

int number_of(bool painted) {
  return static_cast<int>(painted ? Command::put_down : Command::no_memory);
}

}  // namespace

int make_input_window(int id, int x, int y, int width, int height, int c1, int c2, int c3, int c4,
                      const char* name, int value, int columns, int lines, InputDraw draw) {
  if (!is_wd_id(id)) return 1;
  WdObject& window = start_wd_object(id, kind_input_window, {x, y, x + width, y + height},
                                     WdFlags::none, {c1, c2, c3, c4});
  std::snprintf(window.name, sizeof window.name, "%s", name);
  window.kind_word = value;
  window.column_range = columns;
  window.line_range = lines;
  window.input_draw = draw;
  zero_over(id - 1);
  return 0;
}

bool paint_input_window(int id) {
  const KeptState kept;
  InputWindow window(id);
  if (!wd(id).painted) wd(id).inside_drawn = false;
  return draw(window);
}

Served serve_input_window(int id, const PointerEvent& press) {
  const KeptState kept;
  InputWindow window(id);
  return serve(window, press);
}

int input_window(int id, int mode) {
  return is_input_window(id) ? resizable_input_window(id, mode) : 1;
}

int resizable_input_window(int id, int mode) {
  const KeptState kept;
  InputWindow window(id);
  const bool shows_presses = wd(id).painted && wd(id).inside_drawn;
  if (mode != mode_serve && !shows_presses) return number_of(draw(window));
  return static_cast<int>(serve(window, present_pointer()).command);
}

int redraw_input_window(int id) {
  return is_input_window(id) ? number_of(paint_input_window(id)) : 1;
}

void init_input_resizable(const WdObject& window, ScrollState& scroll) {
  constexpr int spare_cells = 2;
  scroll.column_range =
      window.column_range < 0 ? spare_cells - window.width / cs : window.column_range;
  scroll.line_range = window.line_range < 0 ? spare_cells - window.height / cr : window.line_range;
  init_menu(window, scroll);
  X1_max = text_area_of(window).x2;
}

int move_input1(int id, int x, int y) {
  if (!is_input_window(id)) return 1;
  move_object(id, x, y);
  return 0;
}

int free_input_window(int id) {
  if (!is_wd_id(id)) return 1;
  free_one_wd_object(id);
  return 0;
}

std::vector<std::uint8_t>& covered_by_input_window(int id) {
  return covered[static_cast<std::size_t>(id - 1)];
}

bool input_window_shows_figures(int id) {
  return has_grown(wd(id)) && draws_going_on == 0;
}

void end_input_window(int id) {
  ++windows_ended[static_cast<std::size_t>(id - 1)];
}

}  // namespace torve
