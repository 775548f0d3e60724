#include "dialogs/strip.hpp"

#include <new>

#include "display/colours.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

constexpr int ink = 0;

std::string text_now;

void paint() {
  const CanvasPaint beneath(strip_area);
  const auto limits = kept_drawing_area();
  const Kept cursor(xkoord, ykoord, truncate1);
  const KeptFont font;
  set_drawing_area(strip_area);
  clearwin(strip_area.x1, strip_area.y1, strip_area.x2, strip_area.y2, white_colour);
  truncate1 = 1;
  xkoord = strip_area.x1;
  ykoord = strip_area.y1;
  textf(text_now.c_str(), ink, white_colour, label_font);
}

}  // namespace

void say_in_strip(const std::string& text) {
  if (term == text_console || text == text_now) return;
  text_now = text;
  paint();
}

bool fits_strip(const std::string& text) {
  return fntlen2(text.c_str()) <= strip_area.width() - cs;
}

void clear_strip() {
  say_in_strip({});
}

void reset_strip() {
  text_now.clear();
}

const std::string& strip_text() {
  return text_now;
}

StripNote::StripNote(const std::string& text) : before_(text_now) {
  say_in_strip(text);
}

// Without memory it stays, until the next press.
StripNote::~StripNote() {
  try {
    say_in_strip(before_);
  } catch (const std::bad_alloc&) {
    text_now = {};
  }
}

}  // namespace torve
