// The colour table: from the program's small colour numbers to pixel values.
//
// Numbers 0 to 20 are the program's own colours; 21 to 31 repeat 0 to 10, and from 32 on entry i
// repeats colour i % 16. A colour is drawn as the pixel value of its entry.
#pragma once

#include <array>
#include <cstdint>

namespace torve {

inline constexpr int colour_count = 21;        // colours of our own
inline constexpr int colour_table_size = 277;  // entries of the table
inline constexpr int first_colour_copy = 21;   // entry that the copies of the colours start at
inline constexpr int white_colour = 15;

struct ColourRecord {
  std::uint32_t pixel = 0;                     // value in the screen image, 0xRRGGBB
  std::uint16_t red = 0, green = 0, blue = 0;  // intensities, 0 .. 65535
};

/// Intensities of the colours 0 to 20, eight bits each (a table entry holds them times 256).
struct ColourShade {
  std::uint8_t red, green, blue;
};
extern const std::array<ColourShade, colour_count> colour_shades;

// State.
extern ColourRecord xcolor[colour_table_size];  // written by allocate_colours and set_xcolor2
extern ColourRecord* xcolor2;                   // second name of the same table

/// Asks the window system for a colour: fills in the pixel value, may change the intensities to
/// those it can show; false when refused.
using ColourAllocator = bool (*)(ColourRecord& record);

/// Without a window: the pixel value is made of the intensities' upper bytes, nothing is refused.
bool allocate_true_colour(ColourRecord& record);

/// Empties the table and allocates the colours 0 to 20 in order. A refused one stays black and is
/// reported as "problems with color %d\n" on standard output.
void allocate_colours(ColourAllocator allocate);

/// Fills the entries from 21 to the table's end with copies of the colours 0 to 15.
void set_xcolor2();

/// Kept for callers that set VGA palette registers; a true-colour window has none.
void setVGApalette(int index, int value);

/// The pixel value of a colour number; black for numbers outside the table.
[[nodiscard]] inline std::uint32_t colour_pixel(int number) {
  return number >= 0 && number < colour_table_size ? xcolor[number].pixel : 0;
}

/// The first place at which a pixel value is found, -1 for none: among the copies that start at
/// entry 21 (places 0 .. 255) for `mode` 2, otherwise among the colours 0 to 20.
[[nodiscard]] int color_by_pixel1(std::uint32_t pixel, int mode);

}  // namespace torve
