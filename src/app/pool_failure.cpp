#include "app/pool_failure.hpp"

#include <string>

#include "base/rect.hpp"
#include "display/colours.hpp"
#include "display/input.hpp"
#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/rectangles.hpp"
#include "pool/pool.hpp"
#include "text/fonts.hpp"
#include "text/text_output.hpp"

namespace torve {

namespace {

constexpr Rect failure_box = {180, 240, 400, 300};
constexpr int failure_column = 200;
constexpr int failure_row = 260;
constexpr int size_column = 14;  // cells behind the text
constexpr int red = 4;

void write_at(int x, int y, const char* text) {
  xkoord = x;
  ykoord = y;
  textn(text, white_colour, red);
}

void show_start_failure(int size) {
  nosound();
  delay(100);
  if (have_screen_image()) {
    const auto limits = kept_drawing_area();
    open_drawing_area();
    clearwin(failure_box.x1, failure_box.y1, failure_box.x2, failure_box.y2, red);
    write_at(failure_column, failure_row, "initPool, call to malloc");
    write_at(failure_column, failure_row + cr, "failed, size=");
    write_at(failure_column + size_column * cs, failure_row + cr, std::to_string(size).c_str());
    static_cast<void>(getch());
    return;
  }
  static_cast<void>(getch());
}

}  // namespace

void install_pool_reporters() {
  set_pool_reporters({
      .start_failed = show_start_failure,
      .no_data_node = [] { osprints("dalloc, balloc failed", xkoord, ykoord + cr); },
  });
}

}  // namespace torve
