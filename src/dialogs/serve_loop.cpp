#include "dialogs/serve_loop.hpp"

#include <algorithm>
#include <tuple>

#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "text/text_output.hpp"
#include "wm/engine.hpp"

namespace torve {

namespace {

constexpr int bar_width = 11;  // of a scroll bar, pixels
constexpr int bar_middle = 5;
constexpr int track_start = 20;              // from a window's corner to a bar's track
constexpr int end_of_vertical_track = 11;    // from the track's last row to behind the window
constexpr int end_of_horizontal_track = 21;  // the same for columns
constexpr int margin_while_resizing = 4;  // pixels that the pointer keeps from the screen's edges

// The pointer's clamp, put back at the end.
class PointerLimits {
 public:
  PointerLimits() : kept_(X1mouse, Y1mouse, X2mouse, Y2mouse) {}
  ~PointerLimits() { restore(); }
  PointerLimits(const PointerLimits&) = delete;
  PointerLimits& operator=(const PointerLimits&) = delete;

  void narrow() {
    setmouselim(0, 0, X__max - margin_while_resizing, Y__max - margin_while_resizing);
  }
  void restore() { std::apply(setmouselim, kept_); }

 private:
  std::tuple<int, int, int, int> kept_;
};

// Which part of the window the present press belongs to until its release.
enum class Grip { none, edge, scroll_bar, text };

class ServeLoop {
 public:
  explicit ServeLoop(ServedWindow& window)
      : window_(window),
        drawn_column_(window.object().scroll_column),
        drawn_line_(window.object().scroll_line) {}

  int run() {
    window_.lay_out();
    int command = handle(PointerAction::press);
    while (command == serving_goes_on) {
      if (cur_button == 0 || window_.scrolls_at_once()) show_scrolling();
      command = handle_next_event();
    }
    show_scrolling();  // whatever ended a press on a scroll bar
    return command;
  }

 private:
  // Keys, exposure and changes of the window's size neither begin nor end a press.
  int handle_next_event() {
    readmouse(&buttons, &X, &Y);
    if (!last_event_was_mouse()) return serving_goes_on;
    if (last_event.type == InputEvent::Type::press) return handle(PointerAction::press);
    return handle(buttons != 0 ? PointerAction::motion : PointerAction::release);
  }

  int handle(PointerAction action) {
    switch (action) {
      case PointerAction::press:
        hidemouse();
        let_go();  // of a press whose release got lost
        return pressed();
      case PointerAction::motion:
        return held();
      case PointerAction::release:
        break;
    }
    return released();
  }

  int pressed() {
    WdObject& object = window_.object();
    grabbed_ = check_resizing(object, X, Y);
    if (grabbed_ != Edge::none) {
      grab_edge();
      return serving_goes_on;
    }
    switch (check_scrolling(object, window_.scroll, X, Y, true, window_.frame_colour)) {
      case WindowPart::outside:
        return window_.stays ? serving_goes_on : command_put_down;
      case WindowPart::top_left_box:
        return on_top_left_box();
      case WindowPart::close_box:
        return window_.stays ? serving_goes_on : on_close_box();
      case WindowPart::scroll_bar:
        grip_ = Grip::scroll_bar;
        on_vertical_bar_ = X - object.x < bar_width;
        return window_.scroll_bar_press();
      case WindowPart::inside:
        break;
    }
    grip_ = Grip::text;
    return window_.text_area_event(PointerAction::press);
  }

  int held() {
    switch (grip_) {
      case Grip::edge:
        drag_edge();
        return serving_goes_on;
      case Grip::scroll_bar:
        scroll_along();
        return serving_goes_on;
      case Grip::text:
        return window_.text_area_event(PointerAction::motion);
      case Grip::none:
        break;
    }
    return serving_goes_on;
  }

  int released() {
    showmouse();
    const Grip grip = grip_;
    let_go();
    if (cur_button == 0) show_pointer_shape();
    return grip == Grip::text ? window_.text_area_event(PointerAction::release) : serving_goes_on;
  }

  void let_go() {
    if (grip_ == Grip::edge) limits_.restore();
    grip_ = Grip::none;
    grabbed_ = Edge::none;
  }

  int on_top_left_box() {
    if (buttons == first_button) return command_run_action;
    if (window_.stays) return serving_goes_on;
    cxoff = X - window_.object().x;
    cyoff = Y - window_.object().y;
    return command_move;
  }

  int on_close_box() {
    const WdFlags flags = window_.object().flags;
    // A message has no other way to go.
    if (window_.id() == message_window_id) return command_hide;
    if (buttons != first_button) {
      return has(flags, WdFlags::right_close_puts_down) ? command_put_down : command_make_icon;
    }
    if (has(flags, WdFlags::close_hides)) return command_hide;
    return has(flags, WdFlags::close_puts_down) ? command_put_down : command_free;
  }

  // The press is one step. Where it draws the edge in, the pointer is now outside and would draw
  // it out again at once: it counts as having come along.
  void grab_edge() {
    grip_ = Grip::edge;
    const int width = window_.object().width;
    const int height = window_.object().height;
    limits_.narrow();
    step_edges(grabbed_);
    lead_x_ = std::min(0, window_.object().width - width);
    lead_y_ = std::min(0, window_.object().height - height);
    show_resized();
  }

  // As many steps as the pointer has run ahead.
  void drag_edge() {
    bool resized = false;
    for (;;) {
      const Edge step = resize_step(window_.object(), X + lead_x_, Y + lead_y_, grabbed_);
      if (step == Edge::none || step_edges(step) == Edge::none) break;
      resized = true;
    }
    if (resized) show_resized();
  }

  Edge step_edges(Edge step) {
    window_.before_resizing();
    const Edge moved = update_backgrnd(window_.id(), step);
    window_.resized(moved);
    return moved;
  }

  void show_resized() {
    paint_window(window_);
    drawn_column_ = window_.object().scroll_column;
    drawn_line_ = window_.object().scroll_line;
  }

  // A pointer that leaves the track still leads the thumb.
  void scroll_along() {
    WdObject& object = window_.object();
    const int right = std::max(track_start, object.width - end_of_horizontal_track);
    const int bottom = std::max(track_start, object.height - end_of_vertical_track);
    const int x = std::clamp(X - object.x, track_start, right);
    const int y = std::clamp(Y - object.y, track_start, bottom);
    check_scrolling(object, window_.scroll, object.x + (on_vertical_bar_ ? bar_middle : x),
                    object.y + (on_vertical_bar_ ? y : bar_middle), false, window_.frame_colour);
  }

  void show_scrolling() {
    const WdObject& object = window_.object();
    if (drawn_column_ == object.scroll_column && drawn_line_ == object.scroll_line) return;
    drawn_column_ = object.scroll_column;
    drawn_line_ = object.scroll_line;
    window_.draw_scrolled();
  }

  void show_pointer_shape() {
    if (has(window_.object().flags, WdFlags::fixed_size)) return;
    const Edge edge = check_resizing(window_.object(), X, Y);
    const bool right = (edge & (Edge::wider | Edge::narrower)) != Edge::none;
    const bool bottom = (edge & (Edge::taller | Edge::shorter)) != Edge::none;
    if (right && bottom) return Arrow4Cursor();
    if (right) return ArrowVerCursor();
    return bottom ? ArrowHorCursor() : DefaultCursor();
  }

  ServedWindow& window_;
  PointerLimits limits_;
  Grip grip_ = Grip::none;
  Edge grabbed_ = Edge::none;
  int lead_x_ = 0, lead_y_ = 0;  // by how much the press has drawn the edges in, pixels, negative
  bool on_vertical_bar_ = false;
  int drawn_column_, drawn_line_;  // the scroll position that the text area shows
};

}  // namespace

void ServedWindow::keep_scroll_in_range() const {
  WdObject& window = object();
  window.scroll_column = std::clamp(window.scroll_column, 0, std::max(0, scroll.column_range));
  window.scroll_line = std::clamp(window.scroll_line, 0, std::max(0, scroll.line_range));
}

void ServedWindow::write_with(int ink, int paper) {
  truncate1 = 1;
  fgcol = ink;
  bgcol = paper;
  use_default_font();
}

int serve_window(ServedWindow& window) {
  return ServeLoop(window).run();
}

void paint_window(ServedWindow& window) {
  window.lay_out();
  window.draw();
  draw_window_frame(window.object(), window.scroll, window.frame_colour, 0);
}

}  // namespace torve
