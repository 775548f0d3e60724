#include "app/inspect/overlay.hpp"

#include "display/screen_image.hpp"
#include "draw/plane_copy.hpp"
#include "draw/rectangles.hpp"
#include "wm/canvas_paint.hpp"

namespace torve {

namespace {

PlaneLayout layout_of(const Rect& rect) {
  const int bytes = plane_row_bytes(rect.width());
  return {.plane_stride = bytes, .row_stride = bytes * screen_planes};
}

}  // namespace

void Overlay::draw(const OverlayLine& line) {
  const Rect rect = intersection(line.rect, whole_screen);
  if (rect.empty()) return;
  const PlaneLayout layout = layout_of(rect);
  std::vector<std::uint8_t> pixels(static_cast<std::size_t>(layout.row_stride) *
                                   static_cast<std::size_t>(rect.height()));
  const CanvasPaint beneath(rect);
  save_buf2c(rect.x1, rect.y1, rect.width(), rect.height(), layout, pixels);
  covered_.push_back({rect, std::move(pixels)});
  clearwin(rect.x1, rect.y1, rect.x2, rect.y2, line.colour);
}

void Overlay::show(std::span<const OverlayLine> lines) {
  clear();
  for (const OverlayLine& line : lines)
    draw(line);
  present();
}

// The lines may cross, so the last one goes first. What is shown at once is a small rectangle, then
// another one, not all between the old place and the new one.
void Overlay::clear() {
  if (covered_.empty()) return;
  for (; !covered_.empty(); covered_.pop_back()) {
    const Covered& last = covered_.back();
    const Rect& rect = last.rect;
    const CanvasPaint beneath(rect);
    draw_buf2c(rect.x1, rect.y1, rect.width(), rect.height(), layout_of(rect), last.pixels);
  }
  present();
}

}  // namespace torve
