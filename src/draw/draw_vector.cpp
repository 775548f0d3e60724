#include "draw/draw_vector.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "eps/eps_stream.hpp"

namespace torve {

namespace {

// Calls visit(x, y, slot) for the pixels of a segment, in order, while there are slots.
template <typename Visit>
void walk(const VectorSegment& segment, std::span<std::uint32_t> slots, Visit visit) {
  const std::int64_t dx = std::int64_t{segment.x2} - segment.x1;
  const std::int64_t dy = std::int64_t{segment.y2} - segment.y1;
  const std::int64_t steps = std::max(std::abs(dx), std::abs(dy));
  const std::int64_t first = segment.without_first ? 1 : 0;
  const std::int64_t last = std::min(steps - (segment.without_last ? 1 : 0),
                                     first + static_cast<std::int64_t>(slots.size()) - 1);
  for (std::int64_t i = first; i <= last; ++i) {
    const std::int64_t divisor = std::max<std::int64_t>(steps, 1);
    visit(static_cast<int>(segment.x1 + dx * i / divisor),
          static_cast<int>(segment.y1 + dy * i / divisor),
          slots[static_cast<std::size_t>(i - first)]);
  }
}

}  // namespace

Rect clip_of(VectorMode mode) {
  if (mode == VectorMode::canvas) return whole_screen;
  return intersection({xxmin, yymin, xxmax, yymax}, whole_screen);
}

void draw_kept_pixel(VectorMode mode, int x, int y, std::uint32_t pixel, std::uint32_t& slot) {
  if (clip_of(mode).contains(x, y)) slot = plot_point2(x, y, pixel);
}

void erase_kept_pixel(VectorMode mode, int x, int y, std::uint32_t& slot) {
  if (slot == empty_slot || !clip_of(mode).contains(x, y)) return;
  drawpixel2b(x, y, slot);
  slot = empty_slot;
}

void draw_vector(VectorMode mode, const VectorSegment& segment, std::uint32_t pixel,
                 std::span<std::uint32_t> slots) {
  if (mode == VectorMode::eps) {
    write_eps_segment(segment.x1, segment.y1, segment.x2, segment.y2, Y1_max - Y1_min);
  }
  walk(segment, slots,
       [&](int x, int y, std::uint32_t& slot) { draw_kept_pixel(mode, x, y, pixel, slot); });
}

void erase_vector(VectorMode mode, const VectorSegment& segment, std::span<std::uint32_t> slots) {
  walk(segment, slots,
       [&](int x, int y, std::uint32_t& slot) { erase_kept_pixel(mode, x, y, slot); });
}

}  // namespace torve
