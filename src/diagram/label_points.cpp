#include "diagram/label_points.hpp"

#include <cstdint>

#include "diagram/model/vobj.hpp"
#include "text/fonts.hpp"

namespace torve {

std::vector<PixelPosition> label_points(const char* text, const FigurePlace& place) {
  constexpr int glyph_width = 8;
  std::vector<PixelPosition> points;
  int x = place.x1;
  for (int i = 0; i < label_text_length && text[i] != 0; ++i) {
    const std::uint8_t* rows = glyph_rows2(text[i]);
    for (int row = 0; row < ysizeb; ++row) {
      for (int column = 0; column < glyph_width; ++column) {
        if ((rows[row] & (0x80U >> column)) != 0) points.push_back({x + column, place.y1 + row});
      }
    }
    const int advance = chdist2 && text[i + 1] != 0 ? get_xoff(chdist2, text, i) : 0;
    x += advance != 0 ? advance : csb;
  }
  return points;
}

}  // namespace torve
