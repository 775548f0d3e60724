#include "wm/window_shape.hpp"

#include <algorithm>

#include "display/screen_state.hpp"
#include "draw/scroll_bar.hpp"
#include "draw/window_frame.hpp"
#include "text/fonts.hpp"
#include "wm/background.hpp"

namespace torve {

namespace {

constexpr int box_size = 10;    // of the boxes in the upper corners, pixels
constexpr int widen_band = 2;   // outermost pixels that make a window larger
constexpr int narrow_band = 6;  // with the pixels behind them that make it smaller

int fraction_of(int offset, int range) {
  return range < 1 ? 0 : offset * scroll_full_scale / range;
}

FrameFlags frame_flags(const WdObject& object) {
  FrameFlags flags = FrameFlags::none;
  if (has(object.flags, WdFlags::no_vertical_bar)) flags = flags | FrameFlags::no_vertical_bar;
  if (has(object.flags, WdFlags::no_horizontal_bar)) flags = flags | FrameFlags::no_horizontal_bar;
  return flags;
}

// A thumb erases what lies at its old place and at its new one. In a small window its places and
// the arrows overlap, so the arrows come between.
void show_lines(const WdObject& object, ScrollState& scroll, int colour) {
  if (has(object.flags, WdFlags::no_vertical_bar)) return;
  const int fraction = fraction_of(object.scroll_line, scroll.line_range);
  const auto place_thumb = [&] {
    update_yscrollbar(&scroll.y_fraction, fraction, scroll.bar_colour, colour, object.x, object.y,
                      object.y + object.height - 1);
  };
  place_thumb();
  putVertArrows(object.x + 1, object.y + scroll_arrow_start, object.height - scroll_arrow_start - 2,
                colour);
  place_thumb();
}

void show_columns(const WdObject& object, ScrollState& scroll, int colour) {
  if (has(object.flags, WdFlags::no_horizontal_bar)) return;
  const int fraction = fraction_of(object.scroll_column, scroll.column_range);
  const auto place_thumb = [&] {
    update_xscrollbar(&scroll.x_fraction, fraction, scroll.bar_colour, colour, object.x,
                      object.x + object.width, object.y);
  };
  place_thumb();
  putHorArrows(object.x + scroll_arrow_start, object.y + 1,
               object.width - 2 * scroll_arrow_start - 1, colour);
  place_thumb();
}

// Where a press on a bar leads: `at` is its distance from the bar's corner.
int scrolled_to(int offset, int range, int at, const ScrollTrack& track, bool edge) {
  if (range < 1) return offset;
  if (at < track.start) return edge ? std::max(0, offset - 1) : offset;
  if (at >= track.end) return edge ? std::min(range, offset + 1) : offset;
  return (track.fraction_at(at) * range + scroll_full_scale / 2) / scroll_full_scale;
}

struct Size {
  int width, height;
  bool operator==(const Size&) const = default;
};

// Behind a step, as far as it leads to a size that the object may have.
Size size_behind(const WdObject& object, Edge step) {
  const int width = object.width;
  const int height = object.height;
  const int new_width = width + (has(step, Edge::wider) ? window_cell : 0) -
                        (has(step, Edge::narrower) ? window_cell : 0);
  const int new_height =
      height + (has(step, Edge::taller) ? cr : 0) - (has(step, Edge::shorter) ? cr : 0);
  const auto is_too_small = [](int size, int before, int least) {
    return size < before && size < least;
  };
  const bool keeps_width =
      is_too_small(new_width, width, smallest_width) || object.x + new_width > X__max + 1;
  const bool keeps_height =
      is_too_small(new_height, height, 3 * window_cell + cr) || object.y + new_height > Y__max + 1;
  return {keeps_width ? width : new_width, keeps_height ? height : new_height};
}

}  // namespace

void init_menu(const WdObject& object, ScrollState& scroll) {
  const Rect all = rect_of(object);
  set_drawing_area({all.x1 + 2 * window_cell, all.y1 + 2 * window_cell, all.x2 - window_cell,
                    all.y2 - window_cell});
  scroll.x_fraction = fraction_of(object.scroll_column, scroll.column_range);
  scroll.y_fraction = fraction_of(object.scroll_line, scroll.line_range);
}

void draw_window_frame(const WdObject& object, ScrollState& scroll, int colour, int noframe) {
  putWinFrame(object.x, object.y, object.height, object.width, object.scroll_column,
              object.scroll_line, scroll.column_range, scroll.line_range, &scroll.x_fraction,
              &scroll.y_fraction, colour, frame_flags(object), noframe);
  // The frame routine leaves the vertical thumb at the horizontal position, and spots of a colour
  // of its own where the thumbs belong.
  show_lines(object, scroll, colour);
  show_columns(object, scroll, colour);
}

WindowPart check_scrolling(WdObject& object, ScrollState& scroll, int x, int y, bool edge,
                           int colour) {
  const int dx = x - object.x;
  const int dy = y - object.y;
  if (!rect_of(object).contains(x, y)) return WindowPart::outside;
  if (dx < box_size && dy < box_size) return WindowPart::top_left_box;
  if (dx >= object.width - box_size && dy < box_size) return WindowPart::close_box;
  if (dx < scroll_bar_width) {
    if (has(object.flags, WdFlags::no_vertical_bar)) return WindowPart::scroll_bar;
    object.scroll_line =
        scrolled_to(object.scroll_line, scroll.line_range, dy, vertical_track(object.height), edge);
    show_lines(object, scroll, colour);
    return WindowPart::scroll_bar;
  }
  if (dy < scroll_bar_width) {
    if (has(object.flags, WdFlags::no_horizontal_bar)) return WindowPart::scroll_bar;
    object.scroll_column = scrolled_to(object.scroll_column, scroll.column_range, dx,
                                       horizontal_track(object.width), edge);
    show_columns(object, scroll, colour);
    return WindowPart::scroll_bar;
  }
  return WindowPart::inside;
}

Edge check_resizing(const WdObject& object, int x, int y) {
  if (has(object.flags, WdFlags::fixed_size) || !rect_of(object).contains(x, y)) return Edge::none;
  Edge found = Edge::none;
  const int from_right = object.x + object.width - 1 - x;
  const int from_bottom = object.y + object.height - 1 - y;
  if (y - object.y >= scroll_bar_width && from_right < narrow_band) {
    found = found | (from_right < widen_band ? Edge::wider : Edge::narrower);
  }
  if (x - object.x >= scroll_bar_width && from_bottom < narrow_band) {
    found = found | (from_bottom < widen_band ? Edge::taller : Edge::shorter);
  }
  return found;
}

Edge resize_step(const WdObject& object, int x, int y, Edge grabbed) {
  constexpr int slack = 4;  // the narrowing band follows the pointer inwards by a step and this
  Edge step = Edge::none;
  if ((grabbed & (Edge::wider | Edge::narrower)) != Edge::none) {
    const int right = object.x + object.width;
    if (x >= right) step = step | Edge::wider;
    if (x < right - window_cell - slack) step = step | Edge::narrower;
  }
  if ((grabbed & (Edge::taller | Edge::shorter)) != Edge::none) {
    const int bottom = object.y + object.height;
    if (y >= bottom) step = step | Edge::taller;
    if (y < bottom - cr - slack) step = step | Edge::shorter;
  }
  return step;
}

bool can_step(const WdObject& object, Edge step) {
  return size_behind(object, step) != Size{object.width, object.height};
}

Edge update_backgrnd(int id, Edge step) {
  WdObject& object = wd(id);
  if (!can_step(object, step)) return Edge::none;
  const int width = object.width;
  const int height = object.height;
  const auto [new_width, new_height] = size_behind(object, step);
  take_picture_off(id);
  object.width = new_width;
  object.height = new_height;
  if (change_background(id) != 0) {
    object.width = width;
    object.height = height;
    make_background(object, false);
    return Edge::none;
  }
  make_background(object, false);
  Edge moved = Edge::none;
  if (new_width != width) moved = moved | (new_width > width ? Edge::wider : Edge::narrower);
  if (new_height != height) moved = moved | (new_height > height ? Edge::taller : Edge::shorter);
  return moved;
}

}  // namespace torve
