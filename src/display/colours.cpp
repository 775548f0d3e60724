#include "display/colours.hpp"

#include <algorithm>
#include <cstdio>
#include <span>

namespace torve {

const std::array<ColourShade, colour_count> colour_shades = {{
    {0x00, 0x00, 0x00},  //  0 black
    {0x00, 0x00, 0xFF},  //  1 blue
    {0x00, 0xFF, 0x00},  //  2 green
    {0x00, 0xFF, 0xFF},  //  3 cyan
    {0xFF, 0x00, 0x00},  //  4 red
    {0xBC, 0x8F, 0x8F},  //  5 rose brown
    {0xFF, 0x00, 0xFF},  //  6 magenta
    {0xC0, 0xC0, 0xC0},  //  7 light grey
    {0xA8, 0xA8, 0xA8},  //  8 grey
    {0xBF, 0xD8, 0xD8},  //  9 pale cyan-grey
    {0x8F, 0xBC, 0x8F},  // 10 sea green
    {0xCC, 0x32, 0x32},  // 11 brick red
    {0x4F, 0x2F, 0x4F},  // 12 dark purple
    {0xD8, 0xD8, 0xBF},  // 13 pale khaki
    {0xFF, 0xFF, 0x00},  // 14 yellow
    {0xFC, 0xFC, 0xFC},  // 15 white
    {0xB4, 0xFA, 0xC8},  // 16 mint
    {0x2B, 0x82, 0x96},  // 17 teal
    {0x0A, 0xC8, 0x32},  // 18 bright green
    {0x14, 0x55, 0x9B},  // 19 steel blue
    {0xD2, 0x14, 0x0F},  // 20 signal red
}};

ColourRecord xcolor[colour_table_size];
ColourRecord* xcolor2 = xcolor;

namespace {
constexpr int first_aligned_copy = 32;  // from here on entry i holds colour i % 16
constexpr int palette_size = 16;
}  // namespace

bool allocate_true_colour(ColourRecord& record) {
  record.pixel = static_cast<std::uint32_t>(record.red >> 8) << 16 |
                 static_cast<std::uint32_t>(record.green & 0xFF00) |
                 static_cast<std::uint32_t>(record.blue >> 8);
  return true;
}

void allocate_colours(ColourAllocator allocate) {
  for (ColourRecord& record : xcolor)
    record = {};
  for (int number = 0; number < colour_count; ++number) {
    const ColourShade& shade = colour_shades[static_cast<std::size_t>(number)];
    ColourRecord& record = xcolor[number];
    record.red = static_cast<std::uint16_t>(shade.red << 8);
    record.green = static_cast<std::uint16_t>(shade.green << 8);
    record.blue = static_cast<std::uint16_t>(shade.blue << 8);
    if (!allocate(record)) std::printf("problems with color %d\n", number);
  }
}

void set_xcolor2() {
  for (int i = first_colour_copy; i < colour_table_size; ++i) {
    xcolor2[i] = xcolor2[i < first_aligned_copy ? i - first_colour_copy : i % palette_size];
  }
}

int color_by_pixel1(std::uint32_t pixel, int mode) {
  const std::span table(xcolor);
  const auto searched = mode == 2 ? table.subspan(first_colour_copy) : table.first(colour_count);
  const auto found = std::ranges::find(searched, pixel, &ColourRecord::pixel);
  return found == searched.end() ? -1 : static_cast<int>(found - searched.begin());
}

void setVGApalette(int, int) {}

}  // namespace torve
