// Pictures drawn as XPM 3 text: one character a pixel, colours as "c #rrggbb".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace torve {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;  // 0xRRGGBB, row by row from the top
};

/// Throws std::runtime_error, which says what is wrong, when the text is not such a picture.
[[nodiscard]] Picture parse_xpm(std::string_view text);

/// The picture as an fn2 file: 8 bytes of header, then each row as 24 planes of (width / 8) + 1
/// bytes, the most significant bit of the pixel value first, the leftmost pixel in the top bit.
[[nodiscard]] std::string fn2_bytes(const Picture& picture);

}  // namespace torve
