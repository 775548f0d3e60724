#include "draw/draw_vector.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

#include "display/screen_image.hpp"
#include "display/screen_state.hpp"
#include "draw/pixels.hpp"
#include "eps/eps_stream.hpp"

namespace torve {

namespace {

// distance * i / steps for i from `i` on, as long as distance <= steps, without a division each.
class Share {
 public:
  Share(std::int64_t distance, std::int64_t steps, std::int64_t i)
      : distance_(std::abs(distance)),
        steps_(steps),
        sign_(distance < 0 ? -1 : 1),
        whole_(distance_ * i / steps),
        rest_(distance_ * i % steps) {}

  [[nodiscard]] int now() const { return static_cast<int>(sign_ * whole_); }
  void step() {
    rest_ += distance_;
    if (rest_ < steps_) return;
    rest_ -= steps_;
    ++whole_;
  }

 private:
  std::int64_t distance_, steps_, sign_, whole_, rest_;
};

struct StepRange {
  std::int64_t first, last;
};

// The steps at which a coordinate that grows (falls) by one with each step lies in low .. high - 1.
StepRange steps_between(std::int64_t start, bool grows, int low, int high) {
  return grows ? StepRange{low - start, high - 1 - start}
               : StepRange{start - (high - 1), start - low};
}

// Calls visit(x, y, slot) for the pixels of a segment that the mode lets through, in order, while
// there are slots. It says whether it has changed the pixel; what was changed is marked.
template <typename Visit>
void walk(VectorMode mode, const VectorSegment& segment, std::span<std::uint32_t> slots,
          Visit visit) {
  const Rect clip = clip_of(mode);
  const std::int64_t dx = std::int64_t{segment.x2} - segment.x1;
  const std::int64_t dy = std::int64_t{segment.y2} - segment.y1;
  const bool wide = std::abs(dx) >= std::abs(dy);
  const std::int64_t steps = wide ? std::abs(dx) : std::abs(dy);
  const std::int64_t begin = segment.without_first ? 1 : 0;
  const std::int64_t end = std::min(steps - (segment.without_last ? 1 : 0),
                                    begin + static_cast<std::int64_t>(slots.size()) - 1);
  const StepRange inside = wide ? steps_between(segment.x1, dx >= 0, clip.x1, clip.x2)
                                : steps_between(segment.y1, dy >= 0, clip.y1, clip.y2);
  const std::int64_t first = std::max(begin, inside.first);
  const std::int64_t last = std::min(end, inside.last);
  if (first > last) return;
  Share x(dx, std::max<std::int64_t>(steps, 1), first);
  Share y(dy, std::max<std::int64_t>(steps, 1), first);
  Rect changed;
  for (std::int64_t i = first; i <= last; ++i, x.step(), y.step()) {
    const int column = segment.x1 + x.now(), row = segment.y1 + y.now();
    if (!clip.contains(column, row)) continue;
    if (visit(column, row, slots[static_cast<std::size_t>(i - begin)]))
      changed = bounding_box(changed, {column, row, column + 1, row + 1});
  }
  if (!changed.empty()) mark_dirty(changed);
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
  walk(mode, segment, slots, [pixel](int x, int y, std::uint32_t& slot) {
    slot = getpixel2c(x, y);
    if (slot == pixel) return false;  // reading planes takes half as long as writing them
    drawpixel2c(x, y, pixel);
    return true;
  });
}

void erase_vector(VectorMode mode, const VectorSegment& segment, std::span<std::uint32_t> slots) {
  walk(mode, segment, slots, [](int x, int y, std::uint32_t& slot) {
    if (slot == empty_slot) return false;
    const std::uint32_t covered = std::exchange(slot, empty_slot);
    if (getpixel2c(x, y) == covered) return false;
    drawpixel2c(x, y, covered);
    return true;
  });
}

}  // namespace torve
