// Segments that remember what they cover.
//
// A segment walks from its first point to its second in n = max(|dx|, |dy|) steps; step i is at
// (x1 + dx * i / n, y1 + dy * i / n), truncated. Each pixel has a slot; drawing keeps the canvas'
// pixel in it, erasing puts it back. A pixel outside the clip rectangle leaves canvas and slot
// alone but uses up its slot, and only slots that hold a pixel are put back: whatever the clip was
// at each time, what was drawn and only that is restored.
#pragma once

#include <cstdint>
#include <span>

#include "base/rect.hpp"

namespace torve {

/// What a slot without a pixel holds.
inline constexpr std::uint32_t empty_slot = 0xFF000000U;

/// How figures are drawn: anywhere on the canvas; inside the clip rectangle (the state's xxmin ..
/// yymax); into the open EPS file, and then inside the clip rectangle.
enum class VectorMode { canvas = 0, clipped = 2, eps = 4 };

/// The pixels that a mode lets through.
[[nodiscard]] Rect clip_of(VectorMode mode);

/// Draws one pixel and keeps the one that was there, if the clip lets it through.
void draw_kept_pixel(VectorMode mode, int x, int y, std::uint32_t pixel, std::uint32_t& slot);

/// Puts the kept pixel back and empties the slot, if the clip lets it through.
void erase_kept_pixel(VectorMode mode, int x, int y, std::uint32_t& slot);

struct VectorSegment {
  int x1 = 0, y1 = 0, x2 = 0, y2 = 0;
  bool without_first = false;  // pixels that belong to a neighbour
  bool without_last = false;
};

/// Draws (or erases) a segment with a slot for each of its pixels; it stops where the slots end.
void draw_vector(VectorMode mode, const VectorSegment& segment, std::uint32_t pixel,
                 std::span<std::uint32_t> slots);
void erase_vector(VectorMode mode, const VectorSegment& segment, std::span<std::uint32_t> slots);

}  // namespace torve
