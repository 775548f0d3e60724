#include "dialogs/serve_loop.hpp"

#include <algorithm>
#include <optional>

#include "base/kept.hpp"
#include "display/input.hpp"
#include "display/screen_state.hpp"
#include "draw/scroll_bar.hpp"
#include "text/text_output.hpp"

namespace torve {

namespace {

constexpr int margin_while_resizing = 4;  // pixels that the pointer keeps from the screen's edges

// Which part of the window the present press belongs to until its release.
enum class Grip { none, edge, scroll_bar, text };

class ServeLoop {
 public:
  explicit ServeLoop(ServedWindow& window)
      : window_(window),
        drawn_column_(window.object().scroll_column),
        drawn_line_(window.object().scroll_line) {}

  Served run(const PointerEvent& press) {
    window_.lay_out();
    event_ = press;
    std::optional<Command> command = handle();
    while (!command) {
      if (cur_button == 0 || window_.scrolls_at_once()) show_scrolling();
      event_ = next_pointer_event();
      command = handle();
    }
    show_scrolling();  // whatever ended a press on a scroll bar
    return {*command, event_};
  }

 private:
  // Keys, exposure and changes of the window's size neither begin nor end a press.
  std::optional<Command> handle() {
    switch (event_.action) {
      case PointerAction::press:
        hidemouse();
        let_go();  // of a press whose release got lost
        return heed(pressed());
      case PointerAction::motion:
        return heed(held());
      case PointerAction::release:
        return heed(released());
      case PointerAction::wheel:
        turn_wheel();
        break;
      case PointerAction::hover:
      case PointerAction::leave:
      case PointerAction::none:
        break;
    }
    return std::nullopt;
  }

  std::optional<Command> heed(const Reply& reply) {
    if (reply.spends_press()) let_go();
    return reply.command();
  }

  void turn_wheel() {
    if (grip_ != Grip::none || event_.lines == 0 ||
        !rect_of(window_.object()).contains(event_.x, event_.y))
      return;
    scroll_window(window_, event_.lines);
    drawn_line_ = window_.object().scroll_line;
  }

  Reply pressed() {
    WdObject& object = window_.object();
    grabbed_ = check_resizing(object, event_.x, event_.y);
    if (grabbed_ != Edge::none) {
      grab_edge();
      return Reply::goes_on();
    }
    switch (
        check_scrolling(object, window_.scroll, event_.x, event_.y, true, window_.frame_colour)) {
      case WindowPart::outside:
        return window_.stays ? Reply::goes_on() : Command::put_down;
      case WindowPart::top_left_box:
        return on_top_left_box();
      case WindowPart::close_box:
        return window_.stays ? Reply::goes_on() : on_close_box();
      case WindowPart::scroll_bar:
        grip_ = Grip::scroll_bar;
        on_vertical_bar_ = event_.x - object.x < scroll_bar_width;
        return window_.scroll_bar_press(event_);
      case WindowPart::inside:
        break;
    }
    grip_ = Grip::text;
    return window_.text_area_event(event_);
  }

  Reply held() {
    switch (grip_) {
      case Grip::edge:
        drag_edge();
        break;
      case Grip::scroll_bar:
        scroll_along();
        break;
      case Grip::text:
        return window_.text_area_event(event_);
      case Grip::none:
        break;
    }
    return Reply::goes_on();
  }

  Reply released() {
    showmouse();
    const Grip grip = grip_;
    let_go();
    if (cur_button == 0) show_pointer_shape();
    return grip == Grip::text ? window_.text_area_event(event_) : Reply::goes_on();
  }

  void let_go() {
    clamp_while_resizing_.reset();
    grip_ = Grip::none;
    grabbed_ = Edge::none;
  }

  Reply on_top_left_box() {
    if (event_.button == first_button) return Command::run_action;
    if (window_.stays) return Reply::goes_on();
    return ask_to_move(window_.object(), event_).command;
  }

  Command on_close_box() {
    const WdFlags flags = window_.object().flags;
    // A message has no other way to go.
    if (window_.id() == message_window_id) return Command::hide;
    if (event_.button != first_button) {
      return has(flags, WdFlags::right_close_puts_down) ? Command::put_down : Command::make_icon;
    }
    if (has(flags, WdFlags::close_hides)) return Command::hide;
    return has(flags, WdFlags::close_puts_down) ? Command::put_down : Command::free;
  }

  // The press is one step. Where it draws the edge in, the pointer is now outside and would draw
  // it out again at once: it counts as having come along.
  void grab_edge() {
    grip_ = Grip::edge;
    const int width = window_.object().width;
    const int height = window_.object().height;
    clamp_while_resizing_.emplace(X1mouse, Y1mouse, X2mouse, Y2mouse);
    setmouselim(0, 0, X__max - margin_while_resizing, Y__max - margin_while_resizing);
    step_edges(grabbed_);
    lead_x_ = std::min(0, window_.object().width - width);
    lead_y_ = std::min(0, window_.object().height - height);
    show_resized();
  }

  // As many steps as the pointer has run ahead, while there is memory: a step that finds none has
  // taken the picture off, too.
  void drag_edge() {
    bool is_off = false;
    for (;;) {
      const Edge step =
          resize_step(window_.object(), event_.x + lead_x_, event_.y + lead_y_, grabbed_);
      if (!can_step(window_.object(), step)) break;
      is_off = true;
      if (step_edges(step) == Edge::none) break;
    }
    if (is_off) show_resized();
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
    const int x = on_vertical_bar_ ? scroll_bar_middle
                                   : horizontal_track(object.width).nearest(event_.x - object.x);
    const int y = on_vertical_bar_ ? vertical_track(object.height).nearest(event_.y - object.y)
                                   : scroll_bar_middle;
    check_scrolling(object, window_.scroll, object.x + x, object.y + y, false,
                    window_.frame_colour);
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
    const Edge edge = check_resizing(window_.object(), event_.x, event_.y);
    const bool right = (edge & (Edge::wider | Edge::narrower)) != Edge::none;
    const bool bottom = (edge & (Edge::taller | Edge::shorter)) != Edge::none;
    if (right && bottom) return Arrow4Cursor();
    if (right) return ArrowVerCursor();
    return bottom ? ArrowHorCursor() : DefaultCursor();
  }

  ServedWindow& window_;
  PointerEvent event_;  // the one that is being handled
  std::optional<Kept<int, int, int, int>> clamp_while_resizing_;
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

Served serve_window(ServedWindow& window, const PointerEvent& press) {
  return ServeLoop(window).run(press);
}

void scroll_window(ServedWindow& window, int lines) {
  WdObject& object = window.object();
  if (has(object.flags, WdFlags::no_vertical_bar)) return;
  window.lay_out();
  const int before = object.scroll_line;
  object.scroll_line += lines;
  window.lay_out();
  if (object.scroll_line == before) return;
  paint_window(window);
}

void paint_window(ServedWindow& window) {
  window.lay_out();
  window.draw();
  draw_window_frame(window.object(), window.scroll, window.frame_colour, 0);
}

}  // namespace torve
