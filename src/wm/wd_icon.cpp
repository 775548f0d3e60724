#include "wm/wd_icon.hpp"

#include <cstdio>

#include "display/colours.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/background.hpp"
#include "wm/wd_object.hpp"

namespace torve {

namespace {

constexpr int icon_columns = 13;      // cells wide
constexpr int icon_text_length = 12;  // characters shown
constexpr int icon_margin = 3;        // rows above and below the text
constexpr int icon_colour = 18;
constexpr int text_colour = 0;

// Gives a lifted object another size (and kind) and background. On failure nothing has changed.
bool resize_lifted(int id, const Rect& place, std::uint32_t kind) {
  const WdObject before = wd(id);
  take_picture_off(id);
  WdObject& object = wd(id);
  object.kind = kind;
  object.x = place.x1;
  object.y = place.y1;
  object.width = place.width();
  object.height = place.height();
  keep_on_canvas(object, true);
  if (change_background(id) == 0 && put_one_wd_object(id) == 0) return true;
  release_background(object);
  object.kind = before.kind;
  object.x = before.x;
  object.y = before.y;
  object.width = before.width;
  object.height = before.height;
  static_cast<void>(change_background(id));
  put_one_wd_object(id);
  return false;
}

const char* text_of(int id) {
  const char* text = icon_text_of(id);
  return text == nullptr ? "" : text;
}

}  // namespace

bool make_icon(int id) {
  const Rect before = rect_of(wd(id));
  const Rect place = {before.x1, before.y1, before.x1 + icon_columns * cs,
                      before.y1 + cr + 2 * icon_margin};
  if (!resize_lifted(id, place, wd(id).kind | kind_icon_bit)) return false;
  wd(id).normal_place = before;
  return true;
}

bool restore_icon(int id) {
  const WdObject& icon = wd(id);
  return resize_lifted(id, icon.normal_place, icon.kind & ~kind_icon_bit);
}

bool paint_icon(int id) {
  WdObject& object = wd(id);
  const bool repaint = object.painted;
  if (make_background(object, repaint) != 0) return false;
  const Rect box = rect_of(object);
  clearwin(box.x1, box.y1, box.x2, box.y2, object.colours[1]);
  clearwin(box.x1 + 1, box.y1 + 1, box.x2 - 1, box.y2 - 1, white_colour);
  clearwin(box.x1 + 2, box.y1 + 2, box.x2 - 2, box.y2 - 2, icon_colour);
  if (curfnt != defaultfont) static_cast<void>(init_font(defaultfont));
  char text[icon_text_length + 1];
  std::snprintf(text, sizeof text, "%s", text_of(id));
  open_drawing_area();
  xkoord = box.x1 + cs / 2;
  ykoord = box.y1 + icon_margin;
  textXY(xkoord, &ykoord, text, text_colour, nocolor);
  return true;
}

Served serve_icon(int id, const PointerEvent& press) {
  if (press.button != first_button) return ask_to_move(wd(id), press);
  return {restore_icon(id) ? Command::put_down_only : Command::no_memory, press};
}

int draw_old_icon(int id) {
  constexpr int drawn = -2;
  return paint_icon(id) ? drawn : static_cast<int>(Command::no_memory);
}

}  // namespace torve
