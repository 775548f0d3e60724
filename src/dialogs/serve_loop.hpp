// The loop that serves a framed window: menus, text windows and input windows share it.
//
// It runs while the window is lifted, from the press that lifted it until a press asks for
// something that the engine does. Presses on the frame are handled here: scrolling, resizing (an
// edge is grabbed until the release) and the two boxes. The text area is the window's own.
#pragma once

#include <optional>

#include "wm/command.hpp"
#include "wm/window_shape.hpp"

namespace torve {

/// What a window answers to an event: that serving goes on, that it does but what is left of the
/// present press means nothing any more, or that it ends with a command of the engine.
class Reply {
 public:
  Reply(Command command) : command_(command) {}
  [[nodiscard]] static Reply goes_on() { return {}; }
  [[nodiscard]] static Reply press_is_spent() {
    Reply reply;
    reply.press_is_spent_ = true;
    return reply;
  }

  [[nodiscard]] const std::optional<Command>& command() const { return command_; }
  [[nodiscard]] bool spends_press() const { return press_is_spent_; }

 private:
  Reply() = default;

  std::optional<Command> command_;
  bool press_is_spent_ = false;
};

/// A window as the loop sees it.
class ServedWindow {
 public:
  explicit ServedWindow(int id) : id_(id) {}
  virtual ~ServedWindow() = default;
  ServedWindow(const ServedWindow&) = delete;
  ServedWindow& operator=(const ServedWindow&) = delete;

  [[nodiscard]] int id() const { return id_; }
  [[nodiscard]] WdObject& object() const { return wd(id_); }

  /// Works out the ranges of the scroll bars for the present size, brings the scroll position
  /// inside them and sets the drawing limits to the text area.
  virtual void lay_out() = 0;
  /// Draws everything at the present size.
  virtual void draw() = 0;
  /// Draws the text area after scrolling.
  virtual void draw_scrolled() = 0;
  /// Whether the text moves while a scroll bar is still held, and not at its release only.
  [[nodiscard]] virtual bool scrolls_at_once() const = 0;
  /// Around a resizing step, with the edges that it has moved. It takes the window's picture off
  /// the canvas if it moves any; lay_out and draw follow.
  virtual void before_resizing() {}
  virtual void resized(Edge) {}
  /// A press on a scroll bar, which has scrolled already.
  virtual Reply scroll_bar_press(const PointerEvent&) { return Reply::goes_on(); }
  /// A press, motion or release of a press that began in the text area.
  virtual Reply text_area_event(const PointerEvent&) { return Reply::goes_on(); }

  ScrollState scroll;
  int frame_colour = 0;
  bool stays = false;  // ignores presses beside it, on its close box and for moving it

 protected:
  /// Brings the scroll position inside the ranges of the scroll bars.
  void keep_scroll_in_range() const;
  /// Text from now on: the default font, cut off at the edge, in these colours.
  static void write_with(int ink, int paper);

 private:
  int id_;
};

/// Serves a press and those that follow.
Served serve_window(ServedWindow& window, const PointerEvent& press);

/// Scrolls the window by some lines, as far as it has any, and repaints it; one without a vertical
/// scroll bar stays.
void scroll_window(ServedWindow& window, int lines);

/// Paints the whole window, as put and refresh ask for. The caller has seen to the background.
void paint_window(ServedWindow& window);

}  // namespace torve
